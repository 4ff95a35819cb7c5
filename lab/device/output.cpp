// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/output.h"

#include <QThread>

#include <cstdio>

namespace {

unsigned long pauseMs = 0;

} // namespace

void printLine(const QString &line)
{
    printBytes(line.toUtf8() + '\n');
}

void printBytes(const QByteArray &bytes)
{
    const int step = pauseMs > 0 ? 1 : bytes.size();
    for (int done = 0; done < bytes.size(); done += step) {
        std::fwrite(bytes.constData() + done, 1, static_cast<size_t>(step), stdout);
        std::fflush(stdout);
        QThread::msleep(pauseMs);
    }
}

void trickleOutput(int milliseconds)
{
    pauseMs = static_cast<unsigned long>(qBound(0, milliseconds, 1000));
}

void printError(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}
