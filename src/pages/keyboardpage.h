// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <QVector>

#include <memory>

namespace Ui {
class KeyboardPage;
}

/// One keyboard layout that the device offers: a line of its list.
struct KeyboardLayout
{
    QString code;    ///< as the document stores it and the keyboard tool takes it first
    QString variant; ///< as the keyboard tool takes it second
    QString name;    ///< as the user reads it
};

/// The keyboard's layout and NumLock.
class KeyboardPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit KeyboardPage(JsonModule &configuration, QWidget *parent = nullptr);
    ~KeyboardPage() override;

    /// Switches NumLock as a "keyboard settings" object says.
    static void setNumLock(const QJsonObject &keyboard);

protected:
    void load(const QJsonObject &root) override;
    void save(QJsonObject &root) override;
    void runTools(const QJsonObject &root) override;

private:
    void loadKeyboardLayouts();
    void setKeyboardTab(const QJsonObject &keyboard);
    void saveKeyboardTab(QJsonObject &keyboard) const;

    std::unique_ptr<Ui::KeyboardPage> m_ui;
    QVector<KeyboardLayout> m_layouts;
};
