// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>
#include <QWidget>

class JsonModule;
class QComboBox;

/// A page of the settings view. The view uses only this interface: it fills the page from the document,
/// learns of changes by the user, and applies them.
///
/// Pages never read or write the file themselves. `fill` and `apply` do it for all pages in the same way, so
/// an apply changes exactly the keys that `save` writes, and the file is on disk before any tool runs.
class SettingsPage : public QWidget
{
    Q_OBJECT

public:
    /// `configuration` must outlive the page.
    SettingsPage(JsonModule &configuration, const QString &title, const QString &icon,
                 QWidget *parent = nullptr);
    ~SettingsPage() override;

    QString title() const;
    QString icon() const;

    /// Shows the held document's values. Afterwards the page counts as unchanged.
    void fill();
    bool isChanged() const;
    /// False while the input is incomplete, which disables "Apply".
    virtual bool canApply() const;
    /// Checks a changed page and writes its keys. The device follows the document. If the page refuses its
    /// input, or the document cannot be read or written, shows the error and returns false; the page stays
    /// changed.
    bool apply();
    /// Drops changes that were not applied. A page whose `fill` runs slow device tools only resets its state
    /// to unchanged; it is filled before it is shown again.
    virtual void discard();

signals:
    /// The user has changed something.
    void changed();
    /// The result of `canApply` may have changed.
    void canApplyChanged();

protected:
    JsonModule &configuration() const;
    QJsonObject root() const;
    /// Returns a section of the held document.
    QJsonObject section(QLatin1String key) const;

    /// Copies the document's values into the widgets.
    virtual void load(const QJsonObject &root) = 0;
    /// Returns why the page cannot be applied; empty when it can.
    virtual QString refusal() const;
    /// Copies the widgets' values into the document.
    virtual void save(QJsonObject &root);

    /// Marks the page changed by the user. Does nothing while the page is being filled.
    void markChanged();
    void forgetChanges();
    bool isFilling() const;
    /// Connects every editor on the page to `markChanged`: line edits, combo boxes, checkable buttons, spin
    /// boxes and date editors.
    void watchEditors();
    /// Gives the focus to a field with wrong input, and scrolls to it.
    static void focusField(QWidget *field);
    /// Lets a box with thousands of entries open quickly: Qt measures one row instead of all.
    static void useUniformRows(QComboBox &box);

private:
    QString store();

    JsonModule &m_configuration;
    QString m_title;
    QString m_icon;
    bool m_changed = false;
    bool m_filling = false;
};
