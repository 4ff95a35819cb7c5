// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/rdppage.h"

#include "ui_rdppage.h"

RdpPage::RdpPage(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::RdpPage>())
{
    m_ui->setupUi(this);
    setFocusProxy(m_ui->rdpAddressLineEdit);
    connect(m_ui->rdpAddressLineEdit, &QLineEdit::textChanged, this, &RdpPage::targetChanged);
}

RdpPage::~RdpPage() = default;

void RdpPage::setServer(const QString &address, bool customAllowed)
{
    // A typed address stays; one that was the stored one gives way to the one stored now.
    const QString shown = m_ui->rdpAddressLineEdit->text();
    m_ui->rdpAddressLineEdit->setReadOnly(!customAllowed);
    if (!customAllowed || shown.isEmpty() || shown == m_storedAddress)
        m_ui->rdpAddressLineEdit->setText(address);
    m_storedAddress = address;
    m_ui->rdpHintLabel->setText(customAllowed || !address.isEmpty()
                                    ? QString()
                                    : tr("The administrator has not set up an RDP server on this device."));
}

std::optional<ConnectTarget> RdpPage::target() const
{
    const QString address = m_ui->rdpAddressLineEdit->text().trimmed();
    return address.isEmpty() ? std::nullopt : std::make_optional(ConnectTarget::server(address, address));
}
