// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/audiocontroller.h"
#include "testdevice.h"
#include "testtable.h"

#include <QSignalSpy>
#include <QTest>

namespace {

using Devices = QList<AudioDevice>;

AudioDevice device(const char *name, const char *number, const char *kind,
                   AudioDevice::AUDIO_TYPE type = AudioDevice::PlaybackOnly)
{
    return {QLatin1String(name), QString(), QLatin1String(number), type, QLatin1String(kind)};
}

/// A card that fails, and a sound one behind it.
QByteArray broken(const char *faults)
{
    return QByteArray(R"([{"name": "Odd", "long name": "Odd one", "faults": {FAULTS},
                           "devices": [{"name": "x", "playback": true}, {"name": "y", "playback": true}]},
                          {"name": "Headset",
                           "devices": [{"name": "USB Audio", "playback": true, "capture": true}]}])")
        .replace("FAULTS", faults);
}
} // namespace

/// Real enumeration code over the lab's sound cards.
class AudioTest : public QObject
{
    Q_OBJECT

private slots:
    void readsTheCards_data()
    {
        // name, number, type, kind
        const TestTable<QByteArray, QString> table("cards", "devices");
        const QString headset = "Headset 1,0 2 USB";
        table.row("none", QByteArray(), "");
        table.row("board", R"([{"name": "b", "devices": [{"name": "bcm2835 ALSA", "playback": true},
        {"name": "bcm2835 IEC958/HDMI", "playback": true}]}])",
                  "Analog 0,0 1 Analog|HDMI 0,1 1 HDMI");
        table.row("Bluetooth, a gap", R"([null, {"name": "Bluetooth", "devices": [{"playback": true}]}])",
                  "Bluetooth 1,0 1 Bluetooth");
        // A missing stream is no error; a broken one is, and does not hide the other.
        table.row("streams", R"([{"name": "Mic", "devices": [{"playback": -2, "capture": true},
        {"playback": -5, "capture": true}, {}]}])",
                  "Mic 0,0 0 |Mic 0,1 0 |Mic 0,2 3 ");
        table.row("info fails", broken("\"info\": -5"), headset);
        table.row("vanishes", broken("\"next device\": -19"), "Odd 0,0 1 |" + headset);
        table.row("nameless", broken("\"name\": -19, \"long name\": -19"),
                  "0,0 0,0 1 |0,1 0,1 1 |" + headset);
    }

    void readsTheCards()
    {
        QFETCH(QByteArray, cards);
        const TestDevice lab;
        lab.setState("sound-cards.json", cards);
        AudioController controller;
        const QSignalSpy sent(&controller, &AudioController::sendAudioDevices);
        controller.readDevices();
        controller.readDevices();
        QTRY_COMPARE(sent.size(), 2);
        QStringList texts;
        for (const AudioDevice &found : controller.devices())
            texts += QString("%1 %2 %3 %4")
                         .arg(found.name(), found.number())
                         .arg(found.type())
                         .arg(found.devType());
        QTEST(texts.join('|'), "devices");
    }

    void choosesADevice_data()
    {
        const TestTable<QString, QString, QString, QString> table("name", "number", "priority", "used");
        table.row("the chosen one", "Headset", "2,0", "HDMI", "Headset 2,0");
        table.row("plugged in elsewhere", "Headset", "7,0", "HDMI", "Headset 1,0");
        table.row("away", "Speaker", "3,0", "Bluetooth,HDMI,Analog", "HDMI 0,1");
        table.row("by name", "", "", "Analog", "Analog 0,0");
        table.row("none before it", "", "", "Bluetooth,none,HDMI", "Off None");
        table.row("nothing fits", "Speaker", "3,0", "Bluetooth", "Off None");
        table.row("switched off", "Off", "None", "USB,HDMI", "Off None");
    }

    void choosesADevice()
    {
        QFETCH(QString, name);
        QFETCH(QString, number);
        QFETCH(QString, priority);
        const Devices devices
            = {device("Analog", "0,0", ""), device("HDMI", "0,1", "HDMI"),
               device("Headset", "1,0", "USB", AudioDevice::Both), device("Headset", "2,0", "USB"),
               device("Microphone", "4,0", "USB", AudioDevice::CaptureOnly)};
        const AudioChoice used
            = AudioChoice{name, number}.inUse(devices, AudioDirection::Output, priority.split(','));
        QTEST(QStringList({used.name, used.number}).join(' '), "used");
    }
};

QTEST_GUILESS_MAIN(AudioTest)
#include "audiotest.moc"
