// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/addserverdialog.h"

#include "widgets/generaldialog.h"
#include "widgets/groupservertreeview.h"

#include "ui_addserverdialog.h"

#include <QPushButton>
#include <QVector>

#include <algorithm>

AddServerDialog::AddServerDialog(ItemModel &target, const QString &groupName, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::AddServerDialog>())
    , m_target(target)
    , m_groupName(groupName)
    , m_found(new ItemModel(1, this))
{
    m_ui->setupUi(this);
    setWindowTitle(tr("Add server to %1").arg(groupName));
    m_ui->titleLabel->setText(m_ui->titleLabel->fontMetrics().elidedText(windowTitle(), Qt::ElideRight, 560));
    m_ui->serverView->setModel(m_found);
    m_ui->refreshButton->setIcon(QIcon(QStringLiteral(":/images/refresh_dark.png")));
    m_ui->refreshButton->setIconSize(QSize(24, 24));
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setText(tr("Add"));
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &AddServerDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &AddServerDialog::reject);
    connect(m_ui->refreshButton, &QToolButton::clicked, this, &AddServerDialog::refresh);
    connect(m_ui->enterServerRadioButton, &QRadioButton::toggled, this, &AddServerDialog::updateEntry);
    updateEntry();
}

AddServerDialog::~AddServerDialog() = default;

void AddServerDialog::updateEntry()
{
    const bool typing = m_ui->enterServerRadioButton->isChecked();
    for (QWidget *field :
         {static_cast<QWidget *>(m_ui->nameLineEdit), static_cast<QWidget *>(m_ui->addressLineEdit)})
        field->setEnabled(typing);
    m_ui->serverView->setEnabled(!typing);
    m_ui->refreshButton->setEnabled(!typing);
    if (typing)
        m_ui->nameLineEdit->setFocus();
}

void AddServerDialog::refresh()
{
    showPlaceholder(tr("\tSearching..."));
    int error = 0;
    emit refreshServerList(error);
}

void AddServerDialog::showPlaceholder(const QString &text)
{
    m_found->remAllItems();
    m_found->appendChild(new Item(text, nullptr, true, true));
}

void AddServerDialog::setServerList(const QMap<QString, QHostAddress> &servers)
{
    if (servers.isEmpty()) {
        showPlaceholder(tr("\tNo Servers found"));
        return;
    }
    QList<Item *> rows;
    for (auto server = servers.constBegin(); server != servers.constEnd(); ++server) {
        rows += new Item(server.key());
        rows.last()->setValue(Item::Address, server.value().toString());
    }
    m_found->remAllItems();
    m_found->appendChildren(rows);
}

void AddServerDialog::accept()
{
    if (m_ui->enterServerRadioButton->isChecked() ? addTyped() : addPicked())
        QDialog::accept();
}

bool AddServerDialog::addTyped()
{
    const QString name = m_ui->nameLineEdit->text().trimmed();
    if (name.isEmpty()) {
        GeneralDialog::showError(this, tr("Error"), tr("Server name cannot be empty"));
        return false;
    }
    return add(name, m_ui->addressLineEdit->text().trimmed());
}

bool AddServerDialog::addPicked()
{
    QModelIndexList picked = m_ui->serverView->selectionModel()->selectedRows();
    if (picked.isEmpty())
        GeneralDialog::showError(this, tr("Error"), tr("Choose a server from the list first."));
    std::sort(picked.begin(), picked.end());
    // Copies, because another search may end while a question is open.
    QVector<Item> servers;
    for (const QModelIndex &index : qAsConst(picked))
        servers += *m_found->item(index);
    for (const Item &server : qAsConst(servers))
        add(server.getValue(Item::Name), server.getValue(Item::Address));
    return !servers.isEmpty();
}

bool AddServerDialog::add(const QString &name, const QString &address)
{
    auto item = std::make_unique<Item>(name);
    item->setValue(Item::Address, address);
    if (!m_target.contains(*item, true)) {
        m_target.appendChild(item.release());
        return true;
    }
    const QString question = tr("Server %1 already exists in group %2").arg(name, m_groupName);
    if (!GeneralDialog::ask(this, tr("Error"), question, GeneralDialog::Overwrite))
        return false;
    m_target.overwriteChild(item.release());
    return true;
}
