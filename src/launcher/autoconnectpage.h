// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/connecttarget.h"
#include "services/countdown.h"

#include <QWidget>

#include <memory>

namespace Ui {
class AutoConnectPage;
}

/// The page of a device that connects, or signs in to a broker, by itself: a countdown that the user can cut
/// short or cancel.
class AutoConnectPage : public QWidget
{
    Q_OBJECT

public:
    explicit AutoConnectPage(QWidget *parent = nullptr);
    ~AutoConnectPage() override;

    void startAutoConnect(const ConnectTarget &target);
    void startSolvaAutoLogon(const QString &user, const QString &broker);
    /// Offers to begin by hand, as after Cancel or a log-on that has failed.
    void showStopped();
    /// Gives the parts of the page names of another beginning than "autoConnect", where there are two such
    /// pages.
    void renameParts(const QString &beginning);
    /// Stops counting without a word, as when another page is shown.
    void stop();
    Countdown &countdown();

signals:
    void connectRequested();
    /// The user has cancelled the countdown.
    void cancelled();

private slots:
    void on_autoConnectButton_clicked();
    void on_autoConnectCancelButton_clicked();

private:
    void updateAutoConnectTimer(int seconds);
    void connectNow();
    void startCounting();
    void showCounting(bool counting);

    std::unique_ptr<Ui::AutoConnectPage> m_ui;
    Countdown m_countdown;
};
