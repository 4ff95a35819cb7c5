// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QStringList>

/// Keeps the last lines of a child's output and masks secrets in them. Its memory is bounded.
class OutputTail
{
public:
    static constexpr int mostLines = 24;
    static constexpr int longestLine = 400;

    explicit OutputTail(const QStringList &secrets = {});

    void append(const QByteArray &chunk);
    /// Returns the lines, with an unterminated last line.
    QStringList lines() const;

private:
    static constexpr int lineBuffer = 4096; ///< bytes; the rest of a longer line is dropped

    void endLine();
    QString cleaned(const QByteArray &line) const;

    QStringList m_secrets;
    QStringList m_lines;
    QByteArray m_unterminated;
};
