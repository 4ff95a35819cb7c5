// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QWidget>

#include <memory>

class NetworkProperty;
class QLineEdit;

namespace Ui {
class AddressEditor;
}

/// Edits how one interface gets its address: by DHCP or static.
class AddressEditor : public QWidget
{
    Q_OBJECT

public:
    explicit AddressEditor(QWidget *parent = nullptr);
    ~AddressEditor() override;

    /// Shows an interface's settings. `live` holds the values that DHCP gave it, as far as they are known.
    void load(const QJsonObject &interface, const NetworkProperty &live);
    /// The values that DHCP gave the interface have become known. Nothing typed is overwritten, and this is
    /// no change by the user.
    void showLive(const NetworkProperty &live);
    bool isStatic() const;
    /// Returns the first empty field, else the first invalid one; null when all three are valid.
    QLineEdit *incompleteField() const;
    void save(QJsonObject &interface, bool enabled) const;

private:
    struct Addresses
    {
        QString address, mask, gateway;

        bool operator==(const Addresses &other) const
        {
            return address == other.address && mask == other.mask && gateway == other.gateway;
        }
    };
    Addresses typed() const;
    void showAddresses(const Addresses &addresses);
    void chooseStatic(bool isStatic);

    std::unique_ptr<Ui::AddressEditor> m_ui;
    Addresses m_static;
    Addresses m_live;
};
