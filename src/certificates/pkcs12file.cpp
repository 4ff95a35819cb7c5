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

/// The algorithms to open a file with. Many a client certificate was made years ago, with ciphers that the
/// default provider has given up; they are available in here alone, not in the process.
class Algorithms
{
public:
    Algorithms()
        : m_context(OSSL_LIB_CTX_new())
        , m_current(OSSL_PROVIDER_load(m_context.get(), "default"))
        , m_old(OSSL_PROVIDER_load(m_context.get(), "legacy"))
    { }

    OSSL_LIB_CTX *get() const { return m_context.get(); }

private:
    using Provider = std::unique_ptr<OSSL_PROVIDER, OpenSsl::Release<OSSL_PROVIDER_unload>>;

    OpenSsl::Context m_context; // outlives its providers
    Provider m_current;
    Provider m_old;
};

/// How often the key derivation that `algorithm` names goes round; nothing when it is one we do not open.
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

/// One opening of one file.
class Opening
{
public:
    explicit Opening(const QByteArray &bytes);
    ~Opening() { PKCS12_free(m_file); }
    Opening(const Opening &) = delete;
    Opening &operator=(const Opening &) = delete;

    Pkcs12Content run(const QByteArray &password);

private:
    Status checkPassword(const QByteArray &password);
    bool verify(const char *password);
    Status takeSafes();
    Status takeSafe(PKCS7 *safe);
    Status takeBags(const STACK_OF(PKCS12_SAFEBAG) * bags, int depth);
    Status takeBag(const PKCS12_SAFEBAG *bag, int depth);
    Status takeShroudedKey(const PKCS12_SAFEBAG *bag);
    bool takeKey(const PKCS8_PRIV_KEY_INFO *info);
    bool canAfford(std::optional<long> rounds);
    /// What a decryption that failed means.
    Status failed() const { return m_verified ? Status::Unsupported : Status::WrongPassword; }

    Algorithms m_algorithms;
    PKCS12 *m_file = nullptr;
    const char *m_password = nullptr;
    bool m_verified = false;
    long m_roundsLeft = roundsLimit;
    Pkcs12Content m_content;
};

Opening::Opening(const QByteArray &bytes)
{
    const OpenSsl::Bio in(BIO_new_mem_buf(bytes.constData(), bytes.size()));
    m_file = PKCS12_init_ex(NID_pkcs7_data, m_algorithms.get(), nullptr);
    if (m_file && in && !d2i_PKCS12_bio(in.get(), &m_file)) {
        PKCS12_free(m_file); // null already when the parse had begun
        m_file = nullptr;
    }
}

Pkcs12Content Opening::run(const QByteArray &password)
{
    if (!m_file)
        return {};
    m_content.status = checkPassword(password);
    if (m_content.status == Status::Opened)
        m_content.status = takeSafes();
    return std::move(m_content);
}

bool Opening::canAfford(std::optional<long> rounds)
{
    if (!rounds || *rounds < 0 || *rounds > m_roundsLeft)
        return false;
    m_roundsLeft -= *rounds;
    return true;
}

bool Opening::verify(const char *password)
{
    if (!PKCS12_verify_mac(m_file, password, -1))
        return false;
    m_password = password;
    m_verified = true;
    return true;
}

Status Opening::checkPassword(const QByteArray &password)
{
    m_password = password.constData();
    if (!PKCS12_mac_present(m_file))
        return Status::Opened;
    const ASN1_INTEGER *rounds = nullptr;
    PKCS12_get0_mac(nullptr, nullptr, nullptr, &rounds, m_file);
    if (!canAfford(rounds ? ASN1_INTEGER_get(rounds) : 1))
        return Status::Unsupported;
    // No password and an empty one are not the same, and both are written.
    if (verify(password.constData()) || (password.isEmpty() && verify(nullptr)))
        return Status::Opened;
    return Status::WrongPassword;
}

Status Opening::takeSafes()
{
    const SafeStack all{PKCS12_unpack_authsafes(m_file)};
    if (!all.safes)
        return Status::Unsupported;
    for (int i = 0; i < sk_PKCS7_num(all.safes); ++i) {
        const Status status = takeSafe(sk_PKCS7_value(all.safes, i));
        if (status != Status::Opened)
            return status;
    }
    return Status::Opened;
}

Status Opening::takeSafe(PKCS7 *safe)
{
    if (PKCS7_type_is_data(safe)) {
        const BagStack plain{PKCS12_unpack_p7data(safe)};
        return plain.bags ? takeBags(plain.bags, 0) : Status::Unsupported;
    }
    if (!PKCS7_type_is_encrypted(safe) || !safe->d.encrypted || !safe->d.encrypted->enc_data
        || !canAfford(roundsOf(safe->d.encrypted->enc_data->algorithm)))
        return Status::Unsupported;
    const BagStack opened{PKCS12_unpack_p7encdata(safe, m_password, -1)};
    return opened.bags ? takeBags(opened.bags, 0) : failed();
}

Status Opening::takeBags(const STACK_OF(PKCS12_SAFEBAG) * bags, int depth)
{
    for (int i = 0; i < sk_PKCS12_SAFEBAG_num(bags); ++i) {
        const Status status = takeBag(sk_PKCS12_SAFEBAG_value(bags, i), depth);
        if (status != Status::Opened)
            return status;
    }
    return Status::Opened;
}

Status Opening::takeBag(const PKCS12_SAFEBAG *bag, int depth)
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
        return takeKey(PKCS12_SAFEBAG_get0_p8inf(bag)) ? Status::Opened : Status::Unsupported;
    case NID_pkcs8ShroudedKeyBag:
        return takeShroudedKey(bag);
    case NID_safeContentsBag:
        return depth < depthLimit ? takeBags(PKCS12_SAFEBAG_get0_safes(bag), depth + 1) : Status::Unsupported;
    default:
        return Status::Opened;
    }
}

Status Opening::takeShroudedKey(const PKCS12_SAFEBAG *bag)
{
    const X509_ALGOR *algorithm = nullptr;
    if (const X509_SIG *shrouded = PKCS12_SAFEBAG_get0_pkcs8(bag))
        X509_SIG_get0(shrouded, &algorithm, nullptr);
    if (!canAfford(roundsOf(algorithm)))
        return Status::Unsupported;
    const OpenSsl::KeyInfo info(PKCS12_decrypt_skey_ex(bag, m_password, -1, m_algorithms.get(), nullptr));
    if (!info)
        return failed();
    return takeKey(info.get()) ? Status::Opened : Status::Unsupported;
}

bool Opening::takeKey(const PKCS8_PRIV_KEY_INFO *info)
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
    return Opening(bytes).run(password);
}
