// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/managementpage.h"

#include "config/keys.h"
#include "management/qmdaddress.h"

#include "ui_managementpage.h"

ManagementPage::ManagementPage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("Management"), QStringLiteral(":/images/page_management.png"), parent)
    , m_ui(std::make_unique<Ui::ManagementPage>())
{
    m_ui->setupUi(this);
    m_ui->qmdUrlLabel->setTextFormat(Qt::PlainText);
    connect(m_ui->qmdManagementCheckBox, &QCheckBox::toggled, this, &ManagementPage::updateFields);
    connect(m_ui->autodiscoverCheckBox, &QCheckBox::toggled, this, &ManagementPage::updateFields);
    connect(m_ui->qmdAddressLineEdit, &QLineEdit::textChanged, this, &ManagementPage::updateFields);
    watchEditors();
}

ManagementPage::~ManagementPage() = default;

void ManagementPage::load(const QJsonObject &root)
{
    setManagementTab(root.value(Key::management).toObject());
}

void ManagementPage::setManagementTab(const QJsonObject &management)
{
    m_ui->consoleManagementCheckBox->setChecked(management.value(Key::consoleManagement).toBool());
    m_ui->qmdManagementCheckBox->setChecked(management.value(Key::qmdManagement).toBool());
    m_ui->autodiscoverCheckBox->setChecked(management.value(Key::autodiscoverQmd).toBool());
    m_ui->qmdAddressLineEdit->setText(management.value(Key::qmdAddress).toString());
    updateFields();
}

void ManagementPage::updateFields()
{
    const bool managed = m_ui->qmdManagementCheckBox->isChecked();
    m_ui->autodiscoverCheckBox->setEnabled(managed);
    m_ui->qmdAddressLineEdit->setEnabled(managed && !m_ui->autodiscoverCheckBox->isChecked());
    QJsonObject shown;
    saveManagementTab(shown);
    const QString url
        = m_ui->qmdUrlLabel->fontMetrics().elidedText(QmdAddress::url(shown), Qt::ElideMiddle, 400);
    m_ui->qmdUrlLabel->setText(managed ? tr("Server: %1").arg(url) : QString());
}

QString ManagementPage::refusal() const
{
    const bool used = m_ui->qmdManagementCheckBox->isChecked() && !m_ui->autodiscoverCheckBox->isChecked();
    const QString address = m_ui->qmdAddressLineEdit->text();
    if (!used || address.isEmpty() || QmdAddress::isUsable(address))
        return QString();
    focusField(m_ui->qmdAddressLineEdit);
    return tr(
        "The server address is not valid. Enter a host name, an IP address or a URL that begins with http:// "
        "or https://.");
}

void ManagementPage::save(QJsonObject &root)
{
    QJsonObject management = root.value(Key::management).toObject();
    saveManagementTab(management);
    root.insert(Key::management, management);
}

void ManagementPage::saveManagementTab(QJsonObject &management) const
{
    management.insert(Key::consoleManagement, m_ui->consoleManagementCheckBox->isChecked());
    management.insert(Key::qmdManagement, m_ui->qmdManagementCheckBox->isChecked());
    management.insert(Key::autodiscoverQmd, m_ui->autodiscoverCheckBox->isChecked());
    management.insert(Key::qmdAddress, m_ui->qmdAddressLineEdit->text());
}
