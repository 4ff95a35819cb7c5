// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/udpfilemodule.h"
#include "update/urlfilemodule.h"

#include <QHostAddress>
#include <QList>
#include <QMap>
#include <QObject>
#include <QUrl>

class UdpServer;

/// Where firmware comes from.
enum class UpdateMethod {
    Latest = 0,       ///< the newest image of any Corvid server in the subnet
    CorvidServer = 1, ///< a file on one named Corvid server
    Url = 2,
};

/// Runs one firmware update: finds servers and reads their indexes where need be, fetches the image, puts it
/// in place, and ends with `downloadFinished`. Its state also says that a remote-desktop session holds the
/// device: neither begins while the other runs.
class UpdateModule : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle = 0,
        WaitForServers = 1,   ///< for the outcome of a discovery
        NextIndex = 2,        ///< the next server's index is about to be asked for
        IndexTransfer = 3,    ///< for the end of an index's transfer
        SelectImage = 4,      ///< all indexes are read
        RequestImage = 5,     ///< the image is chosen
        UrlDownload = 6,      ///< for the end of a download
        ImageTransfer = 7,    ///< for the image, from a Corvid server or by the device's tool
        ImageInPlace = 8,     ///< the installer may run; left by `setIdleState`
        SessionConnected = 9, ///< a remote-desktop session is running; left when its client ends
        Failed = 10,          ///< the user is told; left by `setIdleState`
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
    /// The version of the installed firmware: only a greater one is newer.
    void setCurrentVersion(const QString &version);
    /// Starts an update by the method set. Nothing happens unless idle.
    void startUpdate();
    void clearServerList();
    /// For tests that have no seconds to spare.
    void setTimeouts(int blockMs, int silenceMs);

public slots:
    /// The servers that a discovery has found.
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
    /// A discovery is to be started.
    void getServerList();
    /// -1 of -1: nothing is known yet.
    void forwardProgress(const QString &what, qint64 received, qint64 total);
    /// Empty when the image is in place, else what to tell the user.
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
    void takeServers(const QMap<QString, QHostAddress> &servers);
    void selectNamedServer();

    State m_state = State::Idle;
    UpdateMethod m_method = UpdateMethod::Latest;
    UrlFileModule m_url;
    UdpFileModule m_udp;
    int m_index = 0; ///< of the next server whose index is to be read
    bool m_serversAwaited = false;
    QList<UdpServer *> m_servers;
    QUrl m_address;
    QString m_wantedServer;
    QString m_wantedFile;
    UdpServer *m_selected = nullptr;
    QString m_currentVersion;
    QString m_bestVersion;
};
