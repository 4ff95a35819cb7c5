// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/addresseditor.h"

#include "config/keys.h"
#include "device/networkproperty.h"
#include "pages/ipv4validator.h"

#include "ui_addresseditor.h"

#include <QSignalBlocker>

#include <utility>

namespace {
const QString dhcp = QStringLiteral("dhcp");
const QString fixed = QStringLiteral("static");
const QString off = QStringLiteral("off");
} // namespace

AddressEditor::AddressEditor(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::AddressEditor>())
{
    m_ui->setupUi(this);
    for (QLineEdit *field : {m_ui->addressLineEdit, m_ui->gatewayLineEdit})
        field->setValidator(new Ipv4Validator(Ipv4Validator::Kind::Host, field));
    m_ui->maskLineEdit->setValidator(new Ipv4Validator(Ipv4Validator::Kind::Mask, this));
    connect(m_ui->staticRadioButton, &QRadioButton::toggled, this, &AddressEditor::chooseStatic);
    showAddresses({});
}

AddressEditor::~AddressEditor() = default;

void AddressEditor::load(const QJsonObject &interface, const NetworkProperty &live)
{
    m_live = {live.ip(), live.netmask(), live.gateway()};
    const QString type = interface.value(Key::type).toString();
    const QString address = interface.value(Key::ipAddress).toString();
    m_static
        = {address.isEmpty() ? interface.value(Key::wiredIpAddress).toString() : address,
           interface.value(Key::networkMask).toString(), interface.value(Key::defaultGateway).toString()};
    // The factory defaults of a static interface have mask and gateway swapped.
    if (Ipv4Validator::isMask(m_static.gateway) && !Ipv4Validator::isMask(m_static.mask))
        std::swap(m_static.gateway, m_static.mask);
    const bool isStatic = type == fixed || (type == off && !m_static.address.isEmpty());
    const QSignalBlocker quiet(m_ui->staticRadioButton);
    m_ui->staticRadioButton->setChecked(isStatic);
    m_ui->dhcpRadioButton->setChecked(!isStatic);
    showAddresses(isStatic ? m_static : m_live);
}

void AddressEditor::showLive(const NetworkProperty &live)
{
    const Addresses known = m_live;
    m_live = {live.ip(), live.netmask(), live.gateway()};
    if (isStatic() && !(typed() == known && m_static.address.isEmpty()))
        return;
    const QSignalBlocker quietAddress(m_ui->addressLineEdit);
    const QSignalBlocker quietMask(m_ui->maskLineEdit);
    const QSignalBlocker quietGateway(m_ui->gatewayLineEdit);
    showAddresses(m_live);
}

AddressEditor::Addresses AddressEditor::typed() const
{
    return {m_ui->addressLineEdit->text(), m_ui->maskLineEdit->text(), m_ui->gatewayLineEdit->text()};
}

void AddressEditor::showAddresses(const Addresses &addresses)
{
    m_ui->addressLineEdit->setText(addresses.address);
    m_ui->maskLineEdit->setText(addresses.mask);
    m_ui->gatewayLineEdit->setText(addresses.gateway);
    m_ui->fieldsWidget->setEnabled(isStatic());
}

/// Without stored static values, editing starts from the values that DHCP gave.
void AddressEditor::chooseStatic(bool isStatic)
{
    if (!isStatic)
        m_static = typed();
    showAddresses(isStatic && !m_static.address.isEmpty() ? m_static : m_live);
}

bool AddressEditor::isStatic() const
{
    return m_ui->staticRadioButton->isChecked();
}

QLineEdit *AddressEditor::incompleteField() const
{
    QLineEdit *invalid = nullptr;
    for (QLineEdit *field : {m_ui->addressLineEdit, m_ui->maskLineEdit, m_ui->gatewayLineEdit}) {
        if (field->text().isEmpty())
            return field;
        if (!invalid && !field->hasAcceptableInput())
            invalid = field;
    }
    return invalid;
}

void AddressEditor::save(QJsonObject &interface, bool enabled) const
{
    const Addresses addresses = isStatic() ? typed() : Addresses();
    interface.remove(Key::wiredIpAddress);
    interface.insert(Key::enabled, enabled);
    interface.insert(Key::type, !enabled ? off : isStatic() ? fixed : dhcp);
    interface.insert(Key::ipAddress, addresses.address);
    interface.insert(Key::networkMask, addresses.mask);
    interface.insert(Key::defaultGateway, addresses.gateway);
}
