// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/displaytools.h"
#include "devicetools/tool.h"

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"kt-set-resolution", "[GROUP CODE | -m]",
          "Sets the monitor's preferred mode, or the one that tvservice lists under this group (DMT,\n"
          "CEA) and code. A second display follows the configuration document. -m prints the mode that\n"
          "is set.\n",
          20, DisplayTools::setResolution}});
}
