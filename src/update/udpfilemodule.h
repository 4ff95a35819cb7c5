// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/udpfile.h"

#include <QObject>
#include <QTemporaryFile>
#include <QTimer>

#include <memory>

/// Fetches one file from a Corvid server, block by block: asks for a block, waits for it, asks again after a
/// while, and gives up after the third time. One transfer at a time; a start while one runs is ignored.
///
/// Each step runs from the event loop, and only in the state that it belongs to.
class UdpFileModule : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle = 0,
        Request = 1,     ///< a block is about to be asked for
        WaitForData = 2, ///< for its arrival, or the end of the data timer
        CleanUp = 3,     ///< over, one way or the other
    };
    static constexpr int dataTimeoutMs = 5000;
    static constexpr int progressMs = 1000;
    static constexpr int triesLimit = 3; ///< requests for one block

    explicit UdpFileModule(QObject *parent = nullptr);
    ~UdpFileModule() override;

    State state() const;
    /// The next file may not be larger; 0 leaves that to the room on the disk.
    void setSizeLimit(qint64 bytes);
    /// For tests that have no seconds to spare.
    void setTimeout(int milliseconds);

public slots:
    void fsm_StartTransfer(const UdpFileRequest &request, bool reportProgress);
    void fsm_RequestData();
    void fsm_DataTimeOut();
    /// A block has arrived. Any but the one that is waited for is passed over.
    void fsm_SaveData(const UdpFileReply &reply);
    void fsm_CleanUp();
    void fsm_ReportProgress1();
    void fsm_ReportProgress2();

signals:
    /// A block is to be asked for; -1 in `error` ends the transfer.
    void ask_WantUdpFileData(const UdpFileRequest &request, int &error);
    void ask_DownloadProgress(const QString &what, qint64 received, qint64 total);
    /// The end of every transfer: the file, which now belongs to the receiver, or null.
    void ready_TransferDone(QTemporaryFile *file);
    /// What to tell the user of a transfer that has failed.
    void downloadFinished(const QString &message);

private:
    enum class Error { None = 0, LocalFile = 1, Transfer = 2 };

    void post(void (UdpFileModule::*step)());
    void takeStep();
    void end(Error error);
    void reportProgress();
    bool isStraggler(const UdpFileReply &reply);
    Error checkTotal(const UdpFileReply &reply);

    State m_state = State::Idle;
    UdpFileRequest m_request; ///< its position is the number of bytes received
    std::unique_ptr<QTemporaryFile> m_file;
    quint32 m_total = 0;
    /// Of no time, and kept: a file has tens of thousands of blocks, and a posted event costs more.
    QTimer m_stepTimer;
    void (UdpFileModule::*m_step)() = nullptr;
    QTimer m_dataTimer;
    QTimer m_progressTimer;
    int m_tries = 0;
    Error m_error = Error::None;
    qint64 m_sizeLimit = 0;

    /// A block does not say of which file it is. What still arrives of the file before, from the same server,
    /// must not be taken for the beginning of this one.
    struct Previous
    {
        UdpFileRequest request;
        quint32 total = 0;
        QByteArray firstBlock;
    };
    Previous m_current;
    Previous m_previous;
    int m_stragglers = 0;
};
