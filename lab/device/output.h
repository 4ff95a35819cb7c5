// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

/// Write and flush a line.
void printLine(const QString &line);
void printError(const QString &line);
void printBytes(const QByteArray &bytes);
/// Makes later output appear one byte at a time, with this pause between two bytes.
void trickleOutput(int milliseconds);
