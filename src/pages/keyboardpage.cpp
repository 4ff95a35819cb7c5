// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/keyboardpage.h"

#include "config/keys.h"

#include "ui_keyboardpage.h"

KeyboardPage::KeyboardPage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("Keyboard"), QStringLiteral(":/images/page_keyboard.png"), parent)
    , m_ui(std::make_unique<Ui::KeyboardPage>())
{
    m_ui->setupUi(this);
    useUniformRows(*m_ui->layoutComboBox);
    loadKeyboardLayouts();
    watchEditors();
}

KeyboardPage::~KeyboardPage() = default;

void KeyboardPage::loadKeyboardLayouts()
{
    m_layouts = KeyboardLayouts::read();
    for (const KeyboardLayout &layout : qAsConst(m_layouts))
        m_ui->layoutComboBox->addItem(layout.name);
}

void KeyboardPage::load(const QJsonObject &root)
{
    setKeyboardTab(root.value(Key::keyboard).toObject());
}

void KeyboardPage::setKeyboardTab(const QJsonObject &keyboard)
{
    const QString code = keyboard.value(Key::layout).toString();
    int row = 0;
    while (row < m_layouts.size() && m_layouts.at(row).code != code)
        ++row;
    if (row == m_layouts.size()) {
        // Keep a layout that is not in the device's list until the user chooses another.
        m_layouts += {code, QString(), code};
        m_ui->layoutComboBox->addItem(code);
    }
    m_ui->layoutComboBox->setCurrentIndex(row);
    m_ui->numLockCheckBox->setChecked(keyboard.value(Key::numlockOn).toBool());
}

void KeyboardPage::save(QJsonObject &root)
{
    QJsonObject keyboard = root.value(Key::keyboard).toObject();
    saveKeyboardTab(keyboard);
    root.insert(Key::keyboard, keyboard);
}

void KeyboardPage::saveKeyboardTab(QJsonObject &keyboard) const
{
    keyboard.insert(Key::layout, m_layouts.value(m_ui->layoutComboBox->currentIndex()).code);
    keyboard.insert(Key::numlockOn, m_ui->numLockCheckBox->isChecked());
}
