// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/consoleformat.h"

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QUdpSocket>

#include <functional>

/// A device as a console meets it, on an address of the loopback network and a port of its own.
class FakeDevice : public QObject
{
public:
    using Answers = QList<QByteArray>;

    explicit FakeDevice(const QString &address = QStringLiteral("127.0.0.1"), quint16 port = 0);

    quint16 port() const { return m_socket.localPort(); }
    QString address() const { return m_socket.localAddress().toString(); }
    int count(ConsoleFormat::Command command) const;
    /// From a stranger to whoever has asked last.
    void answerFromElsewhere(const QByteArray &answer) const;

    QJsonObject document;
    QJsonObject status;
    bool forgets = false; ///< accepts configurations and keeps none
    quint32 result = 0;   ///< of whatever changes something
    int deaf = 0;         ///< so many requests of whatever kind are lost before they arrive
    int mute = 0;         ///< so many answers to changes are lost
    std::function<Answers(const QByteArray &answer)> disturb; ///< what goes out instead of an answer

private:
    void receive();
    QByteArray reply(const QByteArray &request);
    void merge(const QByteArray &json);

    QUdpSocket m_socket;
    quint16 m_consolePort = 0;
    QList<ConsoleFormat::Command> m_commands;
};
