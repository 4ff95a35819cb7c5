// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>

/// What an administrator sends to those who help: the log, the configuration document and the versions, in
/// one archive, without any secret.
namespace SupportArchive {

struct Result
{
    QString fileName; ///< of the archive; empty when there is none
    QString error;    ///< why there is none, for the user
};

/// The name of the archive of that device at that time.
QString fileName(const QString &deviceName, const QDateTime &time);

/// Writes the archive into a folder, where it is on the medium when this returns, or nothing at all.
Result save(const QString &folder, const QVector<LogEntry> &log, const QJsonObject &document);

} // namespace SupportArchive
