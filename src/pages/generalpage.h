// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <memory>

namespace Ui {
class GeneralPage;
}

/// Sets the device name, the client mode and the administrator password.
class GeneralPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit GeneralPage(JsonModule &configuration, QWidget *parent = nullptr);
    ~GeneralPage() override;

    bool canApply() const override;
    /// Accepts letters and digits, with hyphens between them.
    static bool checkHostname(const QString &name);
    /// Returns the mode selected on the page: "corvid", "solva" or "rdp".
    QString clientMode() const;

signals:
    /// The user or the filling of the page has selected a client mode.
    void clientModeChosen(const QString &mode);

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private:
    void setGeneralTab(const QJsonObject &general);
    void saveGeneralTab(QJsonObject &general) const;
    void deviceNameChanged(const QString &text);
    void enterPasswordChanged(const QString &text);
    void confirmPasswordChanged(const QString &text);
    void passwordCheckboxChanged(int state);
    bool startNewPassword();
    void clearPasswords();
    void updateWarnings();

    std::unique_ptr<Ui::GeneralPage> m_ui;
    QString m_storedHash;
    bool m_passwordChanged = false;
    bool m_passwordResetPending = false; ///< the fields show asterisks instead of the stored password
};
