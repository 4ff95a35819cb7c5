// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/commands.h"
#include "device/networkcontroller.h"
#include "device/paths.h"
#include "testdevice.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

/// Where things stand on the device, and how its programs are run.
class CommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void namesTheDeviceWithoutARoot();
    void putsTheRootInFront();
    void quotesAValueAsOneWord_data();
    void quotesAValueAsOneWord();
    void leavesPlainWordsAsTheyAre();
    void shellIgnoresWhatACommandTells();
    void queryReadsWhatAToolPrints_data();
    void queryReadsWhatAToolPrints();
    void queryEndsAToolThatHangs();
    void queryBoundsAFlood();
};

void CommandsTest::namesTheDeviceWithoutARoot()
{
    qunsetenv("KT_DEVICE_ROOT");
    QCOMPARE(Paths::configuration(), QStringLiteral("/var/lib/kt964/config.json"));
    QCOMPARE(Paths::recoveryMarker(), QStringLiteral("/var/lib/kt964/RECOVERY"));
    QCOMPARE(Paths::message(), QStringLiteral("/tmp/msg.json"));
    QCOMPARE(Paths::connection(), QStringLiteral("/tmp/connect.json"));
    QCOMPARE(Paths::connectionStatus(), QStringLiteral("/tmp/connect.json.status"));
    QCOMPARE(Paths::broadcastLog(), QStringLiteral("/tmp/broadcastlog"));
    QCOMPARE(Paths::nameServers(), QStringLiteral("/etc/resolv.conf"));
    QCOMPARE(Paths::caCertificates(), QStringLiteral("/var/lib/kt964/certificates/cacerts"));
    QCOMPARE(Paths::clientDirectory(), QStringLiteral("/opt/Tessaro/"));
    QCOMPARE(Paths::client(), QStringLiteral("/opt/Tessaro/zClient"));
    QCOMPARE(Paths::program(QStringLiteral("route")), QStringLiteral("route"));

    const QString tool = QStringLiteral("/usr/bin/kt-lulling");
    QCOMPARE(Paths::program(tool), tool);
    QCOMPARE(Commands::line(tool, QStringLiteral("-S")), QStringLiteral("/usr/bin/kt-lulling -S"));
    QCOMPARE(Commands::line(QStringLiteral("/usr/bin/kt-check-gateway"), QString(), true),
             QStringLiteral("sudo /usr/bin/kt-check-gateway"));
    const QString eth0 = QStringLiteral("eth0");
    const QString address = QStringLiteral("10.0.0.5");
    QCOMPARE(NetworkController::ipSettingsLine(eth0, address, 24, true, QStringLiteral("10.0.0.255")),
             QStringLiteral("sudo /usr/bin/kt-ip-settings -a eth0 10.0.0.5 24 10.0.0.255"));
    QCOMPARE(NetworkController::ipSettingsLine(eth0, address, 8, false, QString()),
             QStringLiteral("sudo /usr/bin/kt-ip-settings -d eth0 10.0.0.5 8 "));
}

void CommandsTest::putsTheRootInFront()
{
    const TestDevice device;
    QVERIFY(device.isValid());
    QCOMPARE(Paths::connectionStatus(), device.path(QStringLiteral("/tmp/connect.json.status")));
    QCOMPARE(Paths::program(QStringLiteral("route")), device.path(QStringLiteral("/usr/bin/route")));
    QCOMPARE(Paths::program(QStringLiteral("no-such-tool")), QStringLiteral("no-such-tool"));
    // Programs that our children start by their bare names are the device's too.
    Commands::runShell(QStringLiteral("pkill -x nobody; sudo kt-lulling -S"));
    QCOMPARE(device.calls(QStringLiteral("pkill")).size(), 1);
    QCOMPARE(device.calls(QStringLiteral("kt-lulling")), QStringList(QStringLiteral("kt-lulling -S")));

    qputenv("KT_DEVICE_ROOT", "/my lab/it's");
    QCOMPARE(Commands::line(QStringLiteral("/usr/bin/kt-lulling"), QStringLiteral("-r")),
             QStringLiteral("'/my lab/it'\\''s/usr/bin/kt-lulling' -r"));
}

