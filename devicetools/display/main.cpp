// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/displaytools.h"
#include "devicetools/tool.h"

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"tvservice", "-j -m DMT|CEA | -a",
          "Prints the monitor's modes of this group as a JSON array, or with -a the sound formats that a\n"
          "connected monitor plays.\n",
          20, DisplayTools::tvService},
         {"report-display", "",
          "Lays out the screen by the configuration document, and tells the launcher whether there is a\n"
          "second display.\n",
          20, DisplayTools::reportDisplay},
         {"set-blanking", "[never]",
          "Blanks the screen after the time that the configuration document says, or never.\n", 10,
          DisplayTools::setBlanking},
         {"restore-display", "", "Sets modes, layout, keyboard and blanking by the configuration document.\n",
          15, DisplayTools::restoreDisplay}});
}
