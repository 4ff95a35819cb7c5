// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "fulldisk.h"
#include "settingsfixture.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

/// What applying the settings does to the device: its tools and its document, also with values and files that
/// are out of order.
class SettingsToolsTest : public SettingsFixture
{
    Q_OBJECT

private slots:
    void init() { makeDevice(); }

    void runsTheToolsOfTheClockAndTheKeyboard()
    {
        enter();
        auto *layouts = part<QComboBox>("layoutComboBox");
        layouts->setCurrentIndex(layouts->findText("German"));
        part<QCheckBox>("ntpCheckBox")->setChecked(false);
        part<QDateTimeEdit>("dateTimeEdit")->setDateTime({QDate(2024, 3, 5), QTime(7, 8, 9)});
        m_device->forgetCalls();
        apply();
        const QStringList expected = {"kt-set-keyboard DE de",
                                      "kt-set-timezone US/Pacific",
                                      "sudo systemctl disable ntp.service",
                                      "systemctl disable ntp.service",
                                      QString("sudo %1 stop").arg(m_device->path("/etc/init.d/ntp")),
                                      "ntp stop",
                                      "sudo date -s '5 Mar 2024 07:08:09'",
                                      "date -s '5 Mar 2024 07:08:09'"};
        QCOMPARE(m_device->calls().filter(QRegularExpression("^(kt-set-[kt]|sudo|systemctl|ntp|date)")),
                 expected);

        enter();
        part<QCheckBox>("ntpCheckBox")->setChecked(true);
        m_device->forgetCalls();
        apply();
        QVERIFY(m_device->calls().contains("sudo systemctl enable ntp.service"));
        QCOMPARE(m_device->calls("kt-set-ntp-server").size(), 1);
    }

    void setsTheDisplay_data()
    {
        // before the screen saver's service
        const TestTable<QString, QString, QStringList> table("stored", "shown", "calls");
        table.row("size", "1680x1050", "1680x1050 60Hz", {"kt-set-resolution DMT 58"});
        table.row("automatic", "Automatic", "Automatic", {"kt-set-resolution"});
        table.row("another monitor's", "2048x1536 60Hz", "2048x1536 60Hz", {});
    }

