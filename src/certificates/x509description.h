// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificate.h"
#include "certificates/opensslpointers.h"

/// Reads the contents of a certificate for display.
Certificate describe(X509 &certificate);
