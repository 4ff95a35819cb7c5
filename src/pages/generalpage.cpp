// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/generalpage.h"

#include "config/keys.h"
#include "pages/administratorpassword.h"

#include "ui_generalpage.h"

#include <QRegularExpression>
#include <QSignalBlocker>

namespace {

const QString passwordIsSet = QStringLiteral("********");

} // namespace

GeneralPage::GeneralPage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("General"), QStringLiteral(":/images/page_general.png"), parent)
    , m_ui(std::make_unique<Ui::GeneralPage>())
{
    m_ui->setupUi(this);
    connect(m_ui->deviceNameLineEdit, &QLineEdit::textChanged, this, &GeneralPage::deviceNameChanged);
    connect(m_ui->corvidModeButton, &QRadioButton::clicked, this,
            [this] { emit clientModeChosen(clientMode()); });
    connect(m_ui->solvaModeButton, &QRadioButton::clicked, this,
            [this] { emit clientModeChosen(clientMode()); });
    connect(m_ui->rdpModeButton, &QRadioButton::clicked, this,
            [this] { emit clientModeChosen(clientMode()); });
    connect(m_ui->passwordCheckBox, &QCheckBox::stateChanged, this, &GeneralPage::passwordCheckboxChanged);
    connect(m_ui->enterPasswordLineEdit, &QLineEdit::textEdited, this, &GeneralPage::enterPasswordChanged);
    connect(m_ui->confirmPasswordLineEdit, &QLineEdit::textEdited, this,
            &GeneralPage::confirmPasswordChanged);
    watchEditors();
}

GeneralPage::~GeneralPage() = default;

bool GeneralPage::canApply() const
{
    return !isChanged() || !m_ui->deviceNameLineEdit->text().trimmed().isEmpty();
}

bool GeneralPage::checkHostname(const QString &name)
{
    static const QRegularExpression allowed(
        QStringLiteral("\\A(?:([a-zA-Z0-9]+)|(^[a-zA-Z0-9][a-zA-Z0-9-]*[a-zA-Z0-9]$))\\z"));
    return allowed.match(name).hasMatch();
}

QString GeneralPage::clientMode() const
{
    if (m_ui->solvaModeButton->isChecked())
        return QStringLiteral("solva");
    return m_ui->rdpModeButton->isChecked() ? QStringLiteral("rdp") : QStringLiteral("corvid");
}

void GeneralPage::load(const QJsonObject &root)
{
    setGeneralTab(root.value(Key::general).toObject());
}

void GeneralPage::setGeneralTab(const QJsonObject &general)
{
    m_ui->deviceNameLineEdit->setText(general.value(Key::deviceName).toString());
    const QString mode = general.value(Key::clientMode).toString();
    if (mode == QLatin1String("solva"))
        m_ui->solvaModeButton->click();
    else if (mode == QLatin1String("rdp"))
        m_ui->rdpModeButton->click();
    else
        m_ui->corvidModeButton->click();

    m_storedHash = general.value(Key::setupPasswordHash).toString();
    m_ui->passwordCheckBox->setChecked(general.value(Key::setupPasswordEnabled).toBool());
    passwordCheckboxChanged(m_ui->passwordCheckBox->checkState());
    if (!m_storedHash.isEmpty()) {
        m_ui->enterPasswordLineEdit->setText(passwordIsSet);
        m_ui->confirmPasswordLineEdit->setText(passwordIsSet);
        m_passwordResetPending = true;
    }
    m_passwordChanged = false;
    updateWarnings();
}

void GeneralPage::deviceNameChanged(const QString &)
{
    emit canApplyChanged();
}

void GeneralPage::passwordCheckboxChanged(int state)
{
    m_passwordResetPending = false;
    clearPasswords();
    m_ui->enterPasswordLineEdit->setEnabled(state == Qt::Checked);
    m_ui->confirmPasswordLineEdit->setEnabled(state == Qt::Checked);
    updateWarnings();
}

void GeneralPage::clearPasswords()
{
    m_ui->enterPasswordLineEdit->clear();
    m_ui->confirmPasswordLineEdit->clear();
}

/// Clears both fields if they still show the asterisks of the stored password. Returns true if they did.
bool GeneralPage::startNewPassword()
{
    if (!m_passwordResetPending)
        return false;
    m_passwordResetPending = false;
    m_passwordChanged = true;
    clearPasswords();
    updateWarnings();
    return true;
}

void GeneralPage::enterPasswordChanged(const QString &text)
{
    if (startNewPassword())
        return;
    m_passwordChanged = true;
    m_ui->confirmPasswordLineEdit->setEnabled(!text.isEmpty());
    updateWarnings();
}

void GeneralPage::confirmPasswordChanged(const QString &)
{
    if (startNewPassword())
        return;
    m_passwordChanged = true;
    updateWarnings();
}

void GeneralPage::updateWarnings()
{
    const bool asked = m_ui->passwordCheckBox->isChecked() && !m_passwordResetPending;
    const QString entered = m_ui->enterPasswordLineEdit->text();
    m_ui->firstPasswordWarningLabel->setVisible(asked && entered.isEmpty());
    m_ui->secondPasswordWarningLabel->setVisible(asked && entered != m_ui->confirmPasswordLineEdit->text());
}

QString GeneralPage::refusal() const
{
    if (!checkHostname(m_ui->deviceNameLineEdit->text()))
        return tr("The specified device name is incorrect.");
    if (!m_ui->secondPasswordWarningLabel->isHidden())
        return m_ui->secondPasswordWarningLabel->text();
    return m_ui->firstPasswordWarningLabel->isHidden() ? QString() : m_ui->firstPasswordWarningLabel->text();
}

void GeneralPage::save(QJsonObject &root)
{
    QJsonObject general = root.value(Key::general).toObject();
    saveGeneralTab(general);
    root.insert(Key::general, general);
}

void GeneralPage::saveGeneralTab(QJsonObject &general) const
{
    general.insert(Key::deviceName, m_ui->deviceNameLineEdit->text());
    general.insert(Key::clientMode, clientMode());
    general.insert(Key::setupPasswordEnabled, m_ui->passwordCheckBox->isChecked());
    if (m_passwordChanged && m_ui->passwordCheckBox->isChecked())
        general.insert(Key::setupPasswordHash,
                       AdministratorPassword::hashOf(m_ui->enterPasswordLineEdit->text()));
}
