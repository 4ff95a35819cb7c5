// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/pkcs12file.h"

#include <openssl/provider.h>

namespace {

using Status = Pkcs12Content::Status;

constexpr long roundsLimit = 4000000;
constexpr int depthLimit = 4;

struct BagStack
{
    STACK_OF(PKCS12_SAFEBAG) * bags;
    ~BagStack() { sk_PKCS12_SAFEBAG_pop_free(bags, PKCS12_SAFEBAG_free); }
};

struct SafeStack
{
    STACK_OF(PKCS7) * safes;
    ~SafeStack() { sk_PKCS7_pop_free(safes, PKCS7_free); }
};

/// The algorithms for opening a file. Old client certificates use ciphers that the default provider no longer
/// has; the legacy provider is available only here, not in the whole process.
class Algorithms
{
public:
    Algorithms()
        : m_context(OSSL_LIB_CTX_new())
        , m_default(OSSL_PROVIDER_load(m_context.get(), "default"))
        , m_legacy(OSSL_PROVIDER_load(m_context.get(), "legacy"))
    { }

    OSSL_LIB_CTX *get() const { return m_context.get(); }

private:
    using Provider = std::unique_ptr<OSSL_PROVIDER, OpenSsl::Release<OSSL_PROVIDER_unload>>;

    OpenSsl::Context m_context; // destroyed after its providers
    Provider m_default;
    Provider m_legacy;
};

/// The number of rounds of a key derivation; nothing if the algorithm is unsupported.
std::optional<long> roundsOf(const X509_ALGOR *algorithm)
{
    if (!algorithm)
        return std::nullopt;
    const ASN1_OBJECT *object = nullptr;
    int type = 0;
    const void *value = nullptr;
    X509_ALGOR_get0(&object, &type, &value, algorithm);
    if (type != V_ASN1_SEQUENCE)
        return std::nullopt;
    const int nid = OBJ_obj2nid(object);
    const auto *sequence = static_cast<const ASN1_STRING *>(value);
    std::optional<long> rounds;
    if (nid == NID_pbes2) {
        if (auto *parts = static_cast<PBE2PARAM *>(ASN1_item_unpack(sequence, ASN1_ITEM_rptr(PBE2PARAM)))) {
            if (parts->keyfunc && OBJ_obj2nid(parts->keyfunc->algorithm) == NID_id_pbkdf2)
                rounds = roundsOf(parts->keyfunc);
            PBE2PARAM_free(parts);
        }
    } else if (nid == NID_id_pbkdf2) {
        if (auto *parts
            = static_cast<PBKDF2PARAM *>(ASN1_item_unpack(sequence, ASN1_ITEM_rptr(PBKDF2PARAM)))) {
            rounds = ASN1_INTEGER_get(parts->iter);
            PBKDF2PARAM_free(parts);
        }
    } else if (auto *parts = static_cast<PBEPARAM *>(ASN1_item_unpack(sequence, ASN1_ITEM_rptr(PBEPARAM)))) {
        rounds = ASN1_INTEGER_get(parts->iter);
        PBEPARAM_free(parts);
    }
    return rounds;
}

/// Reads one file once.
class Pkcs12Reader
{
public:
    explicit Pkcs12Reader(const QByteArray &bytes);
    ~Pkcs12Reader() { PKCS12_free(m_file); }
    Pkcs12Reader(const Pkcs12Reader &) = delete;
    Pkcs12Reader &operator=(const Pkcs12Reader &) = delete;

    Pkcs12Content run(const QByteArray &password);

private:
    Status checkPassword(const QByteArray &password);
    bool verify(const char *password);
    Status readSafes();
    Status readSafe(PKCS7 *safe);
    Status readBags(const STACK_OF(PKCS12_SAFEBAG) * bags, int depth);
    Status readBag(const PKCS12_SAFEBAG *bag, int depth);
    Status readShroudedKey(const PKCS12_SAFEBAG *bag);
    bool addKey(const PKCS8_PRIV_KEY_INFO *info);
    bool spendRounds(std::optional<long> rounds);
    /// A failed decryption means a wrong password, unless the password has been verified.
    Status decryptionFailure() const { return m_verified ? Status::Unsupported : Status::WrongPassword; }

