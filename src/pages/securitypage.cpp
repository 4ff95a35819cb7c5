// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/securitypage.h"

#include "certificates/certificatemodel.h"
#include "certificates/certificatereader.h"
#include "device/paths.h"
#include "pages/certificatedialog.h"
#include "widgets/generaldialog.h"

#include "ui_securitypage.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QUrl>

namespace {

constexpr int passwordTries = 3;
constexpr int issuerWidth = 152;
constexpr int dateWidth = 96;
constexpr int stateWidth = 120;

QString chooseFile(QWidget *parent)
{
    QFileDialog dialog(parent, SecurityPage::tr("Import certificate"), Paths::media(),
                       SecurityPage::tr("Certificates (*.pem *.crt *.cer *.der *.p12 *.pfx);;All files (*)"));
    // Qt's own dialog can be kept from renaming and deleting files.
    dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::ReadOnly);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setSidebarUrls({QUrl::fromLocalFile(Paths::media())});
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString errorText(CertificateError error)
{
    switch (error) {
    case CertificateError::None:
        break;
    case CertificateError::CannotRead:
        return SecurityPage::tr("The file cannot be read.");
    case CertificateError::TooLarge:
        return SecurityPage::tr("The file is too large to be a certificate: more than %1 KB.")
            .arg(CertificateReader::sizeLimit / 1024);
    case CertificateError::TooMany:
        return SecurityPage::tr("The file holds more than %1 certificates.")
            .arg(CertificateReader::countLimit);
    case CertificateError::NotACertificate:
        return SecurityPage::tr("The file holds no certificate, or it is damaged.");
    case CertificateError::PasswordNeeded:
    case CertificateError::WrongPassword:
        return SecurityPage::tr("The password is wrong.");
    case CertificateError::Unsupported:
        return SecurityPage::tr("The file uses an encryption that this device does not support.");
    case CertificateError::KeyWithoutCertificate:
        return SecurityPage::tr("The file holds a private key without its certificate.");
    case CertificateError::KeyOutsidePkcs12:
        return SecurityPage::tr(
            "The file holds a certificate and its private key. Import client certificates as "
            "PKCS#12 (.p12 or .pfx).");
    case CertificateError::Duplicate:
        return SecurityPage::tr("This certificate is stored already.");
    case CertificateError::CannotWrite:
        return SecurityPage::tr("The certificate store cannot be written. The disk may be full.");
    case CertificateError::CannotRecord:
        return SecurityPage::tr("The settings cannot be written. The disk may be full.");
    case CertificateError::NotInStore:
        return SecurityPage::tr("The certificate is no longer stored.");
    }
    return QString();
}

/// Makes a file name from a removable medium safe to display.
QString displayedName(const QString &path)
{
    return displayable(QFileInfo(path).fileName());
}

int selectedRow(const QTreeView *view)
{
    return view->selectionModel()->selectedRows().value(0).row();
}

bool isAboutPassword(CertificateError error)
{
    return error == CertificateError::PasswordNeeded || error == CertificateError::WrongPassword;
}

} // namespace

SecurityPage::SecurityPage(JsonModule &configuration, CertificateStore &store, QWidget *parent)
    : SettingsPage(configuration, tr("Security"), QStringLiteral(":/images/page_security.png"), parent)
    , m_ui(std::make_unique<Ui::SecurityPage>())
    , m_store(store)
    , m_authorities(
          new CertificateModel(store, CertificateStore::Kind::Authority, CertificateModel::Use::Table, this))
    , m_clients(
          new CertificateModel(store, CertificateStore::Kind::Client, CertificateModel::Use::Table, this))
    , m_chooseFile(chooseFile)
{
    m_ui->setupUi(this);
    setUpView(m_ui->authorityView, m_authorities, m_ui->clientView);
    setUpView(m_ui->clientView, m_clients, m_ui->authorityView);
    connect(m_ui->importButton, &QPushButton::clicked, this, &SecurityPage::importCertificate);
    connect(m_ui->viewButton, &QPushButton::clicked, this, &SecurityPage::viewCertificate);
    connect(m_ui->removeButton, &QPushButton::clicked, this, &SecurityPage::removeCertificate);
    updateButtons();
}

SecurityPage::~SecurityPage() = default;

void SecurityPage::setFileChooser(const FileChooser &chooser)
{
    m_chooseFile = chooser;
}

