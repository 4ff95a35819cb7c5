// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/calllog.h"

#include <QFile>
#include <QRegularExpression>

#include <fcntl.h>
#include <unistd.h>

QString shellWord(const QString &word)
{
    static const QRegularExpression plain(QStringLiteral("\\A[A-Za-z0-9_@%+=:,./-]+\\z"));
    if (plain.match(word).hasMatch())
        return word;
    QString quoted = word;
    if (!word.contains(QLatin1Char('\n')))
        return QLatin1Char('\'') + quoted.replace(QLatin1Char('\''), QStringLiteral("'\\''"))
            + QLatin1Char('\'');
    quoted.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    quoted.replace(QLatin1Char('\''), QStringLiteral("\\'"));
    quoted.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    return QStringLiteral("$'") + quoted + QLatin1Char('\'');
}

void logCall(const ToolCall &call)
{
    QByteArray line = call.name.toUtf8();
    for (const QString &word : call.arguments)
        line += ' ' + shellWord(word).toUtf8();
    line += '\n';
    const QByteArray path = QFile::encodeName(call.root.labFile(QStringLiteral("calls.log")));
    const int descriptor = ::open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (descriptor < 0)
        return;
    if (::write(descriptor, line.constData(), static_cast<size_t>(line.size())) != line.size())
        ::perror("kt-lab: calls.log");
    ::close(descriptor);
}
