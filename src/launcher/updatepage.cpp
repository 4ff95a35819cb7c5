// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/updatepage.h"

#include "ui_updatepage.h"

namespace {
constexpr int widestText = 560;
constexpr int longestMessage = 200;
} // namespace

UpdatePage::UpdatePage(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::UpdatePage>())
{
    m_ui->setupUi(this);
    showProgress(QString(), -1, -1);
}

UpdatePage::~UpdatePage() = default;

QString UpdatePage::elided(const QString &text) const
{
    m_ui->updateTextLabel->ensurePolished();
    return m_ui->updateTextLabel->fontMetrics().elidedText(text, Qt::ElideMiddle, widestText);
}

void UpdatePage::showText(const QString &text)
{
    m_ui->updateTextLabel->setText(text);
    m_ui->updateCountdownLabel->clear();
}

void UpdatePage::showPercentage(int percentage)
{
    m_ui->updateProgressBar->setRange(0, 100);
    m_ui->updateProgressBar->setValue(percentage);
    m_ui->updatePercentLabel->setText(tr("%1 %").arg(percentage));
}

void UpdatePage::showProgress(const QString &what, qint64 received, qint64 total)
{
    showText(elided(what));
    if (received >= 0 && total > 0) {
        showPercentage(static_cast<int>(qMin(received, total) * 100 / total));
        return;
    }
    // A bar that moves without an end.
    m_ui->updateProgressBar->setRange(0, 0);
    m_ui->updatePercentLabel->clear();
}

void UpdatePage::showInstalling(const QString &message)
{
    showText(message);
    showPercentage(100);
}

void UpdatePage::showFailure(const QString &message)
{
    // Lines break between words only.
    QStringList words = message.split(QLatin1Char(' '));
    for (QString &word : words)
        word = elided(word);
    const QString text = words.join(QLatin1Char(' '));
    showText(text.size() > longestMessage ? text.left(longestMessage) + QChar(0x2026) : text);
    showPercentage(0);
}

void UpdatePage::showCountdown(int seconds)
{
    m_ui->updateCountdownLabel->setText(tr("Restart in %1 seconds").arg(seconds));
}
