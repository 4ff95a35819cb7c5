// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

/// A test program that includes this uses the device's port or broadcasts. Outside of the lab's network
/// namespace it ends as skipped before its first test.
inline const bool runsInNamespace = [] {
    if (qgetenv("KT_LAB_NAMESPACE") == "inside")
        return true;
    std::puts("SKIP: this test belongs into the lab's network namespace, see lab/in-namespace");
    constexpr int skipped = 77;
    std::exit(skipped);
}();
