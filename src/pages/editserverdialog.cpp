// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/editserverdialog.h"

#include "widgets/generaldialog.h"

#include "ui_editserverdialog.h"

EditServerDialog::EditServerDialog(const QString &name, const QString &address, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::EditServerDialog>())
{
    m_ui->setupUi(this);
    m_ui->nameLineEdit->setText(name);
    m_ui->addressLineEdit->setText(address);
    m_ui->nameLineEdit->selectAll();
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &EditServerDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &EditServerDialog::reject);
}

EditServerDialog::~EditServerDialog() = default;

QString EditServerDialog::name() const
{
    return m_ui->nameLineEdit->text().trimmed();
}

QString EditServerDialog::address() const
{
    return m_ui->addressLineEdit->text().trimmed();
}

void EditServerDialog::accept()
{
    if (name().isEmpty())
        GeneralDialog::showError(this, tr("Error"), tr("Server name cannot be empty"));
    else
        QDialog::accept();
}
