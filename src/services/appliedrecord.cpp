// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/appliedrecord.h"

#include "device/durablefile.h"
#include "device/paths.h"

#include <QFile>
#include <QJsonDocument>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcRecord, "kt.services.record")

namespace {
constexpr qint64 sizeLimit = 64 * 1024;
} // namespace

AppliedRecord::Condition AppliedRecord::load()
{
    DurableFile::sweep(Paths::appliedRecord());
    QFile file(Paths::appliedRecord());
    if (!file.open(QIODevice::ReadOnly))
        return file.exists() ? Condition::Unreadable : Condition::Useless;
    const QJsonObject root = QJsonDocument::fromJson(file.read(sizeLimit)).object();
    if (file.error() != QFileDevice::NoError)
        return Condition::Unreadable;
    if (root.isEmpty()) {
        qCWarning(lcRecord).noquote() << "not a record of applied settings:" << file.fileName();
        return Condition::Useless;
    }
    for (const SettingsSections::Section section : SettingsSections::all())
        m_fingerprints.insert(section, root.value(SettingsSections::name(section)).toString().toLatin1());
    m_saved = true;
    return Condition::Usable;
}

void AppliedRecord::save()
{
    if (m_saved || m_isProtected)
        return;
    QJsonObject root;
    for (auto entry = m_fingerprints.cbegin(); entry != m_fingerprints.cend(); ++entry)
        root.insert(SettingsSections::name(entry.key()), QString::fromLatin1(entry.value()));
    const QString error = DurableFile::write(Paths::appliedRecord(), QJsonDocument(root).toJson(), 0600);
    m_saved = error.isEmpty();
    if (!m_saved)
        qCCritical(lcRecord).noquote() << "cannot write" << Paths::appliedRecord() << ':' << error;
}

void AppliedRecord::protect()
{
    m_isProtected = true;
}

QByteArray AppliedRecord::fingerprint(SettingsSections::Section section) const
{
    return m_fingerprints.value(section);
}

void AppliedRecord::set(SettingsSections::Section section, const QByteArray &fingerprint)
{
    if (m_fingerprints.value(section) == fingerprint)
        return;
    m_fingerprints.insert(section, fingerprint);
    m_saved = false;
}
