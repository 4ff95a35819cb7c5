// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/sessionstatus.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

// An element that is exactly this keeps the launcher from calling the address wrong.
const QLatin1String FailMarker(":<FAIL>");

} // namespace

QByteArray statusDocument(const SessionEnd &end)
{
    const ReasonRow &row = reasonRow(end.reason);
    QJsonArray log;
    for (const QString &line : end.output)
        log.append(QStringLiteral("xfreerdp: ") + line); // so no line of a server's can pass for the marker
    log.append(QLatin1String(row.text));
    if (*row.nextStep != '\0')
        log.append(QLatin1String(row.nextStep));
    log.append(end.raw);
    if (row.status != SessionEndedStatus && row.explainedBy != ExplainedBy::Launcher)
        log.append(FailMarker);
    return QJsonDocument(QJsonObject{{QStringLiteral("status"), row.status}, {QStringLiteral("log"), log}})
        .toJson();
}

QString writeStatusFile(const QString &path, const SessionEnd &end)
{
    // The folder is shared: a link that somebody put there must not lead our writing elsewhere.
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);
    QSaveFile file(path);
    const QByteArray document = statusDocument(end);
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size() || !file.commit())
        return file.errorString();
    return QString();
}
