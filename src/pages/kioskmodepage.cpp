// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/kioskmodepage.h"

#include "config/keys.h"

#include "ui_kioskmodepage.h"

KioskModePage::KioskModePage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("Kiosk mode"), QStringLiteral(":/images/page_kiosk.png"), parent)
    , m_ui(std::make_unique<Ui::KioskModePage>())
{
    m_ui->setupUi(this);
    connect(m_ui->autologonCheckBox, &QCheckBox::toggled, this, &KioskModePage::enableFields);
    connect(m_ui->autostartCheckBox, &QCheckBox::toggled, this, &KioskModePage::enableFields);
    watchEditors();
    enableFields();
}

KioskModePage::~KioskModePage() = default;

QString KioskModePage::userName() const
{
    return m_ui->usernameLineEdit->text();
}

void KioskModePage::enableFields()
{
    for (QLineEdit *field : {m_ui->usernameLineEdit, m_ui->passwordLineEdit, m_ui->domainLineEdit})
        field->setEnabled(m_ui->autologonCheckBox->isChecked());
    for (QLineEdit *field : {m_ui->programLineEdit, m_ui->pathLineEdit})
        field->setEnabled(m_ui->autostartCheckBox->isChecked());
}

void KioskModePage::load(const QJsonObject &root)
{
    setKioskModeTab(root.value(Key::autologon).toObject(), root.value(Key::appAutostart).toObject());
}

void KioskModePage::setKioskModeTab(const QJsonObject &logon, const QJsonObject &application)
{
    m_ui->autologonCheckBox->setChecked(logon.value(Key::enabled).toBool());
    m_ui->usernameLineEdit->setText(logon.value(Key::username).toString());
    m_ui->passwordLineEdit->setText(logon.value(Key::password).toString());
    m_ui->domainLineEdit->setText(logon.value(Key::domain).toString());
    m_ui->autostartCheckBox->setChecked(application.value(Key::enabled).toBool());
    m_ui->programLineEdit->setText(application.value(Key::program).toString());
    m_ui->pathLineEdit->setText(application.value(Key::path).toString());
    enableFields();
}

QString KioskModePage::refusal() const
{
    const bool nothingToStart
        = m_ui->autostartCheckBox->isChecked() && m_ui->programLineEdit->text().isEmpty();
    return nothingToStart
        ? tr("Application auto-start has been enabled, but no auto-start application has been "
             "specified")
        : QString();
}

void KioskModePage::save(QJsonObject &root)
{
    QJsonObject logon = root.value(Key::autologon).toObject();
    QJsonObject application = root.value(Key::appAutostart).toObject();
    saveKioskModeTab(logon, application);
    root.insert(Key::autologon, logon);
    root.insert(Key::appAutostart, application);
}

void KioskModePage::saveKioskModeTab(QJsonObject &logon, QJsonObject &application) const
{
    logon.insert(Key::enabled, m_ui->autologonCheckBox->isChecked());
    logon.insert(Key::username, m_ui->usernameLineEdit->text());
    logon.insert(Key::password, m_ui->passwordLineEdit->text());
    logon.insert(Key::domain, m_ui->domainLineEdit->text());
    application.insert(Key::enabled, m_ui->autostartCheckBox->isChecked());
    application.insert(Key::program, m_ui->programLineEdit->text());
    application.insert(Key::path, m_ui->pathLineEdit->text());
}
