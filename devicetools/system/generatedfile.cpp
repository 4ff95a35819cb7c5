// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/generatedfile.h"

#include "devicetools-system/lists.h"
#include "devicetools/sharedfile.h"
#include "devicetools/tool.h"

#include <QCryptographicHash>
#include <QFile>

namespace GeneratedFile {

namespace {

constexpr qint64 sizeLimit = 4LL * 1024 * 1024;

QByteArray withDigest(const QByteArray &content)
{
    return "# Made from this machine's data. An edited file is kept; remove it to have it made again. "
        + QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex() + '\n' + content;
}

int tell(const QString &path, const QByteArray &content)
{
    if (content.isEmpty())
        return Tool::fail(path + QStringLiteral(": this machine has no data for it"));
    switch (update(path, content)) {
    case Outcome::Failed:
        return Tool::fail(path + QStringLiteral(": cannot be written"));
    case Outcome::Kept:
        Tool::print(path + QStringLiteral(" was edited and is kept"));
        return Tool::Done;
    case Outcome::Written:
    case Outcome::Unchanged:
        break;
    }
    return Tool::Done;
}

} // namespace

Outcome update(const QString &path, const QByteArray &content)
{
    const QByteArray wanted = withDigest(content);
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray present = file.read(sizeLimit);
        if (present == wanted)
            return Outcome::Unchanged;
        if (present != withDigest(present.mid(present.indexOf('\n') + 1)))
            return Outcome::Kept;
    }
    return SharedFile::replace(path, wanted) ? Outcome::Written : Outcome::Failed;
}

int makeLists(const QStringList &arguments)
{
    if (arguments.size() > 1)
        return Tool::WrongUsage;
    const QString folder = arguments.isEmpty() ? QStringLiteral("/etc") : arguments.first();
    QFile rules(QStringLiteral("/usr/share/X11/xkb/rules/evdev.lst"));
    const QByteArray layouts
        = rules.open(QIODevice::ReadOnly) ? LayoutList::make(rules.read(sizeLimit)) : QByteArray();
    const int layoutsStatus = tell(folder + QStringLiteral("/keyboard_layouts"), layouts);
    const int zonesStatus
        = tell(folder + QStringLiteral("/timezones"), ZoneList::make(QStringLiteral("/usr/share/zoneinfo")));
    return layoutsStatus == Tool::Done ? zonesStatus : layoutsStatus;
}

} // namespace GeneratedFile
