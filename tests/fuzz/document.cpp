// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "target.h"

#include "config/compatibility.h"
#include "config/configurationmanager.h"
#include "config/defaults.h"
#include "config/jsonmodule.h"
#include "config/jsontext.h"
#include "config/merge.h"
#include "config/secrets.h"
#include "config/upgrades.h"
#include "console/configurationchanges.h"

#include <QFile>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QTemporaryDir>

namespace {

const QJsonObject &held()
{
    static const QJsonObject document
        = Defaults::document(QStringLiteral("kt964"), Defaults::networkSettings({}));
    return document;
}

QJsonObject merged(const QJsonObject &local, const QJsonObject &remote)
{
    QJsonObject result = local;
    Merge::mergeJsonObject(result, remote);
    return result;
}

/// As the program's own document at its start.
QJsonObject loaded(const QByteArray &text)
{
    static const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("document.json"));
    QFile file(name);
    require(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "a file");
    file.close();
    JsonModule document(name, false);
    document.isConfigCorrect();
    document.readContent();
    require(document.getDocument() == QJsonDocument::fromJson(text), "the file's document");
    return document.getDocument().object();
}

void upgrade(QJsonObject own)
{
    if (Upgrades::hasOldNetwork(own))
        Upgrades::toNewNetwork(own);
    Upgrades::toVersion15(own);
    require(Upgrades::statedVersion(own) == Defaults::configurationVersion, "the version after an upgrade");
}

void merge(QJsonObject remote)
{
    ConfigurationManager(Defaults::configurationVersion).upgradeConfiguration(remote);
    const QJsonObject once = merged(held(), remote);
    require(Compatibility::checkObjects(held(), once), "a merge keeps the document's structure");
    require(merged(once, remote) == once, "a second merge changes nothing");
    require(Secrets::blanked(once).keys() == once.keys(), "a blanked document keeps its keys");
}

/// What a console would send of it takes the device nearer to it.
void send(const QJsonObject &wanted)
{
    const ConfigurationChanges changes = ConfigurationChanges::between(held(), wanted);
    if (!changes.error.isEmpty())
        return;
    const ConfigurationChanges::Part part = changes.firstPart();
    if (part.count == 0)
        return;
    const QJsonDocument sent = QJsonDocument::fromJson(part.document);
    require(sent.isObject(), "what is sent is a document");
    const auto left = ConfigurationChanges::between(merged(held(), sent.object()), wanted);
    require(left.changed.size() == changes.changed.size() - part.count,
            "what was sent is no longer a change");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool quiet = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
        return true;
    }();
    Q_UNUSED(quiet)
    // The parser does not free a member that a later one replaces.
    const QByteArray text
        = JsonText::withLastMembers(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    const QJsonObject root = loaded(text);
    upgrade(root);
    merge(root);
    send(root);
    return 0;
}
