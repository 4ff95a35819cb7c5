// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class EditServerDialog;
}

/// Changes the name and the address of a server in a group.
class EditServerDialog : public QDialog
{
    Q_OBJECT

public:
    EditServerDialog(const QString &name, const QString &address, QWidget *parent = nullptr);
    ~EditServerDialog() override;

    QString name() const;
    QString address() const;

    void accept() override;

private:
    std::unique_ptr<Ui::EditServerDialog> m_ui;
};
