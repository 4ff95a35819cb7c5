// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/settingsapp.h"
#include "app/settingscontroller.h"
#include "testdevice.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QJsonArray>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace {

const QByteArray board = R"({"name": "b", "devices": [{"name": "bcm2835 ALSA", "playback": true},
    {"name": "bcm2835 IEC958/HDMI", "playback": true}]})";
const QByteArray headset
    = R"({"name": "A&B", "devices": [{"name": "USB Audio", "playback": true, "capture": true}]})";
const QString signalled = QStringLiteral("pkill -SIGUSR1 zClient.bin");

} // namespace

/// The sound from card to document, by way of the top bar and of the settings page.
class AudioMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void keepsTheChoiceWhileItsDeviceIsAway();
    void followsNewPriorities();
    void isSetUpOnThePage();

private:
    template <typename Widget>
    Widget *part(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    void plug(const QByteArray &cards);
    /// The menu's entries; the one in use is marked.
    QString menu(const char *button) const;
    void choose(const char *button, const QString &text) const;
    /// What the document says, as "name number".
    QString stored(const char *key) const;

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<SettingsController> m_controller;
    std::unique_ptr<SettingsApp> m_window;
};

void AudioMenuTest::init()
{
    m_controller.reset();
    m_device = std::make_unique<TestDevice>();
    m_device->setState(QStringLiteral("sound-cards.json"), '[' + board + ']');
    m_window = std::make_unique<SettingsApp>();
    m_controller = std::make_unique<SettingsController>(m_window.get());
    m_window->show();
    QTRY_VERIFY(menu("outputAudioButton").contains(QLatin1String("HDMI")));
    m_device->forgetCalls();
}

void AudioMenuTest::plug(const QByteArray &cards)
{
    m_device->setState(QStringLiteral("sound-cards.json"), '[' + cards + ']');
    m_device->write(QStringLiteral("/tmp/msg.json"), R"({"type": "refresh audio"})");
    m_controller->getRemoteMessage();
}

QString AudioMenuTest::menu(const char *button) const
{
    part<QToolButton>(button)->click();
    QWidget *popup = QApplication::activePopupWidget();
    if (!popup)
        return QString();
    QStringList texts;
    for (const QAction *action : popup->actions())
        texts += (action->isChecked() ? QStringLiteral("*") : QString()) + action->text();
    popup->close();
    return texts.join(QLatin1Char('|'));
}

void AudioMenuTest::choose(const char *button, const QString &text) const
{
    part<QToolButton>(button)->click();
    for (QAction *action : QApplication::activePopupWidget()->actions()) {
        if (action->text() == text)
            action->trigger();
    }
    QApplication::activePopupWidget()->close();
}

QString AudioMenuTest::stored(const char *key) const
{
    const QJsonObject device = m_device->document()
                                   .value(QStringLiteral("audio settings"))
                                   .toObject()
                                   .value(QLatin1String(key))
                                   .toObject();
    return device.value(QStringLiteral("device name")).toString() + QLatin1Char(' ')
        + device.value(QStringLiteral("device number")).toString();
}

