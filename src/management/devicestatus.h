// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/networkcontroller.h"
#include "management/jsonstatus.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <vector>

/// Gathers what the device tells of itself. The network tools are asked without anybody waiting for them, and
/// what they said serves for two seconds: a console that asks often does not keep the tools running.
class DeviceStatus : public QObject
{
    Q_OBJECT

public:
    using Done = std::function<void(const JSONStatus &)>;

    static constexpr int freshMs = 2000;

    explicit DeviceStatus(QObject *parent = nullptr);

    /// Calls `done` with a report: at once when the interfaces are known and fresh, otherwise when the tools
    /// have replied, after `Commands::timeLimitMs` at the latest with what is known by then. A `context` that
    /// is gone is not called.
    void request(QObject *context, const Done &done);

private:
    struct Waiter
    {
        QPointer<QObject> context;
        Done done;
    };

    void gather();
    void read(const QString &interface, NetworkProperty InterfaceFacts::*property);
    void finish();

    NetworkController m_network;
    InterfaceFacts m_facts;
    InterfaceFacts m_gathered;
    QElapsedTimer m_age; ///< of the facts; invalid before the first
    QTimer m_limit;
    int m_look = 0; ///< replies to an earlier look change nothing
    int m_missing = 0;
    std::vector<Waiter> m_waiting;
};
