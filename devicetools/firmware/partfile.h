// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

/// A large file that is written under another name ("NAME.part") until it is whole. One that is not
/// finished is removed; one that a loss of power has left is removed by the launcher, or overwritten by the
/// next.
class PartFile
{
public:
    explicit PartFile(const QString &target);
    ~PartFile();
    PartFile(const PartFile &) = delete;
    PartFile &operator=(const PartFile &) = delete;

    /// False also while another process writes the same file.
    bool open();
    bool append(const char *bytes, std::size_t size);
    /// Puts the file in the target's place when all is on the disk. An empty file is a failure.
    bool finish();
    /// The bytes that fit on the disk. The launcher removes the earlier image ("NAME.earlier") when it has
    /// to.
    qint64 room() const;
    /// What went wrong; empty so far.
    QString problem() const;

private:
    bool fail(const char *step);

    QByteArray m_target;
    QByteArray m_part;
    QString m_problem;
    int m_descriptor = -1;
    qint64 m_size = 0;
    qint64 m_syncedSize = 0;
    bool m_isFinished = false;
};
