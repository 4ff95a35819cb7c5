// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/servergroupspage.h"

#include "config/keys.h"
#include "pages/addserverdialog.h"
#include "pages/editserverdialog.h"
#include "pages/jsonlistmodel.h"
#include "widgets/generaldialog.h"
#include "widgets/listcontainer.h"

#include "ui_servergroupspage.h"

#include <QHeaderView>
#include <QSet>

namespace {

constexpr int widestName = 240;

QString nameOf(const JsonListModel &model, const QModelIndex &index)
{
    const Item *item = model.item(index);
    return item ? item->getValue(Item::Name) : QString();
}

/// Fits a name into one line of the label.
QString shortened(const QLabel *label, const QString &name)
{
    return label->fontMetrics().elidedText(name.simplified(), Qt::ElideMiddle, widestName);
}

} // namespace

ServerGroupsPage::ServerGroupsPage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("Server groups"), QStringLiteral(":/images/page_groups.png"), parent)
    , m_ui(std::make_unique<Ui::ServerGroupsPage>())
    , m_groups(new JsonListModel({Key::groupName}, QStringLiteral(":/images/group.png"), this))
    , m_servers(new JsonListModel({Key::serverName, Key::serverAddress},
                                  QStringLiteral(":/images/server.png"), this))
    , m_groupButtons(new ListContainer(this))
    , m_serverButtons(new ListContainer(this))
{
    m_ui->setupUi(this);
    setUpList(*m_groupButtons, m_ui->groupsView, m_groups);
    setUpList(*m_serverButtons, m_ui->serversView, m_servers);
    setUpButtons();
    connect(m_ui->groupsView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ServerGroupsPage::showServers);
    connect(m_groupButtons, &ListContainer::changed, this, &ServerGroupsPage::handleChange);
    connect(m_serverButtons, &ListContainer::changed, this, &ServerGroupsPage::handleServersChange);
    showServers();
    updateHint();
}

ServerGroupsPage::~ServerGroupsPage() = default;

void ServerGroupsPage::setUpList(ListContainer &buttons, GroupServerTreeView *view, JsonListModel *model)
{
    buttons.setView(view);
    buttons.setModel(model);
    view->header()->setSectionResizeMode(QHeaderView::Stretch);
}

void ServerGroupsPage::setUpButtons()
{
    m_groupButtons->setAddButton(m_ui->addGroupButton);
    m_groupButtons->setEditButton(m_ui->renameGroupButton);
    m_groupButtons->setUpButton(m_ui->groupUpButton);
    m_groupButtons->setDownButton(m_ui->groupDownButton);
    m_groupButtons->setRemoveButton(m_ui->removeGroupButton,
                                    tr("The group you want to remove is autoconnect group. Proceed?"));
    m_serverButtons->setAddButton(m_ui->addServerButton);
    m_serverButtons->setEditButton(m_ui->editServerButton);
    m_serverButtons->setUpButton(m_ui->serverUpButton);
    m_serverButtons->setDownButton(m_ui->serverDownButton);
    m_serverButtons->setRemoveButton(m_ui->removeServerButton, QString());
    connect(m_ui->addGroupButton, &QPushButton::clicked, this, &ServerGroupsPage::addGroup);
    connect(m_ui->renameGroupButton, &QPushButton::clicked, this, &ServerGroupsPage::renameGroup);
    connect(m_ui->addServerButton, &QPushButton::clicked, this, &ServerGroupsPage::addServer);
    connect(m_ui->editServerButton, &QPushButton::clicked, this, &ServerGroupsPage::editServer);
}

QJsonArray ServerGroupsPage::groups() const
{
    return m_groups->array();
}

QModelIndex ServerGroupsPage::currentGroup() const
{
    return m_ui->groupsView->currentIndex();
}

void ServerGroupsPage::load(const QJsonObject &root)
{
    const QString chosen = nameOf(*m_groups, currentGroup());
    m_groups->setArray(root.value(Key::serverGroups).toArray());
    const QModelIndex same = chosen.isEmpty() ? QModelIndex() : groupNamed(chosen);
    m_ui->groupsView->setCurrentIndex(same.isValid() ? same : m_groups->index(0, 0));
    if (!currentGroup().isValid())
        showServers();

    const QJsonObject corvid = root.value(Key::connection).toObject().value(Key::corvidConnection).toObject();
    const QJsonObject autoconnect = corvid.value(Key::autoconnect).toObject();
    const bool toGroup = autoconnect.value(Key::enabled).toBool()
        && autoconnect.value(Key::type).toString() == ItemType::group;
    setAutoConnectGroup(toGroup ? autoconnect.value(Key::group).toString() : QString());
    emit groupsChanged(groups());
}

QString ServerGroupsPage::refusal() const
{
    QSet<QString> seen;
    for (int row = 0; row < m_groups->rowCount(); ++row) {
        const QString name = m_groups->topLevelItem(row)->getValue(Item::Name).trimmed();
        if (!name.isEmpty() && !seen.contains(name)) {
            seen += name;
            continue;
        }
        m_ui->groupsView->setCurrentIndex(m_groups->index(row, 0));
        m_ui->groupsView->setFocus();
        return name.isEmpty() ? tr("Group %1 of the list has no name.").arg(row + 1)
                              : tr("Group %1 is in the list more than once.").arg(name);
    }
    return QString();
}

