// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/httpaccess.h"
#include "update/ftpproxytool.h"

#include <QObject>
#include <QTemporaryFile>
#include <QTimer>
#include <QUrl>

#include <memory>

class QAuthenticator;
class QNetworkProxy;
class QNetworkReply;

/// Downloads a firmware image from an FTP or HTTP URL and puts it in place. If the device has a proxy, its
/// tool fetches FTP URLs instead. Both end with `downloadFinished`, or with `ready_TransferDone(nullptr)`
/// when a local file cannot be written.
///
/// Each step of a download runs from the event loop, and only in its own state.
class UrlFileModule : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle = 0,
        Started = 1,   ///< waiting for the first data
        Receiving = 2, ///< after the first data
        CleanUp = 3,   ///< after success or failure
    };
    static constexpr int silenceLimitMs = 10000;
    static constexpr int progressMs = 300;
    static constexpr int attemptsLimit = 5; ///< requests for a password
    static constexpr int redirectsLimit = 5;
    static constexpr qint64 readBufferSize = 1024 * 1024;

    explicit UrlFileModule(QObject *parent = nullptr);
    ~UrlFileModule() override;

    State state() const;
    /// For tests: shortens the time without data.
    void setSilenceLimit(int milliseconds);

public slots:
    /// Starts a download; ignored while one runs. A URL without a scheme is an FTP URL.
    void fsm_StartTransfer(const QUrl &url, bool reportProgress);

    void fsm_SkipAuthentication();
    void fsm_ReadData();
    void fsm_DownloadProgress(qint64 received, qint64 total);
    void fsm_ReportProgress();
    void fsm_Authenticate(QNetworkReply *reply, QAuthenticator *authenticator);
    void fsm_ProxyAuthenticate(const QNetworkProxy &proxy, QAuthenticator *authenticator);
    void fsm_Finished(QNetworkReply *reply);
    void fsm_TransferFinished();
    void fsm_abort();
    void fsm_CleanUp();

signals:
    void ask_DownloadProgress(const QString &what, qint64 received, qint64 total);
    /// Always null: a local file could not be written.
    void ready_TransferDone(QTemporaryFile *file);
    /// The error for the user; empty when the image is in place.
    void downloadFinished(const QString &message);
    /// The device's tool does the download.
    void updateProxyFtp();

private:
    enum class Error { None = 0, LocalFile = 1, Authentication = 2, Transfer = 3 };

    void post(void (UrlFileModule::*step)());
    void end(Error error);
    void failTransfer();
    QString shownUrl() const;
    void startDownload(bool reportProgress);
    void startTool(const QNetworkProxy &proxy);
    void checkLength();
    qint64 announcedLength() const;
    bool hasImageStatus() const;
    bool isComplete() const;
    Error copyToFile();

    State m_state = State::Idle;
    std::unique_ptr<QTemporaryFile> m_file;
    QTimer m_progressTimer;
    qint64 m_received = 0;
    qint64 m_total = 0; ///< -1 when unknown
    QTimer m_abortTimer;
    QUrl m_url;
    HttpAccess *m_manager = nullptr;
    QNetworkReply *m_reply = nullptr;
    int m_attempts = 0;
    Error m_error = Error::None;
    FtpProxyTool m_tool;
};
