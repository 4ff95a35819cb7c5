// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/x509description.h"

#include <openssl/x509v3.h>

#include <QCryptographicHash>

#include <algorithm>
#include <ctime>

namespace {

constexpr int longestName = 64;

constexpr unsigned long nameFlags = XN_FLAG_SEP_CPLUS_SPC | XN_FLAG_FN_SN | ASN1_STRFLGS_ESC_2253
    | ASN1_STRFLGS_ESC_CTRL | ASN1_STRFLGS_UTF8_CONVERT | ASN1_STRFLGS_DUMP_UNKNOWN | ASN1_STRFLGS_DUMP_DER;

QString cut(const QString &text, int length)
{
    return text.size() > length ? text.left(length) + QChar(0x2026) : text;
}

QString wholeName(const X509_NAME *name)
{
    const OpenSsl::Bio out(BIO_new(BIO_s_mem()));
    if (!out || X509_NAME_print_ex(out.get(), name, 0, nameFlags) < 0)
        return QString();
    char *data = nullptr;
    const long size = BIO_get_mem_data(out.get(), &data);
    return displayable(QString::fromUtf8(data, static_cast<int>(size)));
}

QString part(const X509_NAME *name, int nid)
{
    const int position = X509_NAME_get_index_by_NID(name, nid, -1);
    if (position < 0)
        return QString();
    unsigned char *utf8 = nullptr;
    const int size
        = ASN1_STRING_to_UTF8(&utf8, X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, position)));
    if (size < 0)
        return QString();
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(utf8), size);
    OPENSSL_free(utf8);
    return displayable(text).trimmed();
}

QString shortName(const X509_NAME *name)
{
    for (const int nid : {NID_commonName, NID_organizationalUnitName, NID_organizationName}) {
        const QString text = part(name, nid);
        if (!text.isEmpty())
            return cut(text, longestName);
    }
    return cut(wholeName(name), longestName);
}

QString serialOf(const X509 &certificate)
{
    QString text;
    if (BIGNUM *number = ASN1_INTEGER_to_BN(X509_get0_serialNumber(&certificate), nullptr)) {
        if (char *digits = BN_bn2hex(number)) {
            text = QString::fromLatin1(digits);
            OPENSSL_free(digits);
        }
        BN_free(number);
    }
    return displayable(text);
}

QString keyOf(const X509 &certificate)
{
    const EVP_PKEY *key = X509_get0_pubkey(&certificate);
    const char *kind = key ? EVP_PKEY_get0_type_name(key) : nullptr;
    if (!kind)
        return QString();
    return QStringLiteral("%1, %2 bits").arg(QString::fromLatin1(kind)).arg(EVP_PKEY_get_bits(key));
}

QDateTime timeOf(const ASN1_TIME *time)
{
    std::tm parts{};
    if (!time || ASN1_TIME_to_tm(time, &parts) != 1)
        return QDateTime();
    const QDate date(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday);
    return QDateTime(date, QTime(parts.tm_hour, parts.tm_min, std::min(parts.tm_sec, 59)), Qt::UTC);
}

QByteArray derOf(const X509 &certificate)
{
    unsigned char *bytes = nullptr;
    const int size = i2d_X509(&certificate, &bytes);
    if (size <= 0)
        return QByteArray();
    QByteArray der(reinterpret_cast<const char *>(bytes), size);
    OPENSSL_free(bytes);
    return der;
}

} // namespace

Certificate describe(X509 &certificate)
{
    Certificate result;
    const X509_NAME *subject = X509_get_subject_name(&certificate);
    const X509_NAME *issuer = X509_get_issuer_name(&certificate);
    result.name = shortName(subject);
    result.issuerName = shortName(issuer);
    result.subject = wholeName(subject);
    result.issuer = wholeName(issuer);
    result.serial = serialOf(certificate);
    result.key = keyOf(certificate);
    result.validFrom = timeOf(X509_get0_notBefore(&certificate));
    result.validTo = timeOf(X509_get0_notAfter(&certificate));
    result.der = derOf(certificate);
    result.fingerprint = QCryptographicHash::hash(result.der, QCryptographicHash::Sha256).toHex();
    result.authority = X509_check_ca(&certificate) > 0;
    return result;
}
