// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/asker.h"
#include "console/result.h"

#include <QObject>
#include <QTimer>
#include <QUdpSocket>

/// Finds the devices of subnets: broadcasts the request for their status several times within one time-out,
/// and tells of each device once.
class Discovery : public QObject
{
    Q_OBJECT

public:
    Discovery(const QList<QHostAddress> &broadcasts, quint16 port, int timeoutMs, int tries,
              QObject *parent = nullptr);

    void start();

signals:
    void found(const Result &result);
    void failed(const QString &error);
    void ended();

private:
    void send();
    void receive();

    QList<QHostAddress> m_broadcasts;
    quint16 m_port;
    QUdpSocket m_socket;
    QTimer m_round;
    int m_roundsLeft;
    Question m_question;
    QList<QHostAddress> m_found;
};
