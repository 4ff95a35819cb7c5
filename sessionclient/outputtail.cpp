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
        else if (m_open.size() < LineBuffer)
            m_open += byte;
    }
}

QStringList OutputTail::lines() const
{
    QStringList all = m_lines;
    const QString last = cleaned(m_open);
    if (!last.isEmpty())
        all.append(last);
    return all.mid(qMax(0, all.size() - MostLines));
}

void OutputTail::endLine()
{
    const QString line = cleaned(m_open);
    m_open.clear();
    if (line.isEmpty())
        return;
    m_lines.append(line);
    if (m_lines.size() > MostLines)
        m_lines.removeFirst();
}

// Secrets are struck out before the line is cut, or the cut could leave half of one.
QString OutputTail::cleaned(const QByteArray &line) const
{
    QString text = QString::fromUtf8(line);
    for (const QString &secret : m_secrets)
        text.replace(secret, QStringLiteral("***"));
    return text.left(LongestLine).trimmed();
}
