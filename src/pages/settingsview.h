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

/// The settings screen: the list of pages, the selected page, "Apply" and "Back". It uses only the interface
/// `SettingsPage`.
class SettingsView : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsView(QWidget *parent = nullptr);
    ~SettingsView() override;

    /// Appends a page to the list and takes ownership of it.
    void addPage(SettingsPage *page);
    /// Adds a button below the list, for an action without a page.
    void addTool(const QString &text, const QString &icon, const QObject *receiver,
                 const std::function<void()> &run);
    void setPageListed(int index, bool listed);
    void showPage(int index);
    void showPage(SettingsPage *page);

    bool hasUnsavedChanges() const;
    void setApplyEnabled(bool enabled);
    /// Says below the page that settings are being applied. Nothing is blocked meanwhile.
    void showBusy(bool busy);

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
