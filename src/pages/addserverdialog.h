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

/// Adds servers to a group: typed in, or picked from those found on the network.
class AddServerDialog : public QDialog
{
    Q_OBJECT

public:
    /// `target` takes the servers as top-level rows; it outlives the dialog.
    AddServerDialog(ItemModel &target, const QString &groupName, QWidget *parent = nullptr);
    ~AddServerDialog() override;

    void accept() override;

public slots:
    /// Searches for servers; `setServerList` takes the answer.
    void refresh();
    void setServerList(const QMap<QString, QHostAddress> &servers);

signals:
    /// A discovery is asked for.
    void refreshServerList(int &error);

private:
    bool addTyped();
    bool addPicked();
    /// False when the row was there already and is to stay as it is.
    bool add(const QString &name, const QString &address);
    void showPlaceholder(const QString &text);
    void updateEntry();

    std::unique_ptr<Ui::AddServerDialog> m_ui;
    ItemModel &m_target;
    QString m_groupName;
    ItemModel *m_found;
};
