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

/// Edits the server groups and the servers of the selected group.
class ServerGroupsPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit ServerGroupsPage(JsonModule &configuration, QWidget *parent = nullptr);
    ~ServerGroupsPage() override;

    /// Returns the groups on the page, applied or not.
    QJsonArray groups() const;

public slots:
    /// Passes the servers found to the dialog that adds servers.
    void setServerList(const QMap<QString, QHostAddress> &servers);
    /// Marks this group; removing or renaming it needs confirmation. An empty name marks no group.
    void setAutoConnectGroup(const QString &name);

signals:
    void groupsChanged(const QJsonArray &groups);
    /// Requests a server search.
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
    /// Returns the row of this name, ignoring the row `except`; invalid when there is none.
    QModelIndex groupNamed(const QString &name, const QModelIndex &except = QModelIndex()) const;
    /// Asks for a group name. Returns nothing when the user cancels or the name is refused.
    std::optional<QString> askForName(const QString &title, const QModelIndex &group);

    void showServers();
    void handleServersChange();
    void handleChange();
    void updateHint();

    std::unique_ptr<Ui::ServerGroupsPage> m_ui;
    JsonListModel *m_groups;
    JsonListModel *m_servers;
    ListContainer *m_groupButtons;
    ListContainer *m_serverButtons;
    QPointer<AddServerDialog> m_addServerDialog;
};
