// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/autoconnectpage.h"

#include "ui_autoconnectpage.h"

namespace {
constexpr int widestName = 540;
}

AutoConnectPage::AutoConnectPage(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::AutoConnectPage>())
{
    m_ui->setupUi(this);
    connect(&m_countdown, &Countdown::remaining, this, &AutoConnectPage::updateAutoConnectTimer);
    connect(&m_countdown, &Countdown::elapsed, this, &AutoConnectPage::connectNow);
    connect(m_ui->autoConnectAgainButton, &QPushButton::clicked, this, &AutoConnectPage::connectRequested);
    showCounting(false);
}

AutoConnectPage::~AutoConnectPage() = default;

Countdown &AutoConnectPage::countdown()
{
    return m_countdown;
}

void AutoConnectPage::startAutoConnect(const ConnectTarget &target)
{
    startCounting();
    QLabel *info = m_ui->autoConnectInfoLabel;
    const QString name = info->fontMetrics().elidedText(target.name, Qt::ElideMiddle, widestName);
    info->setText(
        tr("This device is configured for automatic connection to %1:  %2 ").arg(target.type, name));
}

void AutoConnectPage::startSolvaAutoLogon(const QString &user, const QString &broker)
{
    startCounting();
    QLabel *info = m_ui->autoConnectInfoLabel;
    const QFontMetrics metrics = info->fontMetrics();
    info->setText(
        tr("This device is configured to automatically authenticate the user \"%1\" on the \"%2\" SOLVA "
           "Connection Broker.")
            .arg(metrics.elidedText(user, Qt::ElideMiddle, widestName),
                 metrics.elidedText(broker, Qt::ElideMiddle, widestName)));
}

void AutoConnectPage::startCounting()
{
    showCounting(true);
    m_ui->autoConnectButton->setFocus();
    m_ui->autoConnectInfoLabel->ensurePolished();
    m_countdown.start();
}

void AutoConnectPage::renameParts(const QString &beginning)
{
    const QString own = QStringLiteral("autoConnect");
    for (QWidget *part : findChildren<QWidget *>()) {
        if (part->objectName().startsWith(own))
            part->setObjectName(beginning + part->objectName().mid(own.size()));
    }
}

void AutoConnectPage::stop()
{
    m_countdown.stop();
}

void AutoConnectPage::updateAutoConnectTimer(int seconds)
{
    m_ui->autoConnectCountdownLabel->setText(tr("Automatic connection in %1 seconds").arg(seconds));
}

void AutoConnectPage::connectNow()
{
    m_countdown.stop();
    m_ui->autoConnectCancelButton->hide();
    m_ui->autoConnectCountdownLabel->setText(tr("Autoconnect started..."));
    emit connectRequested();
}

void AutoConnectPage::on_autoConnectButton_clicked()
{
    connectNow();
}

void AutoConnectPage::on_autoConnectCancelButton_clicked()
{
    showStopped();
    emit cancelled();
}

void AutoConnectPage::showStopped()
{
    m_countdown.stop();
    showCounting(false);
    m_ui->autoConnectCountdownLabel->setText(tr("Automatic connection is stopped"));
    // On a page that is not shown it would take Enter away from the page that is.
    if (isVisible())
        m_ui->autoConnectAgainButton->setFocus();
}

void AutoConnectPage::showCounting(bool counting)
{
    m_ui->autoConnectButton->setVisible(counting);
    m_ui->autoConnectCancelButton->setVisible(counting);
    m_ui->autoConnectAgainButton->setVisible(!counting);
}
