// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <memory>

namespace Ui {
class ManagementPage;
}

/// Sets who may manage the device: consoles on the network, and a management server.
class ManagementPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit ManagementPage(JsonModule &configuration, QWidget *parent = nullptr);
    ~ManagementPage() override;

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private:
    void setManagementTab(const QJsonObject &management);
    void saveManagementTab(QJsonObject &management) const;
    void updateFields();

    std::unique_ptr<Ui::ManagementPage> m_ui;
};
