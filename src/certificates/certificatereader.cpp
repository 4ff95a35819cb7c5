// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificatereader.h"

#include "certificates/opensslpointers.h"
#include "certificates/pkcs12file.h"
#include "certificates/x509description.h"

#include <openssl/pem.h>

#include <vector>

namespace CertificateReader {

namespace {

const unsigned char *start(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

Content failure(CertificateError error)
{
    Content content;
    content.error = error;
    return content;
}

Content described(const std::vector<OpenSsl::Certificate> &certificates)
{
    if (certificates.size() > countLimit)
        return failure(CertificateError::TooMany);
    Content content;
    for (const OpenSsl::Certificate &certificate : certificates)
        content.certificates += describe(*certificate);
    return content;
}

/// Moves the certificate that belongs to one of the keys to the front; false when there is none.
bool putOwnFirst(Pkcs12Content &content)
{
    for (const OpenSsl::Key &key : content.keys) {
        for (OpenSsl::Certificate &certificate : content.certificates) {
            if (X509_check_private_key(certificate.get(), key.get()) == 1) {
                std::swap(certificate, content.certificates.front());
                return true;
            }
        }
    }
    return false;
}

Content readOpened(Pkcs12Content &opened)
{
    const bool hasKey = !opened.keys.empty();
    if (hasKey && !putOwnFirst(opened))
        return failure(CertificateError::KeyWithoutCertificate);
    if (opened.certificates.empty())
        return failure(CertificateError::NotACertificate);
    Content content = described(opened.certificates);
    content.hasKey = hasKey;
    return content;
}

/// Returns nothing if the bytes are not a PKCS#12 file.
std::optional<Content> readPkcs12(const QByteArray &bytes, const std::optional<QString> &password)
{
    Pkcs12Content opened = openPkcs12(bytes, password.value_or(QString()).toUtf8());
    switch (opened.status) {
    case Pkcs12Content::Status::NotPkcs12:
        return std::nullopt;
    case Pkcs12Content::Status::WrongPassword:
        return failure(password ? CertificateError::WrongPassword : CertificateError::PasswordNeeded);
    case Pkcs12Content::Status::Unsupported:
        return failure(CertificateError::Unsupported);
    case Pkcs12Content::Status::Opened:
        break;
    }
    return readOpened(opened);
}

/// Returns nothing if the bytes are not certificates up to their end.
std::optional<Content> readDer(const QByteArray &bytes)
{
    std::vector<OpenSsl::Certificate> certificates;
    const unsigned char *position = start(bytes);
    const unsigned char *end = position + bytes.size();
    while (position < end) {
        OpenSsl::Certificate certificate(d2i_X509(nullptr, &position, end - position));
        if (!certificate)
            return std::nullopt;
        certificates.push_back(std::move(certificate));
    }
    return described(certificates);
}

bool isDerKey(const QByteArray &bytes)
{
    const unsigned char *position = start(bytes);
    const OpenSsl::Key key(d2i_AutoPrivateKey(nullptr, &position, bytes.size()));
    position = start(bytes);
    const OpenSsl::EncryptedKey encrypted(d2i_X509_SIG(nullptr, &position, bytes.size()));
    return key || encrypted;
}

struct PemBlock
{
    char *name = nullptr;
    char *header = nullptr;
    unsigned char *data = nullptr;
    long size = 0;

    PemBlock() = default;
    PemBlock(const PemBlock &) = delete;
    PemBlock &operator=(const PemBlock &) = delete;
    ~PemBlock()
    {
        OPENSSL_free(name);
        OPENSSL_free(header);
        OPENSSL_clear_free(data, static_cast<size_t>(size));
    }

    bool isKey() const { return QByteArray(name).endsWith("PRIVATE KEY"); }
    bool isTrusted() const { return qstrcmp(name, PEM_STRING_X509_TRUSTED) == 0; }
    bool isCertificate() const
    {
        return qstrcmp(name, PEM_STRING_X509) == 0 || qstrcmp(name, PEM_STRING_X509_OLD) == 0 || isTrusted();
    }
    OpenSsl::Certificate certificate() const
    {
        const unsigned char *position = data;
        return OpenSsl::Certificate(isTrusted() ? d2i_X509_AUX(nullptr, &position, size)
                                                : d2i_X509(nullptr, &position, size));
    }
};

bool atEndOfPem()
{
    const unsigned long error = ERR_peek_last_error();
    return ERR_GET_LIB(error) == ERR_LIB_PEM && ERR_GET_REASON(error) == PEM_R_NO_START_LINE;
}

Content readPem(const QByteArray &bytes)
{
    std::vector<OpenSsl::Certificate> certificates;
    bool hasKey = false;
    const int mark = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0; // a byte order mark, which some editors add
    const OpenSsl::Bio in(BIO_new_mem_buf(bytes.constData() + mark, bytes.size() - mark));
    for (;;) {
        PemBlock block;
        if (PEM_read_bio(in.get(), &block.name, &block.header, &block.data, &block.size) != 1)
            break;
        hasKey = hasKey || block.isKey();
        if (!block.isCertificate())
            continue;
        certificates.push_back(block.certificate());
        if (!certificates.back())
            return failure(CertificateError::NotACertificate);
    }
    if (!atEndOfPem())
        return failure(CertificateError::NotACertificate);
    if (hasKey)
        return failure(certificates.empty() ? CertificateError::KeyWithoutCertificate
                                            : CertificateError::KeyOutsidePkcs12);
    return certificates.empty() ? failure(CertificateError::NotACertificate) : described(certificates);
}

} // namespace

Content read(const QByteArray &bytes, const std::optional<QString> &password)
{
    const OpenSsl::ErrorQueue errors;
    if (bytes.size() > sizeLimit)
        return failure(CertificateError::TooLarge);
    if (bytes.isEmpty())
        return failure(CertificateError::NotACertificate);
    if (const auto content = readPkcs12(bytes, password))
        return *content;
    if (const auto content = readDer(bytes))
        return *content;
    if (isDerKey(bytes))
        return failure(CertificateError::KeyWithoutCertificate);
    ERR_clear_error();
    return readPem(bytes);
}

QByteArray toPem(const Certificate &certificate)
{
    const OpenSsl::Bio out(BIO_new(BIO_s_mem()));
    if (!out
        || PEM_write_bio(out.get(), PEM_STRING_X509, "", start(certificate.der), certificate.der.size()) <= 0)
        return QByteArray();
    char *data = nullptr;
    const long size = BIO_get_mem_data(out.get(), &data);
    return QByteArray(data, static_cast<int>(size));
}

} // namespace CertificateReader
