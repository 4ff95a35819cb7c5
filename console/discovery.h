// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/requestsender.h"
#include "console/result.h"

#include <QObject>
#include <QTimer>
#include <QUdpSocket>

/// Finds the devices of subnets. It broadcasts the status request several times within one time-out and
/// reports each device once.
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
    QTimer m_roundTimer;
    int m_roundsLeft;
    Request m_request;
    QList<QHostAddress> m_found;
};
