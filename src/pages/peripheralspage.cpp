// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/peripheralspage.h"

#include "config/keys.h"
#include "pages/addperipheraldialog.h"

#include "ui_peripheralspage.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcPeripheralsPage, "kt.pages.peripherals")

namespace {

constexpr int identifierWidth = 120;
constexpr int redirectionWidth = 120;

// The values of a policy.
const QString byClass = QStringLiteral("default"); ///< general policy only: each class has its own
const QString native = QStringLiteral("native");
const QString generic = QStringLiteral("generic");

/// Selects a stored value, and adds it to the box if the page does not offer it.
void showValue(QComboBox &box, const QString &value)
{
    if (!value.isEmpty() && box.findData(value) < 0)
        box.addItem(value, value);
    box.setCurrentIndex(qMax(0, box.findData(value)));
}

QString redirectionOf(const QJsonObject &device)
{
    const QString stored = device.value(Key::redirectionChoice).toString();
    return stored.compare(Redirection::redirect, Qt::CaseInsensitive) == 0 ? Redirection::redirect
                                                                           : Redirection::native;
}

} // namespace

PeripheralsPage::PeripheralsPage(JsonModule &configuration, QWidget *parent)
    : SettingsPage(configuration, tr("Peripherals"), QStringLiteral(":/images/page_peripherals.png"), parent)
    , m_ui(std::make_unique<Ui::PeripheralsPage>())
{
    m_ui->setupUi(this);
    setUpPolicies();
    setUpList();
    connect(m_ui->addButton, &QPushButton::clicked, this, &PeripheralsPage::addDevice);
    connect(m_ui->removeButton, &QPushButton::clicked, this, &PeripheralsPage::removeDevice);
    connect(m_ui->refreshButton, &QPushButton::clicked, this, &PeripheralsPage::refresh);
    m_ui->redirectionComboBox->addItems({Redirection::native, Redirection::redirect});
    connect(m_ui->redirectionComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &PeripheralsPage::redirectionPageChanged);
    updateButtons();
}

PeripheralsPage::~PeripheralsPage() = default;

void PeripheralsPage::setUpPolicies()
{
    m_policies
        = {{Key::generalPolicy, m_ui->generalPolicyComboBox}, {Key::hids, m_ui->hidsComboBox},
           {Key::audioDevices, m_ui->audioComboBox},          {Key::imaging, m_ui->imagingComboBox},
           {Key::massStorage, m_ui->massStorageComboBox},     {Key::printers, m_ui->printersComboBox},
           {Key::serialPorts, m_ui->serialPortsComboBox},     {Key::smartCards, m_ui->smartCardsComboBox}};
    m_ui->generalPolicyComboBox->addItem(tr("Default (by class)"), byClass);
    for (const Policy &policy : qAsConst(m_policies)) {
        policy.box->addItem(tr("Native"), native);
        policy.box->addItem(tr("Generic redirection"), generic);
        connect(policy.box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &PeripheralsPage::markChanged);
    }
    // Sessions have no way for these whole classes.
    for (QComboBox *box : {m_ui->hidsComboBox, m_ui->audioComboBox, m_ui->imagingComboBox})
        box->setToolTip(tr("Sessions get such devices one by one: set them to \"Redirect\" in the list."));
    connect(m_ui->generalPolicyComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &PeripheralsPage::updatePolicies);
}

void PeripheralsPage::setUpList()
{
    QTreeView *view = m_ui->peripheralView;
    view->setModel(&m_peripherals.model());
    QHeaderView *header = view->header();
    header->setSectionsMovable(false);
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionResizeMode(PeripheralModel::Name, QHeaderView::Stretch);
    header->resizeSection(PeripheralModel::Identifier, identifierWidth);
    header->resizeSection(PeripheralModel::Redirection, redirectionWidth);
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &PeripheralsPage::updateButtons);
    connect(view, &QTreeView::activated, this, &PeripheralsPage::toggleRedirection);
    view->installEventFilter(this);
}

bool PeripheralsPage::eventFilter(QObject *watched, QEvent *event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event)->key() : 0;
    if (key == Qt::Key_Delete && m_ui->removeButton->isEnabled()) {
        removeDevice();
        return true;
    }
    if (key == Qt::Key_Space) {
        toggleRedirection();
        return true;
    }
    return SettingsPage::eventFilter(watched, event);
}

void PeripheralsPage::load(const QJsonObject &root)
{
    m_added.clear();
    setRedirectionTab(root.value(Key::redirection).toObject());
}

void PeripheralsPage::save(QJsonObject &root)
{
    QJsonObject redirection = root.value(Key::redirection).toObject();
    saveRedirectionTab(redirection);
    root.insert(Key::redirection, redirection);
}

void PeripheralsPage::setRedirectionTab(const QJsonObject &redirection)
{
    for (const Policy &policy : qAsConst(m_policies))
        showValue(*policy.box, redirection.value(policy.key).toString());
    updatePolicies();
    initPeripheralDevices(redirection.value(Key::customDevices).toArray());
}

