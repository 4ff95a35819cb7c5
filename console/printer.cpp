// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/printer.h"

#include "config/secrets.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace Printer {

namespace {

constexpr int longestShown = 120; // characters of one value

QString wordFor(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done:
        return QStringLiteral("done");
    case Outcome::Unchanged:
        return QStringLiteral("unchanged");
    case Outcome::Refused:
        return QStringLiteral("refused");
    case Outcome::Unusable:
        return QStringLiteral("unusable");
    case Outcome::NoAnswer:
        return QStringLiteral("no answer");
    case Outcome::Failed:
        break;
    }
    return QStringLiteral("failed");
}

/// Replaces control characters, so that a device cannot control the user's terminal.
QString printable(QString text)
{
    for (QChar &c : text) {
        if (!c.isPrint())
            c = QLatin1Char('?');
    }
    return text;
}

QString shown(const QJsonValue &value)
{
    QString text = QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
    text = printable(text.mid(1, text.size() - 2));
    return text.size() <= longestShown ? text : text.left(longestShown - 1) + QChar(0x2026);
}

QString joined(const QStringList &key)
{
    return printable(key.join(QLatin1String(" / ")));
}

/// Returns one value of a report; the device chooses its type.
QString reported(const QJsonObject &report, const char *section, const char *key)
{
    const QJsonValue value = report.value(QLatin1String(section)).toObject().value(QLatin1String(key));
    if (!value.isArray())
        return printable(value.toVariant().toString());
    QStringList words;
    for (const QJsonValue element : value.toArray())
        words += printable(element.toVariant().toString());
    return words.join(QLatin1String(", "));
}

QString line(const QString &name, const QString &value)
{
    return QStringLiteral("  %1 %2\n").arg(name.leftJustified(17), value);
}

QString status(const QJsonObject &report)
{
    const auto value = [&report](const char *section, const char *key) {
        return reported(report, section, key);
    };
    const QString servers = value("connection info", "Corvid Servers");
    const QString session = value("connection info", "status");
    const bool password = report.value(QLatin1String("device info"))
                              .toObject()
                              .value(QLatin1String("setup GUI password enabled"))
                              .toBool();
    return line(QStringLiteral("device name"), value("device info", "device name"))
        + line(QStringLiteral("serial number"), value("device info", "serial number"))
        + line(QStringLiteral("model"), value("firmware info", "device model"))
        + line(QStringLiteral("firmware"), value("firmware info", "firmware version"))
        + line(QStringLiteral("configuration"),
               QStringLiteral("version ") + value("firmware info", "configuration version"))
        + line(QStringLiteral("settings password"), password ? QStringLiteral("set") : QStringLiteral("none"))
        + line(QStringLiteral("network"),
               QStringLiteral("%1, %2, %3")
                   .arg(value("network info", "interface"), value("network info", "IP type"),
                        value("network info", "MAC")))
        + line(QStringLiteral("address"),
               QStringLiteral("%1, mask %2, gateway %3")
                   .arg(value("network info", "IP address"), value("network info", "network mask"),
                        value("network info", "default gateway")))
        + line(QStringLiteral("session"),
               servers.isEmpty() ? session : session + QStringLiteral(" to ") + servers);
}

QString changes(const ConfigurationChanges &changes)
{
    QString text;
    for (const Change &change : changes.changed) {
        text += QStringLiteral("  %1: %2 -> %3\n")
                    .arg(joined(change.key), shown(withoutSecrets(change.key, change.from)),
                         shown(withoutSecrets(change.key, change.to)));
    }
    for (const QStringList &key : changes.ignored)
        text += QStringLiteral("  %1: ignored by this device\n").arg(joined(key));
    return text;
}

QJsonArray changesAsJson(const QList<Change> &changes)
{
    QJsonArray array;
    for (const Change &change : changes) {
        array += QJsonObject{{QStringLiteral("key"), QJsonArray::fromStringList(change.key)},
                             {QStringLiteral("from"), withoutSecrets(change.key, change.from)},
                             {QStringLiteral("to"), withoutSecrets(change.key, change.to)}};
    }
    return array;
}

QJsonArray keysAsJson(const QList<QStringList> &keys)
{
    QJsonArray array;
    for (const QStringList &key : keys)
        array += QJsonArray::fromStringList(key);
    return array;
}

} // namespace

QByteArray json(Command command, const Result &result, bool dryRun)
{
    QJsonObject object{{QStringLiteral("address"), result.device.toString()},
                       {QStringLiteral("command"), nameOf(command)},
                       {QStringLiteral("result"), wordFor(result.outcome)}};
    if (!result.message.isEmpty())
        object.insert(QStringLiteral("message"), result.message);
    if (result.code != 0)
        object.insert(QStringLiteral("code"), static_cast<qint64>(result.code));
    if (!result.report.isEmpty())
        object.insert(QStringLiteral("report"), Secrets::blanked(result.report));
    if (!result.document.isEmpty())
        object.insert(QStringLiteral("configuration"), QJsonDocument::fromJson(result.document).object());
    if (command == Command::SetConfig) {
        object.insert(QStringLiteral("dry run"), dryRun);
        object.insert(QStringLiteral("changes"), changesAsJson(result.changes.changed));
        object.insert(QStringLiteral("ignored"), keysAsJson(result.changes.ignored));
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QString text(Command command, const Result &result, bool dryRun)
{
    const bool planned = dryRun && result.outcome == Outcome::Done;
    QString head
        = QStringLiteral("%1  %2").arg(result.device.toString().leftJustified(15),
                                       planned ? QStringLiteral("would change") : wordFor(result.outcome));
    if (result.code != 0)
        head += QStringLiteral(" (%1)").arg(result.code);
    if (!result.message.isEmpty())
        head += QStringLiteral(": ") + printable(result.message);
    head += QLatin1Char('\n');
    if (command == Command::Info && result.outcome == Outcome::Done)
        return result.device.toString() + QLatin1Char('\n') + status(result.report);
    return command == Command::SetConfig ? head + changes(result.changes) : head;
}

QString row(const Result &result)
{
    if (result.outcome != Outcome::Done)
        return text(Command::Info, result, false);
    const auto cell = [&result](const char *section, const char *key, int width) {
        return reported(result.report, section, key).leftJustified(width) + QStringLiteral("  ");
    };
    const QString row = result.device.toString().leftJustified(15) + QStringLiteral("  ")
        + cell("device info", "device name", 20) + cell("device info", "serial number", 10)
        + cell("firmware info", "firmware version", 10) + cell("network info", "MAC", 17)
        + cell("connection info", "status", 12) + cell("connection info", "Corvid Servers", 0);
    return row.trimmed() + QLatin1Char('\n');
}

QString heading()
{
    return QStringLiteral(
        "ADDRESS          NAME                  SERIAL      FIRMWARE    MAC                SESSION\n");
}

} // namespace Printer
