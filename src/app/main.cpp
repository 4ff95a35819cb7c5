// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/resources.h"
#include "app/program.h"
#include "app/unixsignalhandler.h"
#include "launcher/screenfollower.h"

#include "device/log.h"

#include <QApplication>

#include <optional>

namespace {
constexpr char openGlChoice[] = "QT_XCB_GL_INTEGRATION";
}

int main(int argc, char *argv[])
{
    Log::install();
    UnixSignalHandler::install();

    // Nothing here is drawn with OpenGL; loading its driver would be most of our memory and a good part of
    // the start.
    const bool withoutOpenGl = !qEnvironmentVariableIsSet(openGlChoice) && qputenv(openGlChoice, "none");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kt964"));
    QApplication::setApplicationVersion(QStringLiteral(KT_VERSION));
    // The window is hidden while a session runs; that is not the end.
    QApplication::setQuitOnLastWindowClosed(false);
    Resources::apply(application);

    Program program;
    program.start();
    UnixSignalHandler::instance()->setController(&program.controller());
    SettingsApp &window = program.window();

    // In the lab the program is one window among others of somebody's desktop.
    std::optional<ScreenFollower> follower;
    if (qEnvironmentVariableIsSet("KT_WINDOWED")) {
        window.show();
    } else {
        follower.emplace(window);
        window.showFullScreen();
    }
    // Read when the first window is made. The programs that we start choose for themselves.
    if (withoutOpenGl)
        qunsetenv(openGlChoice);
    return QApplication::exec();
}
