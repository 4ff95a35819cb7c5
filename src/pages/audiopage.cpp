// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/audiopage.h"

#include "config/audiosettings.h"
#include "config/keys.h"
#include "device/audiocontroller.h"

#include "ui_audiopage.h"

#include <QTextDocument>

namespace {

const QString none = QStringLiteral("none");
constexpr int numberRole = Qt::UserRole + 1;

std::unique_ptr<Ui::AudioPage> form(QWidget *page)
{
    auto ui = std::make_unique<Ui::AudioPage>();
    ui->setupUi(page);
    return ui;
}

} // namespace

AudioPage::AudioPage(JsonModule &configuration, AudioController &audio, QWidget *parent)
    : SettingsPage(configuration, tr("Audio"), QStringLiteral(":/images/page_audio.png"), parent)
    , m_ui(form(this))
    , m_audio(audio)
    , m_output{AudioDirection::Output,
               *m_ui->outputDeviceComboBox,
               *m_ui->outputPriorityListWidget,
               *m_ui->outputUpButton,
               *m_ui->outputDownButton,
               {QStringLiteral("USB"), QStringLiteral("Bluetooth"), QStringLiteral("HDMI"),
                QStringLiteral("Analog")},
               tr("No audio output")}
    , m_input{AudioDirection::Input,
              *m_ui->inputDeviceComboBox,
              *m_ui->inputPriorityListWidget,
              *m_ui->inputUpButton,
              *m_ui->inputDownButton,
              {QStringLiteral("USB"), QStringLiteral("Bluetooth")},
              tr("No audio input")}
{
    setUp(m_output);
    setUp(m_input);
    watchEditors();
    connect(&m_audio, &AudioController::sendAudioDevices, this, [this] {
        if (!isChanged())
            fill();
    });
}

AudioPage::~AudioPage() = default;

void AudioPage::setUp(Side &side)
{
    connect(&side.priority, &QListWidget::currentRowChanged, this, [&side] { updateButtons(side); });
    connect(&side.up, &QPushButton::clicked, this, [this, &side] { moveEntry(side, -1); });
    connect(&side.down, &QPushButton::clicked, this, [this, &side] { moveEntry(side, 1); });
}

void AudioPage::load(const QJsonObject &root)
{
    setAudioTab(root.value(Key::audio).toObject());
}

void AudioPage::setAudioTab(const QJsonObject &audio)
{
    for (Side *side : {&m_output, &m_input}) {
        loadDevices(*side, audio);
        loadPriority(*side, audio);
    }
    m_ui->toolbarIconCheckBox->setChecked(AudioSettings::toolbarIcon(audio));
}

/// Selects the user's choice or, without one, the device in use.
void AudioPage::loadDevices(Side &side, const QJsonObject &audio)
{
    AudioChoice choice = AudioSettings::checked(audio, side.direction);
    if (!choice.isMade())
        choice
            = choice.inUse(m_audio.devices(), side.direction, AudioSettings::priority(audio, side.direction));
    side.devices.clear();
    const auto add = [&side](const QString &text, const AudioChoice &device) {
        side.devices.addItem(text, device.name);
        side.devices.setItemData(side.devices.count() - 1, device.number, numberRole);
    };
    add(side.offText, AudioChoice::off());
    int row = 0;
    const int present = choice.find(m_audio.devices(), side.direction);
    for (int i = 0; i < m_audio.devices().size(); ++i) {
        const AudioDevice &device = m_audio.devices().at(i);
        if (!device.fits(side.direction))
            continue;
        add(device.name(), AudioChoice::of(device));
        side.devices.setItemData(side.devices.count() - 1, Qt::convertFromPlainText(device.longname()),
                                 Qt::ToolTipRole);
        if (i == present)
            row = side.devices.count() - 1;
    }
    if (choice.isMade() && !choice.isOff() && present < 0) {
        add(tr("%1 (not connected)").arg(choice.name), choice);
        row = side.devices.count() - 1;
    }
    side.devices.setCurrentIndex(row);
    side.shown = chosen(side);
}

/// Kinds that the document does not list are appended, so that the user can move them up.
void AudioPage::loadPriority(Side &side, const QJsonObject &audio)
{
    QStringList entries = AudioSettings::priority(audio, side.direction);
    for (const QString &entry : QStringList(none) + side.kinds) {
        if (!entries.contains(entry))
            entries += entry;
    }
    side.priority.clear();
    for (const QString &entry : entries) {
        auto *item = new QListWidgetItem(entry == none ? side.offText : entry, &side.priority);
        item->setData(Qt::UserRole, entry);
    }
    side.shownPriority = entries;
    side.priority.setCurrentRow(0);
}

void AudioPage::moveEntry(Side &side, int step)
{
    const int row = side.priority.currentRow();
    if (row < 0 || row + step < 0 || row + step >= side.priority.count())
        return;
    side.priority.insertItem(row + step, side.priority.takeItem(row));
    side.priority.setCurrentRow(row + step);
    updateButtons(side);
    markChanged();
}

void AudioPage::updateButtons(const Side &side)
{
    const int row = side.priority.currentRow();
    side.up.setEnabled(row > 0);
    side.down.setEnabled(row >= 0 && row + 1 < side.priority.count());
}

AudioChoice AudioPage::chosen(const Side &side)
{
    return {side.devices.currentData().toString(), side.devices.currentData(numberRole).toString()};
}

QStringList AudioPage::priority(const Side &side)
{
    QStringList entries;
    for (int row = 0; row < side.priority.count(); ++row)
        entries += side.priority.item(row)->data(Qt::UserRole).toString();
    return entries;
}

void AudioPage::save(QJsonObject &root)
{
    QJsonObject audio = root.value(Key::audio).toObject();
    saveAudioTab(audio);
    root.insert(Key::audio, audio);
}

/// Writes only what the user changed: the page may show more than the document stores.
void AudioPage::saveAudioTab(QJsonObject &audio) const
{
    for (const Side *side : {&m_output, &m_input}) {
        if (!(chosen(*side) == side->shown))
            AudioSettings::setChecked(audio, side->direction, chosen(*side));
        if (priority(*side) != side->shownPriority)
            AudioSettings::setPriority(audio, side->direction, priority(*side));
    }
    audio.insert(Key::toolbarIcon, m_ui->toolbarIconCheckBox->isChecked());
}
