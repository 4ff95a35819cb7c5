// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/sessionstatus.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

/// This element keeps the launcher from reporting a wrong address.
const QLatin1String failMarker(":<FAIL>");

} // namespace

QByteArray statusDocument(const SessionEnd &end)
{
    const ReasonRow &row = reasonRow(end.reason);
    QJsonArray log;
    for (const QString &line : end.output)
        log.append(QStringLiteral("xfreerdp: ") + line); // keeps a server's output from imitating the marker
    log.append(QLatin1String(row.text));
    if (*row.nextStep != '\0')
        log.append(QLatin1String(row.nextStep));
    if (end.certificate)
        log.append(QStringLiteral("The certificate of %1 was %2 and is now %3.")
                       .arg(end.certificate->server(), end.certificate->known, end.certificate->offered));
    log.append(end.raw);
    if (row.status != sessionEndedStatus && row.explainedBy != ExplainedBy::Launcher)
        log.append(failMarker);
    return QJsonDocument(QJsonObject{{QStringLiteral("status"), row.status}, {QStringLiteral("log"), log}})
        .toJson();
}

QString writeStatusFile(const QString &path, const SessionEnd &end)
{
    // Others can write to the folder: a symbolic link there must not redirect this file.
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);
    QSaveFile file(path);
    const QByteArray document = statusDocument(end);
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size() || !file.commit())
        return file.errorString();
    return QString();
}
