// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/settingsapplier.h"

#include "config/defaults.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/networkcontroller.h"
#include "device/resolutioncontainer.h"
#include "device/toolqueue.h"
#include "testdevice.h"
#include "testtable.h"

#include <QJsonArray>
#include <QtTest>

#include <optional>

namespace {

const QString record = "/var/lib/kt964/applied.json";
const QStringList wlan = {Key::network, Key::interfaces, Key::wlan};
const QStringList eth = {Key::network, Key::interfaces, Key::eth};

QJsonObject object(const char *text)
{
    return QJsonDocument::fromJson(QByteArray(text).replace('\'', '"')).object();
}

const char *const ward3
    = "{'enabled': true, 'ssid': 'Ward 3', 'security': 'personal', 'passphrase': 'a key'}";
const char *const wired = "{'enabled': true, 'type': 'dhcp', 'Ip address': ''}";

/// The applier with all it needs, from one start of the program to its end.
struct Program
{
    Program() { configuration.readContent(); }

    void follow()
    {
        applier.follow();
        settle();
    }
    void settle() { QTRY_VERIFY(!applier.isBusy() && commands.isIdle()); }

    JsonModule configuration{"config.json", true};
    ToolQueue commands;
    NetworkController network{commands};
    ResolutionContainer resolutions;
    SettingsApplier applier{configuration, commands, network, resolutions};
};

} // namespace

/// Documents in, command lines out.
class SettingsApplierTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device.emplace();
        m_device->setDocument(Defaults::document("kt-test", Defaults::networkSettings({})));
        m_device->store(eth, object(wired));
        m_device->write("/etc/keyboard_layouts", "DE: de: German\n");
    }

    void carriesOutWhatDiffers_data();
    void carriesOutWhatDiffers();
    void waitsForTheEndOfASession();
    void runsAgainWhatHung();
    void takesADamagedRecordForNone();
    void waitsForARecordThatItCannotReadYet();
    void appliesWhatIsForced();
    void joinsOnceWhenTheDocumentChangesTwice();

private:
    /// The tools called so far, without the device root, and without what stands behind "sudo".
    QStringList calls() const
    {
        QStringList lines = m_device->calls();
        QStringList result;
        for (QString &line : lines) {
            line.remove(m_device->path(QString()));
            if (!line.startsWith("sudo ") && !line.startsWith("tvservice"))
                result += line.remove("/var/lib/kt964/config.json").trimmed();
        }
        return result;
    }

    std::optional<TestDevice> m_device;
};

void SettingsApplierTest::carriesOutWhatDiffers_data()
{
    const TestTable<QStringList, QJsonValue, QStringList> table("keys", "value", "expected");
    const QString setConfig = "kt-network-config set-config A";
    const QStringList connectWired = {"kt-network-config connect-ethernet A", "kt-check-gateway"};
    const QString leaveWifi = "kt-network-config disconnect-wifi A";
    table.row("host name", {Key::general, Key::deviceName}, "tc7", {"kt-set-hostname -j"});
    table.row("address", eth,
              object("{'enabled': true, 'type': 'static', 'IP address': '10.0.0.5', 'network mask': "
                     "'255.0.0.0'}"),
              QStringList(setConfig) + connectWired);
    table.row("same wired settings in other words", eth,
              object("{'enabled': true, 'type': 'dhcp', 'IP address': '', 'default gateway': ''}"),
              {setConfig});
    table.row("Wi-Fi on", wlan, object(ward3), {setConfig, leaveWifi, "kt-check-wifi 'Ward 3' 'a key' 0"});
    table.row("name server", {Key::network, Key::dns, Key::dns1}, "10.0.0.2",
              QStringList(setConfig) + connectWired);
    table.row("mode", {Key::display, Key::primary, Key::resolution}, "1280x800 60Hz",
              {"kt-set-resolution DMT 28"});
    table.row("second display", {Key::display, Key::secondary, Key::position}, "left", {"kt-set-resolution"});
    table.row("screen saver", {Key::display, Key::screenSaverTimeout}, 5, {"kt964-sleep restart"});
    table.row("layout", {Key::keyboard, Key::layout}, "DE", {"kt-set-keyboard DE de"});
    table.row("NumLock", {Key::keyboard, Key::numlockOn}, true, {"numlockx on"});
    table.row("zone", {Key::dateTime, Key::timezone}, "Europe/Berlin", {"kt-set-timezone Europe/Berlin"});
    table.row("time server", {Key::dateTime, Key::ntpServer}, "time.example",
              {"systemctl enable ntp.service", "ntp start", "kt-set-ntp-server time.example"});
    table.row("application", {Key::general, Key::clientMode}, "application", {"kt-switch -r"});
    table.row("of no tool's concern", {Key::serverGroups}, QJsonArray{1}, {});
    table.row("nothing", {Key::keyboard, Key::layout}, "US", {});
}

/// A change made by this program, and one that a crash has left behind: the same command lines, once.
void SettingsApplierTest::carriesOutWhatDiffers()
{
    QFETCH(const QStringList, keys);
    QFETCH(const QJsonValue, value);
    QFETCH(const QStringList, expected);
    {
        Program program;
        program.follow(); // a device without a record
    }
    QCOMPARE(calls(), QStringList());
    const QJsonObject before = m_device->document();
    const QByteArray recordBefore = m_device->read(record);
    m_device->store(keys, value);
    const QJsonObject after = m_device->document();
    m_device->setDocument(before);
    {
        Program program;
        program.configuration.change([&after](QJsonObject &root) {
            root = after;
            return true;
        });
        program.settle();
        QTRY_COMPARE(calls(), expected);
    }
    m_device->write(record, recordBefore);
    for (const QStringList &now : {expected, QStringList()}) {
        m_device->forgetCalls();
        Program restarted;
        restarted.follow();
        QTRY_COMPARE(calls(), now);
    }
    QVERIFY(!m_device->read(record).contains("a key"));
    QCOMPARE(QFile::permissions(m_device->path(record)) & (QFile::ReadGroup | QFile::ReadOther),
             QFile::Permissions());
}

