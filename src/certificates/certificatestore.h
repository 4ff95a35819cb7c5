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

/// The device's certificates: those of authorities, which it trusts, and its own, with their private keys.
///
/// The folder is what counts. "security settings" of the configuration document records what it holds, and is
/// written with every change; a change that cannot be recorded is taken back.
class CertificateStore : public QObject
{
    Q_OBJECT

public:
    enum class Kind {
        Authority, ///< one PEM file each
        Client,    ///< PKCS#12, kept as it was given
    };

    struct Import
    {
        CertificateError error = CertificateError::None;
        Kind kind = Kind::Authority;
        QStringList files; ///< the new ones of the store
        int known = 0;     ///< certificates of the file that were there already
    };

    /// `configuration` outlives the store.
    explicit CertificateStore(JsonModule &configuration, QObject *parent = nullptr);

    /// What the store holds now, by name.
    QVector<Certificate> list(Kind kind) const;

    /// Takes every certificate of a file that is not there yet: all of them or, with an error, none.
    /// `password` opens a PKCS#12 file and is not kept.
    Import importFile(const QString &path, const std::optional<QString> &password = std::nullopt);

    CertificateError remove(Kind kind, const QString &fileName);

    /// Records what the store holds, where the document says otherwise: another hand may have been at either.
    bool updateRecord();

signals:
    void changed();

private:
    Import importAuthorities(const QVector<Certificate> &certificates, const QString &wish);
    Import importClient(const Certificate &certificate, const QByteArray &file, const QString &wish);
    Import finish(StagedFiles &staged, const Import &import);
    bool record(const QVector<Certificate> &authorities, const QVector<Certificate> &clients);

    JsonModule &m_configuration;
};

/// How the Wi-Fi settings name a certificate: an authority by its file name with a slash in front, a client
/// certificate by its file name without ".p12". Empty for one that is not stored.
QString certificateValue(CertificateStore::Kind kind, const Certificate &certificate);
