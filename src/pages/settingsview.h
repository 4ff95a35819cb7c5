// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>

class SettingsPage;

namespace Ui {
class SettingsView;
}

/// The settings as the administrator sees them: the list of pages, the page chosen, "Apply" and "Back". It
/// knows the pages by their contract alone.
class SettingsView : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsView(QWidget *parent = nullptr);
    ~SettingsView() override;

    /// Pages are listed in the order in which they are added; the view owns them from then on.
    void addPage(SettingsPage *page);
    /// A button below the list, for what is no page.
    void addTool(const QString &text, const QString &icon, const QObject *receiver,
                 const std::function<void()> &run);
    void setPageListed(int index, bool listed);
    void showPage(int index);
    void showPage(SettingsPage *page);

    bool hasUnsavedChanges() const;
    void setApplyEnabled(bool enabled);

signals:
    void applyRequested();
    void backRequested();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void orderTabs();
    void updateApply();

    std::unique_ptr<Ui::SettingsView> m_ui;
    QVector<SettingsPage *> m_pages;
};
