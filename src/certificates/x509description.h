// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificate.h"
#include "certificates/opensslpointers.h"

/// What a certificate says of itself.
Certificate describe(X509 &certificate);
