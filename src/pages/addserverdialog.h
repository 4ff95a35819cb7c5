// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/itemmodel.h"

#include <QDialog>
#include <QHostAddress>
#include <QMap>

#include <memory>

namespace Ui {
class AddServerDialog;
}

/// Adds servers to a group: one typed by hand, or some of those found on the network.
class AddServerDialog : public QDialog
{
    Q_OBJECT

public:
    /// Servers become top-level rows of `target`, which must outlive the dialog.
    AddServerDialog(ItemModel &target, const QString &groupName, QWidget *parent = nullptr);
    ~AddServerDialog() override;

    void accept() override;

public slots:
    /// Starts a search for servers. `setServerList` receives the result.
    void refresh();
    void setServerList(const QMap<QString, QHostAddress> &servers);

signals:
    /// Requests a server search.
    void refreshServerList(int &error);

private:
    bool addTyped();
    bool addPicked();
    /// Returns false when the server exists already and the user keeps it unchanged.
    bool add(const QString &name, const QString &address);
    void showPlaceholder(const QString &text);
    void updateEntry();

    std::unique_ptr<Ui::AddServerDialog> m_ui;
    ItemModel &m_target;
    QString m_groupName;
    ItemModel *m_found;
};
