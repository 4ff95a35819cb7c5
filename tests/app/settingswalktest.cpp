// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/settingsapp.h"
#include "app/settingscontroller.h"
#include "dialoganswer.h"
#include "fulldisk.h"
#include "pages/settingspage.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString configuration = "/var/lib/kt964/config.json";

/// What each page owns of the document; the pages that are not here own nothing.
const QMap<QString, QStringList> ownedSections
    = {{"GeneralPage", {"general settings"}},
       {"ConnectionPage", {"connection settings"}},
       {"KioskModePage", {"user autologon settings", "app autostart settings"}},
       {"DisplayPage", {"display settings"}},
       {"AudioPage", {"audio settings"}},
       {"KeyboardPage", {"keyboard settings"}},
       {"DateTimePage", {"date time settings"}},
       {"NetworkPage", {"network settings"}},
       {"ManagementPage", {"management settings"}},
       {"PeripheralsPage", {"redirection settings"}},
       {"FirmwarePage", {"firmware settings"}}};

/// Fields whose change is a dialogue of its own, tested with their page.
bool hasOwnTest(const QWidget *field)
{
    static const QStringList names = {
        "passwordCheckBox",    "enterPasswordLineEdit",       "confirmPasswordLineEdit",  "dateTimeEdit",
        "qt_spinbox_lineedit", "autoConnectGroupRadioButton", "autoConnectGroupComboBox", "ethernetCheckBox"};
    return names.contains(field->objectName()) || qobject_cast<const QComboBox *>(field->parentWidget());
}

/// Changes a field as a user would; text fields get a word that every page accepts.
void change(QWidget *field)
{
    auto *line = qobject_cast<QLineEdit *>(field);
    if (line && line->validator())
        line->setText(line->objectName().startsWith("mask") ? QString("255.255.255.0") : "10.1.2.3");
    else if (line)
        line->setText(QString("changed") + QString::number(line->objectName().size()));
    else if (auto *box = qobject_cast<QComboBox *>(field))
        box->setCurrentIndex(box->count() - 1);
    else if (auto *check = qobject_cast<QCheckBox *>(field))
        check->click();
    else if (auto *radio = qobject_cast<QRadioButton *>(field))
        radio->click();
}

QVariant shown(const QWidget *field)
{
    if (auto *line = qobject_cast<const QLineEdit *>(field))
        return line->text();
    if (auto *box = qobject_cast<const QComboBox *>(field))
        return box->currentText();
    auto *button = qobject_cast<const QAbstractButton *>(field);
    return button ? QVariant(button->isChecked()) : QVariant();
}

QList<QWidget *> fields(const SettingsPage *page)
{
    QList<QWidget *> result;
    for (QWidget *widget : page->findChildren<QWidget *>()) {
        if (!hasOwnTest(widget) && shown(widget).isValid() && !qobject_cast<QPushButton *>(widget)
            && !qobject_cast<QToolButton *>(widget))
            result += widget;
    }
    return result;
}

QJsonObject without(QJsonObject document, const QStringList &sections)
{
    for (const QString &section : sections)
        document.remove(section);
    return document;
}

} // namespace

