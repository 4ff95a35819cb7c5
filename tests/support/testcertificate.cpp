// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "testcertificate.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/pkcs12.h>
#include <openssl/provider.h>
#include <openssl/x509.h>

namespace {

template <typename Write>
QByteArray written(const Write &write)
{
    BIO *out = BIO_new(BIO_s_mem());
    if (!write(out))
        qFatal("cannot write a test's certificate");
    char *data = nullptr;
    const long size = BIO_get_mem_data(out, &data);
    const QByteArray bytes(data, static_cast<int>(size));
    BIO_free_all(out);
    return bytes;
}
} // namespace

struct TestCertificate::Parts
{
    EVP_PKEY *key = EVP_EC_gen("P-256");
    X509 *certificate = X509_new();

    Parts() = default;
    Parts(const Parts &) = delete;
    Parts &operator=(const Parts &) = delete;
    ~Parts()
    {
        X509_free(certificate);
        EVP_PKEY_free(key);
    }
};

TestCertificate::TestCertificate(const QByteArray &commonName, int fromDay, int toDay)
    : m_parts(std::make_unique<Parts>())
{
    X509 *certificate = m_parts->certificate;
    X509_set_version(certificate, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), 4711);
    X509_time_adj_ex(X509_getm_notBefore(certificate), fromDay, 0, nullptr);
    X509_time_adj_ex(X509_getm_notAfter(certificate), toDay, 0, nullptr);
    X509_set_pubkey(certificate, m_parts->key);
    // Past the table of allowed lengths, as a hostile certificate is.
    X509_NAME *name = X509_get_subject_name(certificate);
    ASN1_STRING *text = ASN1_STRING_type_new(V_ASN1_UTF8STRING);
    ASN1_STRING_set(text, commonName.constData(), commonName.size());
    X509_NAME_ENTRY *entry
        = X509_NAME_ENTRY_create_by_NID(nullptr, NID_commonName, V_ASN1_UTF8STRING, nullptr, 0);
    X509_NAME_ENTRY_set_data(entry, V_ASN1_UTF8STRING, ASN1_STRING_get0_data(text), ASN1_STRING_length(text));
    X509_NAME_add_entry(name, entry, -1, 0);
    X509_NAME_ENTRY_free(entry);
    ASN1_STRING_free(text);
    X509_set_issuer_name(certificate, name);
    if (!X509_sign(certificate, m_parts->key, EVP_sha256()))
        qFatal("cannot sign a test's certificate");
}

TestCertificate::~TestCertificate() = default;

QByteArray TestCertificate::der() const
{
    return written([this](BIO *out) { return i2d_X509_bio(out, m_parts->certificate); });
}

QByteArray TestCertificate::pem() const
{
    return written([this](BIO *out) { return PEM_write_bio_X509(out, m_parts->certificate); });
}

QByteArray TestCertificate::keyPem() const
{
    return written([this](BIO *out) {
        return PEM_write_bio_PKCS8PrivateKey(out, m_parts->key, nullptr, nullptr, 0, nullptr, nullptr);
    });
}

QByteArray TestCertificate::pkcs12(const QByteArray &password) const
{
    Pkcs12 options;
    options.password = password;
    return pkcs12(options);
}

QByteArray TestCertificate::pkcs12(const Pkcs12 &options) const
{
    OSSL_PROVIDER *current = OSSL_PROVIDER_load(nullptr, "default");
    OSSL_PROVIDER *old = options.oldCiphers ? OSSL_PROVIDER_load(nullptr, "legacy") : nullptr;
    int keyCipher = options.oldCiphers ? NID_pbe_WithSHA1And3_Key_TripleDES_CBC : NID_aes_256_cbc;
    int cipher = options.oldCiphers ? NID_pbe_WithSHA1And40BitRC2_CBC : NID_aes_256_cbc;
    if (!options.encrypted)
        cipher = keyCipher = -1;
    const char *password = options.password.constData();
    // Bag by bag: the ready-made function refuses a key beside another's certificate.
    STACK_OF(PKCS12_SAFEBAG) *certificates = nullptr;
    PKCS12_add_cert(&certificates, (options.other ? options.other : this)->m_parts->certificate);
    if (options.chain)
        PKCS12_add_cert(&certificates, options.chain->m_parts->certificate);
    STACK_OF(PKCS7) *safes = nullptr;
    PKCS12_add_safe(&safes, certificates, cipher, options.rounds, password);
    STACK_OF(PKCS12_SAFEBAG) *keys = nullptr;
    if (options.withKey) {
        PKCS12_add_key(&keys, m_parts->key, 0, options.rounds, keyCipher, password);
        PKCS12_add_safe(&safes, keys, -1, 0, nullptr);
    }
    PKCS12 *file = PKCS12_add_safes(safes, 0);
    if (options.withMac)
        PKCS12_set_mac(file, password, -1, nullptr, 0, options.macRounds, nullptr);
    const QByteArray bytes = written([file](BIO *out) { return i2d_PKCS12_bio(out, file); });
    PKCS12_free(file);
    sk_PKCS7_pop_free(safes, PKCS7_free);
    sk_PKCS12_SAFEBAG_pop_free(certificates, PKCS12_SAFEBAG_free);
    sk_PKCS12_SAFEBAG_pop_free(keys, PKCS12_SAFEBAG_free);
    OSSL_PROVIDER_unload(old);
    OSSL_PROVIDER_unload(current);
    return bytes;
}
