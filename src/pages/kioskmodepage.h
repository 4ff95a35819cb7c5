// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <memory>

namespace Ui {
class KioskModePage;
}

/// Sets the automatic log-on in a session, and the application that starts after it.
class KioskModePage : public SettingsPage
{
    Q_OBJECT

public:
    explicit KioskModePage(JsonModule &configuration, QWidget *parent = nullptr);
    ~KioskModePage() override;

    /// Returns the user name on the page, applied or not.
    QString userName() const;

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private:
    void setKioskModeTab(const QJsonObject &logon, const QJsonObject &application);
    void saveKioskModeTab(QJsonObject &logon, QJsonObject &application) const;
    void enableFields();

    std::unique_ptr<Ui::KioskModePage> m_ui;
};
