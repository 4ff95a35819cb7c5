// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <QPair>
#include <QVector>

class NetworkController;
class QGridLayout;
class QLabel;

/// Shows the device's identity, versions and addresses. All values can be selected and copied.
class AboutPage : public SettingsPage
{
    Q_OBJECT

public:
    /// `network` must outlive the page.
    AboutPage(JsonModule &configuration, NetworkController &network, QWidget *parent = nullptr);

    /// Returns the page as lines of "name: value".
    QString text() const;

protected:
    void load(const QJsonObject &root) override;

private:
    void addFact(const QString &name, const char *objectName);
    void setFact(const char *objectName, const QString &value);
    void askHostName();
    void askInterface(const QString &interface, const char *address, const char *mac);
    static QString uptime();

    NetworkController &m_network;
    QGridLayout *m_facts;
    QVector<QPair<QString, QLabel *>> m_labels;
};
