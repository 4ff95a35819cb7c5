// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/devicetools.h"

#include "device/paths.h"

namespace DeviceTools {

namespace {

const QString networkTool = QStringLiteral("/usr/bin/kt-network-config");
const QString powerTool = QStringLiteral("/usr/bin/kt-lulling");
const QString hostNameTool = QStringLiteral("/usr/bin/kt-set-hostname");
const QString resolutionTool = QStringLiteral("/usr/bin/kt-set-resolution");
const QString switchTool = QStringLiteral("/usr/bin/kt-switch");
/// The network tool expects this word in every call.
const QString fixedWord = QStringLiteral("A");

enum class As { Launcher, Root };

ToolCall command(const QString &tool, const QString &arguments = QString(), As user = As::Launcher)
{
    return ToolCall::command(Commands::line(tool, arguments, user == As::Root));
}

QString networkArguments(const char *subCommand)
{
    return QLatin1String(subCommand) + QLatin1Char(' ') + fixedWord;
}

QString withDocument(const char *subCommand)
{
    return networkArguments(subCommand) + QLatin1Char(' ') + Commands::quoted(Paths::configuration());
}

QString flag(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

/// "5 Mar 2024 07:08:09", with English months whatever the locale.
QString clockArgument(const QDateTime &time)
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

} // namespace

ToolCall shutDown()
{
    return command(powerTool, QStringLiteral("-s"));
}

ToolCall reboot()
{
    return command(powerTool, QStringLiteral("-r"));
}

ToolCall sleep()
{
    return command(powerTool, QStringLiteral("-S"));
}

ToolCall hostName()
{
    return ToolCall::query(QStringLiteral("hostname"), {});
}

ToolCall applyHostName()
{
    return command(hostNameTool, QStringLiteral("-j"));
}

ToolCall resetHostName()
{
    return command(hostNameTool, QStringLiteral("-r"));
}

ToolCall setNetworkConfig()
{
    return command(networkTool, withDocument("set-config"));
}

ToolCall connectWired()
{
    return command(networkTool, networkArguments("connect-ethernet"));
}

ToolCall disconnectWired()
{
    return command(networkTool, networkArguments("disconnect-ethernet"));
}

ToolCall turnOnWired()
{
    return command(networkTool, networkArguments("turn-on-wired"));
}

ToolCall turnOffWired()
{
    return command(networkTool, networkArguments("turn-off-wired"));
}

ToolCall disconnectWifi()
{
    return command(networkTool, networkArguments("disconnect-wifi"), As::Root);
}

ToolCall autoconnect()
{
    return command(networkTool, withDocument("autoconnect"));
}

ToolCall checkGateway()
{
    return command(QStringLiteral("/usr/bin/kt-check-gateway"), QString(), As::Root);
}

ToolCall setAddress(const QString &interface, const QString &address, int prefixLength, bool add,
                    const QString &broadcast)
{
    const QStringList words = {add ? QStringLiteral("-a") : QStringLiteral("-d"), Commands::quoted(interface),
                               Commands::quoted(address), QString::number(prefixLength),
                               broadcast.isEmpty() ? QString() : Commands::quoted(broadcast)};
    return command(QStringLiteral("/usr/bin/kt-ip-settings"), words.join(QLatin1Char(' ')), As::Root);
}

ToolCall networkQuery(const QString &subCommand)
{
    return ToolCall::query(networkTool, {subCommand, fixedWord});
}

ToolCall routes()
{
    return ToolCall::query(QStringLiteral("route"), {QStringLiteral("-n")});
}

ToolCall joinWifi(const QString &ssid, const QString &key, bool hidden)
{
    return ToolCall::query(QStringLiteral("/usr/bin/kt-check-wifi"), {ssid, key, flag(hidden)}, 0);
}

ToolCall joinEnterpriseWifi(const QStringList &arguments)
{
    return ToolCall::query(QStringLiteral("/usr/bin/kt-enterprise-wifi"), arguments, 0);
}

ToolCall logBroadcast(const QString &line)
{
    return ToolCall::command(
        QStringLiteral("echo \"%1\" >> %2").arg(line, Commands::quoted(Paths::broadcastLog())));
}

ToolCall displayModes(const QString &group)
{
    return ToolCall::query(QStringLiteral("/opt/vc/bin/tvservice"),
                           {QStringLiteral("-j"), QStringLiteral("-m"), group});
}

ToolCall currentMode()
{
    return ToolCall::query(resolutionTool, {QStringLiteral("-m")});
}

ToolCall setAutomaticMode()
{
    return command(resolutionTool);
}

ToolCall setMode(const QString &group, const QString &code)
{
    return command(resolutionTool, Commands::quoted(group) + QLatin1Char(' ') + Commands::quoted(code));
}

ToolCall restartScreenSaver()
{
    return command(QStringLiteral("/etc/init.d/kt964-sleep"), QStringLiteral("restart"), As::Root);
}

ToolCall hdmiAudio()
{
    return ToolCall::query(QStringLiteral("tvservice"), {QStringLiteral("-a")});
}

ToolCall setKeyboard(const QString &layout, const QString &variant)
{
    return command(QStringLiteral("/usr/bin/kt-set-keyboard"),
                   Commands::quoted(layout) + QLatin1Char(' ') + Commands::quoted(variant));
}

ToolCall setNumLock(bool on)
{
    return command(QStringLiteral("/usr/bin/numlockx"), on ? QStringLiteral("on") : QStringLiteral("off"));
}

ToolCall setTimeZone(const QString &zone)
{
    return command(QStringLiteral("/usr/bin/kt-set-timezone"), Commands::quoted(zone));
}

ToolCall enableNtp(bool enabled)
{
    return ToolCall::command(QStringLiteral("sudo systemctl %1 ntp.service")
                                 .arg(enabled ? QStringLiteral("enable") : QStringLiteral("disable")));
}

ToolCall startNtp(bool running)
{
    return command(QStringLiteral("/etc/init.d/ntp"),
                   running ? QStringLiteral("start") : QStringLiteral("stop"), As::Root);
}

ToolCall setNtpServer(const QString &server)
{
    return command(QStringLiteral("/usr/bin/kt-set-ntp-server"), Commands::quoted(server));
}

ToolCall setClock(const QDateTime &time)
{
    return ToolCall::command(QStringLiteral("sudo date -s \"%1\"").arg(clockArgument(time)));
}

ToolCall switchClient()
{
    return command(switchTool, QStringLiteral("-r"));
}

ToolCall switchToDesktop()
{
    return command(switchTool, QStringLiteral("-d"));
}

ToolCall installFirmware()
{
    ToolCall call = command(QStringLiteral("/usr/bin/update-ui"));
    call.limitMs = 0;
    return call;
}

ToolCall signalSession()
{
    return ToolCall::command(QStringLiteral("pkill -SIGUSR1 zClient.bin"));
}

} // namespace DeviceTools
