// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/sessionaudio.h"

#include "session/deviceconfiguration.h"

#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSaveFile>

Q_LOGGING_CATEGORY(lcSessionAudio, "kt.session.audio")

namespace {

const QLatin1String systemDefinition("/usr/share/alsa/alsa.conf");
const QLatin1String silentDevice("null");
// What the definition file calls the two devices.
const QLatin1String outputName("kt_session");
const QLatin1String inputName("kt_microphone");

QJsonObject chosen(const QJsonObject &configuration, const char *direction)
{
    const QJsonObject settings = configuration.value(QLatin1String("audio settings")).toObject();
    return settings.value(QLatin1String(direction)).toObject();
}

bool isOff(const QJsonObject &device)
{
    const QString name = device.value(QLatin1String("device name")).toString();
    return name.compare(QLatin1String("off"), Qt::CaseInsensitive) == 0
        || name.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0;
}

QString hardwareName(const QJsonObject &device)
{
    static const QRegularExpression cardAndDevice(QStringLiteral("\\A[0-9]{1,2},[0-9]{1,2}\\z"));
    const QString number = device.value(QLatin1String("device number")).toString();
    return cardAndDevice.match(number).hasMatch() ? QStringLiteral("hw:") + number : QString();
}

bool isPluggedIn(const QString &input)
{
    const QString card = input.section(QLatin1Char(':'), 1).section(QLatin1Char(','), 0, 0);
    const QString device = input.section(QLatin1Char(','), 1);
    return !input.isEmpty()
        && QFile::exists(qEnvironmentVariable("KT_DEVICE_ROOT")
                         + QStringLiteral("/dev/snd/pcmC%1D%2c").arg(card, device));
}

QString definition(const QString &name, const QString &device)
{
    if (device.isEmpty())
        return QString();
    if (device == silentDevice)
        return QStringLiteral("pcm.%1 { type null }\n").arg(name);
    // ALSA looks up the mixer by the same name; it belongs to the card.
    const QString card = device.section(QLatin1Char(':'), 1).section(QLatin1Char(','), 0, 0);
    return QStringLiteral("pcm.%1 { type plug slave.pcm \"%2\" }\nctl.%1 { type hw card %3 }\n")
        .arg(name, device, card);
}

} // namespace

AudioDevices chosenAudioDevices(const QJsonObject &configuration)
{
    const QJsonObject output = chosen(configuration, "output device");
    const QJsonObject input = chosen(configuration, "input device");
    AudioDevices devices;
    devices.output = isOff(output) ? QString(silentDevice) : hardwareName(output);
    devices.input = isOff(input) ? QString() : hardwareName(input);
    return devices;
}

QByteArray audioDefinition(const AudioDevices &devices)
{
    return (definition(outputName, devices.output) + definition(inputName, devices.input)).toLatin1();
}

void SessionAudio::reload()
{
    AudioDevices devices = chosenAudioDevices(deviceConfiguration());
    // A running session keeps what it has. FreeRDP ends a session whose microphone it cannot open, and floods
    // the server with silence from ALSA's "null" device, so it never gets an absent microphone or that one.
    if (devices.output.isEmpty())
        devices.output = m_devices.output;
    if (!isPluggedIn(devices.input))
        devices.input = m_devices.input;
    if (devices.output.isEmpty() && devices.input.isEmpty())
        return;
    QSaveFile file(definitionPath());
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(audioDefinition(devices));
    if (!file.commit())
        return;
    m_devices = devices;
    qCInfo(lcSessionAudio) << "sound device:" << devices.output << "microphone:" << devices.input;
}

QString SessionAudio::outputDevice() const
{
    return m_devices.output.isEmpty() ? QString() : QString(outputName);
}

QString SessionAudio::inputDevice() const
{
    return m_devices.input.isEmpty() ? QString() : QString(inputName);
}

QProcessEnvironment SessionAudio::addedTo(QProcessEnvironment environment) const
{
    if (!m_devices.output.isEmpty() || !m_devices.input.isEmpty())
        environment.insert(QStringLiteral("ALSA_CONFIG_PATH"),
                           systemDefinition + QLatin1Char(':') + definitionPath());
    return environment;
}

QString SessionAudio::definitionPath() const
{
    return m_folder.filePath(QStringLiteral("asound.conf"));
}
