// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QVector>

#include <memory>

/// A self-signed certificate with its private key, made for one test.
class TestCertificate
{
public:
    /// Valid from and until so many days from now.
    explicit TestCertificate(const QByteArray &commonName, int fromDay = -1, int toDay = 365);
    ~TestCertificate();
    TestCertificate(const TestCertificate &) = delete;
    TestCertificate &operator=(const TestCertificate &) = delete;

    QByteArray der() const;
    QByteArray pem() const;
    QByteArray keyPem() const;

    struct Pkcs12
    {
        QByteArray password;
        bool withMac = true;
        bool withKey = true;
        bool encrypted = true;
        bool oldCiphers = false;
        int rounds = 50;
        int macRounds = 50;
        const TestCertificate *chain = nullptr; ///< a further certificate
        const TestCertificate *other = nullptr; ///< takes the place of the key's own certificate
    };
    QByteArray pkcs12(const Pkcs12 &options) const;
    QByteArray pkcs12(const QByteArray &password) const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
