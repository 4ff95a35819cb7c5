// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/corvidpage.h"

#include "app/servergroups.h"
#include "app/stylesheets.h"
#include "config/keys.h"
#include "widgets/groupservertreeview.h"

#include "ui_corvidpage.h"

#include <QFrame>
#include <QLineEdit>
#include <QScrollBar>

namespace {

const QString myDesktop = QStringLiteral("my desktop");
const QString manualAddress = QStringLiteral("manual address");

constexpr int frameFirstTop = 46; ///< below the panel's heading
constexpr int frameLastTop = 358;

QItemSelectionModel::SelectionFlags oneRow()
{
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

} // namespace

CorvidPage::CorvidPage(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::CorvidPage>())
    , m_groups(1)
    , m_detected(1)
{
    m_ui->setupUi(this);
    m_ui->refreshServersButton->setIcon(QIcon(QStringLiteral(":/images/refresh_dark.png")));
    m_ui->refreshServersButton->setIconSize(QSize(24, 24));
    m_greenFrame = new QFrame(m_ui->groupsPanel);
    m_greenFrame->setObjectName(QStringLiteral("greenFrame"));
    m_greenFrame->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_greenFrame->hide();
    setUpLists();
    connect(m_ui->myDesktopButton, &QPushButton::clicked, this, [this] { choose(false); });
    connect(m_ui->manuallyDesktopButton, &QPushButton::clicked, this, [this] { choose(true); });
    connect(m_ui->refreshServersButton, &QToolButton::clicked, this, &CorvidPage::refreshRequested);
    connect(m_ui->manualServerComboBox, &QComboBox::editTextChanged, this, &CorvidPage::targetChanged);
    showChoice(false);
}

CorvidPage::~CorvidPage()
{
    // What the selections say while the models go is for nobody.
    m_ui->groupServerTreeView->selectionModel()->disconnect(this);
    m_ui->detectedView->selectionModel()->disconnect(this);
}

void CorvidPage::setUpLists()
{
    m_ui->groupServerTreeView->setModel(&m_groups);
    m_ui->detectedView->setModel(&m_detected);
    for (GroupServerTreeView *view : {m_ui->groupServerTreeView, m_ui->detectedView}) {
        connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                [this, view](const QModelIndex &current) {
                    if (current.isValid())
                        selectOnly(view);
                });
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
            updateGreenFrame();
            emit targetChanged();
        });
    }
    connect(m_ui->groupServerTreeView, &GroupServerTreeView::updateParent, this,
            &CorvidPage::updateGreenFrame);
    connect(m_ui->groupServerTreeView->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &CorvidPage::groupSliderValueChanged);
}

void CorvidPage::selectOnly(QWidget *view)
{
    GroupServerTreeView *other = view == m_ui->detectedView ? m_ui->groupServerTreeView : m_ui->detectedView;
    other->clearSelection();
    other->setCurrentIndex(QModelIndex());
}

QString CorvidPage::selectedGroup() const
{
    const Item *item = m_groups.item(m_ui->groupServerTreeView->currentIndex());
    return item ? item->getValue(Item::Name) : QString();
}

void CorvidPage::setGroups(const QJsonArray &groups)
{
    const QString selected = selectedGroup();
    m_groups.remAllItems();
    QList<Item *> rows;
    for (const QJsonValue &group : groups)
        rows += ServerGroups::row(group.toObject());
    if (rows.isEmpty())
        rows += new Item(tr("\tNo groups are set up"), nullptr, true, true);
    m_groups.appendChildren(rows);
    for (int row = 0; row < rows.size(); ++row) {
        if (rows.at(row)->getValue(Item::Name) == selected)
            m_ui->groupServerTreeView->setCurrentIndex(m_groups.index(row, 0));
    }
    updateGreenFrame();
    emit targetChanged();
}

void CorvidPage::setAutoDetectedShown(bool shown)
{
    m_ui->detectedPanel->setVisible(shown);
}

void CorvidPage::setManualEntryAllowed(bool allowed)
{
    m_manualAllowed = allowed;
    m_ui->manuallyDesktopButton->setVisible(allowed);
    showChoice(manualEntryShown());
}

void CorvidPage::setHistory(const QJsonArray &addresses)
{
    const QString typed = m_ui->manualServerComboBox->currentText();
    m_ui->manualServerComboBox->clear();
    for (const QJsonValue &address : addresses)
        m_ui->manualServerComboBox->addItem(address.toString());
    if (!typed.isEmpty())
        m_ui->manualServerComboBox->setEditText(typed);
}

void CorvidPage::setSelection(const QString &selection)
{
    showChoice(selection != myDesktop);
}

