// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <memory>

namespace Ui {
class FirmwarePage;
}

/// Sets the source of firmware, and starts an update.
class FirmwarePage : public SettingsPage
{
    Q_OBJECT

public:
    explicit FirmwarePage(JsonModule &configuration, QWidget *parent = nullptr);
    ~FirmwarePage() override;

signals:
    /// The settings are stored, and the user requests an update.
    void updateRequested();

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private slots:
    void on_updateFirmwareButton_clicked();

private:
    void setUpdateFirmwareTab(const QJsonObject &firmware);
    QString method() const;
    void enableFields();

    std::unique_ptr<Ui::FirmwarePage> m_ui;
};