void AudioMenuTest::keepsTheChoiceWhileItsDeviceIsAway()
{
    QCOMPARE(menu("outputAudioButton"), QStringLiteral("SELECT AUDIO OUTPUT|Off|Analog|*HDMI"));
    QCOMPARE(menu("inputAudioButton"), QStringLiteral("SELECT AUDIO INPUT|*Off"));
    plug(board + ',' + headset);
    QCOMPARE(menu("inputAudioButton"), QStringLiteral("SELECT AUDIO INPUT|Off|*A&&B"));
    QCOMPARE(stored("output device"), QStringLiteral("A&B 1,0"));
    QCOMPARE(stored("checked output device"), QStringLiteral(" "));
    choose("outputAudioButton", QStringLiteral("Analog"));
    plug(board);
    QCOMPARE(stored("output device"), QStringLiteral("Analog 0,0"));
    plug(board + ',' + headset);
    choose("outputAudioButton", QStringLiteral("A&&B"));
    QTRY_COMPARE(m_device->calls(QStringLiteral("pkill")).size(), 6);
    m_device->forgetCalls();
    plug(board);
    QCOMPARE(stored("output device"), QStringLiteral("HDMI 0,1"));
    QCOMPARE(stored("checked output device"), QStringLiteral("A&B 1,0"));
    QCOMPARE(menu("outputAudioButton"), QStringLiteral("SELECT AUDIO OUTPUT|Off|Analog|*HDMI"));
    QTRY_COMPARE(m_device->calls(QStringLiteral("pkill")),
             QStringList({signalled, signalled})); // the input as well
    plug(board + ",null," + headset);              // into another socket
    QCOMPARE(stored("output device"), QStringLiteral("A&B 2,0"));
    choose("outputAudioButton", QStringLiteral("Off"));
    QTRY_COMPARE(m_device->calls(QStringLiteral("pkill")).size(), 5);
    m_device->forgetCalls();
    plug(board + ",null," + headset);
    QCOMPARE(stored("output device"), QStringLiteral("Off None"));
    QVERIFY(m_device->calls(QStringLiteral("pkill")).isEmpty());
    plug(QByteArray());
    QCOMPARE(menu("inputAudioButton"), QStringLiteral("SELECT AUDIO INPUT|*Off"));
}

void AudioMenuTest::followsNewPriorities()
{
    m_window->audioActions().setPriorities({QStringLiteral("Analog")}, {});
    QCOMPARE(stored("output device"), QStringLiteral("Analog 0,0"));
    m_device->write(QStringLiteral("/var/lib/kt964/config.json"),
                    "{"); // nothing is made of what cannot be read
    m_controller->configuration().readContent();
    m_window->audioActions().setPriorities({QStringLiteral("HDMI")}, {});
    QCOMPARE(m_device->read(QStringLiteral("/var/lib/kt964/config.json")), QByteArray("{"));
}

void AudioMenuTest::isSetUpOnThePage()
{
    plug(board + ',' + headset);
    part<QToolButton>("settingsButton")->click();
    auto *devices = part<QComboBox>("inputDeviceComboBox");
    QCOMPARE(devices->currentText(), QStringLiteral("A&B"));
    devices->setCurrentIndex(devices->findText(QStringLiteral("No audio input")));
    part<QPushButton>("outputDownButton")->click();
    part<QCheckBox>("toolbarIconCheckBox")->click();
    plug(board); // what was edited is not lost
    QCOMPARE(devices->currentText(), QStringLiteral("No audio input"));
    part<QPushButton>("applyButton")->click();
    QCOMPARE(stored("input device"), QStringLiteral("Off None"));
    QCOMPARE(stored("checked input device"), QStringLiteral("Off None"));
    QCOMPARE(stored("checked output device"), QStringLiteral(" "));
    QCOMPARE(m_device->document()
                 .value(QStringLiteral("audio settings"))
                 .toObject()
                 .value(QStringLiteral("output priority"))
                 .toArray(),
             QJsonArray::fromStringList({QStringLiteral("Bluetooth"), QStringLiteral("USB"),
                                         QStringLiteral("HDMI"), QStringLiteral("Analog"),
                                         QStringLiteral("none")}));
    QVERIFY(!part<QToolButton>("outputAudioButton")->isVisible());

    // A device that is away stays chosen, and is named.
    plug(board + ',' + headset);
    m_controller->setOutputAudio(QStringLiteral("A&B"), QStringLiteral("1,0"), QStringLiteral("A&B"),
                                 QStringLiteral("1,0"));
    plug(board);
    part<QToolButton>("settingsButton")->click();
    QCOMPARE(part<QComboBox>("outputDeviceComboBox")->currentText(), QStringLiteral("A&B (not connected)"));
}

QTEST_MAIN(AudioMenuTest)
#include "audiomenutest.moc"
