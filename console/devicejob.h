// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/asker.h"
#include "console/options.h"
#include "console/result.h"

#include <QObject>

#include <functional>

/// What is to be done with every device alike.
struct Task
{
    Command command = Command::Info;
    QByteArray update;         ///< the request, of an update
    QJsonObject configuration; ///< of set-config
    bool dryRun = false;
    int timeoutMs = 0;
    int retries = 0;
    quint16 port = 0;
};

/// The work with one device, from the first question to its result.
///
/// A configuration is read before it is changed. What differs is sent once; when no answer comes it is read
/// again, and what still differs is sent again. Changes that fill more than one datagram go the same way, a
/// part each time.
class DeviceJob : public QObject
{
    Q_OBJECT

public:
    DeviceJob(const Task &task, const QHostAddress &device, QObject *parent = nullptr);

    void start();

signals:
    /// Once.
    void ended(const Result &result);

private:
    using Taker = void (DeviceJob::*)(const QByteArray &answer);

    void ask(const Question &question, Taker taker);
    void askForConfiguration();
    void takeInfo(const QByteArray &answer);
    void takeAction(const QByteArray &answer);
    void takeConfiguration(const QByteArray &answer);
    void change(const QJsonObject &held);
    void sendChanges(const ConfigurationChanges &left);
    void takeMerge(const QByteArray &answer);
    void missAnswer();
    void end(Outcome outcome, const QString &message = QString(), quint32 code = 0);

    const Task &m_task;
    Asker m_asker;
    Taker m_taker = nullptr;
    Result m_result;
    int m_sent = 0;         ///< times that changes were sent
    int m_lost = 0;         ///< of these, without an answer
    int m_changesLeft = -1; ///< when they were last sent
    bool m_sendsPart = false;
};
