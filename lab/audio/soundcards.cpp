// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// Implements the ALSA functions that the launcher calls, for a machine without sound cards. The file
// ROOT/lab/state/sound-cards.json describes the cards. lab/run and the tests load this library instead of the
// real one, through LD_LIBRARY_PATH.

#include <alsa/asoundlib.h>

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>
#include <cstring>

// NOLINTBEGIN(bugprone-reserved-identifier): the library names these types.
struct _snd_ctl
{
    int card;
};
struct _snd_ctl_card_info
{
    int unused;
};
struct _snd_pcm_info
{
    int device;
    snd_pcm_stream_t stream;
    QByteArray name;
};
// NOLINTEND

namespace {

QJsonArray cards()
{
    QFile file(qEnvironmentVariable("KT_DEVICE_ROOT") + QLatin1String("/lab/state/sound-cards.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

QJsonObject card(int number)
{
    return cards().at(number).toObject();
}

/// Returns the error of a card's function: a negative error number, or 0.
int fault(int number, const char *function)
{
    const QJsonObject described = card(number);
    return described.isEmpty()
        ? -ENODEV
        : described.value(QLatin1String("faults")).toObject().value(QLatin1String(function)).toInt();
}

int copyText(int number, const char *key, char **text)
{
    if (const int error = fault(number, key))
        return error;
    *text = strdup(card(number).value(QLatin1String(key)).toString().toUtf8().constData());
    return 0;
}

/// Makes child processes load the real library.
void leaveEnvironment()
{
    qunsetenv("LD_LIBRARY_PATH");
}

} // namespace

extern "C" {

int snd_card_next(int *number)
{
    leaveEnvironment();
    const QJsonArray all = cards();
    do
        ++*number;
    while (*number < all.size() && !all.at(*number).isObject());
    if (*number >= all.size())
        *number = -1;
    return 0;
}

int snd_card_get_name(int number, char **name)
{
    return copyText(number, "name", name);
}

int snd_card_get_longname(int number, char **name)
{
    return copyText(number, "long name", name);
}

int snd_ctl_open(snd_ctl_t **control, const char *name, int)
{
    const int number = std::atoi(name + std::strlen("hw:"));
    if (const int error = fault(number, "open"))
        return error;
    *control = new snd_ctl_t{number};
    return 0;
}

int snd_ctl_close(snd_ctl_t *control)
{
    delete control;
    return 0;
}

int snd_ctl_card_info_malloc(snd_ctl_card_info_t **info)
{
    *info = new snd_ctl_card_info_t{};
    return 0;
}

void snd_ctl_card_info_free(snd_ctl_card_info_t *info)
{
    delete info;
}

int snd_ctl_card_info(snd_ctl_t *control, snd_ctl_card_info_t *)
{
    return fault(control->card, "info");
}

int snd_ctl_pcm_next_device(snd_ctl_t *control, int *device)
{
    const int count = card(control->card).value(QLatin1String("devices")).toArray().size();
    // The card is unplugged after its first device.
    if (const int error = fault(control->card, "next device"); error && *device >= 0)
        return error;
    *device = *device + 1 < count ? *device + 1 : -1;
    return 0;
}

int snd_pcm_info_malloc(snd_pcm_info_t **info)
{
    *info = new snd_pcm_info_t{};
    return 0;
}

void snd_pcm_info_free(snd_pcm_info_t *info)
{
    delete info;
}

void snd_pcm_info_set_device(snd_pcm_info_t *info, unsigned device)
{
    info->device = static_cast<int>(device);
}

void snd_pcm_info_set_subdevice(snd_pcm_info_t *, unsigned) { }

void snd_pcm_info_set_stream(snd_pcm_info_t *info, snd_pcm_stream_t stream)
{
    info->stream = stream;
}

int snd_ctl_pcm_info(snd_ctl_t *control, snd_pcm_info_t *info)
{
    const QJsonObject device
        = card(control->card).value(QLatin1String("devices")).toArray().at(info->device).toObject();
    const QJsonValue stream = device.value(
        info->stream == SND_PCM_STREAM_PLAYBACK ? QLatin1String("playback") : QLatin1String("capture"));
    if (!stream.toBool())
        return stream.toInt(-ENOENT);
    info->name = device.value(QLatin1String("name")).toString().toUtf8();
    return 0;
}

const char *snd_pcm_info_get_name(const snd_pcm_info_t *info)
{
    return info->name.constData();
}

const char *snd_strerror(int error)
{
    return std::strerror(-error);
}

} // extern "C"
