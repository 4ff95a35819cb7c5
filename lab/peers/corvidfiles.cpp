// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/corvidfiles.h"

#include "lab-peers/corvidwire.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString indexFile = QStringLiteral("kt-update.txt");
const QString firmwares = QStringLiteral("FIRMWARES");

} // namespace

void CorvidFiles::add(const QString &name, const QByteArray &content)
{
    m_files.insert(name, content);
}

void CorvidFiles::setFolder(const QString &folder)
{
    m_folder = folder;
}

void CorvidFiles::addFirmware(const QString &version, const QString &fileName)
{
    QJsonObject index = QJsonDocument::fromJson(m_files.value(indexFile)).object();
    QJsonArray entries = index.value(firmwares).toArray();
    entries.append(QJsonObject{{QStringLiteral("version"), version}, {QStringLiteral("filename"), fileName}});
    index.insert(firmwares, entries);
    add(indexFile, QJsonDocument(index).toJson());
}

std::optional<CorvidFiles::Block> CorvidFiles::block(const QString &name, quint32 position)
{
    const auto held = m_files.constFind(name);
    if (held != m_files.constEnd()) {
        if (position > static_cast<quint32>(held->size()))
            return std::nullopt;
        return Block{static_cast<quint32>(held->size()),
                     held->mid(static_cast<int>(position), corvidBlockSize)};
    }
    if (m_folder.isEmpty() || name.isEmpty() || name.contains(QLatin1Char('/')))
        return std::nullopt;
    const QString path = m_folder + QLatin1Char('/') + name;
    if (position == 0 || !m_open || m_open->fileName() != path) {
        m_open = std::make_shared<QFile>(path);
        m_open->open(QIODevice::ReadOnly);
    }
    if (!m_open->isOpen() || position > m_open->size() || !m_open->seek(position))
        return std::nullopt;
    return Block{static_cast<quint32>(m_open->size()), m_open->read(corvidBlockSize)};
}
