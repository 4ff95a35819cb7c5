// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QWidget>

#include <memory>

class NetworkProperty;

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

    /// Shows an interface's settings. `live` holds the values that DHCP gave it.
    void load(const QJsonObject &interface, const NetworkProperty &live);
    bool isStatic() const;
    /// True when all three fields are valid.
    bool isComplete() const;
    /// Returns the first invalid field; null when there is none.
    QWidget *incompleteField() const;
    void save(QJsonObject &interface, bool enabled) const;

    /// Returns settings in the form that `save` writes: one address key, and no addresses with DHCP.
    static QJsonObject normalized(QJsonObject interface);

private:
    struct Addresses
    {
        QString address, mask, gateway;
    };
    Addresses typed() const;
    void showAddresses(const Addresses &addresses);
    void chooseStatic(bool isStatic);

    std::unique_ptr<Ui::AddressEditor> m_ui;
    Addresses m_static;
    Addresses m_live;
};
