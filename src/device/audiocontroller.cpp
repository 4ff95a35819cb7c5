// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/audiocontroller.h"

#include "device/devicetools.h"
#include "device/diagnostics.h"

#include <QLoggingCategory>

#include <alsa/asoundlib.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

Q_LOGGING_CATEGORY(lcAudio, "kt.device.audio")

namespace {

/// Higher than the kernel's own limits.
constexpr int cardLimit = 64;
constexpr int deviceLimit = 256;
const QString hdmi = QStringLiteral("HDMI");

struct Deleter
{
    void operator()(snd_ctl_t *control) const { snd_ctl_close(control); }
    void operator()(snd_ctl_card_info_t *info) const { snd_ctl_card_info_free(info); }
    void operator()(snd_pcm_info_t *info) const { snd_pcm_info_free(info); }
    void operator()(char *text) const { std::free(text); }
};
using Control = std::unique_ptr<snd_ctl_t, Deleter>;
using CardInfo = std::unique_ptr<snd_ctl_card_info_t, Deleter>;
using PcmInfo = std::unique_ptr<snd_pcm_info_t, Deleter>;
using Text = std::unique_ptr<char, Deleter>;

void printError(const char *what, int card, int error)
{
    Diagnostics::print(QStringLiteral("%1 (%2): %3")
                           .arg(QLatin1String(what))
                           .arg(card)
                           .arg(QString::fromUtf8(snd_strerror(error))));
}

Control openControl(int card)
{
    snd_ctl_t *control = nullptr;
    const QByteArray name = "hw:" + QByteArray::number(card);
    if (const int error = snd_ctl_open(&control, name.constData(), 0); error < 0) {
        printError("control open", card, error);
        return nullptr;
    }
    return Control(control);
}

bool isPresent(snd_ctl_t *control, int card)
{
    snd_ctl_card_info_t *allocated = nullptr;
    if (snd_ctl_card_info_malloc(&allocated) < 0)
        return false;
    const CardInfo info(allocated);
    const int error = snd_ctl_card_info(control, info.get());
    if (error < 0)
        printError("control hardware info", card, error);
    return error >= 0;
}

QString cardName(int (*get)(int, char **), int card)
{
    char *name = nullptr;
    if (get(card, &name) < 0 || !name)
        return QString();
    return QString::fromUtf8(Text(name).get()).simplified();
}

/// Whether a device has a stream; sets `name` if it has.
bool probe(snd_ctl_t *control, snd_pcm_info_t *info, int card, snd_pcm_stream_t stream, QString &name)
{
    snd_pcm_info_set_stream(info, stream);
    const int error = snd_ctl_pcm_info(control, info);
    if (error >= 0)
        name = QString::fromUtf8(snd_pcm_info_get_name(info)).simplified();
    else if (error != -ENOENT)
        printError("control digital audio info", card, error);
    return error >= 0;
}

bool isHdmi(const AudioDevice &device)
{
    return device.devType() == hdmi;
}

AudioDevice::AUDIO_TYPE typeOf(bool plays, bool records)
{
    if (plays)
        return records ? AudioDevice::Both : AudioDevice::PlaybackOnly;
    return records ? AudioDevice::CaptureOnly : AudioDevice::Neither;
}

} // namespace

AudioController::AudioController(QObject *parent)
    : QObject(parent)
{ }

const QList<AudioDevice> &AudioController::devices() const
{
    return m_devices;
}

void AudioController::checkHDMIAudioAvailable(const std::function<void(bool)> &done)
{
    ToolRun::start(DeviceTools::hdmiAudio(), this,
                   [done](const ToolResult &result) { done(!result.output.isEmpty()); });
}

void AudioController::readDevices()
{
    if (m_reading) {
        m_readAgain = true;
        return;
    }
    m_reading = true;
    m_found.clear();
    hwDeviceList();
    if (std::any_of(m_found.cbegin(), m_found.cend(), isHdmi))
        checkHDMIAudioAvailable([this](bool available) { finishReading(available); });
    else
        finishReading(false);
}

void AudioController::finishReading(bool withHdmi)
{
    if (!withHdmi)
        m_found.erase(std::remove_if(m_found.begin(), m_found.end(), isHdmi), m_found.end());
    m_devices = m_found;
    m_reading = false;
    qCInfo(lcAudio) << m_devices.size() << "sound devices";
    emit sendAudioDevices(m_devices);
    if (std::exchange(m_readAgain, false))
        readDevices();
}

void AudioController::hwDeviceList()
{
    int card = -1;
    if (snd_card_next(&card) < 0 || card < 0) {
        Diagnostics::print(QStringLiteral("no soundcards found..."));
        return;
    }
    for (int count = 0; card >= 0 && count < cardLimit; ++count) {
        readCard(card);
        if (snd_card_next(&card) < 0)
            return;
    }
}

void AudioController::readCard(int card)
{
    const Control control = openControl(card);
    if (!control || !isPresent(control.get(), card))
        return;
    const QString name = cardName(snd_card_get_name, card);
    const QString longname = cardName(snd_card_get_longname, card);
    snd_pcm_info_t *allocated = nullptr;
    if (snd_pcm_info_malloc(&allocated) < 0)
        return;
    const PcmInfo info(allocated);
    int device = -1;
    for (int count = 0; count < deviceLimit; ++count) {
        const int error = snd_ctl_pcm_next_device(control.get(), &device);
        if (error < 0)
            qCWarning(lcAudio) << "card" << card << "is gone:" << snd_strerror(error);
        if (error < 0 || device < 0)
            return;
        snd_pcm_info_set_device(info.get(), static_cast<unsigned>(device));
        snd_pcm_info_set_subdevice(info.get(), 0);
        QString pcmName;
        const bool plays = probe(control.get(), info.get(), card, SND_PCM_STREAM_PLAYBACK, pcmName);
        const bool records = probe(control.get(), info.get(), card, SND_PCM_STREAM_CAPTURE, pcmName);
        addCard(name, longname, card, device, pcmName, typeOf(plays, records));
    }
}

void AudioController::addCard(const QString &name, const QString &longname, int card, int device,
                              const QString &pcmName, AudioDevice::AUDIO_TYPE type)
{
    QString shown = name;
    QString devType;
    if (pcmName == QLatin1String("bcm2835 ALSA")) {
        shown = devType = QStringLiteral("Analog");
    } else if (pcmName == QLatin1String("bcm2835 IEC958/HDMI")) {
        shown = devType = hdmi;
    } else if (pcmName == QLatin1String("USB Audio")) {
        devType = QStringLiteral("USB");
    } else if (name == QLatin1String("Bluetooth")) {
        devType = name;
    }
    const QString number = QStringLiteral("%1,%2").arg(card).arg(device);
    m_found += AudioDevice(shown.isEmpty() ? number : shown, longname, number, type, devType);
}
