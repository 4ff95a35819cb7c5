// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

struct Readings;

namespace Table {

/// Prints the figures beside their limits, as tables that can be read as they are and as Markdown.
void print(const Readings &all);

} // namespace Table