/// All settings pages over real widgets: what is changed on one is in the document, alone, and on the screen
/// again.
class SettingsWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_controller.reset();
        m_window.reset();
        m_device = std::make_unique<TestDevice>();
        // The only sound device is the one that needs no writing down.
        m_device->setState("sound-cards.json",
                           R"([{"name": "b", "devices": [{"name": "bcm2835 ALSA", "playback": true}]}])");
        restart();
        m_device->forgetCalls();
    }

    void storesAndShowsEveryFieldOfEveryPage()
    {
        m_device->store({"user autologon settings", "username"}, "nurse"); // a broker's log-on needs one
        for (auto entry = ownedSections.constBegin(); entry != ownedSections.constEnd(); ++entry) {
            enter();
            QVERIFY2(settingsShown(), qPrintable(entry.key()));
            SettingsPage *changed = page(entry.key().toLatin1());
            QVERIFY2(changed, qPrintable(entry.key()));
            const QJsonObject before = m_device->document();
            QVariantList expected;
            for (QWidget *field : fields(changed))
                change(field);
            for (QWidget *field : fields(changed))
                expected += shown(field);

            DialogAnswer answer(true);
            part<QPushButton>("applyButton")->click();
            QVERIFY2(!settingsShown(), qPrintable(entry.key() + QString(": ") + answer.messages.join('|')));
            const QJsonObject after = m_device->document();
            QCOMPARE(without(after, entry.value()), without(before, entry.value()));
            for (const QString &section : entry.value())
                QVERIFY2(after.value(section) != before.value(section), qPrintable(section));

            restart();
            enter();
            for (QWidget *field : fields(page(entry.key().toLatin1())))
                QVERIFY2(shown(field) == expected.takeFirst(),
                         qPrintable(entry.key() + QString(": ") + field->objectName()));
        }
    }

    void asksForThePassword()
    {
        enter();
        part<QCheckBox>("passwordCheckBox")->click();
        QTest::keyClicks(part<QLineEdit>("enterPasswordLineEdit"), "secret");
        QTest::keyClicks(part<QLineEdit>("confirmPasswordLineEdit"), "secreT");
        {
            DialogAnswer refused(true);
            part<QPushButton>("applyButton")->click();
            QCOMPARE(refused.messages, QStringList("The two passwords differ."));
        }
        part<QLineEdit>("confirmPasswordLineEdit")->clear();
        QTest::keyClicks(part<QLineEdit>("confirmPasswordLineEdit"), "secret");
        part<QPushButton>("applyButton")->click();
        QVERIFY(!settingsShown());
        const QJsonObject general = m_device->document().value("general settings").toObject();
        QCOMPARE(general.value("setup GUI password hash").toString(), "5ebe2294ecd0e0f08eab7690d2a6ee69");
        QVERIFY(!m_device->read("/var/lib/kt964/config.json").contains("\"secret\""));
        {
            DialogAnswer wrong(true, "Secret");
            enter();
            QVERIFY(!settingsShown());
            QCOMPARE(wrong.messages.last(), "Wrong password");
        }
        DialogAnswer right(true, "secret");
        enter();
        QVERIFY(settingsShown());
        QCOMPARE(part<QLineEdit>("enterPasswordLineEdit")->text(), "********");
        // What stands there for the password is not taken for one.
        part<QLineEdit>("deviceNameLineEdit")->setText("TC7");
        part<QPushButton>("applyButton")->click();
        QCOMPARE(m_device->document().value("general settings").toObject().value("setup GUI password hash"),
                 general.value("setup GUI password hash"));
    }

    void asksBeforeChangesAreLost()
    {
        enter();
        QVERIFY(!part<QPushButton>("applyButton")->isEnabled());
        part<QLineEdit>("deviceNameLineEdit")->setText("lost");
        {
            DialogAnswer stay(false);
            part<QPushButton>("backButton")->click();
            QCOMPARE(stay.messages, QStringList("There are unsaved changes. Continue?"));
            QVERIFY(settingsShown());
        }
        DialogAnswer leave(true);
        part<QPushButton>("backButton")->click();
        QVERIFY(!settingsShown());
        enter();
        QVERIFY(part<QLineEdit>("deviceNameLineEdit")->text() != "lost");
        QVERIFY(m_device->calls("kt-set-hostname").isEmpty());
        part<QLineEdit>("deviceNameLineEdit")->setText("  ");
        QVERIFY(!part<QPushButton>("applyButton")->isEnabled());
    }

    void showsThePageThatRefuses()
    {
        enter();
        part<QLineEdit>("deviceNameLineEdit")->setText("saved");
        part<QCheckBox>("autostartCheckBox")->click();
        part<QCheckBox>("numLockCheckBox")->click();
        const QJsonValue keyboard = m_device->document().value("keyboard settings");
        DialogAnswer answer(true);
        part<QPushButton>("applyButton")->click();
        QVERIFY(settingsShown());
        QCOMPARE(answer.titles, QStringList("Error"));
        QCOMPARE(part<QListWidget>("settingsListWidget")->currentItem()->text(), "Kiosk mode");
        QCOMPARE(m_device->calls("kt-set-hostname").join(QString()), "kt-set-hostname -j");
        QCOMPARE(m_device->document().value("keyboard settings"), keyboard);
        QVERIFY(page("KeyboardPage")->isChanged());
    }

    void runsTheToolsOfTheClockAndTheKeyboard()
    {
        enter();
        auto *layouts = part<QComboBox>("layoutComboBox");
        layouts->setCurrentIndex(layouts->findText("German"));
        part<QCheckBox>("ntpCheckBox")->setChecked(false);
        part<QDateTimeEdit>("dateTimeEdit")->setDateTime({QDate(2024, 3, 5), QTime(7, 8, 9)});
        m_device->forgetCalls();
        part<QPushButton>("applyButton")->click();
        const QStringList expected = {"kt-set-keyboard DE de",
                                      "kt-set-timezone US/Pacific",
                                      "sudo systemctl disable ntp.service",
                                      "systemctl disable ntp.service",
                                      QString("sudo %1 stop").arg(m_device->path("/etc/init.d/ntp")),
                                      "ntp stop",
                                      "sudo date -s '5 Mar 2024 07:08:09'",
                                      "date -s '5 Mar 2024 07:08:09'"};
        QCOMPARE(m_device->calls().mid(0, expected.size()), expected);

        enter();
        part<QCheckBox>("ntpCheckBox")->setChecked(true);
        m_device->forgetCalls();
        part<QPushButton>("applyButton")->click();
        QVERIFY(m_device->calls().contains("sudo systemctl enable ntp.service"));
        QCOMPARE(m_device->calls("kt-set-ntp-server").size(), 1);
    }

    void setsTheDisplay_data()
    {
        // before the screen saver's service
        const TestTable<QString, QString, QStringList> table("stored", "shown", "calls");
        const QStringList mode = {"kt-set-resolution DMT 58"};
        table.row("text", "1680x1050 60Hz", "1680x1050 60Hz", mode);
        table.row("size", "1680x1050", "1680x1050 60Hz", mode);
        table.row("automatic", "Automatic", "Automatic", {"kt-set-resolution"});
        table.row("another monitor's", "2048x1536 60Hz", "2048x1536 60Hz", {});
    }

    void setsTheDisplay()
    {
        QFETCH(QString, stored);
        QFETCH(QStringList, calls);
        m_device->store({"display settings"},
                        QJsonObject{{"primary", QJsonObject{{"resolution", stored}, {"orientation", "o"}}}});
        enter();
        QTEST(part<QComboBox>("primaryResolutionComboBox")->currentText(), "shown");
        const QString alone = part<QLabel>("dualDisplayLabel")->text();
        m_window->setDualDisplay(true);
        QVERIFY(part<QLabel>("dualDisplayLabel")->text() != alone);
        QVERIFY(!page("DisplayPage")->isChanged());
        part<QRadioButton>("bottomRadioButton")->click();
        part<QCheckBox>("mirrorCheckBox")->click();
        m_device->forgetCalls();
        part<QPushButton>("applyButton")->click();
        calls += {QString("sudo %1 restart").arg(m_device->path("/etc/init.d/kt964-sleep")),
                  "kt964-sleep restart"};
        QCOMPARE(m_device->calls().mid(0, calls.size()), calls);
        const QJsonObject display = m_device->document().value("display settings").toObject();
        QCOMPARE(display.value("multi monitor mode").toString(), "mirror");
        QCOMPARE(display.value("screen saver timeout").toInt(), 20);
        QCOMPARE(display.value("primary").toObject().value("orientation").toString(), "o");
        QString resolution;
        int atLeft = 1;
        int bottomAligned = 0;
        m_controller->fillSecondaryParameter(resolution, atLeft, bottomAligned);
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
        part<QPushButton>("applyButton")->click();
        QCOMPARE(refused.messages.size(), 1);
        part<QLineEdit>("ntpServerLineEdit")->setText("time.example");
        part<QComboBox>("timezoneComboBox")->setCurrentIndex(0);
        part<QComboBox>("layoutComboBox")->setCurrentIndex(0);
        part<QPushButton>("applyButton")->click();
        QVERIFY(!settingsShown());
        QVERIFY(!m_device->exists("/owned"));
        QVERIFY(!QFile::exists("owned"));
        QCOMPARE(m_device->document().value("date time settings").toObject().value("timezone").toString(),
                 "Etc/$(touch owned);'\"");
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
            part<QPushButton>("applyButton")->click();
            QVERIFY(settingsShown());
            QCOMPARE(answer.messages.size(), 1);
            QCOMPARE(m_device->read(configuration), QByteArray(content));
            QVERIFY(page("KeyboardPage")->isChanged());
            QVERIFY(m_device->calls("kt-set-keyboard").isEmpty());

            // Readable again, with a change made elsewhere meanwhile: both are kept.
            m_device->setDocument(document);
            m_device->store({"general settings", "device name"}, "elsewhere");
            document = m_device->document();
            part<QPushButton>("applyButton")->click();
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
            part<QPushButton>("applyButton")->click();
        }
        QVERIFY(settingsShown());
        QCOMPARE(answer.messages.size(), 1);
        QVERIFY(page("GeneralPage")->isChanged());
        QCOMPARE(m_device->read(configuration), before);
        QCOMPARE(m_controller->configuration().getDocument().object(), m_device->document());
        QVERIFY(m_device->calls("kt-set-hostname").isEmpty());
        part<QPushButton>("applyButton")->click();
        QVERIFY(!settingsShown());
    }

    void oneEmptyNameHindersNoOtherPage()
    {
        m_device->store({"general settings", "device name"}, 5);
        const QJsonValue general = m_device->document().value("general settings");
        restart();
        enter();
        part<QCheckBox>("numLockCheckBox")->click();
        QVERIFY(part<QPushButton>("applyButton")->isEnabled());
        part<QPushButton>("applyButton")->click();
        QVERIFY(!settingsShown());
        QCOMPARE(m_device->document().value("general settings"), general);
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
            part<QPushButton>("applyButton")->click();
            QVERIFY(!settingsShown());
            const QStringList changed = {"keyboard settings", "security settings"};
            QCOMPARE(without(m_device->document(), changed), without(before, changed));
        }
    }

    void isUsedWithTheKeyboard()
    {
        enter();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        auto *list = part<QListWidget>("settingsListWidget");
        QCOMPARE(QApplication::focusWidget(), list);
        for (int row = 0; row < list->count(); ++row) {
            list->setCurrentRow(row);
            list->setFocus();
            SettingsPage *current = nullptr;
            for (auto *candidate : m_window->findChildren<SettingsPage *>())
                current = candidate->isVisible() ? candidate : current;
            QVERIFY(current);
            bool pageSeen = false;
            bool backSeen = false;
            for (int i = 0; i < 60 && !backSeen; ++i) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                pageSeen = pageSeen || current->isAncestorOf(QApplication::focusWidget());
                backSeen = QApplication::focusWidget() == part<QPushButton>("backButton");
            }
            QVERIFY2(pageSeen && backSeen, current->metaObject()->className());
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!settingsShown());
        enter();
        part<QCheckBox>("numLockCheckBox")->click();
        part<QPushButton>("applyButton")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!settingsShown());
    }

private:
    template <typename Widget>
    Widget *part(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    SettingsPage *page(const char *className) const
    {
        for (auto *candidate : m_window->findChildren<SettingsPage *>()) {
            if (QByteArray(candidate->metaObject()->className()) == className)
                return candidate;
        }
        return nullptr;
    }

    bool settingsShown() const
    {
        return part<QStackedWidget>("mainStackedWidget")->currentIndex() == SettingsApp::SettingsPage;
    }

    void enter() { part<QToolButton>("settingsButton")->click(); }

    void restart()
    {
        m_controller.reset();
        m_window = std::make_unique<SettingsApp>();
        m_controller = std::make_unique<SettingsController>(m_window.get());
        m_window->show();
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<SettingsController> m_controller;
    std::unique_ptr<SettingsApp> m_window;
};

QTEST_MAIN(SettingsWalkTest)
#include "settingswalktest.moc"
