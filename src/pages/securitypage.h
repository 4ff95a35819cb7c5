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

/// The certificates that the device trusts and those that it shows of itself.
///
/// It never counts as changed: an import or a removal is carried out at once, files and document together, so
/// that the two cannot disagree while something waits for "Apply".
class SecurityPage : public SettingsPage
{
    Q_OBJECT

public:
    /// Lets the user choose a file; answers an empty path when none was.
    using FileChooser = std::function<QString(QWidget *parent)>;

    /// `store` outlives the page.
    SecurityPage(JsonModule &configuration, CertificateStore &store, QWidget *parent = nullptr);
    ~SecurityPage() override;

    /// Replaces the file dialog.
    void setFileChooser(const FileChooser &chooser);

public slots:
    void importCertificate();
    void viewCertificate();
    void removeCertificate();

protected:
    void load(const QJsonObject &root) override;
    /// Whatever changed the store or the document from outside is seen here.
    void showEvent(QShowEvent *event) override;
    /// "Delete" in a list removes the certificate.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpView(QTreeView *view, CertificateModel *model, QTreeView *other);
    void select(QTreeView *view, int row);
    void updateButtons();
    /// The view with the selected row; null when nothing is selected.
    QTreeView *selectedView() const;
    CertificateModel *modelOf(QTreeView *view) const;
    void reload();
    /// Nothing when the user gave up.
    std::optional<CertificateStore::Import> importAsking(const QString &path);
    void showImported(const CertificateStore::Import &import);

    std::unique_ptr<Ui::SecurityPage> m_ui;
    CertificateStore &m_store;
    CertificateModel *m_authorities;
    CertificateModel *m_clients;
    FileChooser m_chooseFile;
};
