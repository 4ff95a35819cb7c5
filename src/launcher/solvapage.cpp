// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/solvapage.h"

#include "ui_solvapage.h"

#include <QCompleter>

namespace {
constexpr int widestName = 640;
}

SolvaPage::SolvaPage(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::SolvaPage>())
{
    m_ui->setupUi(this);
    // A completed address would be another broker than the one typed.
    m_ui->brokerAddressComboBox->setCompleter(nullptr);
    connect(m_ui->loginSolvaButton, &QPushButton::clicked, this, &SolvaPage::loginRequested);
    connect(m_ui->showDesktopsButton, &QPushButton::clicked, this, &SolvaPage::desktopsRequested);
    setBroker(QString(), false, QJsonArray());
}

SolvaPage::~SolvaPage() = default;

void SolvaPage::setBroker(const QString &address, bool customAllowed, const QJsonArray &history)
{
    // What the user typed stays; an address that was the stored one gives way to the one stored now.
    const QString shown = m_ui->brokerAddressComboBox->currentText();
    const QString typed = shown == m_ui->brokerAddressLineEdit->text() ? QString() : shown;
    m_customAllowed = customAllowed;
    m_ui->brokerAddressComboBox->setVisible(customAllowed);
    m_ui->brokerAddressLineEdit->setVisible(!customAllowed);
    m_ui->brokerAddressLineEdit->setText(address);
    m_ui->brokerAddressComboBox->clear();
    for (const QJsonValue &used : history)
        m_ui->brokerAddressComboBox->addItem(used.toString());
    m_ui->brokerAddressComboBox->setEditText(typed.isEmpty() ? address : typed);
}

void SolvaPage::setStoredLogon(const QString &user, const QString &domain)
{
    const bool typed = hasTypedLogon();
    m_storedUser = user;
    m_storedDomain = domain;
    m_ui->solvaPasswordLineEdit->setPlaceholderText(user.isEmpty() ? QString() : tr("Stored password"));
    if (typed)
        return;
    m_ui->solvaUserLineEdit->setText(user);
    m_ui->solvaDomainLineEdit->setText(domain);
}

bool SolvaPage::hasTypedLogon() const
{
    return user() != m_storedUser || domain() != m_storedDomain || !password().isEmpty();
}

QString SolvaPage::typedBroker() const
{
    return m_customAllowed ? m_ui->brokerAddressComboBox->currentText().trimmed() : QString();
}

QString SolvaPage::broker() const
{
    return m_customAllowed ? typedBroker() : m_ui->brokerAddressLineEdit->text().trimmed();
}

QString SolvaPage::user() const
{
    return m_ui->solvaUserLineEdit->text();
}

QString SolvaPage::password() const
{
    return m_ui->solvaPasswordLineEdit->text();
}

QString SolvaPage::domain() const
{
    return m_ui->solvaDomainLineEdit->text();
}

void SolvaPage::showLogon()
{
    m_ui->solvaPasswordLineEdit->clear();
    m_ui->brokerStackedWidget->setCurrentWidget(m_ui->logonPage);
}

void SolvaPage::showSignedIn(const QString &user, const QString &broker)
{
    m_ui->solvaPasswordLineEdit->clear();
    m_ui->signedInLabel->setText(m_ui->signedInLabel->fontMetrics().elidedText(
        tr("Signed in as %1 at %2.").arg(user, broker), Qt::ElideMiddle, widestName));
    m_ui->brokerStackedWidget->setCurrentWidget(m_ui->signedInPage);
}

void SolvaPage::focusFirst()
{
    if (m_ui->brokerStackedWidget->currentWidget() == m_ui->signedInPage)
        m_ui->showDesktopsButton->setFocus();
    else if (m_customAllowed && broker().isEmpty())
        m_ui->brokerAddressComboBox->setFocus();
    else
        m_ui->solvaUserLineEdit->setFocus();
}

void SolvaPage::pressEnter()
{
    const bool signedIn = m_ui->brokerStackedWidget->currentWidget() == m_ui->signedInPage;
    (signedIn ? m_ui->showDesktopsButton : m_ui->loginSolvaButton)->click();
}

void SolvaPage::setBusy(bool busy)
{
    m_ui->loginSolvaButton->setEnabled(!busy);
}
