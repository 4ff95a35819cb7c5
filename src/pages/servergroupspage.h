// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QMap>
#include <QModelIndex>
#include <QPointer>

#include <memory>
#include <optional>

class AddServerDialog;
class GroupServerTreeView;
class JsonListModel;
class ListContainer;

namespace Ui {
class ServerGroupsPage;
}

/// The groups of servers, and beside them the servers of the group chosen.
class ServerGroupsPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit ServerGroupsPage(JsonModule &configuration, QWidget *parent = nullptr);
    ~ServerGroupsPage() override;

    /// The groups as they stand on the page, applied or not.
    QJsonArray groups() const;

public slots:
    /// The servers found, for the dialog that adds them.
    void setServerList(const QMap<QString, QHostAddress> &servers);
    /// The group that is marked, and neither removed nor renamed without a question; empty for none.
    void setAutoConnectGroup(const QString &name);

signals:
    void groupsChanged(const QJsonArray &groups);
    /// A discovery is asked for.
    void refreshServerList(int &error);

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private:
    void setUpList(ListContainer &buttons, GroupServerTreeView *view, JsonListModel *model);
    void setUpButtons();

    void addGroup();
    void renameGroup();
    void addServer();
    void editServer();

    QModelIndex currentGroup() const;
    /// The row of that name, apart from one row; invalid when there is none.
    QModelIndex groupNamed(const QString &name, const QModelIndex &apartFrom = QModelIndex()) const;
    /// A name that the user enters and that can be a group's.
    std::optional<QString> enteredName(const QString &title, const QModelIndex &group);

    void showServers();
    void takeServers();
    void takeChange();
    void updateHint();

    std::unique_ptr<Ui::ServerGroupsPage> m_ui;
    JsonListModel *m_groups;
    JsonListModel *m_servers;
    ListContainer *m_groupButtons;
    ListContainer *m_serverButtons;
    QPointer<AddServerDialog> m_addServerDialog;
};
