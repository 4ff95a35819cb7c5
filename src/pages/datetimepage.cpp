// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/datetimepage.h"

#include "config/keys.h"
#include "device/listfile.h"
#include "device/paths.h"

#include "ui_datetimepage.h"

#include <QRegularExpression>

DateTimePage::DateTimePage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("Date and time"), QStringLiteral(":/images/page_datetime.png"), parent)
    , m_ui(std::make_unique<Ui::DateTimePage>())
{
    m_ui->setupUi(this);
    useUniformRows(*m_ui->timezoneComboBox);
    getTimezones();
    connect(m_ui->ntpCheckBox, &QCheckBox::toggled, this, &DateTimePage::enableFields);
    watchEditors();
}

DateTimePage::~DateTimePage() = default;

/// Each line holds a zone and, for display, its offset and places.
void DateTimePage::getTimezones()
{
    for (const QStringList &fields : ListFile::read(Paths::timezones()))
        m_ui->timezoneComboBox->addItem(QStringList(fields.mid(0, 3)).join(QStringLiteral("   ")),
                                        fields.value(0));
}

void DateTimePage::load(const QJsonObject &root)
{
    setDateTimeTab(root.value(Key::dateTime).toObject());
}

void DateTimePage::setDateTimeTab(const QJsonObject &dateTime)
{
    const QString zone = dateTime.value(Key::timezone).toString();
    if (m_ui->timezoneComboBox->findData(zone) < 0)
        m_ui->timezoneComboBox->addItem(zone, zone);
    m_ui->timezoneComboBox->setCurrentIndex(m_ui->timezoneComboBox->findData(zone));
    m_ui->ntpCheckBox->setChecked(dateTime.value(Key::ntpEnabled).toBool());
    m_ui->ntpServerLineEdit->setText(dateTime.value(Key::ntpServer).toString());
    m_ui->dateTimeEdit->setDateTime(QDateTime::currentDateTime());
    m_shownTime = m_ui->dateTimeEdit->dateTime();
    enableFields();
}

void DateTimePage::enableFields()
{
    m_ui->ntpServerLineEdit->setEnabled(m_ui->ntpCheckBox->isChecked());
    m_ui->dateTimeEdit->setEnabled(!m_ui->ntpCheckBox->isChecked());
}

QString DateTimePage::refusal() const
{
    static const QRegularExpression hostName(QStringLiteral("\\A[A-Za-z0-9][A-Za-z0-9.:-]*\\z"));
    const bool asked = m_ui->ntpCheckBox->isChecked();
    return asked && !hostName.match(m_ui->ntpServerLineEdit->text()).hasMatch()
        ? tr("The time server must be a host name or an IP address.")
        : QString();
}

void DateTimePage::save(QJsonObject &root)
{
    QJsonObject dateTime = root.value(Key::dateTime).toObject();
    saveDateTimeTab(dateTime);
    root.insert(Key::dateTime, dateTime);
}

void DateTimePage::saveDateTimeTab(QJsonObject &dateTime) const
{
    dateTime.insert(Key::ntpEnabled, m_ui->ntpCheckBox->isChecked());
    dateTime.insert(Key::timezone, m_ui->timezoneComboBox->currentData().toString());
    dateTime.insert(Key::ntpServer, m_ui->ntpServerLineEdit->text());
}

QDateTime DateTimePage::clock() const
{
    const QDateTime entered = m_ui->dateTimeEdit->dateTime();
    return entered == m_shownTime ? QDateTime() : entered;
}
