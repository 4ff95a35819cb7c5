// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>

#include <memory>

class CertificateModel;
class CertificateStore;
class QComboBox;
class WifiItem;

namespace Ui {
class WpaCredentialDialog;
}

/// Edits the security settings and credentials of one Wi-Fi network.
class WpaCredentialDialog : public QDialog
{
    Q_OBJECT

public:
    enum Mode { Open = 0, Personal = 1, Enterprise = 2 };

    /// `certificates` must outlive the dialog.
    explicit WpaCredentialDialog(CertificateStore &certificates, QWidget *parent = nullptr);
    ~WpaCredentialDialog() override;

    void setCredentialSsid(const QString &ssid);
    /// Shows the fields of one kind of security.
    void setMode(int mode);
    void setItem(const WifiItem &item);
    /// Copies the dialog's values into the network's record.
    void copyTo(WifiItem &item) const;

private:
    void setUpCertificates(CertificateStore &certificates);
    void showCertificate(QComboBox *box, const QString &value);
    void updateMethodFields();
    void updateOkButton();

    std::unique_ptr<Ui::WpaCredentialDialog> m_ui;
};
