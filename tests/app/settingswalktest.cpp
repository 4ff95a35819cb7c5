// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/settingsapp.h"
#include "app/settingscontroller.h"
#include "dialoganswer.h"
#include "pages/settingspage.h"
#include "testdevice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTest>
#include <QToolButton>

#include <csignal>

#include <sys/resource.h>

namespace {

const QString configuration = QStringLiteral("/var/lib/kt964/config.json");

/// What each page owns of the document; the pages that are not here own nothing.
const QMap<QString, QStringList> ownedSections
    = {{QStringLiteral("GeneralPage"), {QStringLiteral("general settings")}},
       {QStringLiteral("ConnectionPage"), {QStringLiteral("connection settings")}},
       {QStringLiteral("KioskModePage"),
        {QStringLiteral("user autologon settings"), QStringLiteral("app autostart settings")}},
       {QStringLiteral("DisplayPage"), {QStringLiteral("display settings")}},
       {QStringLiteral("AudioPage"), {QStringLiteral("audio settings")}},
       {QStringLiteral("KeyboardPage"), {QStringLiteral("keyboard settings")}},
       {QStringLiteral("DateTimePage"), {QStringLiteral("date time settings")}},
       {QStringLiteral("NetworkPage"), {QStringLiteral("network settings")}},
       {QStringLiteral("ManagementPage"), {QStringLiteral("management settings")}},
       {QStringLiteral("PeripheralsPage"), {QStringLiteral("redirection settings")}},
       {QStringLiteral("FirmwarePage"), {QStringLiteral("firmware settings")}}};

/// Fields whose change is a dialogue of its own, tested with their page.
bool hasOwnTest(const QWidget *field)
{
    static const QStringList names
        = {QStringLiteral("passwordCheckBox"),         QStringLiteral("enterPasswordLineEdit"),
           QStringLiteral("confirmPasswordLineEdit"),  QStringLiteral("dateTimeEdit"),
           QStringLiteral("qt_spinbox_lineedit"),      QStringLiteral("autoConnectGroupRadioButton"),
           QStringLiteral("autoConnectGroupComboBox"), QStringLiteral("ethernetCheckBox")};
    return names.contains(field->objectName()) || qobject_cast<const QComboBox *>(field->parentWidget());
}

/// Changes a field as a user would; text fields get a word that every page accepts.
void change(QWidget *field)
{
    auto *line = qobject_cast<QLineEdit *>(field);
    if (line && line->validator())
        line->setText(line->objectName().startsWith(QLatin1String("mask")) ? QStringLiteral("255.255.255.0")
                                                                           : QStringLiteral("10.1.2.3"));
    else if (line)
        line->setText(QStringLiteral("changed") + QString::number(line->objectName().size()));
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
    void init();
    void storesAndShowsEveryFieldOfEveryPage();
    void asksForThePassword();
    void asksBeforeChangesAreLost();
    void showsThePageThatRefuses();
    void runsTheToolsOfTheClockAndTheKeyboard();
    void setsTheDisplay_data();
    void setsTheDisplay();
    void hostileValuesStayArguments();
    void savesNothingWhereNothingCanBeRead();
    void savesNothingOnAFullDisk();
    void oneEmptyNameHindersNoOtherPage();
    void wrongTypesAndLongListsAreNoTrouble();
    void isUsedWithTheKeyboard();

private:
    template <typename Widget>
    Widget *part(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    SettingsPage *page(const char *className) const;
    bool settingsShown() const;
    void enter();
    void restart();

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<SettingsController> m_controller;
    std::unique_ptr<SettingsApp> m_window;
};

void SettingsWalkTest::init()
{
    m_controller.reset();
    m_window.reset();
    m_device = std::make_unique<TestDevice>();
    // The only sound device is the one that needs no writing down.
    m_device->setState(QStringLiteral("sound-cards.json"),
                       R"([{"name": "b", "devices": [{"name": "bcm2835 ALSA", "playback": true}]}])");
    restart();
    m_device->forgetCalls();
}

void SettingsWalkTest::restart()
{
    m_controller.reset();
    m_window = std::make_unique<SettingsApp>();
    m_controller = std::make_unique<SettingsController>(m_window.get());
    m_window->show();
}

SettingsPage *SettingsWalkTest::page(const char *className) const
{
    for (auto *candidate : m_window->findChildren<SettingsPage *>()) {
        if (QByteArray(candidate->metaObject()->className()) == className)
            return candidate;
    }
    return nullptr;
}

bool SettingsWalkTest::settingsShown() const
{
    return part<QStackedWidget>("mainStackedWidget")->currentIndex() == SettingsApp::SettingsPage;
}

void SettingsWalkTest::enter()
{
    part<QToolButton>("settingsButton")->click();
}

void SettingsWalkTest::storesAndShowsEveryFieldOfEveryPage()
{
    QJsonObject start = m_device->document();
    QJsonObject logon = start.value(QStringLiteral("user autologon settings")).toObject();
    logon.insert(QStringLiteral("username"), QStringLiteral("nurse")); // a broker's log-on needs one
    start.insert(QStringLiteral("user autologon settings"), logon);
    m_device->setDocument(start);
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
        QVERIFY2(!settingsShown(),
                 qPrintable(entry.key() + QLatin1String(": ") + answer.messages.join(QLatin1Char('|'))));
        const QJsonObject after = m_device->document();
        QCOMPARE(without(after, entry.value()), without(before, entry.value()));
        for (const QString &section : entry.value())
            QVERIFY2(after.value(section) != before.value(section), qPrintable(section));

        restart();
        enter();
        for (QWidget *field : fields(page(entry.key().toLatin1())))
            QVERIFY2(shown(field) == expected.takeFirst(),
                     qPrintable(entry.key() + QLatin1String(": ") + field->objectName()));
    }
}

void SettingsWalkTest::asksForThePassword()
{
    enter();
    part<QCheckBox>("passwordCheckBox")->click();
    QTest::keyClicks(part<QLineEdit>("enterPasswordLineEdit"), QStringLiteral("secret"));
    QTest::keyClicks(part<QLineEdit>("confirmPasswordLineEdit"), QStringLiteral("secreT"));
    {
        DialogAnswer refused(true);
        part<QPushButton>("applyButton")->click();
        QCOMPARE(refused.messages, QStringList(QStringLiteral("The two passwords differ.")));
    }
    part<QLineEdit>("confirmPasswordLineEdit")->clear();
    QTest::keyClicks(part<QLineEdit>("confirmPasswordLineEdit"), QStringLiteral("secret"));
    part<QPushButton>("applyButton")->click();
    QVERIFY(!settingsShown());
    const QJsonObject general = m_device->document().value(QStringLiteral("general settings")).toObject();
    QCOMPARE(general.value(QStringLiteral("setup GUI password hash")).toString(),
             QStringLiteral("5ebe2294ecd0e0f08eab7690d2a6ee69"));
    QVERIFY(!m_device->read(QStringLiteral("/var/lib/kt964/config.json")).contains("\"secret\""));
    {
        DialogAnswer wrong(true, QStringLiteral("Secret"));
        enter();
        QVERIFY(!settingsShown());
        QCOMPARE(wrong.messages.last(), QStringLiteral("Wrong password"));
    }
    DialogAnswer right(true, QStringLiteral("secret"));
    enter();
    QVERIFY(settingsShown());
    QCOMPARE(part<QLineEdit>("enterPasswordLineEdit")->text(), QStringLiteral("********"));
    // What stands there for the password is not taken for one.
    part<QLineEdit>("deviceNameLineEdit")->setText(QStringLiteral("TC7"));
    part<QPushButton>("applyButton")->click();
    QCOMPARE(m_device->document()
                 .value(QStringLiteral("general settings"))
                 .toObject()
                 .value(QStringLiteral("setup GUI password hash")),
             general.value(QStringLiteral("setup GUI password hash")));
}

void SettingsWalkTest::asksBeforeChangesAreLost()
{
    enter();
    QVERIFY(!part<QPushButton>("applyButton")->isEnabled());
    part<QLineEdit>("deviceNameLineEdit")->setText(QStringLiteral("lost"));
    {
        DialogAnswer stay(false);
        part<QPushButton>("backButton")->click();
        QCOMPARE(stay.messages, QStringList(QStringLiteral("There are unsaved changes. Continue?")));
        QVERIFY(settingsShown());
    }
    DialogAnswer leave(true);
    part<QPushButton>("backButton")->click();
    QVERIFY(!settingsShown());
    enter();
    QVERIFY(part<QLineEdit>("deviceNameLineEdit")->text() != QStringLiteral("lost"));
    QVERIFY(m_device->calls(QStringLiteral("kt-set-hostname")).isEmpty());
    part<QLineEdit>("deviceNameLineEdit")->setText(QStringLiteral("  "));
    QVERIFY(!part<QPushButton>("applyButton")->isEnabled());
}

void SettingsWalkTest::showsThePageThatRefuses()
{
    enter();
    part<QLineEdit>("deviceNameLineEdit")->setText(QStringLiteral("saved"));
    part<QCheckBox>("autostartCheckBox")->click();
    part<QCheckBox>("numLockCheckBox")->click();
    const QJsonValue keyboard = m_device->document().value(QStringLiteral("keyboard settings"));
    DialogAnswer answer(true);
    part<QPushButton>("applyButton")->click();
    QVERIFY(settingsShown());
    QCOMPARE(answer.titles, QStringList(QStringLiteral("Error")));
    QCOMPARE(part<QListWidget>("settingsListWidget")->currentItem()->text(), QStringLiteral("Kiosk mode"));
    QCOMPARE(m_device->calls(QStringLiteral("kt-set-hostname")).join(QString()),
             QStringLiteral("kt-set-hostname -j"));
    QCOMPARE(m_device->document().value(QStringLiteral("keyboard settings")), keyboard);
    QVERIFY(page("KeyboardPage")->isChanged());
}

void SettingsWalkTest::runsTheToolsOfTheClockAndTheKeyboard()
{
    enter();
    auto *layouts = part<QComboBox>("layoutComboBox");
    layouts->setCurrentIndex(layouts->findText(QStringLiteral("German")));
    part<QCheckBox>("ntpCheckBox")->setChecked(false);
    part<QDateTimeEdit>("dateTimeEdit")->setDateTime({QDate(2024, 3, 5), QTime(7, 8, 9)});
    m_device->forgetCalls();
    part<QPushButton>("applyButton")->click();
    const QStringList expected
        = {QStringLiteral("kt-set-keyboard DE de"),
           QStringLiteral("kt-set-timezone US/Pacific"),
           QStringLiteral("sudo systemctl disable ntp.service"),
           QStringLiteral("systemctl disable ntp.service"),
           QStringLiteral("sudo %1 stop").arg(m_device->path(QStringLiteral("/etc/init.d/ntp"))),
           QStringLiteral("ntp stop"),
           QStringLiteral("sudo date -s '5 Mar 2024 07:08:09'"),
           QStringLiteral("date -s '5 Mar 2024 07:08:09'")};
    QCOMPARE(m_device->calls().mid(0, expected.size()), expected);

    enter();
    part<QCheckBox>("ntpCheckBox")->setChecked(true);
    m_device->forgetCalls();
    part<QPushButton>("applyButton")->click();
    QVERIFY(m_device->calls().contains(QStringLiteral("sudo systemctl enable ntp.service")));
    QCOMPARE(m_device->calls(QStringLiteral("kt-set-ntp-server")).size(), 1);
}

void SettingsWalkTest::setsTheDisplay_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QStringList>("calls"); // before the screen saver's service
    const QStringList mode = {QStringLiteral("kt-set-resolution DMT 58")};
    QTest::newRow("text") << "1680x1050 60Hz"
                          << "1680x1050 60Hz" << mode;
    QTest::newRow("size") << "1680x1050"
                          << "1680x1050 60Hz" << mode;
    QTest::newRow("automatic") << "Automatic"
                               << "Automatic" << QStringList(QStringLiteral("kt-set-resolution"));
    QTest::newRow("another monitor's") << "2048x1536 60Hz"
                                       << "2048x1536 60Hz" << QStringList();
}

