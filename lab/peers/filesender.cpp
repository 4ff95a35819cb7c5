// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/filesender.h"

#include <QTcpSocket>

namespace {

constexpr qint64 chunk = 256 * 1024;
constexpr qint64 mostWaiting = 1024 * 1024; // in the socket's own buffer

} // namespace

FileSender::FileSender(const QString &name, QTcpSocket *socket)
    : QObject(socket)
    , m_socket(socket)
    , m_file(name)
{
    m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    m_left = m_file.size();
    connect(&m_pause, &QTimer::timeout, this, [this] { sendPiece(m_pieceBytes); });
}

void FileSender::setPace(int pieceBytes, int pauseMs)
{
    m_pieceBytes = pieceBytes;
    m_pause.setInterval(pauseMs);
}

void FileSender::setEnd(qint64 bytes, bool closes)
{
    m_left = bytes;
    m_closes = closes;
}

void FileSender::start()
{
    if (m_pieceBytes > 0) {
        m_pause.start();
        return;
    }
    connect(m_socket, &QTcpSocket::bytesWritten, this, &FileSender::fill);
    fill();
}

void FileSender::fill()
{
    while (m_socket->bytesToWrite() < mostWaiting && sendPiece(chunk)) { }
}

/// Returns false when nothing is left.
bool FileSender::sendPiece(qint64 limit)
{
    const QByteArray piece = m_file.read(qMin(limit, m_left));
    m_left -= piece.size();
    m_socket->write(piece);
    if (m_left > 0 && !piece.isEmpty())
        return true;
    m_pause.stop();
    if (m_closes)
        m_socket->disconnectFromHost();
    deleteLater();
    return false;
}
