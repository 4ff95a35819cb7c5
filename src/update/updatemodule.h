// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/blockreadahead.h"
#include "update/udpfilemodule.h"
#include "update/urlfilemodule.h"

#include <QHostAddress>
#include <QList>
#include <QMap>
#include <QObject>
#include <QUrl>

class UdpServer;

/// The source of firmware.
enum class UpdateMethod {
    Latest = 0,       ///< the newest image of all Corvid servers in the subnet
    CorvidServer = 1, ///< a file on one named Corvid server
    Url = 2,
};

/// Runs one firmware update: finds servers and reads their indexes if needed, fetches the image, puts it in
/// place, and ends with `downloadFinished`. Its state also covers a running remote-desktop session, because
/// an update and a session exclude each other.
class UpdateModule : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle = 0,
        WaitForServers = 1,   ///< until a discovery ends
        NextIndex = 2,        ///< before the request for the next server's index
        IndexTransfer = 3,    ///< until an index is transferred
        SelectImage = 4,      ///< after all indexes are read
        RequestImage = 5,     ///< after the image is selected
        UrlDownload = 6,      ///< until a download ends
        ImageTransfer = 7,    ///< until the image arrives, from a Corvid server or through the device's tool
        ImageInPlace = 8,     ///< the installer may run; left by `setIdleState`
        SessionConnected = 9, ///< a remote-desktop session is running; left when its client ends
        Failed = 10,          ///< the user sees the error; left by `setIdleState`
    };

    explicit UpdateModule(QObject *parent = nullptr);
    ~UpdateModule() override;

    State state() const;
    bool ifUpdateIdle() const;
    bool ifSessionConnected() const;
    void setIdleState();
    void setSessionConnectedState();

    void setMethod(UpdateMethod method);
    void setURL(const QUrl &url);
    void setCorvidServerUpdate(const QString &server, const QString &file);
    /// The version of the installed firmware; only a greater one is newer.
    void setCurrentVersion(const QString &version);
    /// Starts an update with the current method. Does nothing unless idle.
    void startUpdate();
    void clearServerList();
    /// For tests: shortens the waits.
    void setTimeouts(int blockMs, int silenceMs);

public slots:
    /// Sets the servers found by discovery.
    void setServerList(const QMap<QString, QHostAddress> &servers);
    void fsm_RequestIndex();
    void fsm_TakeIndexFile(QTemporaryFile *file);
    void fsm_SelectImageFile();
    void fsm_RequestImage();
    void fsm_TakeImageFile(QTemporaryFile *file);
    void checkDownloadFWFinished(const QString &message);
    void do_ReportDownloadProgress(const QString &what, qint64 received, qint64 total);
    void updateProxyFtp();

signals:
    /// Requests a discovery.
    void getServerList();
    /// Both numbers are -1 while the progress is unknown.
    void forwardProgress(const QString &what, qint64 received, qint64 total);
    /// The error for the user; empty when the image is in place.
    void downloadFinished(const QString &message);
    void ask_WantUdpFileData(const UdpFileRequest &request, int &error);
    void ask_HasUdpFileData(const UdpFileReply &reply);

private:
    void connectTransfers();
    void post(void (UpdateModule::*step)());
    void udpUpdate();
    void urlUpdate();
    void getRXUpdateFiles();
    void fail(const QString &message);
    void endUrlUpdate(const QString &message);
    void replaceServers(const QMap<QString, QHostAddress> &servers);
    void selectNamedServer();

    State m_state = State::Idle;
    UpdateMethod m_method = UpdateMethod::Latest;
    UrlFileModule m_url;
    UdpFileModule m_udp;
    BlockReadAhead m_readAhead;
    int m_index = 0; ///< of the next server to read an index from
    bool m_serversAwaited = false;
    QList<UdpServer *> m_servers;
    QUrl m_address;
    QString m_wantedServer;
    QString m_wantedFile;
    UdpServer *m_selected = nullptr;
    QString m_currentVersion;
    QString m_bestVersion;
};
