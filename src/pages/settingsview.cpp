// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/settingsview.h"

#include "pages/settingspage.h"

#include "ui_settingsview.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>

#include <algorithm>

namespace {
constexpr int listRowHeight = 36;
constexpr int toolIconSize = 24;
} // namespace

SettingsView::SettingsView(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::SettingsView>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    connect(m_ui->applyButton, &QPushButton::clicked, this, &SettingsView::applyRequested);
    connect(m_ui->backButton, &QPushButton::clicked, this, &SettingsView::backRequested);
    setFocusProxy(m_ui->settingsListWidget);
    auto *escape = new QShortcut(Qt::Key_Escape, this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    escape->setAutoRepeat(false);
    connect(escape, &QShortcut::activated, this, &SettingsView::backRequested);
    connect(m_ui->settingsListWidget, &QListWidget::currentRowChanged, this,
            QOverload<int>::of(&SettingsView::showPage));
}

SettingsView::~SettingsView() = default;

void SettingsView::addPage(SettingsPage *page)
{
    // A page that does not fit a small screen scrolls.
    auto *area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    m_ui->settingsStackedWidget->addWidget(area);
    // Last, because the style sheet is applied again to everything that changes its parent.
    area->setWidget(page);
    m_pages += page;
    QIcon icon(page->icon());
    icon.addFile(page->icon(), QSize(), QIcon::Selected);
    auto *entry = new QListWidgetItem(icon, page->title(), m_ui->settingsListWidget);
    entry->setSizeHint(QSize(0, listRowHeight));
    connect(page, &SettingsPage::changed, this, &SettingsView::updateApply);
    connect(page, &SettingsPage::canApplyChanged, this, &SettingsView::updateApply);
    orderTabs();
}

/// Puts "Back" and "Apply" after the pages in the tab order.
void SettingsView::orderTabs()
{
    QWidget *last = m_ui->settingsListWidget;
    for (QWidget *next = last->nextInFocusChain(); next != m_ui->settingsListWidget;
         next = next->nextInFocusChain()) {
        if (m_ui->settingsStackedWidget->isAncestorOf(next) && next->focusPolicy() != Qt::NoFocus)
            last = next;
    }
    setTabOrder(last, m_ui->backButton);
    setTabOrder(m_ui->backButton, m_ui->applyButton);
}

void SettingsView::addTool(const QString &text, const QString &icon, const QObject *receiver,
                           const std::function<void()> &run)
{
    auto *button = new QPushButton(QIcon(icon), text, m_ui->settingsSideBar);
    button->setObjectName(QStringLiteral("settingsToolButton"));
    button->setIconSize(QSize(toolIconSize, toolIconSize));
    button->setFlat(true);
    auto *above = m_ui->toolLayout->isEmpty()
        ? static_cast<QWidget *>(m_ui->settingsListWidget)
        : m_ui->toolLayout->itemAt(m_ui->toolLayout->count() - 1)->widget();
    m_ui->toolLayout->addWidget(button);
    setTabOrder(above, button);
    connect(button, &QPushButton::clicked, receiver, run);
}

void SettingsView::setPageListed(int index, bool listed)
{
    if (QListWidgetItem *entry = m_ui->settingsListWidget->item(index))
        entry->setHidden(!listed);
}

void SettingsView::showPage(int index)
{
    if (index < 0 || index >= m_pages.size())
        return;
    m_ui->settingsListWidget->setCurrentRow(index);
    m_ui->settingsStackedWidget->setCurrentIndex(index);
    m_ui->pageTitleLabel->setText(m_pages.at(index)->title());
}

void SettingsView::showPage(SettingsPage *page)
{
    showPage(m_pages.indexOf(page));
}

/// Outside a dialog Qt presses a focused button only by the space bar; here Enter does it too.
void SettingsView::keyPressEvent(QKeyEvent *event)
{
    auto *button = qobject_cast<QPushButton *>(focusWidget());
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (button && enter && !event->isAutoRepeat())
        button->click();
    else
        QWidget::keyPressEvent(event);
}

bool SettingsView::hasUnsavedChanges() const
{
    return std::any_of(m_pages.begin(), m_pages.end(), [](SettingsPage *page) { return page->isChanged(); });
}

void SettingsView::setApplyEnabled(bool enabled)
{
    m_ui->applyButton->setEnabled(enabled);
}

void SettingsView::showBusy(bool busy)
{
    m_ui->progressLabel->setText(busy ? tr("Settings are being applied...") : QString());
}

void SettingsView::updateApply()
{
    const bool allowed
        = std::all_of(m_pages.begin(), m_pages.end(), [](SettingsPage *page) { return page->canApply(); });
    m_ui->applyButton->setEnabled(allowed && hasUnsavedChanges());
}
