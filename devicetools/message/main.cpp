// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/tool.h"
#include "launchermessage/launchermessage.h"

namespace {

int run(const QStringList &arguments)
{
    const auto message = LauncherMessage::fromArguments(arguments);
    if (!message)
        return Tool::reject(QStringLiteral("no such message"));
    return LauncherMessage::send(*message) ? Tool::Done
                                           : Tool::fail(QStringLiteral("cannot write /tmp/msg.json"));
}

} // namespace

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"kt-message", "network eth0|wlan0 link|connected|\"no link\" | display add|remove | audio",
          "Tells the launcher that a link, the second display or the sound devices have changed.\n", 5,
          run}});
}
