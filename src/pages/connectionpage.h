// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <QJsonArray>
#include <QStringList>

#include <functional>
#include <memory>

class QLineEdit;

namespace Ui {
class ConnectionPage;
}

/// Sets what each client mode offers the user, and the automatic connection or log-on.
class ConnectionPage : public SettingsPage
{
    Q_OBJECT

public:
    using GroupsSource = std::function<QJsonArray()>;
    using UserSource = std::function<QString()>;

    /// `groups` and `user` return the unsaved values of other pages: the server groups and the log-on user.
    /// Without them the page uses the document's values.
    explicit ConnectionPage(JsonModule &configuration, const GroupsSource &groups = {},
                            const UserSource &user = {}, QWidget *parent = nullptr);
    ~ConnectionPage() override;

    /// Returns the group for automatic connection; empty when there is none.
    QString autoConnectGroup() const;

public slots:
    /// Replaces the offered groups. The selected group stays selected, even if it is no longer among them.
    void setGroups(const QJsonArray &groups);

signals:
    void autoConnectGroupChanged(const QString &name);

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private:
    void loadCorvid(const QJsonObject &corvid);
    void loadSolva(const QJsonObject &solva);
    void loadRdp(const QJsonObject &rdp);
    QJsonObject savedCorvid(QJsonObject corvid) const;
    QJsonObject savedSolva(QJsonObject solva) const;
    QJsonObject savedRdp(QJsonObject rdp) const;

    QString addressRefusal() const;
    QString autoConnectRefusal() const;
    QString autoLogonRefusal() const;
    bool connectsToServer() const;
    bool isUnusedAndUntouched(const QLineEdit *address) const;

    void setUpLists();
    void connectEditors();
    void showGroups(const QString &chosen);
    void updateDependents();
    void announceGroup();

    std::unique_ptr<Ui::ConnectionPage> m_ui;
    GroupsSource m_currentGroups;
    UserSource m_logonUser;
    QStringList m_groupNames;
    QString m_announcedGroup;
};
