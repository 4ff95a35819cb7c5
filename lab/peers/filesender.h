// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFile>
#include <QTimer>

class QTcpSocket;

/// Sends a file over a connection, at full speed or in pieces with pauses. It keeps little of the file in
/// memory. It deletes itself at the end of the file or of the connection.
class FileSender : public QObject
{
    Q_OBJECT

public:
    FileSender(const QString &name, QTcpSocket *socket);

    void setPace(int pieceBytes, int pauseMs);
    /// Stops after this many bytes, and then closes the connection if asked to.
    void setEnd(qint64 bytes, bool closes);
    void start();

private:
    void fill();
    bool sendPiece(qint64 limit);

    QTcpSocket *m_socket;
    QFile m_file;
    QTimer m_pause;
    int m_pieceBytes = 0; ///< 0: no pauses
    qint64 m_left = 0;
    bool m_closes = false;
};
