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

    QString name() const; ///< as the menus show it
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

/// A device as it is remembered. A default one says that nothing was ever chosen.
struct AudioChoice
{
    QString name;
    QString number;

    static AudioChoice off();
    static AudioChoice of(const AudioDevice &device);
    bool isMade() const;
    bool isOff() const;
    bool operator==(const AudioChoice &other) const;

    /// Which of the devices it is; -1 when it is not there. One that was plugged in elsewhere is found by its
    /// name.
    int find(const QList<AudioDevice> &devices, AudioDirection direction) const;
    /// The device that is used: the chosen one if it is there, else the first kind of `priority` (or name of
    /// a device) that is. The entry "none" ends the list. Without a device, off.
    AudioChoice inUse(const QList<AudioDevice> &devices, AudioDirection direction,
                      const QStringList &priority) const;
};
