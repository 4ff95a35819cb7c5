// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/corvidpage.h"

#include "launcher/servergroups.h"
#include "launcher/stylesheets.h"
#include "config/keys.h"
#include "widgets/groupservertreeview.h"

#include "ui_corvidpage.h"

#include <QEvent>
#include <QFrame>
#include <QLineEdit>
#include <QScrollBar>
#include <QSet>

#include <algorithm>

namespace {

const QString myDesktop = QStringLiteral("my desktop");
const QString manualAddress = QStringLiteral("manual address");

constexpr int frameFirstTop = 46; ///< below the panel's heading
constexpr int frameLastTop = 358;

/// The row chosen in a list; a heading is none.
QModelIndex selected(const QAbstractItemView *view)
{
    return view->selectionModel()->selectedIndexes().value(0);
}

/// A group's name, or a group's and one of its servers'.
QStringList namesOf(const QModelIndex &row)
{
    QStringList names;
    for (QModelIndex level = row; level.isValid(); level = level.parent())
        names.prepend(level.data().toString());
    return names;
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
    // What is typed is meant: a completion would turn the address into another one of the history.
    m_ui->manualServerComboBox->setCompleter(nullptr);
    m_ui->manualServerComboBox->view()->installEventFilter(this);
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
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, view] {
            if (selected(view).isValid())
                selectOnly(view);
            updateGreenFrame();
            emit targetChanged();
        });
    }
    connect(m_ui->groupServerTreeView, &QTreeView::collapsed, this, [this](const QModelIndex &group) {
        // What Connect would take stays in sight.
        if (selected(m_ui->groupServerTreeView).parent() == group)
            m_ui->groupServerTreeView->setCurrentIndex(group);
    });
    connect(m_ui->groupServerTreeView, &GroupServerTreeView::updateParent, this,
            &CorvidPage::updateGreenFrame);
    connect(m_ui->groupServerTreeView->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &CorvidPage::groupSliderValueChanged);
}

bool CorvidPage::eventFilter(QObject *watched, QEvent *event)
{
    // Enter in the open list of addresses chooses there; it is no shortcut for what stands behind.
    if (event->type() == QEvent::ShortcutOverride)
        event->accept();
    return QWidget::eventFilter(watched, event);
}

void CorvidPage::selectOnly(QWidget *view)
{
    GroupServerTreeView *other = view == m_ui->detectedView ? m_ui->groupServerTreeView : m_ui->detectedView;
    other->clearSelection();
    other->setCurrentIndex(QModelIndex());
}

void CorvidPage::setGroups(const QJsonArray &groups)
{
    GroupServerTreeView *view = m_ui->groupServerTreeView;
    const QStringList chosen = namesOf(selected(view));
    QSet<QString> unfolded;
    for (int row = 0; row < m_groups.rowCount(); ++row) {
        if (view->isExpanded(m_groups.index(row, 0)))
            unfolded.insert(m_groups.topLevelItem(row)->getValue(Item::Name));
    }
    m_groups.remAllItems();
    QList<Item *> rows;
    for (const QJsonValue &group : groups)
        rows += ServerGroups::row(group.toObject());
    if (rows.isEmpty())
        rows += new Item(tr("\tNo groups are set up"), nullptr, true, true);
    m_groups.appendChildren(rows);
    for (int row = 0; row < rows.size(); ++row)
        view->setExpanded(m_groups.index(row, 0), unfolded.contains(rows.at(row)->getValue(Item::Name)));
    chooseGroupRow(chosen);
    updateGreenFrame();
    emit targetChanged();
}

/// Nothing is chosen when no such row is there any more.
void CorvidPage::chooseGroupRow(const QStringList &names)
{
    QModelIndex row;
    for (const QString &name : names) {
        const QModelIndex above = row;
        row = QModelIndex();
        for (int i = 0; i < m_groups.rowCount(above) && !row.isValid(); ++i) {
            if (m_groups.index(i, 0, above).data().toString() == name)
                row = m_groups.index(i, 0, above);
        }
        if (!row.isValid())
            return;
    }
    if (row.isValid())
        m_ui->groupServerTreeView->setCurrentIndex(row);
}

void CorvidPage::setAutoDetectedShown(bool shown)
{
    if (!shown)
        m_ui->detectedView->clearSelection();
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
    showChoice(!selection.isEmpty() && selection != myDesktop);
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
    else if ((m_groups.rowCount() == 0 || m_groups.topLevelItem(0)->isHeading())
             && !m_ui->detectedPanel->isHidden())
        m_ui->detectedView->setFocus();
    else
        m_ui->groupServerTreeView->setFocus();
}

