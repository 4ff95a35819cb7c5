// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/timetools.h"

#include "devicetools-system/systembus.h"
#include "devicetools/checks.h"
#include "devicetools/sharedfile.h"
#include "devicetools/tool.h"

#include <QFile>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <ctime>

namespace TimeTools {

namespace {

constexpr int serverLimit = 8;
constexpr qint64 fileLimit = 4096;
constexpr int longestZone = 64;
constexpr bool interactive = false;
const QString serverFile = QStringLiteral("/var/lib/kt964/ntp-server");
constexpr const char *synchroniser = "org.freedesktop.timesync1";

SystemBus::Method timeMethod(const char *name)
{
    return {"org.freedesktop.timedate1", "/org/freedesktop/timedate1", "org.freedesktop.timedate1", name};
}

bool isAddress(const QString &text)
{
    in6_addr address = {};
    return inet_pton(AF_INET6, text.toLatin1().constData(), &address) == 1;
}

int hand(const QStringList &hosts)
{
    const QString problem = SystemBus::call({synchroniser, "/org/freedesktop/timesync1",
                                             "org.freedesktop.timesync1.Manager", "SetRuntimeNTPServers"},
                                            {hosts});
    return problem.isEmpty() ? Tool::Done : Tool::fail(problem);
}

} // namespace

int setTimeZone(const QStringList &arguments)
{
    static const QRegularExpression zone(
        QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z0-9][A-Za-z0-9_+-]*(/[A-Za-z0-9_+-]+)*")));
    if (arguments.size() != 1)
        return Tool::WrongUsage;
    const QString &name = arguments.first();
    if (name.size() > longestZone || !zone.match(name).hasMatch())
        return Tool::reject(QStringLiteral("that is no name of a time zone"));
    const QString problem = SystemBus::call(timeMethod("SetTimezone"), {name, interactive});
    return problem.isEmpty() ? Tool::Done : Tool::fail(problem);
}

int setNtpServer(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return Tool::WrongUsage;
    const QStringList hosts = servers(arguments);
    if (hosts.isEmpty())
        return Tool::reject(QStringLiteral("the time server must be a host name or an IP address"));
    if (!SharedFile::replace(serverFile, hosts.join(QLatin1Char('\n')).toLatin1() + '\n'))
        return Tool::fail(QStringLiteral("cannot write %1: %2").arg(serverFile, qt_error_string(errno)));
    // While it is off, its next start reads the file.
    return SystemBus::isRunning(synchroniser) ? hand(hosts) : Tool::Done;
}

int useNtpServer(const QStringList &arguments)
{
    if (!arguments.isEmpty())
        return Tool::WrongUsage;
    QFile file(serverFile);
    if (!file.open(QIODevice::ReadOnly))
        return Tool::Done; // none stored yet: the system's own
    const QStringList hosts = servers({QString::fromLatin1(file.read(fileLimit))});
    return hosts.isEmpty() ? Tool::fail(serverFile + QStringLiteral(": no time servers")) : hand(hosts);
}

int setClock(const QStringList &arguments)
{
    if (arguments.size() != 2 || arguments.first() != QLatin1String("-s"))
        return Tool::WrongUsage;
    const std::optional<QDateTime> time = clock(arguments.at(1));
    if (!time)
        return Tool::reject(QStringLiteral("the time must have the form \"5 Mar 2024 07:08:09\""));
    constexpr qint64 microseconds = 1000;
    constexpr bool relative = false;
    const qint64 stamp = time->toMSecsSinceEpoch() * microseconds;
    if (SystemBus::call(timeMethod("SetTime"), {QVariant::fromValue(stamp), relative, interactive}).isEmpty())
        return Tool::Done;
    // It refuses while the clock is synchronised; the one who asks knows better.
    timespec now = {};
    now.tv_sec = static_cast<time_t>(time->toSecsSinceEpoch());
    return clock_settime(CLOCK_REALTIME, &now) == 0 ? Tool::Done : Tool::fail(qt_error_string(errno));
}

QStringList servers(const QStringList &arguments)
{
    static const QRegularExpression separator(QStringLiteral("[\\s,]+"));
    const QStringList hosts = arguments.join(QLatin1Char(' ')).split(separator, Qt::SkipEmptyParts);
    const bool valid = std::all_of(hosts.begin(), hosts.end(), [](const QString &host) {
        return Checks::isHostName(host) || isAddress(host);
    });
    return valid && hosts.size() <= serverLimit ? hosts : QStringList();
}

std::optional<QDateTime> clock(const QString &text)
{
    constexpr int firstYear = 1980; // hardware clocks know no other
    constexpr int lastYear = 2099;
    const QDateTime time = QLocale::c().toDateTime(text, QStringLiteral("d MMM yyyy HH:mm:ss"));
    if (!time.isValid() || time.date().year() < firstYear || time.date().year() > lastYear)
        return std::nullopt;
    return time;
}

} // namespace TimeTools
