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

/// Chooses a Wi-Fi network, from a scan or by the name of a hidden one, and its credentials.
class WifiChooser : public QWidget
{
    Q_OBJECT

public:
    /// `network` and `certificates` outlive the chooser.
    WifiChooser(NetworkController &network, CertificateStore &certificates, QWidget *parent = nullptr);
    ~WifiChooser() override;

    /// Its fields follow `before` when the Tab key is pressed.
    void putIntoTabOrder(QWidget *before);
    /// Starts over with the network that is stored; one without a name is none.
    void setConfigured(const WifiItem &item);
    /// The network chosen; one without a name when there is none.
    WifiItem chosen() const;

public slots:
    /// Lists the networks around. What is chosen stays chosen, with its credentials, whether found or not;
    /// what is stored stays known too.
    void scanWifiList();
    /// Asks for the credentials of the network chosen.
    void editWifiParameters();

signals:
    /// The user has chosen another network or other credentials.
    void changed();
    /// The screen does not answer meanwhile.
    void busy(bool busy);

private:
    void hiddenSsidChanged(const QString &name);
    void currentChanged(int row);
    WifiItem *currentItem() const;
    void list(const QList<WifiItem> &items, int current);
    void showHiddenName();

    std::unique_ptr<Ui::WifiChooser> m_ui;
    NetworkController &m_network;
    CertificateStore &m_certificates;
    ItemModel *m_model;
    WifiItem m_configured;
    bool m_listing = false;
    int m_rowBefore = -1; ///< what was chosen before the name of a hidden network was typed
};
