// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/settingspage.h"

#include "config/jsonmodule.h"
#include "widgets/generaldialog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QJsonDocument>
#include <QLineEdit>
#include <QListView>
#include <QScrollArea>
#include <QSpinBox>

SettingsPage::SettingsPage(JsonModule &configuration, const QString &title, const QString &icon,
                           QWidget *parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_title(title)
    , m_icon(icon)
{ }

SettingsPage::~SettingsPage() = default;

QString SettingsPage::title() const
{
    return m_title;
}

QString SettingsPage::icon() const
{
    return m_icon;
}

JsonModule &SettingsPage::configuration() const
{
    return m_configuration;
}

QJsonObject SettingsPage::root() const
{
    return m_configuration.getDocument().object();
}

QJsonObject SettingsPage::section(QLatin1String key) const
{
    return root().value(key).toObject();
}

void SettingsPage::fill()
{
    m_filling = true;
    load(root());
    m_filling = false;
    m_changed = false;
}

bool SettingsPage::isChanged() const
{
    return m_changed;
}

bool SettingsPage::isFilling() const
{
    return m_filling;
}

bool SettingsPage::canApply() const
{
    return true;
}

bool SettingsPage::apply()
{
    if (!m_changed)
        return true;
    const QString message = refusal();
    if (!message.isEmpty()) {
        GeneralDialog::showError(window(), tr("Error"), message);
        return false;
    }
    const QString failure = store();
    if (!failure.isEmpty()) {
        GeneralDialog::showError(window(), tr("Error"), failure);
        return false;
    }
    m_changed = false;
    return true;
}

/// Writes the page's keys into the document as it is on disk now. Returns the error text, empty on success.
QString SettingsPage::store()
{
    const JsonModule::Change change = m_configuration.change([this](QJsonObject &document) {
        save(document);
        return true;
    });
    if (change == JsonModule::Change::Unreadable)
        return tr("The stored settings cannot be read. Nothing was saved.");
    if (change == JsonModule::Change::NotWritten)
        return tr("The settings cannot be written. The disk may be full.");
    return QString();
}

QString SettingsPage::refusal() const
{
    return QString();
}

void SettingsPage::save(QJsonObject &) { }

void SettingsPage::markChanged()
{
    if (m_filling)
        return;
    m_changed = true;
    emit changed();
}

void SettingsPage::forgetChanges()
{
    m_changed = false;
}

void SettingsPage::discard()
{
    if (m_changed)
        fill();
}

void SettingsPage::useUniformRows(QComboBox &box)
{
    if (auto *list = qobject_cast<QListView *>(box.view()))
        list->setUniformItemSizes(true);
}

void SettingsPage::focusField(QWidget *field)
{
    for (QWidget *above = field->parentWidget(); above; above = above->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(above))
            area->ensureWidgetVisible(field);
    }
    field->setFocus();
}

void SettingsPage::watchEditors()
{
    for (auto *editor : findChildren<QLineEdit *>())
        connect(editor, &QLineEdit::textChanged, this, &SettingsPage::markChanged);
    for (auto *editor : findChildren<QComboBox *>())
        connect(editor, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &SettingsPage::markChanged);
    for (auto *editor : findChildren<QSpinBox *>())
        connect(editor, QOverload<int>::of(&QSpinBox::valueChanged), this, &SettingsPage::markChanged);
    for (auto *editor : findChildren<QDateTimeEdit *>())
        connect(editor, &QDateTimeEdit::dateTimeChanged, this, &SettingsPage::markChanged);
    for (auto *editor : findChildren<QAbstractButton *>()) {
        if (editor->isCheckable())
            connect(editor, &QAbstractButton::toggled, this, &SettingsPage::markChanged);
    }
}
