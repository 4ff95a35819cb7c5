// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/wifiitem.h"

#include <QWidget>

#include <memory>

class CertificateStore;
class ItemModel;
class NetworkController;

namespace Ui {
class WifiChooser;
}

/// Selects a Wi-Fi network, from a scan or by the name of a hidden one, and its credentials.
class WifiChooser : public QWidget
{
    Q_OBJECT

public:
    /// `network` and `certificates` must outlive the chooser.
    WifiChooser(NetworkController &network, CertificateStore &certificates, QWidget *parent = nullptr);
    ~WifiChooser() override;

    /// Puts the fields after `before` in the tab order.
    void putIntoTabOrder(QWidget *before);
    /// Resets the chooser to the stored network. An empty name means that none is stored.
    void setConfigured(const WifiItem &item);
    /// Returns the selected network; its name is empty when there is none.
    WifiItem chosen() const;

    /// Forgets a scan under way: its result changes nothing.
    void abandonScan();

public slots:
    /// Scans for networks and lists them. The selected and the stored network stay in the list with their
    /// credentials, even if the scan does not find them.
    void scanWifiList();
    /// Asks for the credentials of the selected network.
    void editWifiParameters();

signals:
    /// The user has changed the network or its credentials.
    void changed();

private:
    void setScanning(bool scanning);
    void showScan(QList<WifiItem> found);
    void hiddenSsidChanged(const QString &name);
    void currentChanged(int row);
    WifiItem *currentItem() const;
    void setNetworks(const QList<WifiItem> &items, int current);
    void showHiddenName();

    std::unique_ptr<Ui::WifiChooser> m_ui;
    NetworkController &m_network;
    CertificateStore &m_certificates;
    ItemModel *m_model;
    WifiItem m_configured;
    bool m_settingNetworks = false;
    bool m_isScanning = false;
    int m_scan = 0;             ///< counts scans, and what abandons one
    int m_filling = 0;          ///< counts the fillings by `setConfigured`
    int m_rowBeforeHidden = -1; ///< the row selected before a hidden name was typed
};
