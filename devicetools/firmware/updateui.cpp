// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/tool.h"

#include <QFileInfo>

namespace {

constexpr int nothingToInstallInto = 3;

int run(const QStringList &arguments)
{
    if (!arguments.isEmpty())
        return Tool::WrongUsage;
    if (!QFileInfo(QStringLiteral("/var/lib/updates/new-firmware.img")).isFile())
        return Tool::fail(QStringLiteral("there is no image"));
    Tool::fail(QStringLiteral("nothing was installed: this machine does not run from a firmware image. "
                              "Update its packages."));
    return nothingToInstallInto;
}

} // namespace

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"update-ui", "",
          "Installs the fetched firmware image on a machine that runs from one. On any other it\n"
          "installs nothing and ends with status 3; without an image, with 1.\n",
          10, run}});
}
