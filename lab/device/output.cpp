// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/output.h"

#include <cstdio>

namespace {
void write(std::FILE *stream, const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}
} // namespace

void printLine(const QString &line)
{
    write(stdout, line);
}

void printError(const QString &line)
{
    write(stderr, line);
}
