// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTimer>

/// Tells the service manager that the launcher is on the screen, and from then on that it is alive. The signs
/// of life come from the event loop that draws, after a reply of the X server, so a hang of either ends them
/// and the service manager starts the launcher anew. Does nothing when no service manager waits for them.
class ServiceNotifier : public QObject
{
    Q_OBJECT

public:
    explicit ServiceNotifier(QObject *parent = nullptr);

    void notifyReady();

private:
    QTimer m_signsOfLife;
};
