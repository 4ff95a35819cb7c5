// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "fulldisk.h"
#include "pages/settingspage.h"
#include "programfixture.h"
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
        "qt_spinbox_lineedit", "autoConnectGroupRadioButton", "autoConnectGroupComboBox", "ethernetCheckBox",
        "dualDisplayCheckBox"};
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
        m_program.reset();
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
            SettingsPage *changed = page(entry.key());
            QVERIFY2(changed, qPrintable(entry.key()));
            const QJsonObject before = m_device->document();
            QVariantList expected;
            for (QWidget *field : fields(changed))
                change(field);
            for (QWidget *field : fields(changed))
                expected += shown(field);

            DialogAnswer answer(true);
            apply();
            QVERIFY2(!settingsShown(), qPrintable(entry.key() + QString(": ") + answer.messages.join('|')));
            const QJsonObject after = m_device->document();
            QCOMPARE(without(after, entry.value()), without(before, entry.value()));
            for (const QString &section : entry.value())
                QVERIFY2(after.value(section) != before.value(section), qPrintable(section));

            restart();
            enter();
            for (QWidget *field : fields(page(entry.key())))
                QVERIFY2(shown(field) == expected.takeFirst(),
                         qPrintable(entry.key() + QString(": ") + field->objectName()));
        }
    }

    void asksForThePassword()
    {
        enter();
        const auto type = [this](const char *line, const char *text) {
            part<QLineEdit>(line)->clear();
            QTest::keyClicks(part<QLineEdit>(line), text);
        };
        part<QCheckBox>("passwordCheckBox")->click();
        type("enterPasswordLineEdit", "secret");
        type("confirmPasswordLineEdit", "secreT");
        {
            const DialogAnswer refused(true);
            apply();
            QCOMPARE(refused.messages, QStringList("The two passwords differ."));
        }
        type("confirmPasswordLineEdit", "secret");
        apply();
        QVERIFY(!settingsShown());
        const QJsonValue hash = m_device->stored({"general settings", "setup GUI password hash"});
        QCOMPARE(hash.toString(), "5ebe2294ecd0e0f08eab7690d2a6ee69");
        QVERIFY(!m_device->read(configuration).contains("\"secret\""));
        const QPair<bool, QString> refused[] = {{true, "Secret"}, {false, "secret"}, {true, ""}};
        for (const auto &[accept, input] : refused) {
            const DialogAnswer answer(accept, input);
            enter();
            QVERIFY(!settingsShown());
            QCOMPARE(answer.messages.last(), accept ? "Wrong password" : "Administrator password:");
        }
        const DialogAnswer right(true, "secret");
        enter();
        QVERIFY(settingsShown());
        QCOMPARE(part<QLineEdit>("enterPasswordLineEdit")->text(), "********");
        // What stands there for the password is not taken for one.
        part<QLineEdit>("deviceNameLineEdit")->setText("TC7");
        apply();
        QCOMPARE(m_device->stored({"general settings", "setup GUI password hash"}), hash);
    }

    void switchesToTheDesktop()
    {
        for (const bool accept : {false, true}) {
            const DialogAnswer answer(accept);
            enter();
            m_device->forgetCalls();
            for (auto *button : m_program->window.findChildren<QAbstractButton *>()) {
                if (button->text() == "Desktop mode")
                    button->click();
            }
            QCOMPARE(answer.titles, QStringList("Desktop mode"));
            QTRY_COMPARE(m_device->calls("kt-switch"), accept ? QStringList("kt-switch -d") : QStringList());
        }
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

    void showsThePageThatRefuses_data()
    {
        // What is clicked, and what stands in the document before.
        const TestTable<QString, QString, QString> table("click", "server", "message");
        table.row(
            "Kiosk mode", "autostartCheckBox", {},
            "Application auto-start has been enabled, but no auto-start application has been specified");
        table.row("Firmware update", "urlRadioButton", {}, "Enter the address of the firmware file.");
        table.row("Firmware update: server", "corvidRadioButton", {},
                  "Enter the Corvid server and the file name.");
        table.row("Management", "autodiscoverCheckBox", "two words",
                  "The server address is not valid. Enter a host name, an IP address or a URL that begins "
                  "with http:// or "
                  "https://.");
    }

    void showsThePageThatRefuses()
    {
        QFETCH(QString, click);
        QFETCH(QString, server);
        m_device->store({"management settings", "qmd address"}, server);
        restart();
        enter();
        part<QLineEdit>("deviceNameLineEdit")->setText("saved");
        m_program->click(qPrintable(click));
        const QJsonObject before = m_device->document();
        m_device->forgetCalls();
        const DialogAnswer answer(true);
        apply();
        QVERIFY(settingsShown());
        QTEST(answer.messages.join('|'), "message");
        QCOMPARE(part<QListWidget>("settingsListWidget")->currentItem()->text(),
                 QString(QTest::currentDataTag()).section(':', 0, 0));
        // The pages before it are applied.
        QCOMPARE(m_device->calls("kt-set-hostname"), QStringList("kt-set-hostname -j"));
        QCOMPARE(without(m_device->document(), {"general settings"}), without(before, {"general settings"}));
    }

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
        apply();
        QCOMPARE(refused.messages.size(), 1);
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

    void isUsedWithTheKeyboard()
    {
        enter();
        m_program->window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_program->window));
        auto *list = part<QListWidget>("settingsListWidget");
        QCOMPARE(QApplication::focusWidget(), list);
        for (int row = 0; row < list->count(); ++row) {
            list->setCurrentRow(row);
            list->setFocus();
            SettingsPage *current = nullptr;
            for (auto *candidate : m_program->window.findChildren<SettingsPage *>())
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
    template <typename Part>
    Part *part(const char *name) const
    {
        return m_program->part<Part>(name);
    }
    SettingsPage *page(const QString &className) const
    {
        for (auto *candidate : m_program->window.findChildren<SettingsPage *>()) {
            if (candidate->metaObject()->className() == className)
                return candidate;
        }
        return nullptr;
    }
    bool settingsShown() const { return m_program->settingsShown(); }
    void enter() const { m_program->openSettings(); }
    void apply() const { m_program->apply(); }

    void restart()
    {
        m_program.reset();
        m_program = std::make_unique<StartedProgram>();
        m_program->window.show();
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<StartedProgram> m_program;
};

QTEST_MAIN(SettingsWalkTest)
#include "settingswalktest.moc"
