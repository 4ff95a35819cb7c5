// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "testgroup.h"

/// A test class whose file includes this uses the device's port or broadcasts. Outside of the lab's network
/// namespace it ends as skipped before its first test; other classes of the same program run.
#undef KT_TEST_ONLY_IN_NAMESPACE
#define KT_TEST_ONLY_IN_NAMESPACE true