void CommandsTest::quotesAValueAsOneWord_data()
{
    QTest::addColumn<QString>("value");
    for (const char *value : {"plain-word_1.2:3",
                              "",
                              " ",
                              "two words",
                              "$(touch made)",
                              "`touch made`",
                              "; touch made",
                              "& touch made",
                              "a\ntouch made\n",
                              "'; touch made; '",
                              "\"$HOME\"",
                              "\\",
                              "\\'",
                              "it's 'so'",
                              "~",
                              "*",
                              "[a-z]?",
                              "{a,b}",
                              "> made",
                              "#",
                              "!!",
                              "-n",
                              "A=b",
                              "\t|\r",
                              "\xc5\xbb\xc3\xb3\xc5\x82w \xe2\x82\xac"})
        QTest::newRow(QByteArray(value).replace('\n', "\\n").constData()) << QString::fromUtf8(value);
}

void CommandsTest::quotesAValueAsOneWord()
{
    QFETCH(const QString, value);
    QTemporaryDir folder;
    Commands::runShell(QStringLiteral("cd %1 && set -- x %2 && printf '%s|%s' $# \"$2\" >arrived")
                           .arg(Commands::quoted(folder.path()), Commands::quoted(value)));
    QFile arrived(folder.filePath(QStringLiteral("arrived")));
    QVERIFY(arrived.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(arrived.readAll()), QLatin1String("2|") + value);
    QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("made"))));
}

void CommandsTest::leavesPlainWordsAsTheyAre()
{
    for (const char *word : {"eth0", "10.0.0.255", "/var/lib/kt964/config.json", "a-b_c", "user@host:22"})
        QCOMPARE(Commands::quoted(QLatin1String(word)), QLatin1String(word));
    // An argument cannot hold a null character.
    QCOMPARE(Commands::quoted(QLatin1String("a b") + QChar::Null + QLatin1String("c")),
             QStringLiteral("'a bc'"));
}

void CommandsTest::shellIgnoresWhatACommandTells()
{
    const TestDevice device;
    Commands::runShell(QStringLiteral("/no/such/program"));
    Commands::runShell(QStringLiteral("kill -KILL $$"));
    Commands::runShell(QStringLiteral("echo done >%1; exit 3").arg(device.path(QStringLiteral("/tmp/last"))));
    QCOMPARE(device.read(QStringLiteral("/tmp/last")), QByteArray("done\n"));
}

void CommandsTest::queryReadsWhatAToolPrints_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("missing") << QByteArray() << QByteArray();
    QTest::newRow("arguments") << QByteArray("printf '%s|' \"$@\"") << QByteArray("a b|$(c)||");
    QTest::newRow("error output") << QByteArray("echo out; echo error >&2") << QByteArray("out\n");
    QTest::newRow("failure") << QByteArray("printf half; exit 1") << QByteArray("half");
    QTest::newRow("crash") << QByteArray("printf half; kill -SEGV $$") << QByteArray("half");
    QTest::newRow("garbage") << QByteArray("printf '\\377\\000\\n'") << QByteArray("\xff\0\n", 3);
    QTest::newRow("asks for input") << QByteArray("cat") << QByteArray();
}

void CommandsTest::queryReadsWhatAToolPrints()
{
    QFETCH(const QByteArray, script);
    QFETCH(const QByteArray, output);
    const TestDevice device;
    const QString tool = QStringLiteral("/usr/bin/kt-query");
    if (!script.isEmpty())
        device.setTool(tool, script);
    QCOMPARE(Commands::query(tool, {QStringLiteral("a b"), QStringLiteral("$(c)"), QString()}), output);
}

void CommandsTest::queryEndsAToolThatHangs()
{
    const TestDevice device;
    const QString tool = QStringLiteral("/usr/bin/kt-query");
    device.setTool(tool, "trap '' TERM; echo $$; exec sleep 600");
    const int process = Commands::query(tool, {}, 1000).trimmed().toInt();
    QVERIFY(process > 0);
    QCOMPARE(::kill(process, 0), -1);
}

void CommandsTest::queryBoundsAFlood()
{
    const TestDevice device;
    device.setFault(QStringLiteral("kt-network-config"), QStringLiteral("flood"));
    QCOMPARE(Commands::query(QStringLiteral("/usr/bin/kt-network-config"), {}).size(), Commands::outputLimit);
}

QTEST_GUILESS_MAIN(CommandsTest)
#include "commandstest.moc"
