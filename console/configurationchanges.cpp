// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/configurationchanges.h"

#include "config/configurationmanager.h"
#include "config/defaults.h"
#include "config/keys.h"
#include "config/merge.h"
#include "config/secrets.h"
#include "config/upgrades.h"
#include "update/consoleformat.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace {

/// The device keeps its own values of these keys.
bool isDeviceLocal(const QStringList &key)
{
    static const QStringList local
        = {Key::inputDevice, Key::outputDevice, Key::checkedInputDevice, Key::checkedOutputDevice};
    return key.size() == 2 && key.first() == Key::audio && local.contains(key.last());
}

void collectChanges(const QStringList &key, const QJsonValue &from, const QJsonValue &to,
                    QList<Change> *changes)
{
    if (from == to || isDeviceLocal(key))
        return;
    if (!from.isObject() || !to.isObject()) {
        changes->append({key, from, to});
        return;
    }
    const QJsonObject object = to.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        collectChanges(key + QStringList(member.key()), from.toObject().value(member.key()), member.value(),
                       changes);
}

void collectIgnored(const QStringList &key, const QJsonValue &wanted, const QJsonValue &merged,
                    QList<QStringList> *ignored)
{
    if (wanted.isObject() && merged.isObject()) {
        const QJsonObject object = wanted.toObject();
        for (auto member = object.begin(); member != object.end(); ++member)
            collectIgnored(key + QStringList(member.key()), member.value(),
                           merged.toObject().value(member.key()), ignored);
    } else if (wanted != merged || isDeviceLocal(key)) {
        ignored->append(key);
    }
}

QJsonObject ofVersion(int version)
{
    return {{Key::firmwareInfo, QJsonObject{{Key::configurationVersion, version}}}};
}

void insert(QJsonObject &object, const QStringList &key, const QJsonValue &value)
{
    if (key.size() == 1) {
        object.insert(key.first(), value);
        return;
    }
    QJsonObject inner = object.value(key.first()).toObject();
    insert(inner, key.mid(1), value);
    object.insert(key.first(), inner);
}

/// Escapes other characters, because every device reads ASCII correctly.
QByteArray asciiJson(const QJsonObject &object)
{
    QByteArray ascii;
    for (const QChar c : QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))) {
        if (c < QChar(0x80))
            ascii += c.toLatin1();
        else
            ascii += "\\u" + QByteArray::number(c.unicode(), 16).rightJustified(4, '0');
    }
    return ascii;
}

} // namespace

ConfigurationChanges ConfigurationChanges::between(const QJsonObject &held, const QJsonObject &wantedAsGiven)
{
    ConfigurationChanges changes;
    changes.version = Upgrades::statedVersion(held);
    QJsonObject wanted = wantedAsGiven;
    if (!wanted.contains(Key::firmwareInfo))
        wanted.insert(Key::firmwareInfo, ofVersion(changes.version).value(Key::firmwareInfo));
    else if (changes.version == Defaults::configurationVersion)
        ConfigurationManager(Defaults::configurationVersion).upgradeConfiguration(wanted);
    const int version = Upgrades::statedVersion(wanted);
    if (version != changes.version) {
        changes.error = QStringLiteral("the file has configuration version %1, the device has version %2")
                            .arg(version)
                            .arg(changes.version);
        return changes;
    }
    QJsonObject merged = held;
    Merge::mergeJsonObject(merged, wanted);
    collectChanges({}, held, merged, &changes.changed);
    collectIgnored({}, wanted, merged, &changes.ignored);
    return changes;
}

void ConfigurationChanges::dropSubstituted()
{
    const QStringList resolution = {Key::display, Key::primary, Key::resolution};
    const auto substituted = [&](const Change &change) {
        return change.key == resolution && change.from == QLatin1String("Automatic");
    };
    changed.erase(std::remove_if(changed.begin(), changed.end(), substituted), changed.end());
}

ConfigurationChanges::Part ConfigurationChanges::firstPart() const
{
    QJsonObject document = ofVersion(version);
    Part part;
    for (const Change &change : changed) {
        insert(document, change.key, change.to);
        const QByteArray longer = asciiJson(document);
        if (longer.size() > ConsoleFormat::longestJson)
            break;
        part.document = longer;
        ++part.count;
    }
    return part;
}

QJsonValue withoutSecrets(const QStringList &key, const QJsonValue &value)
{
    const bool secret = std::any_of(key.begin(), key.end(), Secrets::isSecret);
    // A switch such as "password enabled" is not secret.
    if (secret && !value.isBool() && !value.isNull())
        return QStringLiteral("***");
    const QString name = key.isEmpty() ? QString() : key.last();
    return Secrets::blanked({{name, value}}).value(name);
}
