// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QJsonObject read(const LabCommand &command, const QString &path)
{
    QFile file(path);
    const bool opened = file.open(QIODevice::ReadOnly);
    const QByteArray content = opened ? file.readAll() : QByteArray();
    const QJsonDocument document = QJsonDocument::fromJson(content);
    if (!document.isObject() && !content.trimmed().isEmpty())
        command.fail(QStringLiteral("not a JSON object: %1").arg(path));
    return document.object();
}

/// Takes text that is not JSON as a string.
QJsonValue valueOf(const QString &text)
{
    QJsonParseError error;
    const QJsonDocument wrapped = QJsonDocument::fromJson('[' + text.toUtf8() + ']', &error);
    return wrapped.array().size() == 1 ? wrapped.array().first() : QJsonValue(text);
}

void change(QJsonObject &object, const QStringList &keys, const QJsonValue &value)
{
    QJsonValue inner = value;
    if (keys.size() > 1) {
        QJsonObject section = object.value(keys.first()).toObject();
        change(section, keys.mid(1), value);
        inner = section;
    }
    object.insert(keys.first(), inner);
}

} // namespace

int documentCommand()
{
    LabCommand command(QStringLiteral("document"),
                       QStringLiteral("Changes one value of the device's configuration document."));
    command.addArgument(QStringLiteral("KEY..."),
                        QStringLiteral("The path of the value; missing objects are created."));
    command.addArgument(QStringLiteral("VALUE"), QStringLiteral("JSON, or else text."));
    command.addRootOption();
    command.process(2, 16);
    const QString path = command.root().file(QStringLiteral("/var/lib/kt964/config.json"));
    QJsonObject document = read(command, path);
    const QStringList words = command.arguments();
    change(document, words.mid(0, words.size() - 1), valueOf(words.last()));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        || file.write(QJsonDocument(document).toJson()) < 0 || !file.flush())
        command.fail(QStringLiteral("cannot write %1").arg(path));
    return 0;
}
