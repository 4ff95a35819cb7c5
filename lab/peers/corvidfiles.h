// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QString>

#include <memory>
#include <optional>

// The files that a Corvid server hands out, block by block: those it was given, and those of a folder.
class CorvidFiles
{
public:
    struct Block
    {
        quint32 total = 0;
        QByteArray data;
    };

    void add(const QString &name, const QByteArray &content);
    // A name with a slash in it is none of the folder's.
    void setFolder(const QString &folder);
    // Adds an entry to the index, "kt-update.txt".
    void addFirmware(const QString &version, const QString &fileName);

    // Nothing when there is no such file, or no such position in it.
    std::optional<Block> block(const QString &name, quint32 position);

private:
    QHash<QString, QByteArray> m_files;
    QString m_folder;
    std::shared_ptr<QFile> m_open;
};

// What goes wrong between a server and its client. Chances are percentages of the block replies; which of
// them are hit depends on the seed alone.
struct CorvidFaults
{
    int loss = 0;
    int duplicates = 0;
    int reordering = 0;           // held back until the next reply has been sent
    qint64 silentFrom = -1;       // blocks from this position on are not answered
    qint64 totalChangesFrom = -1; // the total is another one from this position on
    quint32 seed = 1;
};
