// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/xdisplay.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

const char *const configuration = R"(
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "DontVTSwitch" "true"
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5-1000
    VertRefresh 5-200
    Modeline "1920x1080" 148.5 1920 2008 2052 2200 1080 1084 1089 1125 +hsync +vsync
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "1920x1080"
    EndSubSection
EndSection
)";

struct Ended
{
    int status;
    QString output;
    QString error;
};

Ended run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()).trimmed(),
            QString::fromUtf8(process.readAllStandardError()).trimmed()};
}

Ended tool(const QString &name, const QString &arguments = QString())
{
    return run(qEnvironmentVariable("KT_BIN_DIR") + '/' + name, arguments.split(' ', Qt::SkipEmptyParts));
}

} // namespace

/// The tools of the display against a real X server, whose driver has monitors but no card.
class XDisplayTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QProcess m_server;

    QVector<Output> connected()
    {
        QVector<Output> outputs = XDisplay::open()->outputs();
        outputs.erase(std::remove_if(outputs.begin(), outputs.end(),
                                     [](const Output &output) { return !output.isConnected; }),
                      outputs.end());
        return outputs;
    }

private slots:
    void initTestCase()
    {
        QFile file(m_folder.filePath("xorg.conf"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(configuration) > 0);
        file.close();
        qunsetenv("XAUTHORITY");
        m_server.start("Xorg",
                       {"-displayfd", "1", "-config", file.fileName(), "-noreset", "-novtswitch", "-sharevts",
                        "-nolisten", "tcp", "-logfile", m_folder.filePath("log")});
        QTRY_VERIFY_WITH_TIMEOUT(m_server.canReadLine(), 30000);
        qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
    }

    void cleanupTestCase()
    {
        m_server.terminate();
        QVERIFY(m_server.waitForFinished());
    }

    void setsEachModeThatItLists()
    {
        QCOMPARE(tool("kt-set-resolution").status, 0);
        QCOMPARE(tool("kt-set-resolution", "-m").output, "1920x1080 60Hz (CEA 16)");
        int own = 0;
        for (const QString group : {"DMT", "CEA"}) {
            const Ended answer = tool("tvservice", "-j -m " + group);
            QCOMPARE(answer.status, 0);
            for (const QJsonValue &value : QJsonDocument::fromJson(answer.output.toUtf8()).array()) {
                const QJsonObject mode = value.toObject();
                if (mode.value("width").toInt() < 1024 || mode.value("rate").toInt() < 60)
                    continue;
                const QString code = QString::number(mode.value("code").toInt());
                own += code.toInt() >= DisplayMode::firstOwnCode;
                const Ended set = tool("kt-set-resolution", group + ' ' + code);
                QVERIFY2(set.status == 0, qPrintable(set.error));
                QCOMPARE(tool("kt-set-resolution", "-m").output,
                         QString("%1x%2 %3Hz (%4 %5)")
                             .arg(mode.value("width").toInt())
                             .arg(mode.value("height").toInt())
                             .arg(mode.value("rate").toInt())
                             .arg(group, code));
            }
        }
        QVERIFY(own > 0); // this server offers modes that no standard has
        QCOMPARE(tool("tvservice", "-a").output, "");
        for (const QString wrong : {"DMT 9999", "CEA 0", "DMT", "VGA 16", "DMT 16;reboot", "-x"})
            QVERIFY2(tool("kt-set-resolution", wrong).status > 0, qPrintable(wrong));
        QCOMPARE(tool("kt-set-resolution", "DMT 9999").error,
                 "kt-set-resolution: the monitor has no such mode");
    }

    void laysOutTwoDisplays()
    {
        QCOMPARE(tool("kt-set-resolution").status, 0);
        QCOMPARE(run("xrandr", {"--addmode", "DUMMY1", "1024x768"}).status, 0);
        QCOMPARE(run("xrandr", {"--output", "DUMMY1", "--mode", "1024x768"}).status, 0); // plugs it in
        const auto display = XDisplay::open();
        const QVector<Output> outputs = connected();
        QCOMPARE(outputs.size(), 2);
        const auto mode
            = DisplayMode::find(DisplayMode::list(outputs.at(0).modes), QString("1280x1024 60Hz"));
        DisplaySettings settings;
        settings.secondaryResolution = "1024x768";
        settings.position = "left";
        QCOMPARE(display->apply(Layout::plan(outputs, mode->mode, settings)), "");
        QCOMPARE(display->current().placements.at(0).position, QPoint(1024, 0));
        QCOMPARE(display->current().screen(), QSize(2304, 1024));
        QVERIFY(connected().at(0).isPrimary);

        settings.isMirrored = true;
        QCOMPARE(display->apply(Layout::plan(connected(), mode->mode, settings)), "");
        QCOMPARE(display->current().screen(), QSize(1280, 1024));

        // What cannot be set leaves the screen as it was.
        DisplayLayout wrong = display->current();
        wrong.placements[0].mode = 0xffffff;
        QVERIFY(!display->apply(wrong).isEmpty());
        QCOMPARE(display->current().screen(), QSize(1280, 1024));
        QCOMPARE(display->current().placements.size(), 2);
    }

    void blanksTheScreen()
    {
        const auto timeout = [] {
            return run("xset", {"q"}).output.section("timeout:", 1).section("cycle", 0, 0).trimmed();
        };
        const auto display = XDisplay::open();
        display->setBlanking(3);
        QCOMPARE(timeout(), "180");
        display->setBlanking(9999);
        QCOMPARE(timeout(), "32767");
        QCOMPARE(tool("set-blanking", "never").status, 0);
        QCOMPARE(timeout(), "0");
    }

    void saysInOneLineThatThereIsNoServer()
    {
        const QByteArray display = qgetenv("DISPLAY");
        qputenv("DISPLAY", ":64999");
        for (const QString name : {"kt-set-resolution", "report-display", "set-blanking"}) {
            const Ended ended = tool(name);
            QCOMPARE(ended.status, 1);
            QCOMPARE(ended.error, name + ": no X server at :64999");
        }
        QCOMPARE(tool("tvservice", "-j -m CEA").status, 1);
        qputenv("DISPLAY", display);
    }
};

QTEST_GUILESS_MAIN(XDisplayTest)
#include "xdisplaytest.moc"
