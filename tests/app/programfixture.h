// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "app/program.h"
#include "onlyinnamespace.h"
#include "parts.h"

#include "device/paths.h"
#include "testdevice.h"
#include "update/wireformat.h"

#include <QFileInfo>
#include <QNetworkProxy>
#include <QStackedWidget>
#include <QTest>
#include <QUdpSocket>

/// Waits until the device's port is free. A tool that an earlier program has just forked holds it until it is
/// executed.
struct FreePort
{
    FreePort()
    {
        const auto isFree = [] {
            QUdpSocket socket;
            socket.setProxy(QNetworkProxy::NoProxy);
            return socket.bind(QHostAddress::Any, WireFormat::devicePort);
        };
        QTRY_VERIFY(isFree());
    }
};

/// The program as `main` starts it, over the device in force.
struct StartedProgram
{
    /// Starts the program, and waits for the factory defaults where there is no document.
    StartedProgram()
    {
        program.start();
        QTRY_VERIFY(QFileInfo(Paths::configuration()).size() > 0);
    }

    template <typename Part = QWidget>
    Part *part(const char *name) const
    {
        return ::part<Part>(window, name);
    }
    void click(const char *button) const { press(window, button); }
    int page() const { return part<QStackedWidget>("mainStackedWidget")->currentIndex(); }
    bool settingsShown() const { return page() == SettingsApp::SettingsPage; }
    void openSettings() const { click("settingsButton"); }
    /// Presses "Apply" and waits until the device has followed.
    void apply()
    {
        click("applyButton");
        settle();
    }
    void settle() { QTRY_VERIFY(!program.applier().isBusy()); }

    const FreePort freePort;
    Program program;
    SettingsApp &window = program.window();
    SettingsController &controller = program.controller();
};
