// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// What one certificate says of itself. Its texts are fit to be shown: they hold no control characters and
/// are of bounded length.
struct Certificate
{
    QString fileName;       ///< in the store; empty while it is not stored
    QString name;           ///< what a list shows: the subject's common name, or the next best
    QString issuerName;     ///< the same of the issuer
    QString subject;        ///< the whole name, "CN=..., O=..."
    QString issuer;         ///< the whole name
    QString serial;         ///< hexadecimal
    QString key;            ///< kind and size, such as "RSA, 2048 bits"
    QDateTime validFrom;    ///< UTC
    QDateTime validTo;      ///< UTC
    QByteArray fingerprint; ///< SHA-256, lower-case hexadecimal
    QByteArray der;         ///< the certificate itself
    bool authority = false; ///< it may issue certificates
    int moreInFile = 0;     ///< further certificates in the same file of the store

    /// False for a file of the store whose content the device cannot read.
    bool isKnown() const;
};

enum class Validity { Unknown, NotYetValid, Valid, Expired };

Validity validityOf(const Certificate &certificate, const QDateTime &now);

/// `text` with every character that would not be seen, or would turn the text around it, replaced, and cut to
/// a bounded length.
QString displayable(const QString &text);

/// Why an import or a removal did not happen. Each leaves the store and the document as they were.
enum class CertificateError {
    None,
    CannotRead,            ///< the file to import
    TooLarge,              ///< more than `CertificateReader::sizeLimit`
    TooMany,               ///< more than `CertificateReader::countLimit` certificates
    NotACertificate,       ///< or a damaged one
    PasswordNeeded,        ///< PKCS#12, and none was given
    WrongPassword,         ///< or, where the file has nothing to check it by, a damaged file
    Unsupported,           ///< encrypted in a way that we do not open, or that would keep us too long
    KeyWithoutCertificate, ///< a private key alone, or with the certificate of another key
    KeyOutsidePkcs12,      ///< a private key beside certificates in a PEM file
    Duplicate,             ///< all of the file's certificates are there already
    CannotWrite,           ///< the store: the disk is full, most likely
    CannotRecord,          ///< the configuration document
    NotInStore,
};
