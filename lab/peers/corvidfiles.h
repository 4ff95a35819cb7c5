// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QString>

#include <memory>
#include <optional>

/// The files of a Corvid server, which it sends block by block: added ones, and those of a folder.
class CorvidFiles
{
public:
    struct Block
    {
        quint32 total = 0;
        QByteArray data;
    };

    void add(const QString &name, const QByteArray &content);
    /// Names with a slash are never looked up in the folder.
    void setFolder(const QString &folder);
    /// Adds an entry to the index, "kt-update.txt".
    void addFirmware(const QString &version, const QString &fileName);

    /// Returns nothing for an unknown file or a position beyond its end.
    std::optional<Block> block(const QString &name, quint32 position);

private:
    QHash<QString, QByteArray> m_files;
    QString m_folder;
    std::shared_ptr<QFile> m_open;
};

/// The faults between a server and its client, in percent of the block replies. The seed alone decides which
/// replies they affect.
struct CorvidFaults
{
    int loss = 0;
    int duplicates = 0;
    int reordering = 0;           ///< held back until the next reply is sent
    qint64 silentFrom = -1;       ///< no replies from this position on
    qint64 totalChangesFrom = -1; ///< another file size from this position on
    bool oneAtATime = false;      ///< of the requests that wait, only the newest gets a reply
    quint32 seed = 1;
};
