// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/requestsender.h"
#include "console/options.h"
#include "console/result.h"

#include <QObject>

#include <functional>

/// The work to be done with each device.
struct Task
{
    Command command = Command::Info;
    QByteArray update;         ///< the request of an update
    QJsonObject configuration; ///< the document of set-config
    bool dryRun = false;
    int timeoutMs = 0;
    int retries = 0;
    quint16 port = 0;
};

/// Does the work with one device, from the first request to the result.
///
/// It reads a configuration before changing it, and sends only the differences. When no reply arrives, it
/// reads the configuration again and sends the remaining differences. Changes that need more than one
/// datagram are sent part by part in the same way.
class DeviceJob : public QObject
{
    Q_OBJECT

public:
    DeviceJob(const Task &task, const QHostAddress &device, QObject *parent = nullptr);

    void start();

signals:
    /// Emitted once.
    void ended(const Result &result);

private:
    using ReplyHandler = void (DeviceJob::*)(const QByteArray &reply);

    void send(const Request &request, ReplyHandler handler);
    void requestConfiguration();
    void handleInfo(const QByteArray &reply);
    void handleAction(const QByteArray &reply);
    void handleConfiguration(const QByteArray &reply);
    void changeConfiguration(const QJsonObject &held);
    void sendChanges(const ConfigurationChanges &left);
    void handleMerge(const QByteArray &reply);
    void handleTimeout();
    void end(Outcome outcome, const QString &message = QString(), quint32 code = 0);

    const Task &m_task;
    RequestSender m_sender;
    ReplyHandler m_replyHandler = nullptr;
    Result m_result;
    int m_sent = 0;         ///< how often changes were sent
    int m_unanswered = 0;   ///< how many of these got no reply, since the last reply
    int m_changesLeft = -1; ///< when changes were last sent
    bool m_sendsPart = false;
};