    Algorithms m_algorithms;
    PKCS12 *m_file = nullptr;
    const char *m_password = nullptr;
    bool m_verified = false;
    long m_roundsLeft = roundsLimit;
    Pkcs12Content m_content;
};

Pkcs12Reader::Pkcs12Reader(const QByteArray &bytes)
{
    const OpenSsl::Bio in(BIO_new_mem_buf(bytes.constData(), bytes.size()));
    m_file = PKCS12_init_ex(NID_pkcs7_data, m_algorithms.get(), nullptr);
    if (m_file && in && !d2i_PKCS12_bio(in.get(), &m_file)) {
        PKCS12_free(m_file); // null if the parser has released it
        m_file = nullptr;
    }
}

Pkcs12Content Pkcs12Reader::run(const QByteArray &password)
{
    if (!m_file)
        return {};
    m_content.status = checkPassword(password);
    if (m_content.status == Status::Opened)
        m_content.status = readSafes();
    return std::move(m_content);
}

bool Pkcs12Reader::spendRounds(std::optional<long> rounds)
{
    if (!rounds || *rounds < 0 || *rounds > m_roundsLeft)
        return false;
    m_roundsLeft -= *rounds;
    return true;
}

bool Pkcs12Reader::verify(const char *password)
{
    if (!PKCS12_verify_mac(m_file, password, -1))
        return false;
    m_password = password;
    m_verified = true;
    return true;
}

Status Pkcs12Reader::checkPassword(const QByteArray &password)
{
    m_password = password.constData();
    if (!PKCS12_mac_present(m_file))
        return Status::Opened;
    const ASN1_INTEGER *rounds = nullptr;
    PKCS12_get0_mac(nullptr, nullptr, nullptr, &rounds, m_file);
    if (!spendRounds(rounds ? ASN1_INTEGER_get(rounds) : 1))
        return Status::Unsupported;
    // Files without a password and files with an empty one differ, and both exist.
    if (verify(password.constData()) || (password.isEmpty() && verify(nullptr)))
        return Status::Opened;
    return Status::WrongPassword;
}

Status Pkcs12Reader::readSafes()
{
    const SafeStack all{PKCS12_unpack_authsafes(m_file)};
    if (!all.safes)
        return Status::Unsupported;
    for (int i = 0; i < sk_PKCS7_num(all.safes); ++i) {
        const Status status = readSafe(sk_PKCS7_value(all.safes, i));
        if (status != Status::Opened)
            return status;
    }
    return Status::Opened;
}

Status Pkcs12Reader::readSafe(PKCS7 *safe)
{
    if (PKCS7_type_is_data(safe)) {
        const BagStack plain{PKCS12_unpack_p7data(safe)};
        return plain.bags ? readBags(plain.bags, 0) : Status::Unsupported;
    }
    if (!PKCS7_type_is_encrypted(safe) || !safe->d.encrypted || !safe->d.encrypted->enc_data
        || !spendRounds(roundsOf(safe->d.encrypted->enc_data->algorithm)))
        return Status::Unsupported;
    const BagStack opened{PKCS12_unpack_p7encdata(safe, m_password, -1)};
    return opened.bags ? readBags(opened.bags, 0) : decryptionFailure();
}

Status Pkcs12Reader::readBags(const STACK_OF(PKCS12_SAFEBAG) * bags, int depth)
{
    for (int i = 0; i < sk_PKCS12_SAFEBAG_num(bags); ++i) {
        const Status status = readBag(sk_PKCS12_SAFEBAG_value(bags, i), depth);
        if (status != Status::Opened)
            return status;
    }
    return Status::Opened;
}

Status Pkcs12Reader::readBag(const PKCS12_SAFEBAG *bag, int depth)
{
    switch (PKCS12_SAFEBAG_get_nid(bag)) {
    case NID_certBag:
        if (PKCS12_SAFEBAG_get_bag_nid(bag) == NID_x509Certificate) {
            OpenSsl::Certificate certificate(PKCS12_SAFEBAG_get1_cert(bag));
            if (!certificate)
                return Status::Unsupported;
            m_content.certificates.push_back(std::move(certificate));
        }
        return Status::Opened;
    case NID_keyBag:
        return addKey(PKCS12_SAFEBAG_get0_p8inf(bag)) ? Status::Opened : Status::Unsupported;
    case NID_pkcs8ShroudedKeyBag:
        return readShroudedKey(bag);
    case NID_safeContentsBag:
        return depth < depthLimit ? readBags(PKCS12_SAFEBAG_get0_safes(bag), depth + 1) : Status::Unsupported;
    default:
        return Status::Opened;
    }
}

Status Pkcs12Reader::readShroudedKey(const PKCS12_SAFEBAG *bag)
{
    const X509_ALGOR *algorithm = nullptr;
    if (const X509_SIG *shrouded = PKCS12_SAFEBAG_get0_pkcs8(bag))
        X509_SIG_get0(shrouded, &algorithm, nullptr);
    if (!spendRounds(roundsOf(algorithm)))
        return Status::Unsupported;
    const OpenSsl::KeyInfo info(PKCS12_decrypt_skey_ex(bag, m_password, -1, m_algorithms.get(), nullptr));
    if (!info)
        return decryptionFailure();
    return addKey(info.get()) ? Status::Opened : Status::Unsupported;
}

bool Pkcs12Reader::addKey(const PKCS8_PRIV_KEY_INFO *info)
{
    OpenSsl::Key key(info ? EVP_PKCS82PKEY(info) : nullptr);
    if (!key)
        return false;
    m_content.keys.push_back(std::move(key));
    return true;
}

} // namespace

Pkcs12Content openPkcs12(const QByteArray &bytes, const QByteArray &password)
{
    return Pkcs12Reader(bytes).run(password);
}
