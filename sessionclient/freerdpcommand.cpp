// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/freerdpcommand.h"

namespace {

constexpr int defaultProxyPort = 80;

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

/// FreeRDP takes everything after the first colon as the value, so a value cannot become a second option.
void addValue(QStringList *arguments, const char *option, const QString &value)
{
    if (!value.isEmpty())
        arguments->append(QLatin1String(option) + value);
}

void addDisplay(QStringList *arguments, const SessionDescription &session)
{
    arguments->append(QStringLiteral("/f"));
    if (session.width > 0)
        arguments->append(QStringLiteral("/size:%1x%2").arg(session.width).arg(session.height));
    arguments->append(QStringLiteral("/bpp:%1").arg(session.bitsPerPixel));
    if (session.secondDisplay)
        arguments->append(QStringLiteral("/multimon"));
}

/// Network-level authentication requires credentials, so it is off when the server shows its log-on screen.
void addLogOn(QStringList *arguments, const SessionDescription &session)
{
    if (!logsOn(session)) {
        arguments->append(QStringLiteral("-sec-nla"));
        return;
    }
    addValue(arguments, "/u:", session.user);
    addValue(arguments, "/d:", session.domain);
    arguments->append(QStringLiteral("/from-stdin:force"));
}

void addSound(QStringList *arguments, const SessionDescription &session, const QString &alsaDevice)
{
    if (!session.sound)
        return;
    arguments->append(QStringLiteral("/sound"));
    if (!alsaDevice.isEmpty())
        arguments->last() += QStringLiteral(":sys:alsa,dev:") + alsaDevice;
}

/// xfreerdp 2.11 never authenticates to an HTTP proxy, so user name and password are left out.
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

FreeRdpCommand freeRdpCommand(const SessionDescription &session, const QString &alsaDevice)
{
    FreeRdpCommand command;
    addValue(&command.arguments, "/v:", bracketed(session.address));
    addDisplay(&command.arguments, session);
    // Servers of a local network use self-signed certificates, and the user cannot verify them. The first
    // certificate is therefore trusted. A different one later is rejected, so that an impostor does not get
    // the password of the automatic log-on.
    command.arguments.append(QStringLiteral("/cert:tofu"));
    command.arguments.append(QStringLiteral("/log-level:INFO"));
    addLogOn(&command.arguments, session);
    if (session.startProgram) {
        addValue(&command.arguments, "/shell:", session.program);
        addValue(&command.arguments, "/shell-dir:", session.directory);
    }
    addSound(&command.arguments, session, alsaDevice);
    addValue(&command.arguments, "/proxy:", proxyValue(session.proxy));
    addValue(&command.arguments, "/client-hostname:", session.deviceName);
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
