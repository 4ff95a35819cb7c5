// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <openssl/bio.h>
#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pkcs12.h>
#include <openssl/x509.h>

#include <memory>

/// Smart pointers for libcrypto's objects, for this library's own source files only.
namespace OpenSsl {

template <auto release>
struct Release
{
    template <typename Object>
    void operator()(Object *object) const
    {
        release(object);
    }
};

using Bio = std::unique_ptr<BIO, Release<BIO_free_all>>;
using Certificate = std::unique_ptr<X509, Release<X509_free>>;
using Context = std::unique_ptr<OSSL_LIB_CTX, Release<OSSL_LIB_CTX_free>>;
using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using KeyInfo = std::unique_ptr<PKCS8_PRIV_KEY_INFO, Release<PKCS8_PRIV_KEY_INFO_free>>;
using EncryptedKey = std::unique_ptr<X509_SIG, Release<X509_SIG_free>>;

/// Clears the thread's error queue at the start and the end of a scope, so that the next user of the library
/// does not find our errors there.
class ErrorQueue
{
public:
    ErrorQueue() { ERR_clear_error(); }
    ~ErrorQueue() { ERR_clear_error(); }
    ErrorQueue(const ErrorQueue &) = delete;
    ErrorQueue &operator=(const ErrorQueue &) = delete;
};

} // namespace OpenSsl
