// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificate.h"

#include <QVector>

#include <optional>

/// Takes files of certificates apart. Nothing in here touches a file, and no byte is trusted.
namespace CertificateReader {

/// A bundle of all the public authorities is a quarter of it.
constexpr int sizeLimit = 1024 * 1024;
constexpr int countLimit = 256;

struct Content
{
    CertificateError error = CertificateError::None;
    /// In the file's order; with `hasKey` the key's own certificate comes first.
    QVector<Certificate> certificates;
    bool hasKey = false; ///< it is a PKCS#12 file with a private key: a client certificate
};

/// Reads one or several certificates in PEM, in DER, or in PKCS#12, which may need a password.
Content read(const QByteArray &bytes, const std::optional<QString> &password = std::nullopt);

/// A certificate as the store writes it.
QByteArray toPem(const Certificate &certificate);

} // namespace CertificateReader
