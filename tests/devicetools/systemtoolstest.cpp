// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/generatedfile.h"
#include "devicetools-system/hosttools.h"
#include "devicetools-system/keyboardtools.h"
#include "devicetools-system/lists.h"
#include "devicetools-system/timetools.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &text)
{
    QDir().mkpath(path.section('/', 0, -2));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
}

/// All of the machine's services: it notes each call, and refuses those of one method.
class Services : public QDBusVirtualObject
{
public:
    QStringList calls;
    QString refused;

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        QStringList words{message.member()};
        for (const QVariant &argument : message.arguments())
            words += argument.toString();
        calls += words.join(' ');
        return bus.send(message.member() == refused
                            ? message.createErrorReply("org.example.No", "Not\nsupported")
                            : message.createReply());
    }
};

} // namespace

class SystemToolsTest : public QObject
{
    Q_OBJECT

    QProcess m_bus;
    Services m_services;
    QTemporaryDir m_folder;

    QString run(const QString &name, const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(qEnvironmentVariable("KT_BIN_DIR") + '/' + name, arguments);
        const bool ended
            = QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 30000);
        return QString::number(ended ? process.exitCode() : -1) + ' ' + process.readAll().trimmed();
    }

private slots:
    void initTestCase()
    {
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        QTRY_VERIFY_WITH_TIMEOUT(m_bus.canReadLine(), 30000);
        const QByteArray address = m_bus.readLine().trimmed();
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
        QDBusConnection bus = QDBusConnection::connectToBus(QString::fromLatin1(address), "services");
        for (const QString name : {"hostname1", "login1", "timedate1", "locale1"})
            QVERIFY(bus.registerService("org.freedesktop." + name));
        QVERIFY(bus.registerVirtualObject("/", &m_services, QDBusConnection::SubPath));
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus("services");
        m_bus.terminate();
        QVERIFY(m_bus.waitForFinished());
    }

    void asksTheMachinesServices()
    {
        QCOMPARE(run("kt-set-timezone", {"Europe/Berlin"}), "0 ");
        QCOMPARE(run("kt-lulling", {"-r"}), "0 ");
        m_services.refused = "Suspend"; // as a machine that cannot sleep does
        QCOMPARE(run("kt-lulling", {"-S"}), "1 kt-lulling: Not supported");
        QCOMPARE(run("kt-set-hostname", {"-r"}), "0 ");
        QCOMPARE(m_services.calls,
                 QStringList({"SetTimezone Europe/Berlin false", "Reboot false", "Suspend false",
                              "SetStaticHostname " + HostTools::defaultHostName() + " false"}));
        // What is wrong reaches none of them.
        for (const QStringList &wrong : {QStringList{"kt-set-timezone", "../etc/passwd"},
                                         {"kt-set-timezone"},
                                         {"kt-lulling", "-x"},
                                         {"kt-set-ntp-server", "a;reboot"},
                                         {"kt-set-hostname"},
                                         {"kt-set-keyboard", "US", "us -option"}})
            QVERIFY2(run(wrong.first(), wrong.mid(1)).startsWith("2 "), qPrintable(wrong.join(' ')));
        QCOMPARE(m_services.calls.size(), 4);
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + QFile::encodeName(m_folder.filePath("none")));
        QCOMPARE(run("kt-lulling", {"-s"}), "1 kt-lulling: no system bus");
    }

    void namesTheMachineByItsWiredInterface()
    {
        const QString net = m_folder.filePath("net");
        const QString id = m_folder.filePath("machine-id");
        write(id, "0123456789abcdef0123456789abcdef\n");
        QDir().mkpath(net);
        const QString byMachine = HostTools::defaultHostName(net, id);
        QVERIFY2(HostTools::isDeviceName(byMachine) && byMachine.size() == 12, qPrintable(byMachine));
        QVERIFY(!byMachine.contains("abcdef"));
        const auto add = [&net](const QString &name, const QByteArray &address, const QString &further) {
            write(net + '/' + name + "/address", address + '\n');
            write(net + '/' + name + "/type", "1\n");
            write(net + '/' + name + '/' + further, "");
        };
        add("br0", "02:00:00:00:00:01", "bridge");
        add("wlan0", "02:00:00:00:00:02", "wireless");
        QCOMPARE(HostTools::defaultHostName(net, id), byMachine);
        add("enp2s0", "52:54:00:aB:cd:ef", "device"); // not as the kernel writes it
        add("enp3s0", "52:54:00:12:34:56", "device");
        QCOMPARE(HostTools::defaultHostName(net, id), "kt964-123456");
    }

    void takesServersAndTimesOnlyAsTheyShouldBe()
    {
        QCOMPARE(TimeTools::servers({"0.debian.pool.ntp.org, 10.0.0.1", "2001:db8::1"}).size(), 3);
        for (const QString wrong : {"", "a b c d e f g h i", "host!", "-v", "host\nNTP=other/"})
            QVERIFY2(TimeTools::servers({wrong}).isEmpty(), qPrintable(wrong));
        QCOMPARE(*TimeTools::clock("5 Mar 2024 07:08:09"), QDateTime(QDate(2024, 3, 5), QTime(7, 8, 9)));
        for (const QString wrong : {"", "5 Mrz 2024 07:08:09", "31 Feb 2024 07:08:09", "5 Mar 1970 07:08:09",
                                    "now", "5 Mar 2024 07:08:09 x"})
            QVERIFY2(!TimeTools::clock(wrong), qPrintable(wrong));
    }

    void listsTheMachinesLayoutsAndZones()
    {
        const QByteArray rules = "! model\n  pc105  Generic\n\n! layout\n  us   English (US)\n  gb   English "
                                 "(UK)\n  custom  A user\n"
                                 "! variant\n  intl  us: English (US, intl.)\n  odd   us: One: two\n! "
                                 "option\n  grp  Switching\n";
        QCOMPARE(LayoutList::make(rules),
                 "UK: gb: English (UK)\nUS: us: English (US)\nUS-intl: us(intl): English (US, intl.)\n"
                 "US-odd: us(odd): One, two\n");
        const QString list = m_folder.filePath("layouts");
        write(list, "# a comment\n" + LayoutList::make(rules));
        QCOMPARE(KeyboardTools::listed("US-intl", list), "us(intl)");
        QCOMPARE(KeyboardTools::layoutFor("US-intl", "us(intl)")->variant, "intl");
        QCOMPARE(KeyboardTools::layoutFor("DE", "")->layout, "de"); // of a list that is gone
        QVERIFY(!KeyboardTools::layoutFor("DE", "de,us; reboot"));

        write(m_folder.filePath("zones/iso3166.tab"), "# comment\nDE\tGermany\nIN\tIndia\n");
        write(m_folder.filePath("zones/zone.tab"),
              "IN\t+2232+08822\tAsia/Kolkata\nDE\t+5230+01322\tEurope/Berlin\tmost of it\n"
              "XX\t+0000+0000\tNo/Where\n");
        const QByteArray zones = ZoneList::make(m_folder.filePath("zones"));
        QVERIFY(zones.contains("US/Pacific: UTC-08:00: United States, Pacific\n")); // the document's default
        QVERIFY(zones.endsWith(
            "Etc/UTC: UTC+00:00: Coordinated Universal Time\nEurope/Berlin: UTC+01:00: Germany, most of it\n"
            "Asia/Kolkata: UTC+05:30: India\n"));
    }

    void keepsAnEditedList()
    {
        using GeneratedFile::Outcome;
        using GeneratedFile::update;
        const QString path = m_folder.filePath("list");
        QCOMPARE(update(path, "a: b\n"), Outcome::Written);
        QCOMPARE(update(path, "a: b\n"), Outcome::Unchanged);
        QCOMPARE(update(path, "a: b\nc: d\n"), Outcome::Written); // the machine's data are newer
        QVERIFY(content(path).endsWith("\na: b\nc: d\n"));
        write(path, content(path) + "mine: too\n");
        QCOMPARE(update(path, "e: f\n"), Outcome::Kept);
        write(path, "all: mine\n");
        QCOMPARE(update(path, "e: f\n"), Outcome::Kept);
        QCOMPARE(content(path), "all: mine\n");
    }
};

QTEST_GUILESS_MAIN(SystemToolsTest)
#include "systemtoolstest.moc"
