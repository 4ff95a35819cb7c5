// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/keyboardlayouts.h"
#include "pages/settingspage.h"

#include <QVector>

#include <memory>

namespace Ui {
class KeyboardPage;
}

/// Sets the keyboard layout and NumLock.
class KeyboardPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit KeyboardPage(JsonModule &configuration, QWidget *parent = nullptr);
    ~KeyboardPage() override;

protected:
    void load(const QJsonObject &root) override;
    void save(QJsonObject &root) override;

private:
    void loadKeyboardLayouts();
    void setKeyboardTab(const QJsonObject &keyboard);
    void saveKeyboardTab(QJsonObject &keyboard) const;

    std::unique_ptr<Ui::KeyboardPage> m_ui;
    QVector<KeyboardLayout> m_layouts;
};
