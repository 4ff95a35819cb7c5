// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "target.h"

#include "services/connectionfile.h"

// What a session client, or anybody else who may write there, leaves as a session's outcome.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto verdict
        = ConnectionFile::classify(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    require(verdict >= ConnectionFile::Verdict::NoError
                && verdict <= ConnectionFile::Verdict::ConnectionFailed,
            "one of the verdicts");
    return 0;
}
