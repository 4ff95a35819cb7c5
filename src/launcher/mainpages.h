// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "launcher/autostart.h"

#include <QObject>

class UpdateService;

namespace Ui {
class SettingsApp;
}

/// The pages of the main window, one of which is shown. An update covers them all and is not left; what is to
/// be shown meanwhile waits behind it.
class MainPages : public QObject
{
    Q_OBJECT

public:
    /// All arguments outlive the object.
    MainPages(Ui::SettingsApp &form, UpdateService &updates, AutoStart &autoStart);

    int current() const;
    /// Shows one of `SettingsApp::Page`.
    void show(int page);
    /// Shows the page that counts down to this, or the launcher. A countdown whose page is shown already
    /// begins anew.
    void showLauncher(AutoStart::Kind kind);
    /// Another page is shown: what begins by itself there begins, and no longer on another one.
    void handleShown();

signals:
    /// An update that has failed is left: what waits for its end may be done before the page is shown that
    /// was covered.
    void updateClosing();

private:
    void connectUpdates(const UpdateService &updates);

    Ui::SettingsApp &m_form;
    AutoStart &m_autoStart;
    int m_behindUpdate = 0;
};
