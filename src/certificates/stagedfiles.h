// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <sys/types.h>

/// Adds several new files, all or none. They are written to the disk under hidden names and then renamed. The
/// destructor removes them unless `keep` was called.
class StagedFiles
{
public:
    StagedFiles() = default;
    ~StagedFiles();
    StagedFiles(const StagedFiles &) = delete;
    StagedFiles &operator=(const StagedFiles &) = delete;

    /// Writes the file under its hidden name; false, with a line in the log, if that fails. `folder` ends
    /// with a slash and is created if missing.
    bool add(const QString &folder, const QString &name, const QByteArray &content, mode_t mode);
    /// Renames all files to their final names.
    bool publish();
    /// Makes the files permanent.
    void keep();

    /// Removes hidden files that were left by a power failure.
    static void sweep(const QString &folder);
    /// Writes the names in a folder to the disk.
    static bool syncFolder(const QString &folder);

private:
    struct File
    {
        QString folder;
        QString hidden;
        QString name;
        bool published = false;
    };

    QVector<File> m_files;
};
