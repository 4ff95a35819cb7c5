// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/tlstrust.h"

#include "device/paths.h"

#include <QDateTime>
#include <QDir>
#include <QSslCertificate>
#include <QSslConfiguration>

namespace TlsTrust {

namespace {

QFileInfoList files()
{
    return QDir(Paths::caCertificates()).entryInfoList(QDir::Files, QDir::Name);
}

/// Differs after each import and removal.
QStringList listing()
{
    QStringList lines;
    for (const QFileInfo &file : files())
        lines += QStringLiteral("%1 %2 %3")
                     .arg(file.filePath())
                     .arg(file.size())
                     .arg(file.lastModified().toMSecsSinceEpoch());
    return lines;
}

QList<QSslCertificate> certificates()
{
    QList<QSslCertificate> found;
    for (const QSsl::EncodingFormat format : {QSsl::Pem, QSsl::Der}) {
        for (const QFileInfo &info : files()) {
            QFile file(info.filePath());
            if (file.open(QIODevice::ReadOnly))
                found += QSslCertificate::fromData(file.readAll(), format);
        }
    }
    return found;
}

} // namespace

void refresh()
{
    // The system's certificates are looked up as needed, in this configuration alone.
    static const QSslConfiguration ofTheSystem = QSslConfiguration::defaultConfiguration();
    static QStringList last;
    const QStringList now = listing();
    if (now == last)
        return;
    last = now;
    QSslConfiguration configuration = ofTheSystem;
    const QList<QSslCertificate> own = certificates();
    if (!own.isEmpty())
        configuration.setCaCertificates(own);
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace TlsTrust
