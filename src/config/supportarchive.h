// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>

/// The archive for technical support: the log, the configuration document and the versions, without secrets.
namespace SupportArchive {

struct Result
{
    QString fileName; ///< of the archive; empty after an error
    QString error;    ///< for the user
};

/// The name of the archive for a device and a time.
QString fileName(const QString &deviceName, const QDateTime &time);

/// Writes the archive into a folder, where it is on the medium when this returns, or nothing at all. A slow
/// medium takes its time: this is for a thread that may wait.
Result save(const QString &folder, const QVector<LogEntry> &log, const QJsonObject &document);

} // namespace SupportArchive
