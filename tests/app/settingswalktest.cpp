// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "settingsfixture.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

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

} // namespace

/// All settings pages over real widgets: what is changed on one is in the document, alone, and on the screen
/// again.
class SettingsWalkTest : public SettingsFixture
{
    Q_OBJECT

private slots:
    void init() { makeDevice(); }

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
        m_program->window.on_rdpClientButton_clicked(); // not the stored mode
        for (const auto &[accept, input] : refused) {
            const DialogAnswer answer(accept, input);
            enter();
            QVERIFY(!settingsShown());
            QCOMPARE(m_program->window.clientMode(), SettingsApp::ClientMode::Rdp);
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
        const QPair<bool, QString> rounds[] = {{false, "none"}, {true, "none"}, {true, "exit 1"}};
        for (const auto &[accept, fault] : rounds) {
            const DialogAnswer answer(accept);
            enter();
            m_device->forgetCalls();
            m_device->setFault("kt-switch", fault);
            for (auto *button : m_program->window.findChildren<QAbstractButton *>()) {
                if (button->text() == "Desktop mode")
                    button->click();
            }
            QCOMPARE(answer.titles, QStringList("Desktop mode"));
            QTRY_COMPARE(m_device->calls("kt-switch"), accept ? QStringList("kt-switch -d") : QStringList());
            QTRY_COMPARE(answer.messages.value(1).startsWith("This device has no desktop"), fault != "none");
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
};

QTEST_MAIN(SettingsWalkTest)
#include "settingswalktest.moc"
