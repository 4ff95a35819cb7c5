// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/opensslpointers.h"

#include <QByteArray>

#include <optional>
#include <vector>

/// The contents of an opened PKCS#12 file.
struct Pkcs12Content
{
    enum class Status { NotPkcs12, WrongPassword, Unsupported, Opened };

    Status status = Status::NotPkcs12;
    std::vector<OpenSsl::Certificate> certificates;
    std::vector<OpenSsl::Key> keys;
};

/// `password` is UTF-8; an empty one also opens a file without a password. A file states how many rounds
/// derive its keys from the password; files that would take the device more than some seconds are not opened.
Pkcs12Content openPkcs12(const QByteArray &bytes, const QByteArray &password);
