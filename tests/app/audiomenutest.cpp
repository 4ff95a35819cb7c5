// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "programfixture.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QByteArray board = R"({"name": "b", "devices": [{"name": "bcm2835 ALSA", "playback": true},
    {"name": "bcm2835 IEC958/HDMI", "playback": true}]})";
const QByteArray headset
    = R"({"name": "A&B", "devices": [{"name": "USB Audio", "playback": true, "capture": true}]})";
const QString signalled = "pkill -SIGUSR1 zClient.bin";

} // namespace

/// The sound from card to document, by way of the top bar and of the settings page.
class AudioMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_program.reset();
        m_device = std::make_unique<TestDevice>();
        m_device->setState("sound-cards.json", '[' + board + ']');
        m_program = std::make_unique<StartedProgram>();
        m_program->window.show();
        QTRY_VERIFY(menu("outputAudioButton").contains("HDMI"));
        QTRY_COMPARE(m_device->calls("pkill"), QStringList(signalled)); // the choice of HDMI
        m_device->forgetCalls();
    }

    void keepsTheChoiceWhileItsDeviceIsAway()
    {
        QCOMPARE(menu("outputAudioButton"), "SELECT AUDIO OUTPUT|Off|Analog|*HDMI");
        QCOMPARE(menu("inputAudioButton"), "SELECT AUDIO INPUT|*Off");
        plug(board + ',' + headset);
        QCOMPARE(menu("inputAudioButton"), "SELECT AUDIO INPUT|Off|*A&&B");
        QCOMPARE(stored("output device"), "A&B 1,0");
        QCOMPARE(stored("checked output device"), " ");
        choose("outputAudioButton", "Analog");
        plug(board);
        QCOMPARE(stored("output device"), "Analog 0,0");
        plug(board + ',' + headset);
        choose("outputAudioButton", "A&&B");
        QTRY_COMPARE(m_device->calls("pkill").size(), 6);
        m_device->forgetCalls();
        plug(board);
        QCOMPARE(stored("output device"), "HDMI 0,1");
        QCOMPARE(stored("checked output device"), "A&B 1,0");
        QCOMPARE(menu("outputAudioButton"), "SELECT AUDIO OUTPUT|Off|Analog|*HDMI");
        QTRY_COMPARE(m_device->calls("pkill"), QStringList({signalled, signalled})); // the input as well
        plug(board + ",null," + headset);                                            // into another socket
        QCOMPARE(stored("output device"), "A&B 2,0");
    }

    void followsNewPriorities()
    {
        m_program->window.audioActions().setPriorities({"Analog"}, {});
        QCOMPARE(stored("output device"), "Analog 0,0");
        m_device->write("/var/lib/kt964/config.json", "{"); // not to be read, and not to be written
        m_program->program.configuration().readContent();
        m_program->window.audioActions().setPriorities({"HDMI"}, {});
        QCOMPARE(m_device->read("/var/lib/kt964/config.json"), QByteArray("{"));
    }

private:
    void plug(const QByteArray &cards)
    {
        m_device->setState("sound-cards.json", '[' + cards + ']');
        m_device->write("/tmp/msg.json", R"({"type": "refresh audio"})");
        QSignalSpy read(&m_program->program.audio(), &AudioController::sendAudioDevices);
        m_program->controller.getRemoteMessage();
        QTRY_VERIFY(!read.isEmpty());
    }

    /// The menu's entries; the one in use is marked.
    QString menu(const char *button) const
    {
        m_program->click(button);
        QWidget *popup = QApplication::activePopupWidget();
        if (!popup)
            return QString();
        QStringList texts;
        for (const QAction *action : popup->actions())
            texts += (action->isChecked() ? "*" : QString()) + action->text();
        popup->close();
        return texts.join('|');
    }

    void choose(const char *button, const QString &text) const
    {
        m_program->click(button);
        for (QAction *action : QApplication::activePopupWidget()->actions()) {
            if (action->text() == text)
                action->trigger();
        }
        QApplication::activePopupWidget()->close();
    }

    /// What the document says, as "name number".
    QString stored(const char *key) const
    {
        const QJsonValue device = m_device->stored({"audio settings", key});
        return device["device name"].toString() + ' ' + device["device number"].toString();
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<StartedProgram> m_program;
};

QTEST_MAIN(AudioMenuTest)
#include "audiomenutest.moc"
