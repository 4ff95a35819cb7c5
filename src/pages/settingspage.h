// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>
#include <QWidget>

class JsonModule;
class QComboBox;

/// One page of the settings view. Its host knows it by this contract alone: it is filled from the document,
/// says when the user has changed something, and is applied.
///
/// A page neither reads nor writes the file by itself: `fill` and `apply` do, for all pages in the same way.
/// So an apply changes exactly the keys that the page's `save` writes, and the file is on disk before a tool
/// runs.
class SettingsPage : public QWidget
{
    Q_OBJECT

public:
    /// `configuration` outlives the page.
    SettingsPage(JsonModule &configuration, const QString &title, const QString &icon,
                 QWidget *parent = nullptr);
    ~SettingsPage() override;

    QString title() const;
    QString icon() const;

    /// Shows what the held document says; nothing counts as changed afterwards.
    void fill();
    bool isChanged() const;
    /// False while what stands on the page is no input yet; "Apply" is disabled meanwhile.
    virtual bool canApply() const;
    /// Checks the page, writes its keys and runs its tools, if it was changed. False when the page refuses
    /// its input or the document cannot be read or written, which the user has been told; the page is still
    /// changed then.
    bool apply();
    /// Takes back what was edited and not applied. A page that would have to ask the device's tools for that
    /// only counts as unchanged: nobody waits for them before it is filled and shown again.
    virtual void discard();

signals:
    /// The user has changed something.
    void changed();
    /// `canApply` may answer otherwise than before.
    void canApplyChanged();

protected:
    JsonModule &configuration() const;
    QJsonObject root() const;
    /// A section of the held document.
    QJsonObject section(QLatin1String key) const;

    /// Puts the document's values into the widgets.
    virtual void load(const QJsonObject &root) = 0;
    /// Why the page cannot be applied; empty when it can.
    virtual QString refusal() const;
    /// Puts the widgets' values into the document.
    virtual void save(QJsonObject &root);
    /// Tells the device's tools, once the document is on disk.
    virtual void runTools(const QJsonObject &root);

    /// Counts as a change by the user, except while the page is being filled.
    void markChanged();
    void forgetChanges();
    bool isFilling() const;
    /// Lets every editor on the page mark it changed: lines, boxes, buttons that can be checked, numbers,
    /// dates.
    void watchEditors();
    /// Puts the cursor where the mistake is, and shows that place.
    static void pointAt(QWidget *field);
    /// Lets a box of thousands of entries unfold at once: not every row has to be measured.
    static void showAtOnce(QComboBox &box);

private:
    QString store();

    JsonModule &m_configuration;
    QString m_title;
    QString m_icon;
    bool m_changed = false;
    bool m_filling = false;
};
