// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/options.h"

QString helpText()
{
    return QString::fromUtf8(R"(kt-console: manages KT964 devices from the command line

Usage: kt-console COMMAND [DEVICE ...] [OPTION ...]

Commands
  info                        identity, firmware, network and session of each device
  get-config                  the configuration document, passwords included
  set-config FILE             merges FILE into the configuration; "-" is standard input
  reset                       restarts the device
  update latest               firmware: the newest that a Corvid server in the device's subnet offers
  update URL                  firmware from an ftp:// or http:// URL
  update server SERVER FILE   firmware: that file of that Corvid server, by its name or address

Devices
  DEVICE                      an address or a name; any number of them
  -t, --targets FILE          one address or name on each line; "#" begins a comment, "-" is standard input
  -s, --subnet                every device that answers in the subnets of this machine
      --broadcast ADDRESS     every device that answers to this broadcast address

Options
  -j, --json                  one JSON object for each device, one on each line
  -o, --output FOLDER         get-config: writes FOLDER/ADDRESS.json, readable by you alone
  -n, --dry-run               set-config: shows what would change, and changes nothing
  -y, --yes                   does not ask before a subnet is changed
  -u, --user NAME             update URL: the user name there ("anonymous" when none is given)
      --password-file FILE    update URL: the password there, the file's first line
      --timeout SECONDS       waits so long for each answer (3); with a subnet, for all of them
      --retries NUMBER        asks so many times more when no answer comes (2)
      --parallel NUMBER       asks at most so many devices at once (300)
      --port PORT             where the devices listen (1027)
  -q, --quiet                 no progress line; there is none without a terminal
      --version, -h, --help

The password of an update can also stand in the environment: KT_CONSOLE_PASSWORD. All of this protocol, passwords
included, crosses the network as plain text.

What is done when no answer comes
  info, get-config            asked again
  set-config                  the configuration is read back, and FILE is sent again only if it is not in it
  reset, update               sent once and never again: whether the device took it is then unknown

set-config reads the device's configuration first and sends what differs, nothing when nothing does. A device takes
only keys that it has, with values of the type that they have; arrays are replaced whole. FILE need not state a
"configuration version"; one of an older version is brought up to date. After taking it the device shows its launcher
anew, or does so when the running session ends.

A device that is busy with a firmware update refuses. One with a running session remembers an update and refuses it for
now; it begins when the session ends.

Exit status
  0  everything is done
  1  a device has refused, or has sent what cannot be used
  2  the command line is wrong
  3  a device has not answered (and none has refused)
  4  trouble on this side: a file, an unknown name, a configuration of another version; or you said no

Examples
  kt-console info --subnet
  kt-console get-config 10.0.3.17 > ward3.json
  kt-console set-config general.json --targets ward3.txt --dry-run
  KT_CONSOLE_PASSWORD=secret kt-console update ftp://10.0.0.2/kt964.img --user firmware 10.0.3.17
)");
}
