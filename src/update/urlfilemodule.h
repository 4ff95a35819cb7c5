// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/ftpproxytool.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QTemporaryFile>
#include <QTimer>
#include <QUrl>

#include <memory>

class QAuthenticator;
class QNetworkProxy;
class QNetworkReply;

/// Downloads a firmware image from an FTP or HTTP URL and puts it in place. An FTP URL of a device with a
/// proxy is left to a tool of the device, whose output is followed. Either way ends with `downloadFinished`,
/// or, where a file of our own could not be written, with `ready_TransferDone` of null.
///
/// Each step of a download runs from the event loop, and only in the state that it belongs to.
class UrlFileModule : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle = 0,
        Started = 1,   ///< waiting for the first data
        Receiving = 2, ///< data has come
        CleanUp = 3,   ///< over, one way or the other
    };
    static constexpr int silenceLimitMs = 10000;
    static constexpr int progressMs = 300;
    static constexpr int attemptsLimit = 5; ///< questions for a password
    static constexpr int redirectsLimit = 5;
    static constexpr qint64 readBufferSize = 1024 * 1024;

    explicit UrlFileModule(QObject *parent = nullptr);
    ~UrlFileModule() override;

    State state() const;
    /// For tests that have no seconds to spare.
    void setSilenceLimit(int milliseconds);

public slots:
    /// Begins a download; a start while one runs is ignored. A URL without a scheme is one of FTP.
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
    /// Null: a file of our own could not be written.
    void ready_TransferDone(QTemporaryFile *file);
    /// Empty when the image is in place, else the text of the error.
    void downloadFinished(const QString &message);
    /// The device's tool has taken over.
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
    bool isComplete() const;
    Error copyToFile();

    State m_state = State::Idle;
    std::unique_ptr<QTemporaryFile> m_file;
    QTimer m_progressTimer;
    qint64 m_received = 0;
    qint64 m_total = 0; ///< -1 when unknown
    QTimer m_abortTimer;
    QUrl m_url;
    QNetworkAccessManager *m_manager = nullptr;
    QNetworkReply *m_reply = nullptr;
    int m_attempts = 0;
    Error m_error = Error::None;
    FtpProxyTool m_tool;
};
