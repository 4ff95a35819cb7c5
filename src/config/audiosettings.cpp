// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/audiosettings.h"

#include "config/keys.h"

#include <QJsonArray>

namespace AudioSettings {

namespace {

QLatin1String key(AudioDirection direction, QLatin1String output, QLatin1String input)
{
    return direction == AudioDirection::Output ? output : input;
}

QLatin1String checkedKey(AudioDirection direction)
{
    return key(direction, Key::checkedOutputDevice, Key::checkedInputDevice);
}

QLatin1String deviceKey(AudioDirection direction)
{
    return key(direction, Key::outputDevice, Key::inputDevice);
}

/// Reads an object, or a text that is only the name.
AudioChoice choice(const QJsonValue &value)
{
    const QJsonObject object = value.toObject();
    return {value.isString() ? value.toString() : object.value(Key::audioDeviceName).toString(),
            object.value(Key::audioDeviceNumber).toString()};
}

QJsonObject object(const AudioChoice &choice)
{
    return {{Key::audioDeviceName, choice.name}, {Key::audioDeviceNumber, choice.number}};
}

} // namespace

AudioChoice checked(const QJsonObject &audio, AudioDirection direction)
{
    return choice(audio.value(checkedKey(direction)));
}

AudioChoice inUse(const QJsonObject &audio, AudioDirection direction)
{
    return choice(audio.value(deviceKey(direction)));
}

QStringList priority(const QJsonObject &audio, AudioDirection direction)
{
    QStringList entries;
    for (const QJsonValue &entry :
         audio.value(key(direction, Key::outputPriority, Key::inputPriority)).toArray()) {
        if (entry.isString())
            entries += entry.toString();
    }
    return entries;
}

bool toolbarIcon(const QJsonObject &audio)
{
    return audio.value(Key::toolbarIcon).toBool(true);
}

void setChecked(QJsonObject &audio, AudioDirection direction, const AudioChoice &choice)
{
    if (choice.isMade())
        audio.insert(checkedKey(direction), object(choice));
}

void setInUse(QJsonObject &audio, AudioDirection direction, const AudioChoice &device)
{
    audio.insert(deviceKey(direction), object(device));
}

void setPriority(QJsonObject &audio, AudioDirection direction, const QStringList &priority)
{
    audio.insert(key(direction, Key::outputPriority, Key::inputPriority),
                 QJsonArray::fromStringList(priority));
}

} // namespace AudioSettings
