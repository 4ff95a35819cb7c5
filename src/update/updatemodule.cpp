// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/updatemodule.h"

#include "update/firmwareimage.h"
#include "update/udpserver.h"

#include <QLoggingCategory>

#include <memory>

Q_LOGGING_CATEGORY(lcUpdate, "kt.update.module")

namespace {

const QString indexFile = QStringLiteral("kt-update.txt");

QString fromServer(const QString &file, const UdpServer &server)
{
    return QStringLiteral("%1 from %2").arg(file, server.name());
}

} // namespace

UpdateModule::UpdateModule(QObject *parent)
    : QObject(parent)
{
    FirmwareImage::removeStale();
    connectTransfers();
}

UpdateModule::~UpdateModule()
{
    clearServerList();
}

void UpdateModule::connectTransfers()
{
    connect(&m_url, &UrlFileModule::ask_DownloadProgress, this, &UpdateModule::forwardProgress);
    connect(&m_url, &UrlFileModule::downloadFinished, this, &UpdateModule::endUrlUpdate);
    connect(&m_url, &UrlFileModule::updateProxyFtp, this, &UpdateModule::updateProxyFtp);
    connect(&m_url, &UrlFileModule::ready_TransferDone, this, [this] { endUrlUpdate(tr("Download error")); });
    connect(&m_udp, &UdpFileModule::downloadFinished, this, &UpdateModule::checkDownloadFWFinished);
    connect(&m_udp, &UdpFileModule::ask_DownloadProgress, this, &UpdateModule::do_ReportDownloadProgress);
    connect(&m_udp, &UdpFileModule::ask_WantUdpFileData, &m_readAhead, &BlockReadAhead::request);
    connect(&m_readAhead, &BlockReadAhead::ask_WantUdpFileData, this, &UpdateModule::ask_WantUdpFileData);
    connect(&m_readAhead, &BlockReadAhead::blockArrived, &m_udp, &UdpFileModule::fsm_SaveData);
    connect(&m_udp, &UdpFileModule::ready_TransferDone, &m_readAhead, &BlockReadAhead::stop);
    connect(&m_udp, &UdpFileModule::ready_TransferDone, this, [this](QTemporaryFile *file) {
        // Each handler owns the file only in its own state.
        if (m_state == State::IndexTransfer)
            fsm_TakeIndexFile(file);
        else if (m_state == State::ImageTransfer)
            fsm_TakeImageFile(file);
        else
            delete file;
    });
    connect(this, &UpdateModule::ask_HasUdpFileData, &m_readAhead, &BlockReadAhead::handleReply);
}

UpdateModule::State UpdateModule::state() const
{
    return m_state;
}

bool UpdateModule::ifUpdateIdle() const
{
    return m_state == State::Idle;
}

bool UpdateModule::ifSessionConnected() const
{
    return m_state == State::SessionConnected;
}

void UpdateModule::setIdleState()
{
    m_state = State::Idle;
}

void UpdateModule::setSessionConnectedState()
{
    m_state = State::SessionConnected;
}

void UpdateModule::setMethod(UpdateMethod method)
{
    m_method = method;
}

void UpdateModule::setURL(const QUrl &url)
{
    m_address = url;
}

void UpdateModule::setCorvidServerUpdate(const QString &server, const QString &file)
{
    m_wantedServer = server;
    m_wantedFile = file;
}

void UpdateModule::setCurrentVersion(const QString &version)
{
    m_currentVersion = version;
    m_bestVersion = version;
}

void UpdateModule::setTimeouts(int blockMs, int silenceMs)
{
    m_udp.setTimeout(blockMs);
    m_url.setSilenceLimit(silenceMs);
}

void UpdateModule::post(void (UpdateModule::*step)())
{
    QTimer::singleShot(0, this, step);
}

void UpdateModule::fail(const QString &message)
{
    m_state = State::Failed;
    emit downloadFinished(message);
}

void UpdateModule::clearServerList()
{
    qDeleteAll(m_servers);
    m_servers.clear();
    m_selected = nullptr;
    m_index = 0;
}

void UpdateModule::startUpdate()
{
    if (!ifUpdateIdle())
        return;
    qCInfo(lcUpdate) << "starting an update with method" << static_cast<int>(m_method);
    FirmwareImage::removeStale();
    if (m_method == UpdateMethod::Url)
        urlUpdate();
    else
        udpUpdate();
}

void UpdateModule::udpUpdate()
{
    m_state = State::WaitForServers;
    m_serversAwaited = true;
    clearServerList();
    emit getServerList();
}

void UpdateModule::urlUpdate()
{
    m_state = State::UrlDownload;
    m_url.fsm_StartTransfer(m_address, true);
}

