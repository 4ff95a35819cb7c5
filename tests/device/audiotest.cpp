// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/audiocontroller.h"
#include "device/log.h"
#include "testdevice.h"

#include <QSignalSpy>
#include <QTest>

namespace {

using Devices = QList<AudioDevice>;

AudioDevice device(const char *name, const char *number, const char *kind,
                   AudioDevice::AUDIO_TYPE type = AudioDevice::PlaybackOnly)
{
    return {QLatin1String(name), QString(), QLatin1String(number), type, QLatin1String(kind)};
}

} // namespace

/// Real enumeration code over the lab's sound cards.
class AudioTest : public QObject
{
    Q_OBJECT

private slots:
    void readsTheCards_data();
    void readsTheCards();
    void choosesADevice_data();
    void choosesADevice();
};

void AudioTest::readsTheCards_data()
{
    QTest::addColumn<QByteArray>("cards");
    QTest::addColumn<QString>("devices"); // name, number, type, kind
    QTest::addColumn<QString>("printed");
    const QByteArray usb
        = R"({"name": "Headset", "devices": [{"name": "USB Audio", "playback": true, "capture": true}]})";
    const auto broken = [&usb](const char *faults) {
        return QByteArray(R"([{"name": "Odd", "long name": "Odd one", "faults": {)") + faults
            + R"(}, "devices": [{"name": "x", "playback": true}, {"name": "y", "playback": true}]}, )" + usb
            + ']';
    };
    const QString headset = QStringLiteral("Headset 1,0 2 USB");
    QTest::newRow("none") << QByteArray() << ""
                          << "no soundcards found...";
    QTest::newRow("no JSON") << QByteArray("[{") << ""
                             << "no soundcards found...";
    QTest::newRow("board") << QByteArray(
        R"([{"name": "b", "devices": [{"name": "bcm2835 ALSA", "playback": true},
        {"name": "bcm2835 IEC958/HDMI", "playback": true}]}])")
                           << "Analog 0,0 1 Analog|HDMI 0,1 1 HDMI"
                           << "";
    QTest::newRow("Bluetooth, a gap")
        << QByteArray(R"([null, {"name": "Bluetooth", "devices": [{"playback": true}]}])")
        << "Bluetooth 1,0 1 Bluetooth"
        << "";
    // A missing stream is no error; a broken one is, and does not hide the other.
    QTest::newRow("streams") << QByteArray(R"([{"name": "Mic", "devices": [{"playback": -2, "capture": true},
        {"playback": -5, "capture": true}, {}]}])")
                             << "Mic 0,0 0 |Mic 0,1 0 |Mic 0,2 3 "
                             << "control digital audio info (0): Input/output error";
    QTest::newRow("open fails") << broken(R"("open": -16)") << headset
                                << "control open (0): Device or resource busy";
    QTest::newRow("info fails") << broken(R"("info": -5)") << headset
                                << "control hardware info (0): Input/output error";
    QTest::newRow("vanishes") << broken(R"("next device": -19)")
                              << QString(QStringLiteral("Odd 0,0 1 |") + headset) << "";
    QTest::newRow("nameless") << broken(R"("name": -19, "long name": -19)")
                              << QString(QStringLiteral("0,0 0,0 1 |0,1 0,1 1 |") + headset) << "";
}

void AudioTest::readsTheCards()
{
    QFETCH(QByteArray, cards);
    const TestDevice lab;
    lab.setState(QStringLiteral("sound-cards.json"), cards);
    AudioController controller;
    const QSignalSpy sent(&controller, &AudioController::sendAudioDevices);
    const quint64 before
        = Log::ring().since(0).first + static_cast<quint64>(Log::ring().since(0).entries.size());
    controller.readDevices();
    controller.readDevices();
    QCOMPARE(sent.size(), 2);
    QStringList texts;
    for (const AudioDevice &found : controller.devices())
        texts += QStringLiteral("%1 %2 %3 %4")
                     .arg(found.name(), found.number())
                     .arg(found.type())
                     .arg(found.devType());
    QTEST(texts.join(QLatin1Char('|')), "devices");
    const LogLines lines = Log::ring().since(before);
    QCOMPARE(lines.entries.size() % 2, 0);
    QTEST(lines.entries.isEmpty() ? QString() : lines.entries.first().text, "printed");

    lab.write(QStringLiteral("/lab/answers/tvservice.-a"), QByteArray());
    controller.readDevices();
    for (const AudioDevice &found : controller.devices())
        QVERIFY(found.name() != QLatin1String("HDMI"));
}

void AudioTest::choosesADevice_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("priority");
    QTest::addColumn<QString>("used");
    const auto row
        = [](const char *what, const char *name, const char *number, const char *priority, const char *used) {
              QTest::newRow(what) << name << number << priority << used;
          };
    row("the chosen one", "Headset", "2,0", "HDMI", "Headset 2,0");
    row("its twin is another", "Headset", "1,0", "HDMI", "Headset 1,0");
    row("plugged in elsewhere", "Headset", "7,0", "HDMI", "Headset 1,0");
    row("away", "Speaker", "3,0", "Bluetooth,HDMI,Analog", "HDMI 0,1");
    row("never chosen", "", "", "USB,HDMI", "Headset 1,0");
    row("only recording", "Microphone", "4,0", "hdmi", "HDMI 0,1");
    row("by name", "", "", "Analog", "Analog 0,0");
    row("none before it", "", "", "Bluetooth,none,HDMI", "Off None");
    row("nothing fits", "Speaker", "3,0", "Bluetooth", "Off None");
    row("switched off", "Off", "None", "USB,HDMI", "Off None");
}

void AudioTest::choosesADevice()
{
    QFETCH(QString, name);
    QFETCH(QString, number);
    QFETCH(QString, priority);
    const Devices devices
        = {device("Analog", "0,0", ""), device("HDMI", "0,1", "HDMI"),
           device("Headset", "1,0", "USB", AudioDevice::Both), device("Headset", "2,0", "USB"),
           device("Microphone", "4,0", "USB", AudioDevice::CaptureOnly)};
    const AudioChoice used
        = AudioChoice{name, number}.inUse(devices, AudioDirection::Output, priority.split(QLatin1Char(',')));
    QTEST(QString(used.name + QLatin1Char(' ') + used.number), "used");
}

QTEST_GUILESS_MAIN(AudioTest)
#include "audiotest.moc"
