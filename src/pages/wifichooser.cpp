// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/wifichooser.h"

#include "config/wifisettings.h"
#include "device/networkcontroller.h"
#include "models/itemmodel.h"
#include "pages/wpacredentialdialog.h"
#include "widgets/generaldialog.h"

#include "ui_wifichooser.h"

#include <QListView>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

/// Copies known credentials to the network's scan result, or appends the network. Returns its row, or -1.
int mergeKnown(QList<WifiItem> &found, const WifiItem &known)
{
    if (known.essid().isEmpty())
        return -1;
    const auto same = std::find_if(found.begin(), found.end(),
                                   [&known](const WifiItem &item) { return item.essid() == known.essid(); });
    const auto row = static_cast<int>(same - found.begin());
    if (same == found.end())
        found += known;
    else
        WifiSettings::copyCredentials(known, *same);
    return row;
}

} // namespace

WifiChooser::WifiChooser(NetworkController &network, CertificateStore &certificates, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WifiChooser>())
    , m_network(network)
    , m_certificates(certificates)
    , m_model(new ItemModel(1, this))
{
    m_ui->setupUi(this);
    m_ui->wifiComboBox->setItemDelegate(
        new QStyledItemDelegate(m_ui->wifiComboBox)); // lets the style sheet style the rows
    if (auto *view = qobject_cast<QListView *>(m_ui->wifiComboBox->view()))
        view->setUniformItemSizes(true);
    m_ui->wifiComboBox->setModel(m_model);
    connect(m_ui->scanButton, &QPushButton::clicked, this, &WifiChooser::scanWifiList);
    connect(m_ui->editWifiButton, &QPushButton::clicked, this, &WifiChooser::editWifiParameters);
    connect(m_ui->hiddenSsidLineEdit, &QLineEdit::textChanged, this, &WifiChooser::hiddenSsidChanged);
    connect(m_ui->wifiComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &WifiChooser::currentChanged);
}

WifiChooser::~WifiChooser() = default;

void WifiChooser::putIntoTabOrder(QWidget *before)
{
    for (QWidget *field :
         {static_cast<QWidget *>(m_ui->wifiComboBox), static_cast<QWidget *>(m_ui->scanButton),
          static_cast<QWidget *>(m_ui->editWifiButton), static_cast<QWidget *>(m_ui->hiddenSsidLineEdit)}) {
        setTabOrder(before, field);
        before = field;
    }
}

WifiItem *WifiChooser::currentItem() const
{
    return static_cast<WifiItem *>(m_model->topLevelItem(m_ui->wifiComboBox->currentIndex()));
}

WifiItem WifiChooser::chosen() const
{
    const WifiItem *item = currentItem();
    return item ? *item : WifiItem();
}

void WifiChooser::setNetworks(const QList<WifiItem> &items, int current)
{
    QList<Item *> rows;
    rows.reserve(items.size());
    for (const WifiItem &item : items)
        rows += new WifiItem(item);
    m_settingNetworks = true;
    m_rowBeforeHidden = -1;
    m_model->remAllItems();
    m_model->appendChildren(rows);
    m_ui->wifiComboBox->setCurrentIndex(current);
    m_settingNetworks = false;
    showHiddenName();
}

void WifiChooser::showHiddenName()
{
    const WifiItem item = chosen();
    const QString name = item.hidden ? item.essid() : QString();
    const QSignalBlocker quiet(m_ui->hiddenSsidLineEdit);
    if (m_ui->hiddenSsidLineEdit->text() != name) // else the cursor stays where the user types
        m_ui->hiddenSsidLineEdit->setText(name);
}

void WifiChooser::setConfigured(const WifiItem &item)
{
    abandonScan();
    ++m_filling;
    m_configured = item;
    const bool any = !item.essid().isEmpty();
    setNetworks(any ? QList<WifiItem>{item} : QList<WifiItem>(), any ? 0 : -1);
}

void WifiChooser::scanWifiList()
{
    if (m_isScanning)
        return;
    setScanning(true);
    const int scan = ++m_scan;
    m_network.GetWifiNetworkList(this, [this, scan](const QList<WifiItem> &found) {
        if (scan != m_scan)
            return;
        setScanning(false);
        showScan(found);
    });
}

void WifiChooser::abandonScan()
{
    ++m_scan;
    setScanning(false);
}

void WifiChooser::setScanning(bool scanning)
{
    m_isScanning = scanning;
    m_ui->scanButton->setEnabled(!scanning);
    m_ui->scanButton->setText(scanning ? tr("Scanning...") : tr("Scan"));
}

void WifiChooser::showScan(QList<WifiItem> found)
{
    for (WifiItem &item : found)
        WifiSettings::complete(item);
    const auto strongest = std::find_if(found.cbegin(), found.cend(),
                                        [](const WifiItem &item) { return !item.essid().isEmpty(); });
    const int strongestRow = strongest == found.cend() ? -1 : static_cast<int>(strongest - found.cbegin());
    mergeKnown(found, m_configured);
    const int current = mergeKnown(found, chosen());
    setNetworks(found, current < 0 ? strongestRow : current);
    if (current < 0 && strongestRow >= 0)
        emit changed();
}

void WifiChooser::currentChanged(int)
{
    if (m_settingNetworks)
        return;
    showHiddenName();
    emit changed();
}

/// Typing a name adds a row for the hidden network; clearing the name removes it.
void WifiChooser::hiddenSsidChanged(const QString &name)
{
    WifiItem *item = currentItem();
    const int row = m_ui->wifiComboBox->currentIndex();
    m_settingNetworks = true;
    if (item && item->hidden && name.isEmpty()) {
        m_model->removeByIndex(row);
        m_ui->wifiComboBox->setCurrentIndex(m_rowBeforeHidden < row ? m_rowBeforeHidden : -1);
    } else if (item && item->hidden) {
        item->setEssid(name);
        emit m_model->dataChanged(m_model->index(row, 0), m_model->index(row, 0));
    } else {
        m_rowBeforeHidden = row;
        auto *fresh = new WifiItem(name);
        fresh->hidden = true;
        WifiSettings::complete(*fresh);
        m_model->appendChild(fresh);
        m_ui->wifiComboBox->setCurrentIndex(m_model->rowCount() - 1);
    }
    m_settingNetworks = false;
    emit changed();
}

void WifiChooser::editWifiParameters()
{
    WifiItem *item = currentItem();
    if (!item || item->essid().isEmpty()) {
        GeneralDialog::showError(window(), tr("Warning"),
                                 item ? tr("WiFi SSID is too short, please try again!")
                                      : tr("Please scan WiFi and try again!"));
        return;
    }
    const QString essid = item->essid();
    const int filling = m_filling;
    WpaCredentialDialog dialog(m_certificates, window());
    dialog.setItem(*item);
    if (dialog.exec() != QDialog::Accepted || filling != m_filling)
        return;
    // A scan may have replaced the list: what is chosen stays chosen.
    item = currentItem();
    if (!item || item->essid() != essid)
        return;
    dialog.copyTo(*item);
    emit changed();
}
