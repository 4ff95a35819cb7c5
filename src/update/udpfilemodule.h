// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/udpfile.h"

#include <QObject>
#include <QTemporaryFile>
#include <QTimer>

#include <memory>

/// Fetches one file from a Corvid server, block by block. It requests a block up to three times and then
/// fails. One transfer runs at a time; a start during a transfer is ignored.
///
/// Each step runs from the event loop, and only in its own state.
class UdpFileModule : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle = 0,
        Request = 1,     ///< before a request for a block
        WaitForData = 2, ///< until the block arrives or the data timer ends
        CleanUp = 3,     ///< after success or failure
    };
    static constexpr int dataTimeoutMs = 5000;
    static constexpr int progressMs = 1000;
    static constexpr int repeatMs = 100;
    static constexpr int triesLimit = 3;      ///< requests for one block
    static constexpr int earlierLimit = 1000; ///< files that are remembered
    /// A network delivers a reply fewer times than this, however late.
    static constexpr int deliveriesLimit = 8;

    explicit UdpFileModule(QObject *parent = nullptr);
    ~UdpFileModule() override;

    State state() const;
    /// Limits the size of the next file; 0 for no limit but the disk.
    void setSizeLimit(qint64 bytes);
    /// For tests: shortens the data timer.
    void setTimeout(int milliseconds);

public slots:
    void fsm_StartTransfer(const UdpFileRequest &request, bool reportProgress);
    void fsm_RequestData();
    void fsm_DataTimeOut();
    /// Handles a block; ignores every block except the requested one.
    void fsm_SaveData(const UdpFileReply &reply);
    void fsm_CleanUp();
    void fsm_ReportProgress1();
    void fsm_ReportProgress2();

signals:
    /// Requests a block; a receiver ends the transfer by setting `error` to -1.
    void ask_WantUdpFileData(const UdpFileRequest &request, int &error);
    void ask_DownloadProgress(const QString &what, qint64 received, qint64 total);
    /// Ends every transfer: with the file, which the receiver owns, or null.
    void ready_TransferDone(QTemporaryFile *file);
    /// A transfer has failed; the message is for the user.
    void downloadFinished(const QString &message);

private:
    enum class Error { None = 0, LocalFile = 1, Transfer = 2 };

    void post(void (UdpFileModule::*step)());
    void runStep();
    void end(Error error);
    void reportProgress();
    void rememberCurrent();
    bool isOfAnEarlierFile(const UdpFileReply &reply);
    void handleReplyOfAnEarlierFile();
    void repeatRequest();
    Error checkTotal(const UdpFileReply &reply);

    State m_state = State::Idle;
    UdpFileRequest m_request; ///< its position is the number of bytes received
    std::unique_ptr<QTemporaryFile> m_file;
    quint32 m_total = 0;
    /// Has a zero interval and is reused: for tens of thousands of blocks, posted events would cost more.
    QTimer m_stepTimer;
    void (UdpFileModule::*m_step)() = nullptr;
    QTimer m_dataTimer;
    QTimer m_repeatTimer; ///< after a reply that may be of an earlier file
    QTimer m_progressTimer;
    int m_tries = 0;
    Error m_error = Error::None;
    qint64 m_sizeLimit = 0;

    /// A block does not name its file. A late reply for an earlier file, from the same server, must not be
    /// mistaken for a block of this one.
    struct TransferStart
    {
        UdpFileRequest request;
        int requests = 0; ///< for the first block
        quint32 total = 0;
        QByteArray firstBlock;
    };
    TransferStart m_current;
    QList<TransferStart> m_earlier; ///< the newest last
    int m_lateReplies = 0;          ///< that were ignored in this transfer
};