bool CorvidPage::manualEntryShown() const
{
    return m_ui->choiceStackedWidget->currentWidget() == m_ui->manualPage;
}

void CorvidPage::showChoice(bool manual)
{
    const bool entry = manual && m_manualAllowed;
    m_ui->choiceStackedWidget->setCurrentWidget(entry ? m_ui->manualPage : m_ui->listsPage);
    m_ui->myDesktopButton->setStyleSheet(entry ? StyleSheets::manuallyDesktopSheet_2()
                                               : StyleSheets::manuallyDesktopSheet_1());
    m_ui->manuallyDesktopButton->setStyleSheet(entry ? StyleSheets::manuallyDesktopSheet_1()
                                                     : StyleSheets::manuallyDesktopSheet_2());
    emit targetChanged();
}

void CorvidPage::choose(bool manual)
{
    showChoice(manual);
    focusFirst();
    emit selectionChosen(manual ? manualAddress : myDesktop);
}

void CorvidPage::focusFirst()
{
    if (manualEntryShown())
        m_ui->manualServerComboBox->setFocus();
    else if (m_groups.rowCount() > 0 && !m_groups.topLevelItem(0)->isHeading())
        m_ui->groupServerTreeView->setFocus();
    else
        m_ui->detectedView->setFocus();
}

std::optional<ConnectTarget> CorvidPage::target() const
{
    if (manualEntryShown()) {
        const QString typed = m_ui->manualServerComboBox->currentText().trimmed();
        return typed.isEmpty() ? std::nullopt : std::make_optional(ConnectTarget::server(typed, typed));
    }
    const Item *item = nullptr;
    if (m_ui->groupServerTreeView->selectionModel()->hasSelection())
        item = m_groups.item(m_ui->groupServerTreeView->currentIndex());
    else if (m_ui->detectedView->selectionModel()->hasSelection())
        item = m_detected.item(m_ui->detectedView->currentIndex());
    if (!item || item->isHeading())
        return std::nullopt;
    ConnectTarget target{
        item->getValue(Item::Type), item->getValue(Item::Name), item->getValue(Item::Address), {}};
    for (int member = 0; member < item->childCount(); ++member)
        target.members
            += {item->child(member)->getValue(Item::Name), item->child(member)->getValue(Item::Address)};
    return target;
}

void CorvidPage::showPlaceholder(const QString &text)
{
    m_detected.remAllItems();
    m_detected.appendChild(new Item(text, nullptr, true, true));
    emit targetChanged();
}

void CorvidPage::autoDetectServers()
{
    showPlaceholder(tr("\tSearching..."));
}

void CorvidPage::setServerList(const QMap<QString, QHostAddress> &servers)
{
    if (servers.isEmpty()) {
        showPlaceholder(tr("\tNo Servers found"));
        return;
    }
    QList<Item *> rows;
    for (auto server = servers.constBegin(); server != servers.constEnd(); ++server) {
        rows += ServerGroups::serverRow({server.key(), server.value().toString()},
                                        QStringLiteral(":/images/server_found.png"));
    }
    m_detected.remAllItems();
    m_detected.appendChildren(rows);
    selectFirstServer();
    emit targetChanged();
}

/// With nothing else chosen, the first server found is one press of Enter away.
void CorvidPage::selectFirstServer()
{
    const bool groupChosen = m_ui->groupServerTreeView->selectionModel()->hasSelection();
    if (!groupChosen && !m_ui->detectedPanel->isHidden()) {
        m_ui->detectedView->selectionModel()->setCurrentIndex(m_detected.index(0, 0), oneRow());
        m_ui->detectedView->scrollToTop();
    }
}

int CorvidPage::frameTop(int row, int scrollPosition)
{
    return qBound(frameFirstTop, (row - scrollPosition) * GroupServerTreeView::rowHeight + frameFirstTop,
                  frameLastTop);
}

void CorvidPage::updateGreenFrame()
{
    const GroupServerTreeView *view = m_ui->groupServerTreeView;
    const QModelIndex current = view->currentIndex();
    const QRect row = view->visualRect(current);
    const bool shown = view->selectionModel()->hasSelection() && row.top() >= 0
        && row.bottom() < view->viewport()->height();
    m_greenFrame->setVisible(shown);
    if (shown) {
        m_greenFrame->setGeometry(0, frameTop(view->visualRow(current), view->verticalScrollBar()->value()),
                                  m_ui->groupsPanel->width(), GroupServerTreeView::rowHeight);
        m_greenFrame->raise();
    }
}

void CorvidPage::groupSliderValueChanged(int)
{
    updateGreenFrame();
}
