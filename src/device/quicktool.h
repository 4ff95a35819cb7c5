// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/commands.h"

/// A tool that answers at once when it works. After it has kept us waiting in vain it is given little time,
/// until it answers again: a screen that asks it whenever it is opened freezes once only.
class QuickTool
{
public:
    explicit QuickTool(const QString &program, int limitMs = Commands::timeLimitMs);

    /// Its standard output, as far as there is any.
    QByteArray ask(const QStringList &arguments);
    /// It did not end in time when it was asked last.
    bool hangs() const;

private:
    QString m_program;
    int m_limitMs;
    bool m_hangs = false;
};
