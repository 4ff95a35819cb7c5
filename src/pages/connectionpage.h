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

/// How the launcher connects: what each of its three client modes offers the user, and what it does by
/// itself.
class ConnectionPage : public SettingsPage
{
    Q_OBJECT

public:
    using GroupsSource = std::function<QJsonArray()>;
    using UserSource = std::function<QString()>;

    /// `groups` and `user` say what other pages are about to store: the server groups, and the user who is
    /// logged on. Without them it is what the document holds.
    explicit ConnectionPage(JsonModule &configuration, const GroupsSource &groups = {},
                            const UserSource &user = {}, QWidget *parent = nullptr);
    ~ConnectionPage() override;

    /// The group that the page has the launcher connect to; empty for none.
    QString autoConnectGroup() const;

public slots:
    /// Offers other groups. The one chosen stays chosen, even when it is no longer there.
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
    GroupsSource m_presentGroups;
    UserSource m_logonUser;
    QStringList m_groupNames;
    QString m_announcedGroup;
};
