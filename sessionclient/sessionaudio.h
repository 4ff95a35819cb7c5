// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

/// Returns the ALSA device for output in a configuration document ("hw:0,0"): "null" for "Off", empty when
/// the document names none.
QString chosenAudioDevice(const QByteArray &configuration);

/// Returns ALSA definitions that give the device the name "kt_session".
QByteArray audioDefinition(const QString &device);

/// The sound of one session.
///
/// FreeRDP separates its sound options with commas, so it cannot parse a device name such as "hw:0,0". The
/// device therefore gets a plain name in an ALSA definition file of this session. When a sound starts, ALSA
/// reads a changed file again. A running session moves to another device in this way.
class SessionAudio
{
public:
    /// Reads the device from the configuration document. May be called again at any time.
    void reload();

    /// The device's name for FreeRDP; empty when the configuration names none.
    QString deviceName() const;
    /// Returns the environment with the variable that makes ALSA read the definition file.
    QProcessEnvironment addedTo(QProcessEnvironment environment) const;

private:
    QString definitionPath() const;

    QTemporaryDir m_folder;
    bool m_defined = false;
};