void UpdateModule::getRXUpdateFiles()
{
    m_state = State::NextIndex;
    post(&UpdateModule::fsm_RequestIndex);
}

void UpdateModule::setServerList(const QMap<QString, QHostAddress> &servers)
{
    // After a failure the state stays; later server lists belong to other searches.
    if (m_state != State::WaitForServers || !m_serversAwaited)
        return;
    m_serversAwaited = false;
    if (servers.isEmpty()) {
        emit downloadFinished(tr("Download error: No Corvid Servers found"));
        return;
    }
    replaceServers(servers);
    if (m_method == UpdateMethod::Latest)
        getRXUpdateFiles();
    else
        selectNamedServer();
}

void UpdateModule::replaceServers(const QMap<QString, QHostAddress> &servers)
{
    clearServerList();
    for (auto it = servers.begin(); it != servers.end(); ++it) {
        auto *server = new UdpServer(it.value(), it.key());
        connect(server, &UdpServer::trigger_StartTransfer, &m_udp, &UdpFileModule::fsm_StartTransfer);
        m_servers += server;
    }
}

void UpdateModule::selectNamedServer()
{
    for (UdpServer *server : qAsConst(m_servers)) {
        if (server->name() != m_wantedServer && server->address().toString() != m_wantedServer)
            continue;
        m_selected = server;
        m_state = State::RequestImage;
        post(&UpdateModule::fsm_RequestImage);
        return;
    }
    emit downloadFinished(tr("No such server: ") + m_wantedServer);
}

void UpdateModule::fsm_RequestIndex()
{
    if (m_state != State::NextIndex)
        return;
    if (m_servers.isEmpty()) {
        fail(tr("The update was aborted because newer firmware was not found."));
        return;
    }
    if (m_index == m_servers.size()) {
        m_state = State::SelectImage;
        post(&UpdateModule::fsm_SelectImageFile);
        return;
    }
    m_state = State::IndexTransfer;
    UdpServer *server = m_servers.at(m_index);
    emit forwardProgress(fromServer(indexFile, *server), -1, -1);
    m_udp.setSizeLimit(UdpServer::indexLimit);
    server->startTransfer(indexFile, false);
}

void UpdateModule::fsm_TakeIndexFile(QTemporaryFile *file)
{
    if (m_state != State::IndexTransfer)
        return;
    if (file)
        m_servers.at(m_index++)->setRxUpdateJson(file);
    else
        m_servers.takeAt(m_index)->deleteLater();
    delete file;
    getRXUpdateFiles();
}

void UpdateModule::fsm_SelectImageFile()
{
    if (m_state != State::SelectImage)
        return;
    m_bestVersion = m_currentVersion;
    m_selected = nullptr;
    for (UdpServer *server : qAsConst(m_servers)) {
        // A server without an index has version 0.0 and no file.
        if (!server->fileName().isEmpty() && server->compareVersion(m_bestVersion) > 0) {
            m_selected = server;
            m_bestVersion = server->version();
        }
    }
    if (!m_selected) {
        fail(tr("The update was aborted because newer firmware was not found."));
        return;
    }
    m_state = State::RequestImage;
    emit forwardProgress(fromServer(m_selected->fileName(), *m_selected), -1, -1);
    post(&UpdateModule::fsm_RequestImage);
}

void UpdateModule::fsm_RequestImage()
{
    if (m_state != State::RequestImage)
        return;
    m_state = State::ImageTransfer;
    m_selected->startTransfer(m_method == UpdateMethod::Latest ? m_selected->fileName() : m_wantedFile, true);
}

void UpdateModule::fsm_TakeImageFile(QTemporaryFile *file)
{
    if (m_state != State::ImageTransfer)
        return;
    const std::unique_ptr<QTemporaryFile> image(file);
    if (!image || !FirmwareImage::place(*image)) {
        fail(tr("Download error"));
        return;
    }
    m_state = State::ImageInPlace;
    emit downloadFinished(QString());
}

void UpdateModule::checkDownloadFWFinished(const QString &message)
{
    if (m_state == State::ImageTransfer && !message.isEmpty())
        emit downloadFinished(message);
}

void UpdateModule::do_ReportDownloadProgress(const QString &what, qint64 received, qint64 total)
{
    emit forwardProgress(what, received, total);
}

void UpdateModule::updateProxyFtp()
{
    m_state = State::ImageTransfer;
}

void UpdateModule::endUrlUpdate(const QString &message)
{
    if (m_state != State::UrlDownload && m_state != State::ImageTransfer)
        return;
    m_state = message.isEmpty() ? State::ImageInPlace : State::Failed;
    emit downloadFinished(message);
}
