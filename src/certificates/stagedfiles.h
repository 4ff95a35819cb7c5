// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <sys/types.h>

/// New files that appear all together or not at all: written under hidden names, brought to the disk, then
/// renamed. What has not been kept when the object goes away is removed again.
class StagedFiles
{
public:
    StagedFiles() = default;
    ~StagedFiles();
    StagedFiles(const StagedFiles &) = delete;
    StagedFiles &operator=(const StagedFiles &) = delete;

    /// Writes the file under its hidden name; false, with a line in the log, when there is no room. `folder`
    /// ends with a slash and is made when it is missing.
    bool add(const QString &folder, const QString &name, const QByteArray &content, mode_t mode);
    /// Gives the files their names.
    bool publish();
    /// From now on they stay.
    void keep();

    /// Removes the hidden files that a power cut left in a folder.
    static void sweep(const QString &folder);
    /// Brings the names in a folder to the disk.
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