std::optional<ConnectTarget> CorvidPage::target() const
{
    if (manualEntryShown()) {
        const QString typed = m_ui->manualServerComboBox->currentText().trimmed();
        return typed.isEmpty() ? std::nullopt : std::make_optional(ConnectTarget::server(typed, typed));
    }
    const Item *group = m_groups.item(selected(m_ui->groupServerTreeView));
    const Item *item = group ? group : m_detected.item(selected(m_ui->detectedView));
    if (!item)
        return std::nullopt;
    if (item == m_keptRow)
        return ConnectTarget::server(m_chosenServer.name, m_chosenServer.address);
    ConnectTarget target{
        item->getValue(Item::Type), item->getValue(Item::Name), item->getValue(Item::Address), {}};
    for (int member = 0; member < item->childCount(); ++member)
        target.members
            += {item->child(member)->getValue(Item::Name), item->child(member)->getValue(Item::Address)};
    return target;
}

void CorvidPage::showDetected(const QString &heading, const QList<Item *> &rows, const QString &keptText)
{
    rememberServer();
    m_keptRow = nullptr;
    m_detected.remAllItems();
    if (!heading.isEmpty())
        m_detected.appendChild(new Item(heading, nullptr, true, true));
    m_detected.appendChildren(rows);
    const bool missing
        = std::none_of(rows.begin(), rows.end(), [this](const Item *row) { return isChosen(*row); });
    if (!m_chosenServer.name.isEmpty() && missing) {
        auto *kept = new Item(keptText.arg(m_chosenServer.name), nullptr, false, true);
        kept->setValue(Item::Address, m_chosenServer.address);
        kept->setValue(Item::Type, ItemType::server);
        m_keptRow = kept;
        m_detected.appendChild(kept);
    }
    chooseServer();
    emit targetChanged();
}

void CorvidPage::autoDetectServers()
{
    showDetected(tr("\tSearching..."), {}, QStringLiteral("%1"));
}

void CorvidPage::setServerList(const QMap<QString, QHostAddress> &servers)
{
    QList<Item *> rows;
    for (auto server = servers.constBegin(); server != servers.constEnd(); ++server) {
        rows += ServerGroups::serverRow({server.key(), server.value().toString()},
                                        QStringLiteral(":/images/server_found.png"));
    }
    showDetected(rows.isEmpty() ? tr("\tNo Servers found") : QString(), rows, tr("%1 (not found)"));
}

void CorvidPage::rememberServer()
{
    const Item *server = m_detected.item(selected(m_ui->detectedView));
    if (!server)
        m_chosenServer = ServerEntry();
    else if (server != m_keptRow)
        m_chosenServer = {server->getValue(Item::Name), server->getValue(Item::Address)};
}

bool CorvidPage::isChosen(const Item &row) const
{
    return &row == m_keptRow || row.getValue(Item::Name) == m_chosenServer.name;
}

/// A search keeps the server that was chosen before it. With nothing chosen, the first server found is one
/// press of Enter away.
void CorvidPage::chooseServer()
{
    if (selected(m_ui->groupServerTreeView).isValid() || m_ui->detectedPanel->isHidden())
        return;
    int chosen = 0;
    for (int row = 0; row < m_detected.rowCount(); ++row) {
        if (isChosen(*m_detected.topLevelItem(row)))
            chosen = row;
    }
    if (!m_detected.topLevelItem(chosen)->isHeading())
        m_ui->detectedView->setCurrentIndex(m_detected.index(chosen, 0));
}

int CorvidPage::frameTop(int row, int scrollPosition)
{
    return qBound(frameFirstTop, (row - scrollPosition) * GroupServerTreeView::rowHeight + frameFirstTop,
                  frameLastTop);
}

void CorvidPage::updateGreenFrame()
{
    const GroupServerTreeView *view = m_ui->groupServerTreeView;
    const QModelIndex chosen = selected(view);
    const QRect row = view->visualRect(chosen);
    // The last row may lack a pixel or two.
    const bool shown
        = view->visualRow(chosen) >= 0 && row.top() >= 0 && row.center().y() < view->viewport()->height();
    m_greenFrame->setVisible(shown);
    if (shown) {
        m_greenFrame->setGeometry(0, frameTop(view->visualRow(chosen), view->verticalScrollBar()->value()),
                                  m_ui->groupsPanel->width(), GroupServerTreeView::rowHeight);
        m_greenFrame->raise();
    }
}

void CorvidPage::groupSliderValueChanged(int)
{
    updateGreenFrame();
}