void SettingsApplierTest::waitsForTheEndOfASession()
{
    Program program;
    program.follow();
    bool inSession = true;
    program.applier.setSessionCheck([&inSession] { return inSession; });
    m_device->store({Key::display, Key::primary, Key::resolution}, "1280x800 60Hz");
    m_device->store({Key::network, Key::dns, Key::domain}, "ward.example");
    m_device->store({Key::general, Key::clientMode}, "application");
    m_device->store({Key::display, Key::screenSaverTimeout}, 5);
    program.configuration.readContent();
    program.follow();
    QCOMPARE(calls(), QStringList("kt964-sleep restart"));
    m_device->forgetCalls();
    m_device->store({Key::display, Key::primary, Key::resolution}, "9x9");
    program.configuration.readContent();
    program.follow();
    const QJsonValue display = m_device->document().value(Key::display);
    QCOMPARE(display[Key::primary][Key::resolution], QJsonValue("Automatic"));
    QCOMPARE(calls(), QStringList());
    inSession = false;
    program.follow();
    QCOMPARE(calls(),
             QStringList({"kt-network-config set-config A", "kt-network-config connect-ethernet A",
                          "kt-check-gateway", "kt-switch -r"}));
}

void SettingsApplierTest::runsAgainWhatHung()
{
    Program program;
    program.follow();
    program.commands.setLimit(2000);
    m_device->setFault("kt-set-timezone", "hang");
    const QSignalSpy busy(&program.applier, &SettingsApplier::busy);
    m_device->store({Key::dateTime, Key::timezone}, "Europe/Berlin");
    m_device->store({Key::keyboard, Key::numlockOn}, true);
    program.configuration.readContent();
    program.follow();
    QCOMPARE(busy.size(), 2);
    m_device->setFault("kt-set-timezone", "exit 3");
    m_device->forgetCalls();
    program.follow();
    QCOMPARE(calls(), QStringList("kt-set-timezone Europe/Berlin"));
    program.follow(); // it has failed, but ended
    QCOMPARE(calls().size(), 1);
}

void SettingsApplierTest::takesADamagedRecordForNone()
{
    m_device->write(record, "{\"host name\": \"");
    Program().follow();
    QCOMPARE(calls(), QStringList());
    m_device->store({Key::keyboard, Key::numlockOn}, true);
    Program().follow();
    QCOMPARE(calls(), QStringList("numlockx on"));
}

void SettingsApplierTest::waitsForARecordThatItCannotReadYet()
{
    Program().follow();
    m_device->store({Key::keyboard, Key::numlockOn}, true); // and the program has ended before the tool ran
    const QString path = m_device->path(record);
    QVERIFY(QFile::rename(path, path + ".kept") && QFile::link(path, path));
    Program program;
    program.applier.follow();
    QTest::qWait(0);
    QVERIFY(program.applier.isBusy() && QFileInfo(path).isSymLink());
    QVERIFY(QFile::remove(path) && QFile::rename(path + ".kept", path));
    program.settle();
    QCOMPARE(calls(), QStringList("numlockx on"));
}

void SettingsApplierTest::appliesWhatIsForced()
{
    Program program;
    program.follow();
    m_device->store({Key::dateTime, Key::ntpEnabled}, false);
    m_device->store(wlan, object(ward3));
    m_device->write("/tmp/dhcp-options.conf", "[QMD]");
    program.configuration.readContent();
    program.follow();
    m_device->forgetCalls();
    QVERIFY(!m_device->exists("/tmp/dhcp-options.conf")); // Wi-Fi was connected anew

    using Section = SettingsApplier::Section;
    m_device->write("/tmp/dhcp-options.conf", "[QMD]");
    program.applier.setClock({QDate(2024, 3, 5), QTime(7, 8, 9)});
    program.applier.apply(Section::TimeServer | Section::HostName | Section::Network);
    program.settle();
    QCOMPARE(calls(),
             QStringList({"kt-set-hostname -j", "kt-network-config set-config A",
                          "systemctl disable ntp.service", "ntp stop", "date -s '5 Mar 2024 07:08:09'"}));
    QVERIFY(m_device->exists("/tmp/dhcp-options.conf"));
}

void SettingsApplierTest::joinsOnceWhenTheDocumentChangesTwice()
{
    Program program;
    program.follow();
    m_device->setFault("kt-set-hostname", "slow 300");
    for (const char *name : {"first", "second"}) {
        m_device->store({Key::general, Key::deviceName}, name);
        m_device->store(wlan, object(ward3));
        program.configuration.readContent();
        program.applier.follow();
        QTRY_VERIFY(!program.commands.isIdle());
        QTest::qWait(0);
    }
    program.settle();
    QTRY_COMPARE(calls().filter("kt-check-wifi").size(), 1);
    QCOMPARE(calls().filter("kt-set-hostname").size(), 2);
    QCOMPARE(calls().filter("disconnect-wifi").size(), 1);
}

QTEST_GUILESS_MAIN(SettingsApplierTest)
#include "settingsappliertest.moc"
