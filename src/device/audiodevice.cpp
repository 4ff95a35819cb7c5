// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/audiodevice.h"

AudioDevice::AudioDevice(const QString &name, const QString &longname, const QString &number, AUDIO_TYPE type,
                         const QString &devType)
    : m_name(name)
    , m_longname(longname)
    , m_number(number)
    , m_type(type)
    , m_devType(devType)
{ }

QString AudioDevice::name() const
{
    return m_name;
}

QString AudioDevice::longname() const
{
    return m_longname;
}

QString AudioDevice::number() const
{
    return m_number;
}

AudioDevice::AUDIO_TYPE AudioDevice::type() const
{
    return m_type;
}

QString AudioDevice::devType() const
{
    return m_devType;
}

bool AudioDevice::fits(AudioDirection direction) const
{
    return m_type == Both || m_type == (direction == AudioDirection::Output ? PlaybackOnly : CaptureOnly);
}

AudioChoice AudioChoice::off()
{
    return {QStringLiteral("Off"), QStringLiteral("None")};
}

AudioChoice AudioChoice::of(const AudioDevice &device)
{
    return {device.name(), device.number()};
}

bool AudioChoice::isMade() const
{
    return !name.isEmpty();
}

bool AudioChoice::isOff() const
{
    return name.compare(QLatin1String("off"), Qt::CaseInsensitive) == 0
        || name.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0;
}

bool AudioChoice::operator==(const AudioChoice &other) const
{
    return name == other.name && number == other.number;
}

int AudioChoice::find(const QList<AudioDevice> &devices, AudioDirection direction) const
{
    int found = -1;
    for (int i = 0; i < devices.size(); ++i) {
        const AudioDevice &device = devices.at(i);
        if (!device.fits(direction) || device.name() != name)
            continue;
        if (device.number() == number)
            return i;
        if (found < 0)
            found = i;
    }
    return found;
}

AudioChoice AudioChoice::inUse(const QList<AudioDevice> &devices, AudioDirection direction,
                               const QStringList &priority) const
{
    if (isOff())
        return off();
    if (const int chosen = find(devices, direction); chosen >= 0)
        return of(devices.at(chosen));
    for (const QString &entry : priority) {
        if (entry.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0)
            break;
        for (const AudioDevice &device : devices) {
            if (device.fits(direction)
                && (device.devType().compare(entry, Qt::CaseInsensitive) == 0 || device.name() == entry))
                return of(device);
        }
    }
    return off();
}