void ServerGroupsPage::save(QJsonObject &root)
{
    root.insert(Key::serverGroups, groups());
}

void ServerGroupsPage::setAutoConnectGroup(const QString &name)
{
    m_groups->setMarkedName(name);
    m_groupButtons->setGuardedName(name);
    updateHint();
}

void ServerGroupsPage::updateHint()
{
    QLabel *hint = m_ui->autoConnectHintLabel;
    const QString name = m_groups->markedName();
    const QString text = groupNamed(name).isValid()
        ? tr("Automatic connection: group %1 (in italics).")
        : tr("Automatic connection: group %1, which is not in the list.");
    hint->setText(text.arg(shortened(hint, name)));
    hint->setVisible(!name.isEmpty());
}

void ServerGroupsPage::showServers()
{
    const QJsonObject group = m_groups->object(currentGroup());
    m_servers->setArray(group.value(Key::servers).toArray());
    m_ui->serversView->setCurrentIndex(m_servers->index(0, 0));
    m_ui->serverListPanel->setEnabled(currentGroup().isValid());
    const QString name = nameOf(*m_groups, currentGroup()).trimmed();
    m_ui->serversLabel->setText(
        name.isEmpty() ? tr("Servers") : tr("Servers of %1").arg(shortened(m_ui->serversLabel, name)));
}

/// Copies the server list into the selected group.
void ServerGroupsPage::handleServersChange()
{
    QJsonObject group = m_groups->object(currentGroup());
    group.insert(Key::servers, m_servers->array());
    m_groups->setObject(currentGroup(), group);
    handleChange();
}

void ServerGroupsPage::handleChange()
{
    updateHint();
    markChanged();
    emit groupsChanged(groups());
}

QModelIndex ServerGroupsPage::groupNamed(const QString &name, const QModelIndex &except) const
{
    for (int row = 0; row < m_groups->rowCount(); ++row) {
        const QModelIndex index = m_groups->index(row, 0);
        if (index != except && nameOf(*m_groups, index).trimmed() == name.trimmed())
            return index;
    }
    return QModelIndex();
}

std::optional<QString> ServerGroupsPage::askForName(const QString &title, const QModelIndex &group)
{
    const QPersistentModelIndex renamed = group;
    GeneralDialog dialog(window(), group.isValid() ? GeneralDialog::Prompt : GeneralDialog::Input);
    dialog.setTitle(title);
    dialog.setMessage(tr("Name of the group:"));
    dialog.setInput(nameOf(*m_groups, group));
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QString name = dialog.getInput().trimmed();
    if (name.isEmpty())
        GeneralDialog::showError(window(), tr("Error"), tr("Group name cannot be empty"));
    else if (groupNamed(name, renamed).isValid())
        GeneralDialog::showError(window(), tr("Error"), tr("Group %1 already exists").arg(name));
    else
        return name;
    return std::nullopt;
}

void ServerGroupsPage::addGroup()
{
    const std::optional<QString> name = askForName(tr("Add group"), QModelIndex());
    if (!name)
        return;
    const QJsonObject group = {{Key::groupName, *name}, {Key::servers, QJsonArray()}};
    m_ui->groupsView->setCurrentIndex(m_groups->appendObject(group));
    handleChange();
}

void ServerGroupsPage::renameGroup()
{
    const QPersistentModelIndex index = currentGroup();
    const QString before = nameOf(*m_groups, index);
    const bool guarded = !before.isEmpty() && before == m_groups->markedName();
    if (guarded
        && !GeneralDialog::ask(window(), tr("Warning"),
                               tr("The group you want to rename is autoconnect group. Proceed?")))
        return;
    const std::optional<QString> name = askForName(tr("Rename group"), index);
    if (!name || !index.isValid() || *name == before)
        return;
    QJsonObject group = m_groups->object(index);
    group.insert(Key::groupName, *name);
    m_groups->setObject(index, group);
    showServers();
    handleChange();
}

void ServerGroupsPage::addServer()
{
    const QPersistentModelIndex group = currentGroup();
    const QJsonArray before = m_servers->array();
    AddServerDialog dialog(*m_servers, nameOf(*m_groups, group), window());
    m_addServerDialog = &dialog;
    connect(&dialog, &AddServerDialog::refreshServerList, this, &ServerGroupsPage::refreshServerList);
    dialog.refresh();
    dialog.exec();
    if (!group.isValid() || m_servers->array() == before)
        return;
    handleServersChange();
    showServers();
    m_ui->serversView->setCurrentIndex(m_servers->index(m_servers->rowCount() - 1, 0));
}

void ServerGroupsPage::setServerList(const QMap<QString, QHostAddress> &servers)
{
    if (m_addServerDialog)
        m_addServerDialog->setServerList(servers);
}

void ServerGroupsPage::editServer()
{
    const QPersistentModelIndex index = m_ui->serversView->currentIndex();
    const QJsonObject before = m_servers->object(index);
    EditServerDialog dialog(before.value(Key::serverName).toString(),
                            before.value(Key::serverAddress).toString(), window());
    if (dialog.exec() != QDialog::Accepted || !index.isValid())
        return;
    QJsonObject server = before;
    server.insert(Key::serverName, dialog.name());
    server.insert(Key::serverAddress, dialog.address());
    if (server == before)
        return;
    m_servers->setObject(index, server);
    handleServersChange();
}
