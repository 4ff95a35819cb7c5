// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/sessionlauncher.h"

#include "config/jsonmodule.h"
#include "device/commands.h"
#include "device/paths.h"

#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QScreen>

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

SessionLauncher::SessionLauncher(QObject *parent)
    : QObject(parent)
    , m_client(SIGTERM)
{
    m_client.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_client, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &SessionLauncher::connectionFinished);
    connect(&m_client, &QProcess::errorOccurred, this, &SessionLauncher::handleError);
    connect(&m_client, &QProcess::readyReadStandardOutput, this, &SessionLauncher::logOutput);
    m_dialogTimer.setSingleShot(true);
    m_dialogTimer.setInterval(dialogTimeMs);
    connect(&m_dialogTimer, &QTimer::timeout, this, &SessionLauncher::closeConnectionDialog);
}

SessionLauncher::~SessionLauncher()
{
    m_client.disconnect(this);
    if (m_client.state() != QProcess::NotRunning) {
        m_client.terminate();
        m_client.waitForFinished(endTimeMs);
    }
}

void SessionLauncher::setConfiguration(JsonModule *configuration)
{
    m_configuration = configuration;
}

void SessionLauncher::setDualDisplay(bool inUse)
{
    m_dualDisplay = inUse;
}

bool SessionLauncher::isDualDisplay() const
{
    return m_dualDisplay;
}

bool SessionLauncher::isRunning() const
{
    return m_running;
}

bool SessionLauncher::clientIsMissing() const
{
    return m_client.error() == QProcess::FailedToStart;
}

QString SessionLauncher::currentServerAddress() const
{
    return m_address;
}

void SessionLauncher::connectTo(const ConnectTarget &target)
{
    if (m_running)
        return;
    m_group = target.isGroup() ? target.members : QVector<ServerEntry>();
    m_member = 0;
    const ServerEntry first = target.isGroup() ? m_group.value(0) : ServerEntry{target.name, target.address};
    createConnectionFile(first.address, target.isGroup());
    startConnection(shownName(first));
}

void SessionLauncher::createConnectionFile(const QString &address, bool autoDisconnect)
{
    ConnectionFile::Session session;
    session.address = address;
    session.autoDisconnect = autoDisconnect;
    session.screen = QGuiApplication::primaryScreen()->geometry().size();
    if (m_dualDisplay) {
        QString resolution;
        int atLeft = 0;
        int bottomAligned = 0;
        emit secondaryMonitorParameters(resolution, atLeft, bottomAligned);
        session.secondaryAtLeft = atLeft;
    }
    emit getProxyParameters(session.proxy);
    const QJsonObject root = m_configuration ? m_configuration->getDocument().object() : QJsonObject();
    ConnectionFile::write(Paths::connection(), ConnectionFile::describe(session, root));
    m_address = address;
}

void SessionLauncher::startConnection(const QString &shown)
{
    qCInfo(lcSession).noquote() << "start the client for" << m_address;
    launch(Paths::client(), {QStringLiteral("-x"), Paths::connection()}, shown);
}

void SessionLauncher::startBrokerClient(const QStringList &arguments, const QString &desktop)
{
    if (m_running)
        return;
    m_group.clear();
    m_address.clear();
    qCInfo(lcSession).noquote() << "start the broker's client for" << desktop;
    launch(Paths::program(QStringLiteral("solva-client")), arguments, desktop);
}

void SessionLauncher::launch(const QString &program, const QStringList &arguments, const QString &shown)
{
    emit started();
    QFile::remove(Paths::connectionStatus());
    m_running = true;
    m_client.setProcessEnvironment(Commands::environment());
    m_client.setWorkingDirectory(Paths::clientDirectory());
    if (!shown.isEmpty())
        m_dialog.setAddress(shown);
    m_dialogTimer.start();
    if (!m_dialog.isVisible())
        m_dialog.show();
    m_client.start(program, arguments, QIODevice::ReadWrite);
}

void SessionLauncher::closeConnectionDialog()
{
    m_dialogTimer.stop();
    m_dialog.hide();
}

void SessionLauncher::logOutput()
{
    while (m_client.canReadLine() || m_client.bytesAvailable() > longestLogLine)
        logLine();
}

void SessionLauncher::logLine()
{
    const QByteArray line = m_client.readLine(longestLogLine);
    qCDebug(lcSession).noquote() << "client:" << QString::fromLocal8Bit(line).trimmed();
}

/// A client that cannot be started says so here and nowhere else; after a crash `connectionFinished` follows.
void SessionLauncher::handleError(QProcess::ProcessError error)
{
    qCWarning(lcSession).noquote() << "client:" << m_client.errorString();
    // From the event loop: the process is still being tidied up.
    if (error == QProcess::FailedToStart)
        QTimer::singleShot(0, this, [this] { finish(ConnectionFile::Verdict::ConnectionError); });
}

void SessionLauncher::connectionFinished(int exitCode, QProcess::ExitStatus)
{
    while (m_client.bytesAvailable() > 0)
        logLine();
    qCInfo(lcSession) << "the client has ended with" << exitCode;
    finish(connectionError());
}

ConnectionFile::Verdict SessionLauncher::connectionError() const
{
    QFile status(Paths::connectionStatus());
    if (!status.exists())
        return ConnectionFile::Verdict::NoError;
    return ConnectionFile::classify(status.open(QIODevice::ReadOnly) ? status.read(statusLimit)
                                                                     : QByteArray());
}

void SessionLauncher::finish(ConnectionFile::Verdict verdict)
{
    if (!m_running)
        return;
    QFile::remove(Paths::connection());
    closeConnectionDialog();
    if (verdict != ConnectionFile::Verdict::NoError && ++m_member < m_group.size()) {
        // From the event loop: the client's end must be over before it is started again.
        QTimer::singleShot(0, this, &SessionLauncher::tryNextMember);
        return;
    }
    m_running = false;
    emit ended(verdict);
}

void SessionLauncher::abandonWalk()
{
    m_group.clear();
}

void SessionLauncher::tryNextMember()
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
