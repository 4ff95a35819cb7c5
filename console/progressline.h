// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QElapsedTimer>
#include <QString>

/// Overwrites one line on standard error. Writes nothing when standard error is not a terminal.
class ProgressLine
{
public:
    explicit ProgressLine(bool enabled);

    /// Shows a text, at most ten times a second.
    void show(const QString &text);
    /// Clears the line. Call it before writing anything else.
    void clear();

private:
    bool m_enabled;
    bool m_shown = false;
    QElapsedTimer m_since;
};
