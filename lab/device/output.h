// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

// A line on standard output or standard error, written at once.
void printLine(const QString &line);
void printError(const QString &line);
void printBytes(const QByteArray &bytes);
// From now on standard output gets one byte at a time, so many milliseconds apart.
void trickleOutput(int milliseconds);
