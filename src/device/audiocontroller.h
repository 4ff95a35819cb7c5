// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/audiodevice.h"

#include <QObject>

#include <functional>

/// Reads the sound cards through ALSA. Errors of one card are printed; the other cards are still read.
class AudioController : public QObject
{
    Q_OBJECT

public:
    explicit AudioController(QObject *parent = nullptr);

    /// The devices as last read.
    const QList<AudioDevice> &devices() const;
    /// Asks the board's firmware whether the monitor takes sound, and calls `done` from the event loop.
    void checkHDMIAudioAvailable(const std::function<void(bool)> &done);

public slots:
    /// Reads the devices anew and passes them on, when the firmware has told of HDMI where there is such a
    /// device. Asked for during a reading, it follows that one.
    void readDevices();

signals:
    void sendAudioDevices(const QList<AudioDevice> &devices);

private:
    void hwDeviceList();
    void readCard(int card);
    void addCard(const QString &name, const QString &longname, int card, int device, const QString &pcmName,
                 AudioDevice::AUDIO_TYPE type);

    void finishReading(bool withHdmi);

    QList<AudioDevice> m_devices;
    QList<AudioDevice> m_found; ///< by the reading under way
    bool m_reading = false;
    bool m_readAgain = false;
};
