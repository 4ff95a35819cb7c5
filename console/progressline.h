// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QElapsedTimer>
#include <QString>

/// One line on standard error that is written over again; nothing where that is no terminal.
class ProgressLine
{
public:
    explicit ProgressLine(bool wanted);

    /// Shows a text; not more often than an eye can follow.
    void show(const QString &text);
    /// Takes the line away, before anything else is written.
    void clear();

private:
    bool m_wanted;
    bool m_shown = false;
    QElapsedTimer m_since;
};