void SettingsWalkTest::setsTheDisplay()
{
    QFETCH(QString, stored);
    QFETCH(QStringList, calls);
    QJsonObject document = m_device->document();
    const QJsonObject primary
        = {{QStringLiteral("resolution"), stored}, {QStringLiteral("orientation"), QStringLiteral("o")}};
    document.insert(QStringLiteral("display settings"), QJsonObject{{QStringLiteral("primary"), primary}});
    m_device->setDocument(document);
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
    calls
        += {QStringLiteral("sudo %1 restart").arg(m_device->path(QStringLiteral("/etc/init.d/kt964-sleep"))),
            QStringLiteral("kt964-sleep restart")};
    QCOMPARE(m_device->calls().mid(0, calls.size()), calls);
    const QJsonObject display = m_device->document().value(QStringLiteral("display settings")).toObject();
    QCOMPARE(display.value(QStringLiteral("multi monitor mode")).toString(), QStringLiteral("mirror"));
    QCOMPARE(display.value(QStringLiteral("screen saver timeout")).toInt(), 20);
    QCOMPARE(
        display.value(QStringLiteral("primary")).toObject().value(QStringLiteral("orientation")).toString(),
        QStringLiteral("o"));
    QString resolution;
    int atLeft = 1;
    int bottomAligned = 0;
    m_controller->fillSecondaryParameter(resolution, atLeft, bottomAligned);
    QCOMPARE(resolution + QString::number(atLeft) + QString::number(bottomAligned),
             QStringLiteral("Automatic01"));
}

