// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificatestore.h"
#include "pages/settingspage.h"

#include <functional>
#include <memory>

class CertificateModel;
class QTreeView;

namespace Ui {
class SecurityPage;
}

/// Manages the certificate authorities that the device trusts and its own client certificates.
///
/// The page never counts as changed. An import or a removal takes effect at once, in files and document
/// together, so that the two cannot differ while a change waits for "Apply".
class SecurityPage : public SettingsPage
{
    Q_OBJECT

public:
    /// Lets the user choose a file. Returns an empty path when the user cancels.
    using FileChooser = std::function<QString(QWidget *parent)>;

    /// `store` must outlive the page.
    SecurityPage(JsonModule &configuration, CertificateStore &store, QWidget *parent = nullptr);
    ~SecurityPage() override;

    /// Replaces the file dialog, for tests.
    void setFileChooser(const FileChooser &chooser);

public slots:
    void importCertificate();
    void viewCertificate();
    void removeCertificate();

protected:
    void load(const QJsonObject &root) override;
    /// Shows changes that others made to the store or the document.
    void showEvent(QShowEvent *event) override;
    /// Lets the Delete key remove the selected certificate.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpView(QTreeView *view, CertificateModel *model, QTreeView *other);
    void select(QTreeView *view, int row);
    void updateButtons();
    /// Returns the view with the selected row; null when nothing is selected.
    QTreeView *selectedView() const;
    CertificateModel *modelOf(QTreeView *view) const;
    void reload();
    /// Asks for the password if the file needs one. Returns nothing when the user cancels.
    std::optional<CertificateStore::Import> importWithPassword(const QString &path);
    void showImported(const CertificateStore::Import &import);

    std::unique_ptr<Ui::SecurityPage> m_ui;
    CertificateStore &m_store;
    CertificateModel *m_authorities;
    CertificateModel *m_clients;
    FileChooser m_chooseFile;
};
