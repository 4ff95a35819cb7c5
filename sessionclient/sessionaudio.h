// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

// The ALSA hardware device that a configuration document chooses for output ("hw:0,0"); "null" when it says
// "Off", empty when it says nothing.
QString chosenAudioDevice(const QByteArray &configuration);

// The ALSA definitions that let such a device be called "kt_session".
QByteArray audioDefinition(const QString &device);

// The sound of one session.
//
// FreeRDP takes its sound options as a list with commas and breaks off at a device name that has one, as
// "hw:0,0" does. So the chosen device gets a plain name in an ALSA definition file of this session. ALSA
// reads that file again whenever it has changed and a sound starts: this is how a running session moves to
// another device.
class SessionAudio
{
public:
    // Takes the device from the configuration document; again at any time.
    void reload();

    // The name to give to FreeRDP; empty when the configuration chooses none.
    QString deviceName() const;
    void addTo(QProcessEnvironment *environment) const;

private:
    QString definitionPath() const;

    QTemporaryDir m_folder;
    bool m_defined = false;
};
