// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/itemmodel.h"

#include <QWidget>

#include <memory>

namespace Ui {
class SolvaDesktopsPage;
}

/// The desktops that a broker offers the user who is signed in.
class SolvaDesktopsPage : public QWidget
{
    Q_OBJECT

public:
    explicit SolvaDesktopsPage(QWidget *parent = nullptr);
    ~SolvaDesktopsPage() override;

    /// Shows copies of the rows; `preferred` is chosen where it is among them, else the first.
    void setDesktops(const QList<Item *> &desktops, const QString &preferred);
    void clear();
    /// The name of the row chosen; empty for none.
    QString selectedDesktop() const;
    /// "RDP" or "ZMP".
    QString protocol() const;
    void setProtocol(const QString &protocol);
    void setDesktopControlsEnabled(bool enabled);
    void focusList();

signals:
    void connectRequested();
    void logoutRequested();

private:
    void updateConnect();

    std::unique_ptr<Ui::SolvaDesktopsPage> m_ui;
    ItemModel *m_desktops;
};
