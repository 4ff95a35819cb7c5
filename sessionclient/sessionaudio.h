// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

/// ALSA devices, as in "hw:0,0".
struct AudioDevices
{
    QString output; ///< "null" for no sound, empty for the system's choice
    QString input;  ///< empty for no microphone
};

/// Returns the devices that a configuration document chooses.
AudioDevices chosenAudioDevices(const QJsonObject &configuration);

/// Returns ALSA definitions that give the devices the names "kt_session" and "kt_microphone".
QByteArray audioDefinition(const AudioDevices &devices);

/// The sound and the microphone of one session.
///
/// FreeRDP separates its sound options with commas, so it cannot parse a device name such as "hw:0,0". The
/// devices therefore get plain names in an ALSA definition file of this session. When a sound or a recording
/// starts, ALSA reads a changed file again. A running session moves to another device in this way.
class SessionAudio
{
public:
    /// Reads the devices from the configuration document. May be called again at any time. A session that
    /// started without a chosen device, or with an absent microphone, does not get it later.
    void reload();

    /// The output device's name for FreeRDP; empty when the configuration names none.
    QString outputDevice() const;
    /// The microphone's name for FreeRDP; empty for no microphone.
    QString inputDevice() const;
    /// Returns the environment with the variable that makes ALSA read the definition file.
    QProcessEnvironment addedTo(QProcessEnvironment environment) const;

private:
    QString definitionPath() const;

    QTemporaryDir m_folder;
    AudioDevices m_devices;
};
