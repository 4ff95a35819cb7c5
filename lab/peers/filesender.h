// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFile>
#include <QTimer>

class QTcpSocket;

// Sends a file over a connection as fast as that takes it, holding little of it in memory, or piece by piece
// with pauses. It belongs to the connection and goes with it, or when it is done.
class FileSender : public QObject
{
    Q_OBJECT

public:
    FileSender(const QString &name, QTcpSocket *socket);

    void setPace(int pieceBytes, int pauseMs);
    // Stops after so many bytes, and closes the connection if asked to.
    void setEnd(qint64 bytes, bool closes);
    void start();

private:
    void fill();
    bool sendPiece(qint64 limit);

    QTcpSocket *m_socket;
    QFile m_file;
    QTimer m_pause;
    int m_pieceBytes = 0; // 0: no pauses
    qint64 m_left = 0;
    bool m_closes = false;
};
