// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/diagnostics.h"

#include "device/log.h"

#include <cstdio>

namespace Diagnostics {

void print(const QString &line)
{
    Log::ring().append(LogSeverity::Information, QStringLiteral("kt.diagnostics"), line);
    printToStandardOutputOnly(line);
}

void printToStandardOutputOnly(const QString &line)
{
    std::puts(line.toLocal8Bit().constData());
    std::fflush(stdout);
}

} // namespace Diagnostics
