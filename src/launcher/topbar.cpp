// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/topbar.h"

#include "launcher/stylesheets.h"

#include "ui_settingsapp.h"

#include <QTextDocument>

namespace {

constexpr int iconSize = 32;
constexpr int widestDeviceName = 480;
constexpr int momentMs = 300;

QString signalImage(int signal)
{
    if (signal < 1)
        return QStringLiteral("thin_client_icon_wifi_0.png");
    if (signal <= 33)
        return QStringLiteral("thin_client_icon_wifi_1.png");
    return signal <= 66 ? QStringLiteral("thin_client_icon_wifi_2.png")
                        : QStringLiteral("thin_client_icon_wifi_full.png");
}

/// A tool tip takes for markup what looks like it, and anybody may name a wireless network.
QString plain(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

void setIcon(QAbstractButton *button, const char *image)
{
    button->setIcon(QIcon(QStringLiteral(":/images/") + QLatin1String(image)));
    button->setIconSize(QSize(iconSize, iconSize));
}

} // namespace

TopBar::TopBar(const Ui::SettingsApp &ui, QObject *parent)
    : QObject(parent)
    , m_ui(ui)
{
    m_ui.logoLabel->setPixmap(QPixmap(QStringLiteral(":/images/logo.png")));
    setIcon(m_ui.settingsButton, "settings.png");
    setIcon(m_ui.powerButton, "power.png");
    setIcon(m_ui.outputAudioButton, "audio_output.png");
    setIcon(m_ui.inputAudioButton, "audio_input.png");
    m_ui.wirelessStatusLabel->hide();
    // Its place stays free: nothing moves when it comes and goes.
    QSizePolicy policy = m_ui.applyProgressBar->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_ui.applyProgressBar->setSizePolicy(policy);
    m_ui.applyProgressBar->hide();
    m_progress.setSingleShot(true);
    m_progress.setInterval(momentMs);
    connect(&m_progress, &QTimer::timeout, m_ui.applyProgressBar, &QWidget::show);
}

void TopBar::showProgress(bool busy)
{
    if (busy)
        return m_progress.start();
    m_progress.stop();
    m_ui.applyProgressBar->hide();
}

void TopBar::showDeviceName(const QString &name)
{
    QLabel *label = m_ui.deviceNameLabel;
    label->ensurePolished();
    label->setText(label->fontMetrics().elidedText(name, Qt::ElideMiddle, widestDeviceName));
    label->setAccessibleName(name);
}

void TopBar::setWiredNetworkStatus(const QString &state)
{
    if (state == QLatin1String("no link"))
        m_ui.wiredStatusLabel->setStyleSheet(StyleSheets::noLinkWiredSheet());
    else if (state == QLatin1String("link"))
        m_ui.wiredStatusLabel->setStyleSheet(StyleSheets::linkWiredSheet());
    else if (state == QLatin1String("connected"))
        m_ui.wiredStatusLabel->setStyleSheet(StyleSheets::connectedWiredSheet());
}

void TopBar::setWirelessNetworkStatus(const QString &state, int signal)
{
    QString stateImage;
    if (state == QLatin1String("link"))
        stateImage = QStringLiteral("40_vexa_icon_yellow.png");
    else if (state == QLatin1String("connected"))
        stateImage = QStringLiteral("40_vexa_icon_ok.png");
    else
        return;
    m_ui.wirelessStatusLabel->setStyleSheet(
        StyleSheets::wirelessIconSheet().arg(signalImage(signal), stateImage));
}

void TopBar::setWiredIconShown(bool shown)
{
    m_ui.wiredStatusLabel->setVisible(shown);
}

void TopBar::setWirelessIconShown(bool shown)
{
    m_ui.wirelessStatusLabel->setVisible(shown);
}

void TopBar::setWiredToolTip(const QString &text)
{
    m_ui.wiredStatusLabel->setToolTip(plain(text));
}

void TopBar::setWirelessToolTip(const QString &text)
{
    m_ui.wirelessStatusLabel->setToolTip(plain(text));
}
