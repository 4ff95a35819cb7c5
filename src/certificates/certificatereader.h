// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificate.h"

#include <QVector>

#include <optional>

/// Decodes the bytes of certificate files, which are not trusted.
namespace CertificateReader {

/// Four times the size of a bundle of all public authorities.
constexpr int sizeLimit = 1024 * 1024;
constexpr int countLimit = 256;

struct Content
{
    CertificateError error = CertificateError::None;
    /// In the file's order; with `hasKey`, the key's own certificate comes first.
    QVector<Certificate> certificates;
    bool hasKey = false; ///< a PKCS#12 file with a private key, that is, a client certificate
};

/// Reads the certificates of a PEM, DER or PKCS#12 file. PKCS#12 may need a password.
Content read(const QByteArray &bytes, const std::optional<QString> &password = std::nullopt);

/// A certificate in PEM, as the store writes it.
QByteArray toPem(const Certificate &certificate);

} // namespace CertificateReader
