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

/// How one interface gets its address: by DHCP, or as typed here.
class AddressEditor : public QWidget
{
    Q_OBJECT

public:
    explicit AddressEditor(QWidget *parent = nullptr);
    ~AddressEditor() override;

    /// Shows an interface's settings; `live` is what DHCP has given it.
    void load(const QJsonObject &interface, const NetworkProperty &live);
    bool isStatic() const;
    /// All three fields hold what they are for.
    bool isComplete() const;
    /// The first field that does not.
    QWidget *incompleteField() const;
    void save(QJsonObject &interface, bool enabled) const;

    /// An interface's settings as `save` would write them: its address under one name, and none with DHCP.
    static QJsonObject normalized(QJsonObject interface);

private:
    struct Addresses
    {
        QString address, mask, gateway;
    };
    Addresses typed() const;
    void show(const Addresses &addresses);
    void chooseStatic(bool isStatic);

    std::unique_ptr<Ui::AddressEditor> m_ui;
    Addresses m_static;
    Addresses m_live;
};
