// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/solvadesktopspage.h"

#include "device/diagnostics.h"

#include "ui_solvadesktopspage.h"

namespace {

const QString zmp = QStringLiteral("ZMP");
const QString rdp = QStringLiteral("RDP");

Item *copyOf(const Item &desktop)
{
    auto *row = new Item(desktop);
    row->setIcon(QStringLiteral(":/images/desktop.png"), QStringLiteral(":/images/desktop.png"));
    return row;
}

} // namespace

SolvaDesktopsPage::SolvaDesktopsPage(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::SolvaDesktopsPage>())
    , m_desktops(new ItemModel(1, this))
{
    m_ui->setupUi(this);
    m_ui->desktopsView->setModel(m_desktops);
    connect(m_ui->desktopsView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &SolvaDesktopsPage::updateConnect);
    connect(m_ui->connectSolvaButton, &QPushButton::clicked, this, &SolvaDesktopsPage::connectRequested);
    connect(m_ui->logoutSolvaButton, &QPushButton::clicked, this, &SolvaDesktopsPage::logoutRequested);
    updateConnect();
}

SolvaDesktopsPage::~SolvaDesktopsPage()
{
    // What the selection says while its model goes is for nobody.
    m_ui->desktopsView->selectionModel()->disconnect(this);
}

void SolvaDesktopsPage::setDesktops(const QList<Item *> &desktops, const QString &preferred)
{
    Diagnostics::print(QStringLiteral("APPEND CHILREDN 0"));
    QList<Item *> rows;
    int chosen = 0;
    for (const Item *desktop : desktops) {
        Diagnostics::print(QStringLiteral("APPEND CHILD <%1>").arg(desktop->getValue(Item::Name)));
        if (desktop->getValue(Item::Name) == preferred)
            chosen = rows.size();
        rows += copyOf(*desktop);
    }
    Diagnostics::print(QStringLiteral("APPEND CHILREDN 1"));
    m_desktops->remAllItems();
    m_desktops->appendChildren(rows);
    Diagnostics::print(QStringLiteral("APPEND CHILREDN 2"));
    m_ui->desktopsView->setCurrentIndex(m_desktops->index(chosen, 0));
    updateConnect();
}

void SolvaDesktopsPage::clear()
{
    m_desktops->remAllItems();
    updateConnect();
}

QString SolvaDesktopsPage::selectedDesktop() const
{
    const Item *desktop = m_ui->desktopsView->selectionModel()->hasSelection()
        ? m_desktops->item(m_ui->desktopsView->currentIndex())
        : nullptr;
    return desktop ? desktop->getValue(Item::Name) : QString();
}

QString SolvaDesktopsPage::protocol() const
{
    return m_ui->zmpProtocolRadioButton->isChecked() ? zmp : rdp;
}

void SolvaDesktopsPage::setProtocol(const QString &protocol)
{
    m_ui->zmpProtocolRadioButton->setChecked(protocol == zmp);
    m_ui->rdpProtocolRadioButton->setChecked(protocol != zmp);
}

void SolvaDesktopsPage::setDesktopControlsEnabled(bool enabled)
{
    m_ui->logoutSolvaButton->setEnabled(enabled);
    updateConnect();
}

void SolvaDesktopsPage::focusList()
{
    m_ui->desktopsView->setFocus();
}

void SolvaDesktopsPage::updateConnect()
{
    m_ui->connectSolvaButton->setEnabled(!selectedDesktop().isEmpty());
}
