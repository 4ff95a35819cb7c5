// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/audiodevice.h"
#include "device/quicktool.h"

#include <QObject>

#include <optional>

/// Reads the sound cards through ALSA. Errors of one card are printed; the other cards are still read.
class AudioController : public QObject
{
    Q_OBJECT

public:
    explicit AudioController(QObject *parent = nullptr);

    /// The devices as last read.
    const QList<AudioDevice> &devices() const;
    /// Queries the board's firmware.
    bool checkHDMIAudioAvailable();

public slots:
    /// Reads the devices again and emits them.
    void readDevices();

signals:
    void sendAudioDevices(const QList<AudioDevice> &devices);

private:
    void hwDeviceList();
    void readCard(int card);
    void addCard(const QString &name, const QString &longname, int card, int device, const QString &pcmName,
                 AudioDevice::AUDIO_TYPE type);

    QuickTool m_firmware;
    QList<AudioDevice> m_devices;
    std::optional<bool> m_hdmiAvailable; ///< read at most once per `readDevices`, for an HDMI device
};