    void setsTheDisplay()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        QFETCH(QStringList, calls);
        m_device->store({"display settings"},
                        QJsonObject{{"primary", QJsonObject{{"resolution", stored}, {"orientation", "o"}}}});
        enter();
        QTRY_COMPARE(part<QComboBox>("primaryResolutionComboBox")->currentText(), shown);
        const auto *subPages = part<QStackedWidget>("displayStackedWidget");
        QCOMPARE(subPages->currentIndex(), 0);
        m_program->window.setDualDisplay(true);
        QVERIFY(part<QCheckBox>("dualDisplayCheckBox")->isChecked() && subPages->currentIndex() == 1);
        QVERIFY(!page("DisplayPage")->isChanged());
        m_program->click("bottomRadioButton");
        m_program->click("mirrorCheckBox");
        m_program->program.applier().follow(); // the document was changed behind it
        m_program->settle();
        m_device->forgetCalls();
        apply();
        QTRY_COMPARE(m_device->calls("kt964-sleep"), QStringList("kt964-sleep restart"));
        calls += "kt964-sleep restart";
        const QStringList configuring = m_device->calls().filter(
            QRegularExpression("^(kt-set-resolution( [A-Z]+ [0-9]+)?|kt964-sleep restart)$"));
        QCOMPARE(configuring, calls);
        QCOMPARE(m_device->stored({"display settings", "primary", "orientation"}).toString(), "o");
        QString resolution;
        int atLeft = 1;
        int bottomAligned = 0;
        m_program->controller.fillSecondaryParameter(resolution, atLeft, bottomAligned);
        QCOMPARE(resolution + QString::number(atLeft) + QString::number(bottomAligned), "Automatic01");
    }

    void hostileValuesStayArguments()
    {
        const QString hostile = QString("x'; touch %1; $(touch %1)\n\"").arg(m_device->path("/owned"));
        m_device->write("/etc/timezones", "Etc/$(touch owned);'\": UTC: Nowhere\n");
        m_device->write("/etc/keyboard_layouts", "$(touch owned): a';touch owned: Odd\n");
        m_device->store({"date time settings", "timezone"}, hostile);
        m_device->store({"keyboard settings", "layout"}, hostile);
        restart();
        enter();
        part<QCheckBox>("numLockCheckBox")->click();
        part<QLineEdit>("ntpServerLineEdit")->setText(hostile);
        DialogAnswer refused(true);
        const QSignalSpy told(&m_program->controller, &SettingsController::settingsApplied);
        apply();
        QCOMPARE(refused.messages.size(), 1);
        QCOMPARE(told.size(), 1); // of the keyboard, whose page comes before the one that refuses
        part<QLineEdit>("ntpServerLineEdit")->setText("time.example");
        part<QComboBox>("timezoneComboBox")->setCurrentIndex(0);
        part<QComboBox>("layoutComboBox")->setCurrentIndex(0);
        apply();
        QVERIFY(!settingsShown());
        QVERIFY(!m_device->exists("/owned"));
        QVERIFY(!QFile::exists("owned"));
        QCOMPARE(m_device->stored({"date time settings", "timezone"}).toString(), "Etc/$(touch owned);'\"");
    }

    void savesNothingWhereNothingCanBeRead()
    {
        QJsonObject document = m_device->document();
        for (const char *content : {"", "{", "[1]"}) {
            enter();
            part<QCheckBox>("numLockCheckBox")->click();
            m_device->write(configuration, content);
            m_device->forgetCalls();
            DialogAnswer answer(true);
            apply();
            QVERIFY(settingsShown());
            QCOMPARE(answer.messages.size(), 1);
            QCOMPARE(m_device->read(configuration), QByteArray(content));
            QVERIFY(page("KeyboardPage")->isChanged());
            QVERIFY(m_device->calls("kt-set-keyboard").isEmpty());

            // Readable again, with a change made elsewhere meanwhile: both are kept.
            m_device->setDocument(document);
            m_device->store({"general settings", "device name"}, "elsewhere");
            document = m_device->document();
            apply();
            QVERIFY(!settingsShown());
            QCOMPARE(without(m_device->document(), {"keyboard settings"}),
                     without(document, {"keyboard settings"}));
            QCOMPARE(m_device->calls("kt-set-keyboard").size(), 1);
        }
        // The password is asked for even so.
        m_device->store({"general settings", "setup GUI password enabled"}, true);
        restart();
        m_device->write(configuration, "");
        DialogAnswer answer(false);
        enter();
        QVERIFY(!settingsShown());
        QCOMPARE(answer.titles, QStringList("Administrator password"));
    }

    void savesNothingOnAFullDisk()
    {
        enter();
        part<QLineEdit>("deviceNameLineEdit")->setText(QString(60, 'n'));
        const QByteArray before = m_device->read(configuration);
        m_device->forgetCalls();
        DialogAnswer answer(true);
        {
            const FullDisk full(static_cast<rlim_t>(before.size()));
            apply();
        }
        QVERIFY(settingsShown());
        QCOMPARE(answer.messages.size(), 1);
        QVERIFY(page("GeneralPage")->isChanged());
        QCOMPARE(m_device->read(configuration), before);
        QCOMPARE(m_program->program.configuration().getDocument().object(), m_device->document());
        QVERIFY(m_device->calls("kt-set-hostname").isEmpty());
        apply();
        QVERIFY(!settingsShown());
    }

    void wrongTypesAndLongListsAreNoTrouble()
    {
        QByteArray lines;
        for (int i = 0; i < 10000; ++i)
            lines += "L" + QByteArray::number(i) + ": v: A long list's entry " + QByteArray::number(i) + '\n';
        m_device->write("/etc/keyboard_layouts", lines);
        QFile::remove(m_device->path("/etc/timezones"));
        const QJsonObject good = m_device->document();
        for (const QJsonValue &wrong :
             {QJsonValue(5), QJsonValue("x"), QJsonValue(QJsonArray{1}), QJsonValue(QJsonObject{{"x", 1}})}) {
            QJsonObject document = good;
            for (auto member = document.begin(); member != document.end(); ++member) {
                if (member.key() != "firmware info")
                    member.value() = wrong;
            }
            m_device->setDocument(document);
            restart();
            const QJsonObject before = m_device->document(); // an old network section was converted
            enter();
            QVERIFY(settingsShown());
            QCOMPARE(part<QComboBox>("layoutComboBox")->count(), 10001);
            part<QCheckBox>("numLockCheckBox")->click();
            apply();
            QVERIFY(!settingsShown());
            const QStringList changed = {"keyboard settings", "security settings"};
            QCOMPARE(without(m_device->document(), changed), without(before, changed));
        }
    }
};

QTEST_MAIN(SettingsToolsTest)
#include "settingstoolstest.moc"
