// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonArray>
#include <QWidget>

#include <memory>

namespace Ui {
class SolvaPage;
}

/// The launcher's page for SOLVA brokers: the log-on, and once the user is signed in the way to his desktops.
class SolvaPage : public QWidget
{
    Q_OBJECT

public:
    explicit SolvaPage(QWidget *parent = nullptr);
    ~SolvaPage() override;

    /// The stored broker, and where another may be typed the ones used before.
    void setBroker(const QString &address, bool customAllowed, const QJsonArray &history);
    /// The stored log-on that "Sign in" uses, shown as a log-on typed by the user is; an empty user means
    /// none. What the user has typed stays.
    void setStoredLogon(const QString &user, const QString &domain);
    /// The user has typed a log-on other than the stored one.
    bool hasTypedLogon() const;
    /// What stands in the box of brokers; empty while no other broker may be typed.
    QString typedBroker() const;
    QString broker() const;
    QString user() const;
    QString password() const;
    QString domain() const;

    void showLogon();
    void showSignedIn(const QString &user, const QString &broker);
    void focusFirst();
    /// What Enter does on the page, wherever the keyboard stands on it.
    void pressEnter();
    /// While the broker is asked.
    void setBusy(bool busy);

signals:
    void loginRequested();
    void desktopsRequested();

private:
    std::unique_ptr<Ui::SolvaPage> m_ui;
    bool m_customAllowed = false;
    QString m_storedUser;
    QString m_storedDomain;
};
