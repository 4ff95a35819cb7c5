// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/certificatedialog.h"

#include "certificates/certificatemodel.h"

#include "ui_certificatedialog.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QTextCursor>

namespace {

constexpr int titleWidth = 540;
constexpr int captionSpace = 8;

/// Separates the bytes by colons, so that fingerprints can be compared by eye.
QString grouped(const QByteArray &fingerprint)
{
    return QString::fromLatin1(fingerprint.toUpper())
        .replace(QRegularExpression(QStringLiteral("(..)(?=.)")), QStringLiteral("\\1:"));
}

QString utcText(const QDateTime &time)
{
    return time.isValid() ? time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss 'UTC'")) : QString();
}

} // namespace

CertificateDialog::CertificateDialog(const Certificate &certificate, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::CertificateDialog>())
{
    m_ui->setupUi(this);
    setWindowTitle(tr("Certificate"));
    m_ui->titleLabel->setText(
        m_ui->titleLabel->fontMetrics().elidedText(certificate.name, Qt::ElideRight, titleWidth));
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_ui->buttonBox->button(QDialogButtonBox::Close)->setDefault(true);
    m_ui->detailsEdit->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    showDetails(certificate);
}

CertificateDialog::~CertificateDialog() = default;

void CertificateDialog::showDetails(const Certificate &certificate)
{
    const struct
    {
        QString caption;
        QString value;
    } lines[] = {
        {tr("State"), CertificateModel::stateText(certificate)},
        {tr("Subject"), certificate.subject},
        {tr("Issued by"), certificate.issuer},
        {tr("Valid from"), utcText(certificate.validFrom)},
        {tr("Valid until"), utcText(certificate.validTo)},
        {tr("May issue certificates"),
         certificate.isKnown() ? (certificate.authority ? tr("Yes") : tr("No")) : QString()},
        {tr("Public key"), certificate.key},
        {tr("Serial number"), certificate.serial},
        {tr("SHA-256 fingerprint"), grouped(certificate.fingerprint)},
        {tr("File"), displayable(certificate.fileName)},
        {tr("Further certificates in the file"),
         certificate.moreInFile > 0 ? QString::number(certificate.moreInFile) : QString()},
    };
    QTextBlockFormat spaced;
    spaced.setTopMargin(captionSpace);
    const QTextBlockFormat close;
    const QTextCharFormat plain;
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QTextCursor cursor(m_ui->detailsEdit->document());
    for (const auto &line : lines) {
        if (line.value.isEmpty())
            continue;
        if (!cursor.atStart())
            cursor.insertBlock(spaced);
        cursor.insertText(line.caption, bold);
        cursor.insertBlock(close);
        cursor.insertText(line.value, plain); // as plain text: markup has no effect
    }
    m_ui->detailsEdit->moveCursor(QTextCursor::Start);
}
