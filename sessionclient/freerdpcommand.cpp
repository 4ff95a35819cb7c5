// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/freerdpcommand.h"

namespace {

constexpr int defaultProxyPort = 80;
const QLatin1String alsaDevice(":sys:alsa,dev:");

bool logsOn(const SessionDescription &session)
{
    return session.logOn && !session.user.isEmpty();
}

/// A bare IPv6 address needs brackets, or its last group would be read as a port.
QString bracketed(const QString &host)
{
    const bool bareIpv6 = host.count(QLatin1Char(':')) > 1 && !host.startsWith(QLatin1Char('['));
    return bareIpv6 ? QStringLiteral("[%1]").arg(host) : host;
}

/// FreeRDP reads everything after the first colon as the value, so a value cannot become a second option.
QStringList option(const char *name, const QString &value)
{
    return value.isEmpty() ? QStringList() : QStringList(QLatin1String(name) + value);
}

QStringList displayOptions(const SessionDescription &session)
{
    QStringList options{QStringLiteral("/f")};
    if (session.width > 0)
        options += QStringLiteral("/size:%1x%2").arg(session.width).arg(session.height);
    options += QStringLiteral("/bpp:%1").arg(session.bitsPerPixel);
    if (session.secondDisplay)
        options += QStringLiteral("/multimon");
    return options;
}

/// Network-level authentication requires credentials, so it is off when the server shows its log-on screen.
QStringList logOnOptions(const SessionDescription &session)
{
    if (!logsOn(session))
        return {QStringLiteral("-sec-nla")};
    return option("/u:", session.user) + option("/d:", session.domain)
        + QStringList(QStringLiteral("/from-stdin:force"));
}

QStringList programOptions(const SessionDescription &session)
{
    if (!session.startProgram)
        return {};
    return option("/shell:", session.program) + option("/shell-dir:", session.directory);
}

QStringList soundOptions(const SessionDescription &session, const SessionHardware &hardware)
{
    QStringList options;
    const QString sound = QStringLiteral("/sound");
    if (session.sound)
        options += hardware.output.isEmpty() ? sound : sound + alsaDevice + hardware.output;
    if (!hardware.input.isEmpty())
        options += QStringLiteral("/microphone") + alsaDevice + hardware.input;
    return options;
}

/// xfreerdp 2.11 never authenticates to an HTTP proxy, so ProxyRelay does it. User name and password stay
/// here.
QString proxyValue(const QUrl &proxy)
{
    if (proxy.isEmpty())
        return QString();
    return QStringLiteral("http://%1:%2").arg(bracketed(proxy.host())).arg(proxy.port(defaultProxyPort));
}

QStringList secretsOf(const SessionDescription &session)
{
    QStringList secrets{session.password, session.proxy.password(QUrl::FullyDecoded),
                        session.proxy.password(QUrl::FullyEncoded)};
    secrets.removeAll(QString());
    secrets.removeDuplicates();
    return secrets;
}

} // namespace

FreeRdpCommand freeRdpCommand(const SessionDescription &session, const SessionHardware &hardware)
{
    FreeRdpCommand command;
    command.arguments += option("/v:", bracketed(session.address));
    command.arguments += displayOptions(session);
    // Servers of a local network use self-signed certificates, and the user cannot verify them. The first
    // certificate is therefore trusted. A different one later is rejected, so that an impostor does not get
    // the password of the automatic log-on.
    command.arguments += QStringLiteral("/cert:tofu");
    command.arguments += QStringLiteral("/log-level:INFO");
    command.arguments += logOnOptions(session);
    command.arguments += programOptions(session);
    command.arguments += soundOptions(session, hardware);
    command.arguments += hardware.redirections;
    command.arguments += option("/proxy:", proxyValue(session.proxy));
    command.arguments += option("/client-hostname:", session.deviceName);
    if (logsOn(session))
        command.input = session.password.toUtf8() + '\n';
    command.secrets = secretsOf(session);
    return command;
}

QProcessEnvironment freeRdpEnvironment(QProcessEnvironment environment)
{
    for (const char *name :
         {"https_proxy", "HTTPS_PROXY", "no_proxy", "NO_PROXY", "WLOG_LEVEL", "WLOG_FILTER", "WLOG_APPENDER"})
        environment.remove(QLatin1String(name));
    return environment;
}
