// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificate.h"

#include <QDialog>

#include <memory>

namespace Ui {
class CertificateDialog;
}

/// Shows the details of a certificate as plain text that can be selected and copied from the keyboard.
class CertificateDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CertificateDialog(const Certificate &certificate, QWidget *parent = nullptr);
    ~CertificateDialog() override;

private:
    void showDetails(const Certificate &certificate);

    std::unique_ptr<Ui::CertificateDialog> m_ui;
};