void PeripheralsPage::saveRedirectionTab(QJsonObject &redirection) const
{
    for (const Policy &policy : m_policies)
        redirection.insert(policy.key, policy.box->currentData().toString());
    redirection.insert(Key::customDevices, customDevices());
}

void PeripheralsPage::initPeripheralDevices(const QJsonArray &stored)
{
    m_peripherals.removeAllDevices();
    m_peripherals.readPeripherals();
    for (const QJsonValue &value : stored) {
        const QJsonObject device = value.toObject();
        const QString vid = device.value(Key::vid).toString();
        const QString pid = device.value(Key::pid).toString();
        const QString id = vid + QLatin1Char(':') + pid;
        m_peripherals.addDevice(vid, pid);
        if (m_peripherals.containsDevice(id))
            m_peripherals.setRedirection(id, redirectionOf(device));
        else
            qCWarning(lcPeripheralsPage).noquote() << "stored device cannot be redirected:" << id.left(20);
    }
    select(0);
}

QJsonArray PeripheralsPage::customDevices() const
{
    QJsonArray devices;
    for (const Item *item : m_peripherals.getDeviceList()) {
        const QString id = item->getValue(PeripheralModel::Identifier);
        devices += QJsonObject{{Key::vid, id.left(4)},
                               {Key::pid, id.mid(5)},
                               {Key::redirectionChoice, item->getValue(PeripheralModel::Redirection)}};
    }
    return devices;
}

QJsonArray PeripheralsPage::devicesToKeep() const
{
    QSet<QString> kept = m_added;
    for (const QJsonValue &value : section(Key::redirection).value(Key::customDevices).toArray())
        kept += (value[Key::vid].toString() + QLatin1Char(':') + value[Key::pid].toString()).toLower();
    QJsonArray devices;
    for (const QJsonValue &value : customDevices()) {
        const QString id = value[Key::vid].toString() + QLatin1Char(':') + value[Key::pid].toString();
        if (kept.contains(id) || value[Key::redirectionChoice].toString() == Redirection::redirect)
            devices += value;
    }
    return devices;
}

void PeripheralsPage::addDevice()
{
    if (AddPeripheralDialog(m_peripherals, window()).exec() != QDialog::Accepted)
        return;
    const Item *added = m_peripherals.lastItemAdded();
    if (!added) // the list was rebuilt while the dialog was open
        return;
    m_added += added->getValue(PeripheralModel::Identifier);
    select(added->row());
    markChanged();
}

void PeripheralsPage::removeDevice()
{
    const Item *item = current();
    const int row = item->row();
    m_peripherals.removeDevice(item->getValue(PeripheralModel::Identifier));
    select(qMin(row, m_peripherals.model().rowCount() - 1));
    markChanged();
}

/// Reads the USB bus again. Unsaved choices are kept.
void PeripheralsPage::refresh()
{
    const Item *item = current();
    const QString id = item ? item->getValue(PeripheralModel::Identifier) : QString();
    initPeripheralDevices(devicesToKeep());
    for (const Item *device : m_peripherals.getDeviceList()) {
        if (device->getValue(PeripheralModel::Identifier) == id)
            select(device->row());
    }
}

void PeripheralsPage::toggleRedirection()
{
    if (current())
        m_ui->redirectionComboBox->setCurrentIndex(1 - m_ui->redirectionComboBox->currentIndex());
}

void PeripheralsPage::redirectionPageChanged(int index)
{
    const Item *item = current();
    const QString choice = m_ui->redirectionComboBox->itemText(index);
    if (!item || item->getValue(PeripheralModel::Redirection) == choice)
        return;
    m_peripherals.setRedirection(item->getValue(PeripheralModel::Identifier), choice);
    markChanged();
}

const Item *PeripheralsPage::current()
{
    return m_peripherals.model().item(m_ui->peripheralView->currentIndex());
}

void PeripheralsPage::select(int row)
{
    m_ui->peripheralView->setCurrentIndex(m_peripherals.model().index(row, PeripheralModel::Name));
    updateButtons();
}

void PeripheralsPage::updateButtons()
{
    const Item *item = current();
    // A device that is plugged in would reappear at once.
    m_ui->removeButton->setEnabled(item && item->isItalic());
    m_ui->redirectionComboBox->setEnabled(item);
    const QString choice = item ? item->getValue(PeripheralModel::Redirection) : Redirection::native;
    m_ui->redirectionComboBox->setCurrentText(choice);
}

void PeripheralsPage::updatePolicies()
{
    const bool each = m_ui->generalPolicyComboBox->currentData().toString() == byClass;
    for (const Policy &policy : qAsConst(m_policies))
        policy.box->setEnabled(each || policy.box == m_ui->generalPolicyComboBox);
}
