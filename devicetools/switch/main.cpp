// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/tool.h"
#include "servicemanager.h"

namespace {

constexpr char launcher[] = "kt964.service";
constexpr char desktop[] = "kt964-desktop.target";

int finish(const ServiceManager::Reply &reply)
{
    return reply.accepted ? Tool::Done : Tool::fail(reply.error);
}

int run(const QStringList &arguments)
{
    if (arguments.isEmpty()) {
        // Somebody wants it now, however often it has failed. A launcher that never failed has nothing to
        // reset.
        ServiceManager::resetFailed(launcher);
        return finish(ServiceManager::start(launcher));
    }
    if (arguments == QStringList{QStringLiteral("-r")})
        return finish(ServiceManager::restart(launcher));
    if (arguments != QStringList{QStringLiteral("-d")})
        return Tool::reject(QStringLiteral("one option at most"));
    const ServiceManager::Reply reply = ServiceManager::start(desktop);
    return reply.noSuchUnit ? Tool::fail(QStringLiteral("no desktop is installed on this machine"))
                            : finish(reply);
}

} // namespace

int main(int argc, char **argv)
{
    return Tool::main(argc, argv,
                      {{"kt-switch", "[-d | -r]",
                        "Shows the launcher in place of the machine's desktop.\n"
                        "  -d  shows the desktop in place of the launcher, until the machine is restarted\n"
                        "  -r  starts the launcher anew, in the client mode of the configuration document\n",
                        20, run}});
}
