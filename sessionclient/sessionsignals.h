// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "shared/signalpipe.h"

#include <QObject>

/// Turns SIGTERM and SIGINT into stopRequested(), and SIGUSR1 into refreshRequested(). Only one object may
/// exist at a time.
class SessionSignals : public QObject
{
    Q_OBJECT

public:
    explicit SessionSignals(QObject *parent = nullptr);

signals:
    void stopRequested();
    void refreshRequested();

private:
    SignalPipe m_pipe;
};
