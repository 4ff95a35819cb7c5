// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/wpacredentialdialog.h"

#include "certificates/certificatemodel.h"
#include "device/wifiitem.h"

#include "ui_wpacredentialdialog.h"

#include <QPushButton>

namespace {

const QStringList securities
    = {QStringLiteral("open"), QStringLiteral("personal"), QStringLiteral("enterprise")};
const QStringList advancedSecurities
    = {QStringLiteral("auto"), QStringLiteral("wpa"), QStringLiteral("wpa2")};
const QStringList encryptions = {QStringLiteral("auto"), QStringLiteral("tkip"), QStringLiteral("ccmp")};
const QStringList methods = {QStringLiteral("peap"), QStringLiteral("ttls"), QStringLiteral("tls")};

/// Holds the stored value of a certificate that is not in the store, so that saving keeps it.
constexpr const char *missingProperty = "missingCertificate";
constexpr int longestTitle = 520;

void choose(QComboBox *box, const QStringList &words, const QString &word)
{
    box->setCurrentIndex(qMax(0, words.indexOf(word)));
}

QString certificate(const QComboBox *box)
{
    return box->currentIndex() < 0 ? box->property(missingProperty).toString()
                                   : box->currentData(CertificateModel::ValueRole).toString();
}

} // namespace

WpaCredentialDialog::WpaCredentialDialog(CertificateStore &certificates, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::WpaCredentialDialog>())
{
    m_ui->setupUi(this);
    setUpCertificates(certificates);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &WpaCredentialDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &WpaCredentialDialog::reject);
    connect(m_ui->securityComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &WpaCredentialDialog::setMode);
    connect(m_ui->authenticationComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &WpaCredentialDialog::updateMethodFields);
    const QPair<QCheckBox *, QLineEdit *> secrets[]
        = {{m_ui->showPassphraseCheckBox, m_ui->passphraseLineEdit},
           {m_ui->showPasswordCheckBox, m_ui->userPasswordLineEdit},
           {m_ui->showKeyPasswordCheckBox, m_ui->keyPasswordLineEdit}};
    for (const auto &secret : secrets) {
        QLineEdit *field = secret.second;
        connect(secret.first, &QCheckBox::toggled, field,
                [field](bool shown) { field->setEchoMode(shown ? QLineEdit::Normal : QLineEdit::Password); });
        connect(field, &QLineEdit::textChanged, this, &WpaCredentialDialog::updateOkButton);
    }
    setMode(Open);
}

WpaCredentialDialog::~WpaCredentialDialog() = default;

void WpaCredentialDialog::setUpCertificates(CertificateStore &certificates)
{
    const auto use = [&](QComboBox *box, CertificateStore::Kind kind) {
        box->setModel(new CertificateModel(certificates, kind, CertificateModel::Use::Choice, box));
    };
    use(m_ui->caCertificateComboBox, CertificateStore::Kind::Authority);
    use(m_ui->clientCertificateComboBox, CertificateStore::Kind::Client);
}

void WpaCredentialDialog::setCredentialSsid(const QString &ssid)
{
    setWindowTitle(tr("\t\t\t \"%1\" WiFi network configuration").arg(ssid));
    // The tabs centre the title bar's text; the label in the dialog is left-aligned.
    m_ui->titleLabel->setText(
        m_ui->titleLabel->fontMetrics().elidedText(windowTitle().trimmed(), Qt::ElideMiddle, longestTitle));
}

void WpaCredentialDialog::setMode(int mode)
{
    m_ui->securityComboBox->setCurrentIndex(mode);
    m_ui->personalWidget->setVisible(mode == Personal);
    m_ui->enterpriseWidget->setVisible(mode == Enterprise);
    m_ui->encryptionWidget->setVisible(mode != Open);
    updateMethodFields();
    adjustSize();
}

/// Shows the fields that the authentication method needs.
void WpaCredentialDialog::updateMethodFields()
{
    const bool byCertificate
        = methods.value(m_ui->authenticationComboBox->currentIndex()) == QLatin1String("tls");
    m_ui->userWidget->setVisible(!byCertificate);
    m_ui->clientWidget->setVisible(byCertificate);
    updateOkButton();
    adjustSize();
}

/// Disables "OK" while a required password is empty.
void WpaCredentialDialog::updateOkButton()
{
    const int mode = m_ui->securityComboBox->currentIndex();
    const bool noPassphrase = mode == Personal && m_ui->passphraseLineEdit->text().isEmpty();
    const bool noPassword
        = mode == Enterprise && !m_ui->userWidget->isHidden() && m_ui->userPasswordLineEdit->text().isEmpty();
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(!noPassphrase && !noPassword);
}

void WpaCredentialDialog::showCertificate(QComboBox *box, const QString &value)
{
    const int row = box->findData(value, CertificateModel::ValueRole);
    box->setPlaceholderText(row < 0 ? tr("%1 (not found)").arg(value) : QString());
    box->setProperty(missingProperty, row < 0 ? value : QString());
    box->setCurrentIndex(row);
}

void WpaCredentialDialog::setItem(const WifiItem &item)
{
    setCredentialSsid(item.essid());
    choose(m_ui->advancedSecurityComboBox, advancedSecurities, item.advancedSecurity);
    choose(m_ui->encryptionComboBox, encryptions, item.encrypt);
    choose(m_ui->authenticationComboBox, methods, item.authenticationMethod);
    m_ui->passphraseLineEdit->setText(item.password);
    m_ui->userNameLineEdit->setText(item.userName);
    m_ui->userPasswordLineEdit->setText(item.userPassword);
    m_ui->keyPasswordLineEdit->setText(item.clientCertPassword);
    showCertificate(m_ui->caCertificateComboBox, item.caCert);
    showCertificate(m_ui->clientCertificateComboBox, item.clientCert);
    setMode(qMax(0, securities.indexOf(item.security)));
}

void WpaCredentialDialog::copyTo(WifiItem &item) const
{
    item.security = securities.value(m_ui->securityComboBox->currentIndex());
    item.advancedSecurity = advancedSecurities.value(m_ui->advancedSecurityComboBox->currentIndex());
    item.encrypt = encryptions.value(m_ui->encryptionComboBox->currentIndex());
    item.authenticationMethod = methods.value(m_ui->authenticationComboBox->currentIndex());
    item.password = m_ui->passphraseLineEdit->text();
    item.userName = m_ui->userNameLineEdit->text();
    item.userPassword = m_ui->userPasswordLineEdit->text();
    item.caCert = certificate(m_ui->caCertificateComboBox);
    item.clientCert = certificate(m_ui->clientCertificateComboBox);
    item.clientCertPassword = m_ui->keyPasswordLineEdit->text();
}
