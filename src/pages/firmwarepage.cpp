// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/firmwarepage.h"

#include "config/keys.h"
#include "device/identity.h"

#include "ui_firmwarepage.h"

namespace {
const QString latest = QStringLiteral("latest");
const QString corvidServer = QStringLiteral("corvid");
const QString byUrl = QStringLiteral("url");
} // namespace

FirmwarePage::FirmwarePage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("Firmware update"), QStringLiteral(":/images/page_firmware.png"), parent)
    , m_ui(std::make_unique<Ui::FirmwarePage>())
{
    m_ui->setupUi(this);
    m_ui->versionLabel->setTextFormat(Qt::PlainText);
    for (QRadioButton *button : {m_ui->latestRadioButton, m_ui->corvidRadioButton, m_ui->urlRadioButton})
        connect(button, &QRadioButton::toggled, this, &FirmwarePage::enableFields);
    watchEditors();
}

FirmwarePage::~FirmwarePage() = default;

QString FirmwarePage::method() const
{
    if (m_ui->urlRadioButton->isChecked())
        return byUrl;
    return m_ui->corvidRadioButton->isChecked() ? corvidServer : latest;
}

void FirmwarePage::load(const QJsonObject &root)
{
    setUpdateFirmwareTab(root.value(Key::firmware).toObject());
}

void FirmwarePage::setUpdateFirmwareTab(const QJsonObject &firmware)
{
    const QString stored = firmware.value(Key::method).toString();
    m_ui->latestRadioButton->setChecked(stored != byUrl && stored != corvidServer);
    m_ui->corvidRadioButton->setChecked(stored == corvidServer);
    m_ui->urlRadioButton->setChecked(stored == byUrl);
    m_ui->corvidLineEdit->setText(firmware.value(Key::corvid).toString());
    m_ui->fwFileLineEdit->setText(firmware.value(Key::fwFile).toString());
    m_ui->urlLineEdit->setText(firmware.value(Key::url).toString());
    m_ui->usernameLineEdit->setText(firmware.value(Key::username).toString());
    m_ui->passwordLineEdit->setText(firmware.value(Key::password).toString());
    m_ui->versionLabel->setText(Identity::firmware().version);
    enableFields();
}

void FirmwarePage::enableFields()
{
    for (QLineEdit *field : {m_ui->corvidLineEdit, m_ui->fwFileLineEdit})
        field->setEnabled(m_ui->corvidRadioButton->isChecked());
    for (QLineEdit *field : {m_ui->urlLineEdit, m_ui->usernameLineEdit, m_ui->passwordLineEdit})
        field->setEnabled(m_ui->urlRadioButton->isChecked());
}

QString FirmwarePage::refusal() const
{
    if (method() == byUrl && m_ui->urlLineEdit->text().trimmed().isEmpty())
        return tr("Enter the address of the firmware file.");
    const bool named
        = !m_ui->corvidLineEdit->text().trimmed().isEmpty() && !m_ui->fwFileLineEdit->text().isEmpty();
    return method() == corvidServer && !named ? tr("Enter the Corvid server and the file name.") : QString();
}

void FirmwarePage::save(QJsonObject &root)
{
    QJsonObject firmware = root.value(Key::firmware).toObject();
    firmware.insert(Key::method, method());
    firmware.insert(Key::corvid, m_ui->corvidLineEdit->text());
    firmware.insert(Key::fwFile, m_ui->fwFileLineEdit->text());
    firmware.insert(Key::url, m_ui->urlLineEdit->text());
    firmware.insert(Key::username, m_ui->usernameLineEdit->text());
    firmware.insert(Key::password, m_ui->passwordLineEdit->text());
    root.insert(Key::firmware, firmware);
}

void FirmwarePage::on_updateFirmwareButton_clicked()
{
    markChanged();
    if (!apply())
        return;
    emit canApplyChanged();
    emit updateRequested();
}
