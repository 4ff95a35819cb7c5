// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/commands.h"
#include "device/devicetools.h"
#include "device/paths.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

/// Where things stand on the device, and how its programs are run.
class CommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void namesTheDeviceWithoutARoot()
    {
        qunsetenv("KT_DEVICE_ROOT");
        QCOMPARE(Paths::configuration(), "/var/lib/kt964/config.json");
        QCOMPARE(Paths::program("route"), "route");

        const QString tool = "/usr/bin/kt-lulling";
        QCOMPARE(Paths::program(tool), tool);
        QCOMPARE(Commands::line(tool, "-S"), "/usr/bin/kt-lulling -S");
        QCOMPARE(Commands::line("/usr/bin/kt-check-gateway", QString(), true),
                 "sudo /usr/bin/kt-check-gateway");
        const QString eth0 = "eth0";
        QCOMPARE(DeviceTools::setAddress(eth0, "10.0.0.5", 24, true, "10.0.0.255").commandLine,
                 "sudo /usr/bin/kt-ip-settings -a eth0 10.0.0.5 24 10.0.0.255");
        QCOMPARE(DeviceTools::setAddress(eth0, "1; reboot", 8, false, QString()).commandLine,
                 "sudo /usr/bin/kt-ip-settings -d eth0 '1; reboot' 8 ");
    }

    void putsTheRootInFront()
    {
        const TestDevice device;
        QVERIFY(device.isValid());
        QCOMPARE(Paths::connectionStatus(), device.path("/tmp/connect.json.status"));
        QCOMPARE(Paths::program("route"), device.path("/usr/bin/route"));
        QCOMPARE(Paths::program("no-such-tool"), "no-such-tool");
        // Programs that our children start by their bare names are the device's too.
        ToolRun::start(ToolCall::command("pkill -x nobody; sudo kt-lulling -S"));
        QTRY_COMPARE(device.calls("kt-lulling"), QStringList("kt-lulling -S"));
        QCOMPARE(device.calls("pkill").size(), 1);

        qputenv("KT_DEVICE_ROOT", "/my lab/it's");
        QCOMPARE(Commands::line("/usr/bin/kt-lulling", "-r"), "'/my lab/it'\\''s/usr/bin/kt-lulling' -r");
    }

    void quotesAValueAsOneWord()
    {
        const QTemporaryDir folder;
        const QString values
            = "plain|| |two words|$(touch made)|`touch made`|; touch made|& touch made|> made|"
              "a\ntouch made\n|'; touch made; '|\"$HOME\"|\\|\\'|it's 'so'|~|*|[a-z]?|{a,b}|"
              "#|!!|-n|A=b|\t\r|Żółw €";
        for (const QString &value : values.split('|')) {
            QProcess::execute("/bin/sh",
                              {"-c",
                               QString("cd %1 && set -- x %2 && printf '%s|%s' $# \"$2\" >arrived")
                                   .arg(folder.path(), Commands::quoted(value))});
            QFile arrived(folder.filePath("arrived"));
            QVERIFY(arrived.open(QIODevice::ReadOnly));
            QCOMPARE(QString::fromUtf8(arrived.readAll()), QString("2|") + value);
            QVERIFY2(!QFile::exists(folder.filePath("made")), qPrintable(value));
        }
    }

    void leavesPlainWordsAsTheyAre()
    {
        for (const char *word : {"eth0", "10.0.0.255", "/var/lib/kt964/config.json", "a-b_c", "user@host:22"})
            QCOMPARE(Commands::quoted(QLatin1String(word)), QLatin1String(word));
        // An argument cannot hold a null character.
        QCOMPARE(Commands::quoted(QString("a b") + QChar::Null + "c"), "'a bc'");
    }
};

QTEST_GUILESS_MAIN(CommandsTest)
#include "commandstest.moc"
