// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/stagedfiles.h"

#include "device/durablefile.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>

Q_LOGGING_CATEGORY(lcFiles, "kt.certificates.files")

namespace {

const QString hiddenPrefix = QStringLiteral(".import-");

bool failed(const QString &path, const QString &error)
{
    qCCritical(lcFiles).noquote() << "cannot write" << path << ':' << error;
    return false;
}

} // namespace

StagedFiles::~StagedFiles()
{
    for (const File &file : qAsConst(m_files))
        QFile::remove(file.folder + (file.published ? file.name : file.hidden));
}

bool StagedFiles::add(const QString &folder, const QString &name, const QByteArray &content, mode_t mode)
{
    QDir().mkpath(folder);
    m_files += {folder, hiddenPrefix + name, name, false};
    const QString path = folder + m_files.last().hidden;
    const QString error = DurableFile::writeContent(path, content, mode);
    return error.isEmpty() || failed(path, error);
}

bool StagedFiles::publish()
{
    for (File &file : m_files) {
        const QString path = file.folder + file.name;
        if (std::rename(QFile::encodeName(file.folder + file.hidden).constData(),
                        QFile::encodeName(path).constData())
            != 0)
            return failed(path, qt_error_string(errno));
        file.published = true;
    }
    QSet<QString> folders;
    for (const File &file : qAsConst(m_files))
        folders += file.folder;
    return std::all_of(folders.begin(), folders.end(),
                       [](const QString &folder) { return syncFolder(folder); });
}

void StagedFiles::keep()
{
    m_files.clear();
}

void StagedFiles::sweep(const QString &folder)
{
    QDir directory(folder);
    const QStringList left
        = directory.entryList({hiddenPrefix + QLatin1Char('*')}, QDir::Files | QDir::Hidden);
    for (const QString &name : left)
        directory.remove(name);
}

bool StagedFiles::syncFolder(const QString &folder)
{
    return DurableFile::synchronise(folder) || failed(folder, qt_error_string(errno));
}
