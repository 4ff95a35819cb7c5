// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/generatedfile.h"
#include "devicetools-system/timetools.h"
#include "devicetools/tool.h"

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"make-lists", "[FOLDER]",
          "Makes the lists of keyboard layouts and time zones from the machine's data, in /etc by default.\n",
          28, GeneratedFile::makeLists},
         {"use-ntp-server", "",
          "Hands the stored time servers to the synchroniser, which has just started.\n", 28,
          TimeTools::useNtpServer},
         {"date", "-s TIME", "Sets the clock to a time such as \"5 Mar 2024 07:08:09\".\n", 28,
          TimeTools::setClock}});
}
