// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/opensslpointers.h"

#include <QByteArray>

#include <optional>
#include <vector>

/// What a PKCS#12 file holds, once its password has opened it.
struct Pkcs12Content
{
    enum class Status { NotPkcs12, WrongPassword, Unsupported, Opened };

    Status status = Status::NotPkcs12;
    std::vector<OpenSsl::Certificate> certificates;
    std::vector<OpenSsl::Key> keys;
};

/// `password` is UTF-8; an empty one also opens a file that has none. A file can ask for any number of rounds
/// to make its keys from the password: one that asks for more than a device does in seconds is not opened.
Pkcs12Content openPkcs12(const QByteArray &bytes, const QByteArray &password);
