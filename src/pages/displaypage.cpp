// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/displaypage.h"

#include "config/keys.h"

#include "ui_displaypage.h"

#include <QRegularExpression>
#include <QSignalBlocker>

namespace {

constexpr int defaultTimeout = 20;
constexpr int longestTimeout = 9999;
constexpr int widestMode = 320;
const QString mirror = QStringLiteral("mirror");

} // namespace

DisplayPage::DisplayPage(JsonModule &configuration, ResolutionContainer &resolutions, QWidget *parent)
    : SettingsPage(configuration, tr("Display"), QStringLiteral(":/images/page_display.png"), parent)
    , m_ui(std::make_unique<Ui::DisplayPage>())
    , m_resolutions(resolutions)
{
    m_ui->setupUi(this);
    watchEditors();
    // The box opens the settings of a second display; it is not stored.
    disconnect(m_ui->dualDisplayCheckBox, nullptr, this, nullptr);
    connect(m_ui->dualDisplayCheckBox, &QCheckBox::toggled, this, &DisplayPage::showSubPage);
    showDualDisplay(false);
}

DisplayPage::~DisplayPage() = default;

void DisplayPage::discard()
{
    forgetChanges();
}

void DisplayPage::load(const QJsonObject &root)
{
    showModes(m_resolutions.resolutions());
    setDisplayTab(root.value(Key::display).toObject());
    getDisplayAvailable();
}

void DisplayPage::getDisplayAvailable()
{
    m_resolutions.getResolutions(this, [this](const std::vector<Item> &modes) { showModes(modes); });
    m_resolutions.getActualMode(this, [this](const QString &mode) {
        QLabel *label = m_ui->actualModeLabel;
        const QString text = mode.simplified();
        preferModeIn(text);
        label->setText(text.isEmpty() ? QString()
                                      : tr("Now: %1").arg(
                                          label->fontMetrics().elidedText(text, Qt::ElideRight, widestMode)));
        label->setToolTip(text);
    });
}

/// A tool that names the mode's group and code tells which of two modes with one text is in use.
void DisplayPage::preferModeIn(const QString &text)
{
    static const QRegularExpression mode(QStringLiteral("\\b(DMT|CEA)\\s+([0-9]+)\\b"));
    const QRegularExpressionMatch match = mode.match(text);
    if (!match.hasMatch())
        return;
    m_resolutions.prefer(match.captured(1), match.captured(2));
    showModes(m_resolutions.resolutions());
}

/// Another list changes no choice, be it stored or made by the user meanwhile.
void DisplayPage::showModes(const std::vector<Item> &modes)
{
    m_modes = modes;
    for (QComboBox *box : {m_ui->primaryResolutionComboBox, m_ui->secondaryResolutionComboBox}) {
        const QString chosen = box->currentText();
        const QSignalBlocker quiet(box);
        box->clear();
        for (const Item &mode : m_modes) {
            box->addItem(mode.getValue(ResolutionContainer::Text));
            box->setItemData(box->count() - 1, mode.getValue(ResolutionContainer::Group), Qt::ToolTipRole);
        }
        select(*box, chosen);
    }
}

/// Keeps a stored resolution that the monitor does not offer until the user chooses another.
void DisplayPage::select(QComboBox &box, const QString &stored) const
{
    const QString wanted = stored.isEmpty() ? ResolutionContainer::automatic : stored;
    const int row = ResolutionContainer::rowIn(m_modes, wanted);
    if (row < 0)
        box.addItem(wanted);
    box.setCurrentIndex(row < 0 ? box.count() - 1 : row);
}

void DisplayPage::setDisplayTab(const QJsonObject &display)
{
    const QJsonObject secondary = display.value(Key::secondary).toObject();
    select(*m_ui->primaryResolutionComboBox,
           display.value(Key::primary).toObject().value(Key::resolution).toString());
    select(*m_ui->secondaryResolutionComboBox, secondary.value(Key::resolution).toString());
    const QString position = secondary.value(Key::position).toString();
    m_ui->rightRadioButton->setChecked(true);
    m_ui->leftRadioButton->setChecked(position == QLatin1String("left"));
    m_ui->topRadioButton->setChecked(position == QLatin1String("top"));
    m_ui->bottomRadioButton->setChecked(position == QLatin1String("bottom"));
    m_ui->mirrorCheckBox->setChecked(display.value(Key::multiMonitorMode).toString() == mirror);
    const int timeout = display.value(Key::screenSaverTimeout).toInt(defaultTimeout);
    m_ui->screenSaverSpinBox->setMaximum(qMax(longestTimeout, timeout));
    m_ui->screenSaverSpinBox->setValue(timeout);
}

/// The sub-page that is hidden takes no room.
void DisplayPage::showSubPage(bool dual)
{
    m_ui->singleDisplayPage->setSizePolicy(QSizePolicy::Preferred,
                                           dual ? QSizePolicy::Ignored : QSizePolicy::Preferred);
    m_ui->dualDisplayPage->setSizePolicy(QSizePolicy::Preferred,
                                         dual ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    m_ui->displayStackedWidget->setCurrentIndex(dual ? 1 : 0);
}

void DisplayPage::showDualDisplay(bool inUse)
{
    m_ui->dualDisplayCheckBox->setChecked(inUse);
    showSubPage(inUse);
    m_ui->dualDisplayLabel->setText(inUse ? tr("A second display is in use: sessions span both.")
                                          : tr("No second display is in use."));
}

QString DisplayPage::position() const
{
    if (m_ui->leftRadioButton->isChecked())
        return QStringLiteral("left");
    if (m_ui->topRadioButton->isChecked())
        return QStringLiteral("top");
    return m_ui->bottomRadioButton->isChecked() ? QStringLiteral("bottom") : QStringLiteral("right");
}

void DisplayPage::save(QJsonObject &root)
{
    const int row = m_ui->primaryResolutionComboBox->currentIndex();
    if (row >= 0 && static_cast<std::size_t>(row) < m_modes.size()) {
        const Item &chosen = m_modes.at(static_cast<std::size_t>(row));
        m_resolutions.prefer(chosen.getValue(ResolutionContainer::Group),
                             chosen.getValue(ResolutionContainer::Code));
    }
    QJsonObject display = root.value(Key::display).toObject();
    saveDisplayTab(display);
    root.insert(Key::display, display);
}

void DisplayPage::saveDisplayTab(QJsonObject &display) const
{
    QJsonObject primary = display.value(Key::primary).toObject();
    primary.insert(Key::resolution, m_ui->primaryResolutionComboBox->currentText());
    display.insert(Key::primary, primary);
    QJsonObject secondary = display.value(Key::secondary).toObject();
    secondary.insert(Key::resolution, m_ui->secondaryResolutionComboBox->currentText());
    secondary.insert(Key::position, position());
    display.insert(Key::secondary, secondary);
    display.insert(Key::multiMonitorMode,
                   m_ui->mirrorCheckBox->isChecked() ? mirror : QStringLiteral("extend"));
    display.insert(Key::screenSaverTimeout, m_ui->screenSaverSpinBox->value());
}