void SecurityPage::setUpView(QTreeView *view, CertificateModel *model, QTreeView *other)
{
    view->setModel(model);
    QHeaderView *header = view->header();
    header->setSectionsMovable(false);
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionResizeMode(CertificateModel::Name, QHeaderView::Stretch);
    header->resizeSection(CertificateModel::Issuer, issuerWidth);
    header->resizeSection(CertificateModel::ValidFrom, dateWidth);
    header->resizeSection(CertificateModel::ValidTo, dateWidth);
    header->resizeSection(CertificateModel::State, stateWidth);
    // Keep one selected row on the whole page, for "View" and "Remove".
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, other](const QItemSelection &selected) {
                if (!selected.isEmpty())
                    other->clearSelection();
                updateButtons();
            });
    connect(model, &CertificateModel::modelReset, this, &SecurityPage::updateButtons);
    connect(view, &QTreeView::activated, this, &SecurityPage::viewCertificate);
    view->installEventFilter(this);
}

bool SecurityPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
        removeCertificate();
        return true;
    }
    return SettingsPage::eventFilter(watched, event);
}

QTreeView *SecurityPage::selectedView() const
{
    for (QTreeView *view : {m_ui->authorityView, m_ui->clientView}) {
        if (view->selectionModel()->hasSelection())
            return view;
    }
    return nullptr;
}

CertificateModel *SecurityPage::modelOf(QTreeView *view) const
{
    return view == m_ui->clientView ? m_clients : m_authorities;
}

void SecurityPage::updateButtons()
{
    const bool selected = selectedView() != nullptr;
    m_ui->viewButton->setEnabled(selected);
    m_ui->removeButton->setEnabled(selected);
}

void SecurityPage::select(QTreeView *view, int row)
{
    if (row >= 0 && row < view->model()->rowCount())
        view->setCurrentIndex(view->model()->index(row, 0));
    view->setFocus();
}

void SecurityPage::load(const QJsonObject &)
{
    m_ui->statusLabel->clear();
    reload();
}

void SecurityPage::reload()
{
    m_authorities->reload();
    m_clients->reload();
}

void SecurityPage::showEvent(QShowEvent *event)
{
    reload();
    m_store.updateRecord();
    SettingsPage::showEvent(event);
}

void SecurityPage::importCertificate()
{
    m_ui->statusLabel->clear();
    const QString path = m_chooseFile(this);
    if (path.isEmpty())
        return;
    const std::optional<CertificateStore::Import> import = importWithPassword(path);
    if (!import)
        return;
    if (import->error != CertificateError::None)
        GeneralDialog::showError(
            window(), tr("Error"),
            tr("%1 was not imported. %2").arg(displayedName(path), errorText(import->error)));
    else
        showImported(*import);
}

std::optional<CertificateStore::Import> SecurityPage::importWithPassword(const QString &path)
{
    CertificateStore::Import import = m_store.importFile(path);
    for (int i = 0; i < passwordTries && isAboutPassword(import.error); ++i) {
        GeneralDialog prompt(window(), GeneralDialog::Prompt);
        prompt.setPasswordMode();
        prompt.setTitle(tr("Password"));
        prompt.setMessage((i == 0 ? tr("Enter the password of %1.") : tr("Wrong password for %1."))
                              .arg(displayedName(path)));
        if (prompt.exec() != QDialog::Accepted)
            return std::nullopt;
        import = m_store.importFile(path, prompt.getInput());
    }
    return import;
}

void SecurityPage::showImported(const CertificateStore::Import &import)
{
    QTreeView *view = import.kind == CertificateStore::Kind::Client ? m_ui->clientView : m_ui->authorityView;
    const int row = modelOf(view)->rowOf(import.files.first());
    QString text = import.files.size() == 1 ? tr("%1 was imported.").arg(modelOf(view)->certificate(row).name)
                                            : tr("%1 certificates were imported.").arg(import.files.size());
    if (import.known > 0)
        text += tr(" %1 were stored already.").arg(import.known);
    m_ui->statusLabel->setText(text);
    select(view, row);
}

void SecurityPage::viewCertificate()
{
    if (QTreeView *view = selectedView())
        CertificateDialog(modelOf(view)->certificate(selectedRow(view)), window()).exec();
}

void SecurityPage::removeCertificate()
{
    QTreeView *view = selectedView();
    if (!view)
        return;
    const int row = selectedRow(view);
    const Certificate certificate = modelOf(view)->certificate(row);
    const QString question
        = tr("Remove %1? Connections that need this certificate will fail.").arg(certificate.name);
    if (!GeneralDialog::ask(window(), tr("Remove certificate"), question))
        return;
    m_ui->statusLabel->clear();
    const CertificateError error = m_store.remove(modelOf(view)->kind(), certificate.fileName);
    if (error != CertificateError::None) {
        GeneralDialog::showError(window(), tr("Error"), errorText(error));
        reload();
    }
    select(view, qMin(row, view->model()->rowCount() - 1));
}
