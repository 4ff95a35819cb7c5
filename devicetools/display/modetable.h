// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <vector>

/// A picture's timing: what distinguishes two modes of one size.
struct ModeTiming
{
    int width = 0;
    int height = 0;          ///< of the whole picture, also if it is interlaced
    int horizontalTotal = 0; ///< with the blanking
    int verticalTotal = 0;
    int clockKhz = 0;
    bool interlaced = false;
};

enum class ModeGroup { Dmt, Cea };

/// The modes that the standards give a code.
namespace ModeTable {

struct StandardMode
{
    int code;
    ModeTiming timing;
};

const std::vector<StandardMode> &of(ModeGroup group);

} // namespace ModeTable
