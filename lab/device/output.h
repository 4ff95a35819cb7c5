// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// A line on standard output or standard error, written at once.
void printLine(const QString &line);
void printError(const QString &line);
