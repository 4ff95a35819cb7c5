// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/outputtail.h"

OutputTail::OutputTail(const QStringList &secrets)
    : m_secrets(secrets)
{ }

void OutputTail::append(const QByteArray &chunk)
{
    for (const char byte : chunk) {
        if (byte == '\n')
            endLine();
        else if (m_unterminated.size() < lineBuffer)
            m_unterminated += byte;
    }
}

QStringList OutputTail::lines() const
{
    QStringList all = m_lines;
    const QString last = cleaned(m_unterminated);
    if (!last.isEmpty())
        all.append(last);
    return all.mid(qMax(0, all.size() - mostLines));
}

void OutputTail::endLine()
{
    const QString line = cleaned(m_unterminated);
    m_unterminated.clear();
    if (line.isEmpty())
        return;
    m_lines.append(line);
    if (m_lines.size() > mostLines)
        m_lines.removeFirst();
}

/// Masks secrets before cutting the line, because a cut could leave half of a secret.
QString OutputTail::cleaned(const QByteArray &line) const
{
    QString text = QString::fromUtf8(line);
    for (const QString &secret : m_secrets)
        text.replace(secret, QStringLiteral("***"));
    return text.left(longestLine).trimmed();
}
