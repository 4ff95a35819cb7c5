// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

enum class AudioDirection { Output, Input };

/// One device of a sound card.
class AudioDevice
{
public:
    enum AUDIO_TYPE { CaptureOnly = 0, PlaybackOnly = 1, Both = 2, Neither = 3 };

    AudioDevice(const QString &name, const QString &longname, const QString &number, AUDIO_TYPE type,
                const QString &devType);

    QString name() const; ///< for the menus
    QString longname() const;
    QString number() const; ///< card and device, as in "0,0"
    AUDIO_TYPE type() const;
    QString devType() const; ///< "Analog", "HDMI", "USB", "Bluetooth", or empty

    bool fits(AudioDirection direction) const;

private:
    QString m_name;
    QString m_longname;
    QString m_number;
    AUDIO_TYPE m_type;
    QString m_devType;
};

/// A stored choice of a device. A default-constructed one means that no device was ever chosen.
struct AudioChoice
{
    QString name;
    QString number;

    static AudioChoice off();
    static AudioChoice of(const AudioDevice &device);
    bool isMade() const;
    bool isOff() const;
    bool operator==(const AudioChoice &other) const;

    /// The index of the device, or -1 if it is absent. A device that is now plugged in elsewhere is found by
    /// its name.
    int find(const QList<AudioDevice> &devices, AudioDirection direction) const;
    /// The device to use: the chosen one if present, or else the first present entry of `priority` (a kind or
    /// a device name). The entry "none" ends the list. Without any device, off.
    AudioChoice inUse(const QList<AudioDevice> &devices, AudioDirection direction,
                      const QStringList &priority) const;
};
