// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QTimer>
#include <QUdpSocket>

#include <functional>

/// Where a device listens.
struct Endpoint
{
    QHostAddress address;
    quint16 port = 0;
};

/// A datagram, and which ones answer it.
struct Question
{
    QByteArray datagram;
    std::function<bool(const QByteArray &)> isAnswer;
    int tries = 1; ///< one for whatever must not happen twice
};

/// Asks one device one question, as often as it may be asked, until an answer comes or the last time-out is
/// over. Datagrams from another address or port, and those that are no answer, are passed over.
class Asker : public QObject
{
    Q_OBJECT

public:
    Asker(const Endpoint &device, int timeoutMs, QObject *parent = nullptr);

    /// Takes up a new question; the one before is over by then.
    void ask(const Question &question);

signals:
    void answered(const QByteArray &answer);
    void unanswered();
    /// The question cannot be sent.
    void failed(const QString &error);

private:
    void send();
    void receive();
    void timeOut();

    Endpoint m_device;
    QUdpSocket m_socket;
    QTimer m_patience;
    Question m_question;
    int m_triesLeft = 0;
};
