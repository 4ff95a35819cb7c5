// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/sessionservice.h"

#include "config/jsonmodule.h"
#include "device/commands.h"
#include "device/paths.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTimer>

#include <csignal>

Q_LOGGING_CATEGORY(lcSession, "kt.app.session")

namespace {

/// A status file holds a number and a few lines; what is larger is not one.
constexpr qint64 statusLimit = 1024 * 1024;
constexpr int longestLogLine = 500;
constexpr int endTimeMs = 3000;

QString shownName(const ServerEntry &server)
{
    return server.name.isEmpty() ? server.address : server.name;
}

} // namespace

SessionService::SessionService(JsonModule &configuration, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_client(SIGTERM)
{
    // A crash leaves the last session's description behind, with its password.
    QFile::remove(Paths::connection());
    m_client.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_client, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &SessionService::connectionFinished);
    connect(&m_client, &QProcess::errorOccurred, this, &SessionService::handleError);
    connect(&m_client, &QProcess::readyReadStandardOutput, this, &SessionService::logOutput);
}

SessionService::~SessionService()
{
    m_client.disconnect(this);
    if (m_client.state() != QProcess::NotRunning) {
        m_client.terminate();
        m_client.waitForFinished(endTimeMs);
    }
}

void SessionService::setDualDisplay(bool inUse)
{
    m_dualDisplay = inUse;
}

bool SessionService::isDualDisplay() const
{
    return m_dualDisplay;
}

bool SessionService::isRunning() const
{
    return m_running;
}

bool SessionService::clientIsMissing() const
{
    return m_client.error() == QProcess::FailedToStart;
}

QString SessionService::currentServerAddress() const
{
    return m_address;
}

void SessionService::connectTo(const ConnectTarget &target)
{
    if (m_running)
        return;
    m_group = target.isGroup() ? target.members : QVector<ServerEntry>();
    m_member = 0;
    const ServerEntry first = target.isGroup() ? m_group.value(0) : ServerEntry{target.name, target.address};
    createConnectionFile(first.address, target.isGroup());
    startConnection(shownName(first));
}

void SessionService::createConnectionFile(const QString &address, bool autoDisconnect)
{
    ConnectionFile::Session session;
    session.address = address;
    session.autoDisconnect = autoDisconnect;
    emit primaryScreenSize(session.screen);
    if (m_dualDisplay) {
        QString resolution;
        int atLeft = 0;
        int bottomAligned = 0;
        emit secondaryMonitorParameters(resolution, atLeft, bottomAligned);
        session.secondaryAtLeft = atLeft;
    }
    emit getProxyParameters(session.proxy);
    m_isDescribed = ConnectionFile::write(
        Paths::connection(), ConnectionFile::describe(session, m_configuration.getDocument().object()));
    m_address = address;
}

void SessionService::startConnection(const QString &shown)
{
    qCInfo(lcSession).noquote() << "start the client for" << m_address;
    launch(Paths::client(), {QStringLiteral("-x"), Paths::connection()}, shown);
}

void SessionService::startBrokerClient(const QStringList &arguments, const QString &desktop)
{
    if (m_running)
        return;
    m_group.clear();
    m_address.clear();
    // The broker's client reads no description, but the status report takes the file for a running session.
    m_isDescribed = ConnectionFile::write(Paths::connection(), {});
    qCInfo(lcSession).noquote() << "start the broker's client for" << desktop;
    launch(Paths::program(QStringLiteral("solva-client")), arguments, desktop);
}

void SessionService::launch(const QString &program, const QStringList &arguments, const QString &shown)
{
    emit started();
    QFile::remove(Paths::connectionStatus());
    m_running = true;
    m_client.setProcessEnvironment(Commands::environment());
    m_client.setWorkingDirectory(Paths::clientDirectory());
    emit connecting(shown);
    if (!m_isDescribed) {
        QTimer::singleShot(0, this, [this] { finish(ConnectionFile::Verdict::ConnectionError); });
        return;
    }
    m_client.start(program, arguments, QIODevice::ReadWrite);
}

void SessionService::logOutput()
{
    while (m_client.canReadLine() || m_client.bytesAvailable() > longestLogLine)
        logLine();
}

void SessionService::logLine()
{
    const QByteArray line = m_client.readLine(longestLogLine);
    qCDebug(lcSession).noquote() << "client:" << QString::fromLocal8Bit(line).trimmed();
}

/// A client that cannot be started says so here and nowhere else; after a crash `connectionFinished` follows.
void SessionService::handleError(QProcess::ProcessError error)
{
    qCWarning(lcSession).noquote() << "client:" << m_client.errorString();
    // From the event loop: the process is still being tidied up.
    if (error == QProcess::FailedToStart)
        QTimer::singleShot(0, this, [this] { finish(ConnectionFile::Verdict::ConnectionError); });
}

void SessionService::connectionFinished(int exitCode, QProcess::ExitStatus)
{
    while (m_client.bytesAvailable() > 0)
        logLine();
    qCInfo(lcSession) << "the client has ended with" << exitCode;
    finish(connectionError());
}

ConnectionFile::Verdict SessionService::connectionError() const
{
    QFile status(Paths::connectionStatus());
    if (!status.exists())
        return ConnectionFile::Verdict::NoError;
    return ConnectionFile::classify(status.open(QIODevice::ReadOnly) ? status.read(statusLimit)
                                                                     : QByteArray());
}

void SessionService::finish(ConnectionFile::Verdict verdict)
{
    if (!m_running)
        return;
    QFile::remove(Paths::connection());
    emit clientEnded();
    if (verdict != ConnectionFile::Verdict::NoError && ++m_member < m_group.size()) {
        // From the event loop: the client's end must be over before it is started again.
        QTimer::singleShot(0, this, &SessionService::tryNextMember);
        return;
    }
    m_running = false;
    emit ended(verdict);
}

void SessionService::abandonWalk()
{
    m_group.clear();
}

void SessionService::tryNextMember()
{
    if (m_member >= m_group.size()) {
        m_running = false;
        emit ended(ConnectionFile::Verdict::NoError);
        return;
    }
    const ServerEntry member = m_group.value(m_member);
    createConnectionFile(member.address, true);
    startConnection(shownName(member));
}
