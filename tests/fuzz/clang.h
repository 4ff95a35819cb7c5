// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

// Included before everything in a build for fuzzing, and by scripts/tidy. The constants of type QLatin1String
// measure their texts, which clang does while it compiles under this name only.
#include <cstring>
#define strlen __builtin_strlen
