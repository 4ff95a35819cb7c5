// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-firmware/proxydownload.h"
#include "devicetools/tool.h"

#include <cstring>

namespace {

constexpr int limitSeconds = 29;
char **programArguments = nullptr;

/// Everyone on the machine can read a process's arguments, and two of ours hold passwords.
void hideArguments()
{
    for (char **argument = programArguments + 1; *argument; ++argument)
        std::memset(*argument, ' ', std::strlen(*argument));
}

int run(const QStringList &arguments)
{
    const auto download = ProxyDownload::from(arguments, QStringLiteral("/var/lib/updates/new-firmware.img"));
    hideArguments();
    if (!download)
        return Tool::WrongUsage;
    const QString problem = download->run();
    return problem.isEmpty() ? Tool::Done : Tool::fail(problem);
}

} // namespace

int main(int argc, char **argv)
{
    programArguments = argv;
    return Tool::main(
        argc, argv,
        {{"kt-ftp-proxy-update", "URL HOST PORT USER PASSWORD",
          "Fetches a firmware image from an FTP server through the HTTP proxy HOST. USER may be empty.\n",
          limitSeconds, run}});
}
