// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

// Included before everything in a build for fuzzing, and by scripts/tidy. The constants of type QLatin1String
// measure their texts, which clang does while it compiles under the built-in name only.
#include <cstring>
constexpr std::size_t lengthOfText(const char *text)
{
    return __builtin_strlen(text);
}
namespace std {
using ::lengthOfText;
}
#define strlen lengthOfText
