// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/addperipheraldialog.h"

#include "device/peripheralcontroller.h"
#include "widgets/generaldialog.h"

#include "ui_addperipheraldialog.h"

#include <QPushButton>

AddPeripheralDialog::AddPeripheralDialog(PeripheralController &peripherals, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::AddPeripheralDialog>())
    , m_peripherals(peripherals)
{
    m_ui->setupUi(this);
    setWindowTitle(tr("Add device"));
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setText(tr("Add"));
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &AddPeripheralDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &AddPeripheralDialog::reject);
}

AddPeripheralDialog::~AddPeripheralDialog() = default;

QString AddPeripheralDialog::refusal(const QString &id) const
{
    if (!PeripheralController::isIdentifier(id))
        return tr("Wrong vid:pid format. (e.g. 03ba:04ce)");
    if (m_peripherals.blackListedDevice(id))
        return tr("This device cannot be added (USB hub, ethernet, dual screen)");
    if (m_peripherals.containsDevice(id))
        return tr("Device already present");
    return QString();
}

void AddPeripheralDialog::accept()
{
    const QString id = m_ui->identifierLineEdit->text();
    const QString message = refusal(id);
    if (!message.isEmpty()) {
        GeneralDialog::showError(this, tr("Error"), message);
        m_ui->identifierLineEdit->setFocus();
        m_ui->identifierLineEdit->selectAll();
        return;
    }
    m_peripherals.addDevice(id.left(4), id.mid(5));
    QDialog::accept();
}
