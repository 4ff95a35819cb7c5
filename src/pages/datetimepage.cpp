// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/datetimepage.h"

#include "config/keys.h"
#include "device/commands.h"
#include "device/listfile.h"
#include "device/paths.h"

#include "ui_datetimepage.h"

#include <QRegularExpression>

namespace {

const QString ntpService = QStringLiteral("/etc/init.d/ntp");

void controlNtp(const char *systemctl, const char *service)
{
    Commands::runShell(QStringLiteral("sudo systemctl %1 ntp.service").arg(QLatin1String(systemctl)));
    Commands::runShell(Commands::line(ntpService, QLatin1String(service), true));
}

} // namespace

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

void DateTimePage::runTools(const QJsonObject &root)
{
    const QJsonObject dateTime = root.value(Key::dateTime).toObject();
    Commands::runShell(Commands::line(QStringLiteral("/usr/bin/kt-set-timezone"),
                                      Commands::quoted(dateTime.value(Key::timezone).toString())));
    if (dateTime.value(Key::ntpEnabled).toBool())
        useTimeServer(dateTime.value(Key::ntpServer).toString());
    else
        setClock();
}

void DateTimePage::useTimeServer(const QString &server) const
{
    controlNtp("enable", "start");
    Commands::runShell(
        Commands::line(QStringLiteral("/usr/bin/kt-set-ntp-server"), Commands::quoted(server)));
}

void DateTimePage::setClock() const
{
    controlNtp("disable", "stop");
    // If the user did not edit the time, the shown one is out of date and must not be set.
    const QDateTime entered = m_ui->dateTimeEdit->dateTime();
    const QDateTime time = entered == m_shownTime ? QDateTime::currentDateTime() : entered;
    Commands::runShell(QStringLiteral("sudo date -s \"%1\"").arg(clockArgument(time)));
}

QString DateTimePage::clockArgument(const QDateTime &time)
{
    static const char *const months[]
        = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const QDate date = time.date();
    return QStringLiteral("%1 %2 %3 %4")
        .arg(date.day())
        .arg(QLatin1String(months[qBound(1, date.month(), 12) - 1]))
        .arg(date.year(), 4, 10, QLatin1Char('0'))
        .arg(time.time().toString(QStringLiteral("HH:mm:ss")));
}
