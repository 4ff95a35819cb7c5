// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificate.h"

#include <QObject>
#include <QStringList>
#include <QVector>

#include <optional>

class JsonModule;
class StagedFiles;

/// The device's certificates: those of trusted authorities, and its own with their private keys.
///
/// The files are authoritative. "security settings" of the configuration document records them and is written
/// with every change; a change that cannot be recorded is undone.
class CertificateStore : public QObject
{
    Q_OBJECT

public:
    enum class Kind {
        Authority, ///< one PEM file each
        Client,    ///< an unchanged PKCS#12 file each
    };

    struct Import
    {
        CertificateError error = CertificateError::None;
        Kind kind = Kind::Authority;
        QStringList files; ///< the new files of the store
        int known = 0;     ///< number of certificates that were already stored
    };

    /// `configuration` outlives the store.
    explicit CertificateStore(JsonModule &configuration, QObject *parent = nullptr);

    /// The stored certificates, sorted by name.
    QVector<Certificate> list(Kind kind) const;

    /// Imports all new certificates of a file or, with an error, none. `password` opens a PKCS#12 file and is
    /// not stored.
    Import importFile(const QString &path, const std::optional<QString> &password = std::nullopt);

    CertificateError remove(Kind kind, const QString &fileName);

    /// Updates the record in the document: files or document may have been changed from outside. Also removes
    /// what an import or a removal left that ended with the program.
    bool updateRecord();

signals:
    void changed();

private:
    Import importAuthorities(const QVector<Certificate> &certificates, const QString &preferredName);
    Import importClient(const Certificate &certificate, const QByteArray &file, const QString &preferredName);
    Import finish(StagedFiles &staged, const Import &import);
    bool record(const QVector<Certificate> &authorities, const QVector<Certificate> &clients);

    JsonModule &m_configuration;
};

/// The name of a certificate in the Wi-Fi settings: "/" and the file name for an authority, the file name
/// without
/// ".p12" for a client certificate. Empty if it is not stored.
QString certificateValue(CertificateStore::Kind kind, const Certificate &certificate);
