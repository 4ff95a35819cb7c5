// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/commands.h"

#include "device/paths.h"

#include <QRegularExpression>

namespace Commands {

QProcessEnvironment environment()
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    if (!Paths::root().isEmpty()) {
        const QString tools = Paths::onDevice(QStringLiteral("/usr/bin")) + QLatin1Char(':')
            + Paths::onDevice(QStringLiteral("/usr/sbin"));
        result.insert(QStringLiteral("PATH"),
                      tools + QLatin1Char(':') + result.value(QStringLiteral("PATH")));
    }
    return result;
}

QString quoted(const QString &value)
{
    static const QRegularExpression plainWord(
        QStringLiteral("\\A[A-Za-z0-9_./:@%+,=][A-Za-z0-9_./:@%+,=-]*\\z"));
    if (plainWord.match(value).hasMatch())
        return value;
    QString escaped = value;
    escaped.remove(QChar::Null).replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + escaped + QLatin1Char('\'');
}

QString line(const QString &program, const QString &arguments, bool asRoot)
{
    QString result = asRoot ? QStringLiteral("sudo ") : QString();
    // The device root is a path of the lab or of a test and may hold blanks; a device path never needs
    // quotes.
    result += quoted(Paths::onDevice(program));
    return arguments.isEmpty() ? result : result + QLatin1Char(' ') + arguments;
}

} // namespace Commands
