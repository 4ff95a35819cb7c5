// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/commands.h"
#include "device/paths.h"
#include "device/toolrun.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

/// Where things stand on the device, and how its programs are run.
class CommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void putsTheRootInFront()
    {
        const TestDevice device;
        QVERIFY(device.isValid());
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
};

QTEST_GUILESS_MAIN(CommandsTest)
#include "commandstest.moc"
