// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <memory>

class CertificateStore;
class NetworkController;
class WifiChooser;

namespace Ui {
class NetworkPage;
}

/// The wired and the wireless interface, the name servers and the proxy.
///
/// Applying reconnects the interfaces whose settings have changed, and no other.
class NetworkPage : public SettingsPage
{
    Q_OBJECT

public:
    /// `network` and `certificates` outlive the page.
    NetworkPage(JsonModule &configuration, NetworkController &network, CertificateStore &certificates,
                QWidget *parent = nullptr);
    ~NetworkPage() override;

    void discard() override;

public slots:
    void showEthernetAddress(const QString &text, bool enabled);
    void showWifiAddress(const QString &text, bool enabled);
    void showEthernetIndicator(const QString &image);
    void showWifiIndicator(const QString &image);
    /// The interface has been turned off elsewhere; this is no change by the user.
    void turnOffWifi();

signals:
    /// The wired interface has been connected as it is configured now, or disconnected.
    void wiredApplied(bool enabled);
    /// The wireless network has been left, to join one anew or for good.
    void wirelessLeft(bool turnedOff);
    /// The settings are stored and the interfaces have been told.
    void applied();
    /// The screen does not answer meanwhile.
    void busy(bool busy);

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;
    void runTools(const QJsonObject &root) override;

private:
    void setNetworkTab(const QJsonObject &network);
    void setWifiTab(const QJsonObject &wlan);
    void setDns(const QJsonObject &dns);
    void setProxy(const QJsonObject &proxy);
    void saveNetworkTab(QJsonObject &network);
    QJsonObject savedDns(QJsonObject dns) const;
    QJsonObject savedProxy(QJsonObject proxy) const;
    void applyWired();
    void applyWireless();
    void connectEditors();
    void updateParts();
    void chooseStaticDns(bool isStatic);
    void updateIndicators();
    bool wiredIsStatic() const;
    bool wirelessIsStatic() const;
    bool onlyStatic() const;

    std::unique_ptr<Ui::NetworkPage> m_ui;
    NetworkController &m_network;
    WifiChooser *m_wifi;
    QString m_ethernetImage;
    QString m_wifiImage;
    QString m_liveDns1;
    QString m_liveDns2;
    bool m_wiredChanged = false;
    bool m_wirelessChanged = false;
};