void SettingsWalkTest::hostileValuesStayArguments()
{
    const QString hostile
        = QStringLiteral("x'; touch %1; $(touch %1)\n\"").arg(m_device->path(QStringLiteral("/owned")));
    m_device->write(QStringLiteral("/etc/timezones"), "Etc/$(touch owned);'\": UTC: Nowhere\n");
    m_device->write(QStringLiteral("/etc/keyboard_layouts"), "$(touch owned): a';touch owned: Odd\n");
    QJsonObject document = m_device->document();
    for (const auto &[section, key] :
         {std::pair("date time settings", "timezone"), std::pair("keyboard settings", "layout")}) {
        QJsonObject object = document.value(QLatin1String(section)).toObject();
        object.insert(QLatin1String(key), hostile);
        document.insert(QLatin1String(section), object);
    }
    m_device->setDocument(document);
    restart();
    enter();
    part<QCheckBox>("numLockCheckBox")->click();
    part<QLineEdit>("ntpServerLineEdit")->setText(hostile);
    DialogAnswer refused(true);
    part<QPushButton>("applyButton")->click();
    QCOMPARE(refused.messages.size(), 1);
    part<QLineEdit>("ntpServerLineEdit")->setText(QStringLiteral("time.example"));
    part<QComboBox>("timezoneComboBox")->setCurrentIndex(0);
    part<QComboBox>("layoutComboBox")->setCurrentIndex(0);
    part<QPushButton>("applyButton")->click();
    QVERIFY(!settingsShown());
    QVERIFY(!m_device->exists(QStringLiteral("/owned")));
    QVERIFY(!QFile::exists(QStringLiteral("owned")));
    QCOMPARE(m_device->document()
                 .value(QStringLiteral("date time settings"))
                 .toObject()
                 .value(QStringLiteral("timezone"))
                 .toString(),
             QStringLiteral("Etc/$(touch owned);'\""));
}

