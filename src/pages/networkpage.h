// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/networkproperty.h"
#include "pages/settingspage.h"

#include <memory>

class AddressEditor;
class CertificateStore;
class NetworkController;
class WifiChooser;

namespace Ui {
class NetworkPage;
}

/// Sets the wired and the wireless interface, the name servers and the proxy.
class NetworkPage : public SettingsPage
{
    Q_OBJECT

public:
    /// `network` and `certificates` must outlive the page.
    NetworkPage(JsonModule &configuration, NetworkController &network, CertificateStore &certificates,
                QWidget *parent = nullptr);
    ~NetworkPage() override;

    void discard() override;

public slots:
    void showEthernetAddress(const QString &text, bool enabled);
    void showWifiAddress(const QString &text, bool enabled);
    void showEthernetIndicator(const QString &image);
    void showWifiIndicator(const QString &image);
    /// Shows that the interface was turned off elsewhere. Does not count as a change by the user.
    void turnOffWifi();

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private:
    void setNetworkTab(const QJsonObject &network);
    void setWifiTab(const QJsonObject &wlan);
    void showLive(const NetworkProperty &live);
    void setDns(const QJsonObject &dns);
    void setProxy(const QJsonObject &proxy);
    void saveNetworkTab(QJsonObject &network);
    QJsonObject savedDns(QJsonObject dns) const;
    QJsonObject savedProxy(QJsonObject proxy) const;
    void connectEditors();
    void updateFields();
    void chooseStaticDns(bool isStatic);
    void updateIndicators();
    QString addressRefusal(const AddressEditor &editor, const QString &interface,
                           const QString &incomplete) const;
    QString dnsRefusal() const;
    bool wiredIsStatic() const;
    bool wirelessIsStatic() const;
    bool allInterfacesStatic() const;

    std::unique_ptr<Ui::NetworkPage> m_ui;
    NetworkController &m_network;
    WifiChooser *m_wifi;
    QString m_ethernetImage;
    QString m_wifiImage;
    NetworkProperty m_live; ///< what DHCP gave the wired interface, as far as it is known
    int m_filling = 0;      ///< counts fillings: a reply to an earlier one is late
};
