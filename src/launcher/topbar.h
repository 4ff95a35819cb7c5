// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTimer>

namespace Ui {
class SettingsApp;
}

/// What the bar above the pages shows: the logo, the device's name, and how its network is.
class TopBar : public QObject
{
    Q_OBJECT

public:
    /// The widgets of the window's form outlive the object.
    explicit TopBar(const Ui::SettingsApp &ui, QObject *parent = nullptr);

    void showDeviceName(const QString &name);
    /// Shows the quiet line below the bar, unless the work is over in a moment.
    void showProgress(bool busy);

public slots:
    void setWiredNetworkStatus(const QString &state);
    void setWirelessNetworkStatus(const QString &state, int signal);
    void setWiredIconShown(bool shown);
    void setWirelessIconShown(bool shown);
    void setWiredToolTip(const QString &text);
    void setWirelessToolTip(const QString &text);

private:
    const Ui::SettingsApp &m_ui;
    QTimer m_progress;
};
