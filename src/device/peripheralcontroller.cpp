// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/peripheralcontroller.h"

#include "device/paths.h"
#include "device/usbbus.h"
#include "device/usbidentifiers.h"
#include "shared/usbidentifier.h"

namespace {

const QString unknownName = QStringLiteral("USB DEVICE");

} // namespace

PeripheralController::PeripheralController(QObject *parent)
    : QObject(parent)
    , m_model(Item::columnTotal)
{ }

PeripheralModel &PeripheralController::model()
{
    return m_model;
}

void PeripheralController::readPeripherals()
{
    for (const QString &id : UsbBus::identifiers()) {
        if (!blackListedDevice(id) && !containsDevice(id))
            append(id, true);
    }
}

QString PeripheralController::getProductName(const QString &vid, const QString &pid)
{
    const QString name = UsbIdentifiers::name(Paths::usbIdentifiers(), vid, pid);
    return name.isEmpty() ? unknownName : name;
}

void PeripheralController::addDevice(const QString &vid, const QString &pid)
{
    const QString id = (vid + QLatin1Char(':') + pid).toLower();
    if (isIdentifier(id) && !blackListedDevice(id) && !containsDevice(id))
        append(id, false);
}

void PeripheralController::append(const QString &id, bool pluggedIn)
{
    auto *item = new Item(getProductName(id.left(4), id.mid(5)), nullptr, false, !pluggedIn);
    item->setValue(PeripheralModel::Identifier, id);
    item->setValue(PeripheralModel::Redirection, Redirection::native);
    m_model.appendChild(item);
    m_items.insert(id, item);
    m_lastAdded = id;
}

bool PeripheralController::containsDevice(const QString &id) const
{
    return m_items.contains(id.toLower());
}

bool PeripheralController::blackListedDevice(const QString &id) const
{
    return UsbIdentifier::isOfTerminal(id);
}

void PeripheralController::setRedirection(const QString &id, const QString &redirection)
{
    if (const Item *item = m_items.value(id.toLower()))
        m_model.setText(item->row(), PeripheralModel::Redirection, redirection);
}

void PeripheralController::removeDevice(const QString &id)
{
    if (const Item *item = m_items.take(id.toLower()))
        m_model.removeByIndex(item->row());
}

void PeripheralController::removeAllDevices()
{
    m_items.clear();
    m_model.remAllItems();
}

QList<Item *> PeripheralController::getDeviceList() const
{
    QList<Item *> devices;
    for (int row = 0; row < m_model.rowCount(); ++row)
        devices += m_model.topLevelItem(row);
    return devices;
}

Item *PeripheralController::lastItemAdded() const
{
    return m_items.value(m_lastAdded);
}

bool PeripheralController::isIdentifier(const QString &text)
{
    return UsbIdentifier::isValid(text);
}