void SettingsWalkTest::savesNothingWhereNothingCanBeRead()
{
    QJsonObject document = m_device->document();
    QJsonObject general = document.value(QStringLiteral("general settings")).toObject();
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
        QVERIFY(m_device->calls(QStringLiteral("kt-set-keyboard")).isEmpty());

        // Readable again, with a change made elsewhere meanwhile: both are kept.
        general.insert(QStringLiteral("device name"), QStringLiteral("elsewhere"));
        document.insert(QStringLiteral("general settings"), general);
        m_device->setDocument(document);
        part<QPushButton>("applyButton")->click();
        QVERIFY(!settingsShown());
        QCOMPARE(without(m_device->document(), {QStringLiteral("keyboard settings")}),
                 without(document, {QStringLiteral("keyboard settings")}));
        QCOMPARE(m_device->calls(QStringLiteral("kt-set-keyboard")).size(), 1);
    }
    // The password is asked for even so.
    general.insert(QStringLiteral("setup GUI password enabled"), true);
    document.insert(QStringLiteral("general settings"), general);
    m_device->setDocument(document);
    restart();
    m_device->write(configuration, "");
    DialogAnswer answer(false);
    enter();
    QVERIFY(!settingsShown());
    QCOMPARE(answer.titles, QStringList(QStringLiteral("Administrator password")));
}

