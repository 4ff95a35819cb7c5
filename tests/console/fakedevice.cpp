// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "fakedevice.h"

#include "config/merge.h"

#include <QJsonDocument>
#include <QNetworkDatagram>

using ConsoleFormat::Command;

FakeDevice::FakeDevice(const QString &address, quint16 port)
{
    if (!m_socket.bind(QHostAddress(address), port))
        qFatal("cannot bind %s", qPrintable(address));
    connect(&m_socket, &QUdpSocket::readyRead, this, &FakeDevice::receive);
}

int FakeDevice::count(Command command) const
{
    return m_commands.count(command);
}

void FakeDevice::answerFromElsewhere(const QByteArray &answer) const
{
    QUdpSocket().writeDatagram(answer, m_socket.localAddress(), m_consolePort);
}

void FakeDevice::receive()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        if (deaf-- > 0)
            continue;
        m_consolePort = static_cast<quint16>(datagram.senderPort());
        const QByteArray answer = reply(datagram.data());
        for (const QByteArray &bytes : disturb ? disturb(answer) : Answers{answer}) {
            if (!bytes.isNull())
                m_socket.writeDatagram(bytes, datagram.senderAddress(), m_consolePort);
        }
    }
}

QByteArray FakeDevice::reply(const QByteArray &request)
{
    const auto command = static_cast<Command>(ConsoleFormat::decodeRequest(request).command);
    m_commands += command;
    switch (command) {
    case Command::DeviceInfo:
        return ConsoleFormat::deviceInfoReply(
            {ConsoleFormat::decodeRequest(request).version, QString(), QJsonDocument(status).toJson()});
    case Command::GetJson:
        return ConsoleFormat::documentReply(request, QJsonDocument(document).toJson());
    case Command::SetJsonPartial:
        if (result == 0 && !forgets)
            merge(ConsoleFormat::decodeJsonText(request.left(ConsoleFormat::requestLimit)));
        return mute-- > 0 ? QByteArray() : ConsoleFormat::mergeReply(request, result);
    case Command::Reset:
    case Command::UpdateLatest:
    case Command::UpdateByUrl:
        break;
    }
    return mute-- > 0 ? QByteArray() : ConsoleFormat::actionReply(request, result);
}

void FakeDevice::merge(const QByteArray &json)
{
    Merge::mergeJsonObject(document, QJsonDocument::fromJson(json).object());
}
