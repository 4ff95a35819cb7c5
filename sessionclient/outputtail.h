// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QStringList>

// Keeps the last lines of what a child prints, cut at line ends, bounded however much comes, with secrets
// struck out.
class OutputTail
{
public:
    static constexpr int MostLines = 24;
    static constexpr int LongestLine = 400;

    explicit OutputTail(const QStringList &secrets = {});

    void append(const QByteArray &chunk);
    // With the last line, even when nothing ended it.
    QStringList lines() const;

private:
    static constexpr int LineBuffer = 4096; // bytes; what a line has beyond is dropped

    void endLine();
    QString cleaned(const QByteArray &line) const;

    QStringList m_secrets;
    QStringList m_lines;
    QByteArray m_open;
};
