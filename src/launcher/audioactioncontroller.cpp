// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/audioactioncontroller.h"

#include "launcher/stylesheets.h"
#include "config/audiosettings.h"

#include <QLabel>
#include <QLoggingCategory>
#include <QTextDocument>
#include <QToolButton>
#include <QWidgetAction>

Q_LOGGING_CATEGORY(lcAudioActions, "kt.app.audio")

namespace {

constexpr int noDevice = -1;

/// A document that names no device means the board's own, where there is one: nothing has to be written to
/// use it.
bool isDefault(const AudioChoice &device, AudioDirection direction)
{
    return device.isOff()
        || (direction == AudioDirection::Output && device.number == QLatin1String("0,0")
            && device.name == QLatin1String("Analog"));
}

} // namespace

AudioActionController::AudioActionController(QToolButton &output, QToolButton &input, QObject *parent)
    : QObject(parent)
    , m_output{AudioDirection::Output, output}
    , m_input{AudioDirection::Input, input}
{
    setUp(m_output, tr("SELECT AUDIO OUTPUT"));
    setUp(m_input, tr("SELECT AUDIO INPUT"));
    connect(&m_output.actions, &QActionGroup::triggered, this, &AudioActionController::outputActionTriggered);
    connect(&m_input.actions, &QActionGroup::triggered, this, &AudioActionController::inputActionTriggered);
}

void AudioActionController::setUp(Side &side, const QString &heading)
{
    side.menu.setStyleSheet(StyleSheets::audioSheet());
    side.menu.setObjectName(side.button.objectName() + QLatin1String("Menu"));
    auto *title = new QWidgetAction(&side.menu);
    title->setText(heading);
    title->setDefaultWidget(new QLabel(heading));
    title->setEnabled(false);
    side.menu.addAction(title);
    rebuild(side);
    connect(&side.button, &QToolButton::clicked, this, [&side] {
        // The menu takes the pointer away without the button noticing.
        side.button.setAttribute(Qt::WA_UnderMouse, false);
        side.button.update();
        const QPoint below(side.button.width() - side.menu.sizeHint().width(), side.button.height());
        side.menu.popup(side.button.mapToGlobal(below));
    });
}

QAction *AudioActionController::addAction(Side &side, const QString &text, int device)
{
    QString shown = text;
    auto *action = new QAction(shown.replace(QLatin1Char('&'), QLatin1String("&&")), &side.actions);
    action->setCheckable(true);
    action->setData(device);
    side.menu.addAction(action);
    return action;
}

void AudioActionController::rebuild(Side &side)
{
    qDeleteAll(side.actions.actions());
    addAction(side, tr("Off"), noDevice);
    for (int i = 0; i < m_devices.size(); ++i) {
        if (m_devices.at(i).fits(side.direction))
            addAction(side, m_devices.at(i).name(), i);
    }
}

void AudioActionController::setSettings(const QJsonObject &audio)
{
    for (Side *side : {&m_output, &m_input}) {
        side->button.setVisible(AudioSettings::toolbarIcon(audio));
        side->checked = AudioSettings::checked(audio, side->direction);
        side->inUse = AudioSettings::inUse(audio, side->direction);
        side->priority = AudioSettings::priority(audio, side->direction);
    }
    checkChoosedOutputAction();
    checkChoosedInputAction();
}

void AudioActionController::getAudioDevices(const QList<AudioDevice> &devices)
{
    m_devices = devices;
    m_devicesRead = true;
    rebuild(m_output);
    rebuild(m_input);
    checkChoosedOutputAction();
    checkChoosedInputAction();
}

void AudioActionController::setPriorities(const QStringList &output, const QStringList &input)
{
    setOutputAudioPriority(output);
    setInputAudioPriority(input);
}

void AudioActionController::setOutputAudioPriority(const QStringList &priority)
{
    m_output.priority = priority;
    checkChoosedOutputAction();
}

void AudioActionController::setInputAudioPriority(const QStringList &priority)
{
    m_input.priority = priority;
    checkChoosedInputAction();
}

void AudioActionController::outputActionTriggered(QAction *action)
{
    trigger(m_output, action);
}

void AudioActionController::inputActionTriggered(QAction *action)
{
    trigger(m_input, action);
}

void AudioActionController::trigger(Side &side, const QAction *action)
{
    const int device = action->data().toInt();
    side.checked = device == noDevice ? AudioChoice::off() : AudioChoice::of(m_devices.at(device));
    side.inUse = side.checked;
    announce(side);
    check(side);
}

void AudioActionController::checkChoosedOutputAction()
{
    check(m_output);
}

void AudioActionController::checkChoosedInputAction()
{
    check(m_input);
}

void AudioActionController::check(Side &side)
{
    if (!m_devicesRead)
        return;
    const AudioChoice device = side.checked.inUse(m_devices, side.direction, side.priority);
    const int row = device.isOff() ? noDevice : device.find(m_devices, side.direction);
    for (QAction *action : side.actions.actions()) {
        if (action->data().toInt() == row)
            action->setChecked(true);
    }
    const QString used = row == noDevice ? tr("Off") : device.name;
    const QString tip = side.direction == AudioDirection::Output ? tr("Audio output: %1").arg(used)
                                                                 : tr("Audio input: %1").arg(used);
    side.button.setToolTip(Qt::convertFromPlainText(tip));
    const bool asBefore = side.inUse.isMade() ? device == side.inUse : isDefault(device, side.direction);
    side.inUse = device;
    if (!asBefore)
        announce(side);
}

void AudioActionController::announce(const Side &side)
{
    qCInfo(lcAudioActions).noquote() << (side.direction == AudioDirection::Output ? "output:" : "input:")
                                     << side.inUse.name << side.inUse.number;
    if (side.direction == AudioDirection::Output)
        emit outputChosen(side.inUse.name, side.inUse.number, side.checked.name, side.checked.number);
    else
        emit inputChosen(side.inUse.name, side.inUse.number, side.checked.name, side.checked.number);
}
