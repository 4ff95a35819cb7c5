// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// The contents of one certificate. Its texts are safe to display: without control characters, and of bounded
/// length.
struct Certificate
{
    QString fileName;       ///< in the store; empty if not stored
    QString name;           ///< for lists: the subject's common name, or else a unit or organization
    QString issuerName;     ///< the same for the issuer
    QString subject;        ///< the whole name, "CN=..., O=..."
    QString issuer;         ///< the whole name
    QString serial;         ///< hexadecimal
    QString key;            ///< kind and size, for example "RSA, 2048 bits"
    QDateTime validFrom;    ///< UTC
    QDateTime validTo;      ///< UTC
    QByteArray fingerprint; ///< SHA-256, lower-case hexadecimal
    QByteArray der;         ///< the certificate itself
    bool authority = false; ///< whether it may issue certificates
    int moreInFile = 0;     ///< number of further certificates in the same file

    /// False for a stored file that the device cannot read.
    bool isKnown() const;
};

enum class Validity { Unknown, NotYetValid, Valid, Expired };

Validity validityOf(const Certificate &certificate, const QDateTime &now);

/// Replaces invisible characters and those that change the text direction, and cuts the text to a bounded
/// length.
QString displayable(const QString &text);

/// Why an import or a removal failed. A failure leaves the store and the document unchanged.
enum class CertificateError {
    None,
    CannotRead,            ///< the file to import is not readable
    TooLarge,              ///< more than `CertificateReader::sizeLimit`
    TooMany,               ///< more than `CertificateReader::countLimit` certificates
    NotACertificate,       ///< or it is damaged
    PasswordNeeded,        ///< for a PKCS#12 file; none was given
    WrongPassword,         ///< or a damaged file, if the file has no checksum for the password
    Unsupported,           ///< an unsupported or too slow encryption
    KeyWithoutCertificate, ///< a private key without its own certificate
    KeyOutsidePkcs12,      ///< a private key beside certificates in a PEM file
    Duplicate,             ///< all certificates of the file are already stored
    CannotWrite,           ///< to the store; usually the disk is full
    CannotRecord,          ///< in the configuration document
    NotInStore,
};
