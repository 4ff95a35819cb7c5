// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>

#include <memory>

class PeripheralController;

namespace Ui {
class AddPeripheralDialog;
}

/// Adds a device that is not plugged in, by its identifier.
class AddPeripheralDialog : public QDialog
{
    Q_OBJECT

public:
    /// `peripherals` outlives the dialog.
    explicit AddPeripheralDialog(PeripheralController &peripherals, QWidget *parent = nullptr);
    ~AddPeripheralDialog() override;

    /// Stays open, and says why, while the identifier cannot be added.
    void accept() override;

private:
    QString refusal(const QString &id) const;

    std::unique_ptr<Ui::AddPeripheralDialog> m_ui;
    PeripheralController &m_peripherals;
};
