// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/sessionaudio.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSaveFile>

Q_LOGGING_CATEGORY(lcSessionAudio, "kt.session.audio")

namespace {

const QLatin1String systemDefinition("/usr/share/alsa/alsa.conf");
const QLatin1String silentDevice("null");

QString configurationPath()
{
    return qEnvironmentVariable("KT_DEVICE_ROOT") + QStringLiteral("/var/lib/kt964/config.json");
}

} // namespace

QString chosenAudioDevice(const QByteArray &configuration)
{
    static const QRegularExpression cardAndDevice(QStringLiteral("\\A[0-9]{1,2},[0-9]{1,2}\\z"));
    const QJsonObject settings
        = QJsonDocument::fromJson(configuration).object().value(QLatin1String("audio settings")).toObject();
    const QJsonObject device = settings.value(QLatin1String("output device")).toObject();
    if (device.value(QLatin1String("device name")).toString() == QLatin1String("Off"))
        return silentDevice;
    const QString number = device.value(QLatin1String("device number")).toString();
    // Without a valid number the system chooses the device.
    return cardAndDevice.match(number).hasMatch() ? QStringLiteral("hw:") + number : QString();
}

/// ALSA looks up the mixer by the same name; it belongs to the card.
QByteArray audioDefinition(const QString &device)
{
    if (device == silentDevice)
        return "pcm.kt_session { type null }\n";
    const QString card = device.section(QLatin1Char(':'), 1).section(QLatin1Char(','), 0, 0);
    return QStringLiteral(
               "pcm.kt_session { type plug slave.pcm \"%1\" }\nctl.kt_session { type hw card %2 }\n")
        .arg(device, card)
        .toLatin1();
}

void SessionAudio::reload()
{
    QFile configuration(configurationPath());
    if (!configuration.open(QIODevice::ReadOnly))
        return;
    const QString device = chosenAudioDevice(configuration.readAll());
    if (device.isEmpty())
        return;
    QSaveFile definition(definitionPath());
    if (!definition.open(QIODevice::WriteOnly))
        return;
    definition.write(audioDefinition(device));
    m_defined = definition.commit();
    qCInfo(lcSessionAudio) << "sound device:" << device;
}

QString SessionAudio::deviceName() const
{
    return m_defined ? QStringLiteral("kt_session") : QString();
}

QProcessEnvironment SessionAudio::addedTo(QProcessEnvironment environment) const
{
    if (m_defined)
        environment.insert(QStringLiteral("ALSA_CONFIG_PATH"),
                           systemDefinition + QLatin1Char(':') + definitionPath());
    return environment;
}

QString SessionAudio::definitionPath() const
{
    return m_folder.filePath(QStringLiteral("asound.conf"));
}