void SettingsWalkTest::savesNothingOnAFullDisk()
{
    enter();
    part<QLineEdit>("deviceNameLineEdit")->setText(QString(60, QLatin1Char('n')));
    const QByteArray before = m_device->read(configuration);
    m_device->forgetCalls();
    rlimit limit;
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit full = {static_cast<rlim_t>(before.size()), limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    DialogAnswer answer(true);
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &full), 0);
    part<QPushButton>("applyButton")->click();
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    QVERIFY(settingsShown());
    QCOMPARE(answer.messages.size(), 1);
    QVERIFY(page("GeneralPage")->isChanged());
    QCOMPARE(m_device->read(configuration), before);
    QCOMPARE(m_controller->configuration().getDocument().object(), m_device->document());
    QVERIFY(m_device->calls(QStringLiteral("kt-set-hostname")).isEmpty());
    part<QPushButton>("applyButton")->click();
    QVERIFY(!settingsShown());
}

void SettingsWalkTest::oneEmptyNameHindersNoOtherPage()
{
    QJsonObject document = m_device->document();
    QJsonObject general = document.value(QStringLiteral("general settings")).toObject();
    general.insert(QStringLiteral("device name"), 5);
    document.insert(QStringLiteral("general settings"), general);
    m_device->setDocument(document);
    restart();
    enter();
    part<QCheckBox>("numLockCheckBox")->click();
    QVERIFY(part<QPushButton>("applyButton")->isEnabled());
    part<QPushButton>("applyButton")->click();
    QVERIFY(!settingsShown());
    QCOMPARE(m_device->document().value(QStringLiteral("general settings")), QJsonValue(general));
}

void SettingsWalkTest::wrongTypesAndLongListsAreNoTrouble()
{
    QByteArray lines;
    for (int i = 0; i < 10000; ++i)
        lines += "L" + QByteArray::number(i) + ": v: A long list's entry " + QByteArray::number(i) + '\n';
    m_device->write(QStringLiteral("/etc/keyboard_layouts"), lines);
    QFile::remove(m_device->path(QStringLiteral("/etc/timezones")));
    const QJsonObject good = m_device->document();
    for (const QJsonValue &wrong : {QJsonValue(5), QJsonValue(QStringLiteral("x")), QJsonValue(QJsonArray{1}),
                                    QJsonValue(QJsonObject{{QStringLiteral("x"), 1}})}) {
        QJsonObject document = good;
        for (auto member = document.begin(); member != document.end(); ++member) {
            if (member.key() != QStringLiteral("firmware info"))
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
        const QStringList changed
            = {QStringLiteral("keyboard settings"), QStringLiteral("security settings")};
        QCOMPARE(without(m_device->document(), changed), without(before, changed));
    }
    enter();
    auto *list = part<QListWidget>("settingsListWidget");
    list->setCurrentItem(list->findItems(QStringLiteral("Keyboard"), Qt::MatchExactly).value(0));
    QElapsedTimer clock;
    clock.start();
    part<QComboBox>("layoutComboBox")->showPopup();
    part<QComboBox>("layoutComboBox")->hidePopup();
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

void SettingsWalkTest::isUsedWithTheKeyboard()
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

QTEST_MAIN(SettingsWalkTest)
#include "settingswalktest.moc"
