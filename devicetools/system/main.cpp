// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/hosttools.h"
#include "devicetools-system/keyboardtools.h"
#include "devicetools-system/timetools.h"
#include "devicetools/tool.h"

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"kt-set-hostname", "-j | -r",
          "Names the machine as the configuration document says, or (-r) as it was delivered.\n", 28,
          HostTools::setHostName},
         {"kt-lulling", "-s | -r | -S", "Switches the machine off, restarts it, or puts it to sleep.\n", 28,
          HostTools::lulling},
         {"kt-set-keyboard", "CODE LAYOUT | --stored",
          "Sets the keyboard layout, as in \"de\" or \"de(nodeadkeys)\", now and after each restart. CODE "
          "counts\n"
          "without a LAYOUT. --stored sets that of the configuration document, until the X server ends.\n",
          28, KeyboardTools::setKeyboard},
         {"kt-set-ntp-server", "SERVER...",
          "Sets the clock from these servers, now and after each restart.\n", 28, TimeTools::setNtpServer},
         {"kt-set-timezone", "ZONE", "Sets the time zone, as in \"Europe/Berlin\".\n", 28,
          TimeTools::setTimeZone}});
}
