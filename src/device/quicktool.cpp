// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/quicktool.h"

#include <QElapsedTimer>

namespace {
constexpr int secondLimitMs = 2000;
} // namespace

QuickTool::QuickTool(const QString &program, int limitMs)
    : m_program(program)
    , m_limitMs(limitMs)
{ }

QByteArray QuickTool::ask(const QStringList &arguments)
{
    const int limit = m_hangs ? qMin(m_limitMs, secondLimitMs) : m_limitMs;
    QElapsedTimer clock;
    clock.start();
    const QByteArray answer = Commands::query(m_program, arguments, limit);
    m_hangs = clock.elapsed() >= limit;
    return answer;
}

bool QuickTool::hangs() const
{
    return m_hangs;
}
