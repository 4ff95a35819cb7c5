// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/udpfile.h"

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QTimer>

#include <map>

/// Requests blocks of a file before they are wanted, between a transfer, which wants one at a time, and the
/// endpoint.
///
/// The first block is requested alone. From then on the window, the number of blocks that are requested
/// ahead, grows by one with each reply. A block without a reply is requested again when later ones have
/// arrived, or after a time that follows the measured round trips. A server that seems not to take several
/// requests at a time gets one at a time, for the rest of the transfer.
class BlockReadAhead : public QObject
{
    Q_OBJECT

public:
    /// A system's usual receive buffer holds somewhat more blocks.
    static constexpr int largestWindow = 128;
    /// Blocks that may arrive while the wanted one is missing: 1 MiB.
    static constexpr int largestDistance = 1024;
    /// A reply that so many later ones have overtaken is taken for lost.
    static constexpr int overtaken = 8;
    /// If half of the first so many blocks had to be requested again, the server does not take several
    /// requests.
    static constexpr int trial = 32;
    /// Afterwards, if half of so many had to be, the window is halved.
    static constexpr int lossSample = 128;
    static constexpr int shortestWaitMs = 100;
    static constexpr int longestWaitMs = 1000;
    /// Replies to an earlier transfer's requests may come until then.
    static constexpr int lateMs = 10000;

    explicit BlockReadAhead(QObject *parent = nullptr);

    /// For tests and measurements: how many blocks may be requested at a time.
    int window() const;

public slots:
    /// The transfer wants a block. `error` is set only if a request is sent now.
    void request(const UdpFileRequest &request, int &error);
    /// A block has arrived. The wanted one goes on to the transfer.
    void handleReply(const UdpFileReply &reply);
    /// The transfer has ended.
    void stop();

signals:
    void ask_WantUdpFileData(const UdpFileRequest &request, int &error);
    void blockArrived(const UdpFileReply &reply);

private:
    struct Sent
    {
        quint64 number = 0; ///< of all requests, in their order
        qint64 atMs = 0;
        int repeats = 0;
    };

    bool isAnotherFile(const UdpFileRequest &request) const;
    void begin(const UdpFileRequest &request);
    void requestAhead();
    bool send(quint32 position, int *error = nullptr);
    void forget(quint32 position);
    void repeatOvertaken(quint64 number);
    void repeatLate();
    void measure(qint64 roundTripMs);
    void countReply();
    void close(const char *reason);
    void restart();
    void forgetAhead();
    int waitMs() const;

    UdpFileRequest m_request;           ///< of the file; its position is that of the wanted block
    quint32 m_total = 0;                ///< that the transfer goes by; 0 until it has taken its first block
    quint32 m_deliveredTotal = 0;       ///< of the last block that went on to the transfer
    quint64 m_ahead = 0;                ///< all blocks before this position have been requested
    QMap<quint32, Sent> m_sent;         ///< by position
    std::map<quint64, quint32> m_order; ///< the same by number
    QMap<quint32, UdpFileReply> m_arrived; ///< before they were wanted
    quint64 m_number = 0;
    int m_window = 1;
    bool m_proven = false; ///< the server takes several requests
    bool m_closed = false; ///< it gets one at a time
    double m_roundTripMs = -1;
    double m_deviationMs = 0;
    int m_backoff = 1;
    int m_replies = 0;
    int m_repeated = 0; ///< requests, for so many replies
    QTimer m_repeatTimer;
    QElapsedTimer m_clock;
    QHostAddress m_lateServer; ///< to which requests were open when the transfer before ended
    qint64 m_lateUntilMs = 0;
};
