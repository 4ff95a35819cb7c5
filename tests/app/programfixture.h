// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "launcher/settingsapp.h"
#include "app/settingscontroller.h"
#include "onlyinnamespace.h"
#include "parts.h"
#include "testdevice.h"

#include <QStackedWidget>
#include <QTest>

/// The window and its controller as `main` makes them, over the device in force.
struct Program
{
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
    void settle() { QTRY_VERIFY(!controller.applier().isBusy()); }

    SettingsApp window;
    SettingsController controller{&window};
};
