// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/progressline.h"

#include <cstdio>

#include <unistd.h>

namespace {

constexpr int intervalMs = 100;

} // namespace

ProgressLine::ProgressLine(bool enabled)
    : m_enabled(enabled && isatty(STDERR_FILENO) == 1)
{ }

void ProgressLine::show(const QString &text)
{
    if (!m_enabled || (m_since.isValid() && m_since.elapsed() < intervalMs))
        return;
    m_since.start();
    m_shown = true;
    std::fprintf(stderr, "\r%s\033[K", qPrintable(text));
    std::fflush(stderr);
}

void ProgressLine::clear()
{
    if (!m_shown)
        return;
    m_shown = false;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
}
