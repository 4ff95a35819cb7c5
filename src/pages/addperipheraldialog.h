// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>

#include <memory>

class PeripheralController;

namespace Ui {
class AddPeripheralDialog;
}

/// Adds a USB device by its identifier. The device need not be plugged in.
class AddPeripheralDialog : public QDialog
{
    Q_OBJECT

public:
    /// `peripherals` must outlive the dialog.
    explicit AddPeripheralDialog(PeripheralController &peripherals, QWidget *parent = nullptr);
    ~AddPeripheralDialog() override;

    /// Adds the device and closes. If the identifier is refused, shows the reason and stays open.
    void accept() override;

private:
    QString refusal(const QString &id) const;

    std::unique_ptr<Ui::AddPeripheralDialog> m_ui;
    PeripheralController &m_peripherals;
};
