// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/resolutioncontainer.h"
#include "testdevice.h"

#include <QTest>

namespace {

const QString dmtAnswer = QStringLiteral("/lab/answers/tvservice.-j.-m.DMT");
const QString ceaAnswer = QStringLiteral("/lab/answers/tvservice.-j.-m.CEA");
const char *const dmt = R"([
    {"code": 82, "width": 1920, "height": 1080, "rate": 60, "scan": "p"},
    {"code": 36, "width": 1280, "height": 1024, "rate": 75},
    {"code": 9, "width": 800, "height": 600, "rate": 60}, {"code": 34, "width": 1280, "height": 1024, "rate": 50},
    {"code": 35, "width": 1280, "height": 1024, "rate": 60}, {"code": 16, "width": 1024, "height": 768, "rate": 60},
    7, {"width": "x"}, {"code": 1, "width": 1e300, "height": 768, "rate": 60}])";
const char *const cea = R"([{"code": 5, "width": 1920, "height": 1080, "rate": 60, "scan": "i"},
    {"code": 16, "width": 1920, "height": 1080, "rate": 60, "scan": "p"}])";

QString listed(ResolutionContainer &container)
{
    QStringList texts;
    for (const Item &mode : container.getResolutions())
        texts += mode.getValue(0) + mode.getValue(2).left(1) + mode.getValue(1);
    return texts.join(QLatin1Char(','));
}

} // namespace

class ResolutionTest : public QObject
{
    Q_OBJECT

private slots:
    void listsWhatCanBeRead_data();
    void listsWhatCanBeRead();
    void setsAStoredResolution_data();
    void setsAStoredResolution();
    void waitsOnceOnly();
};

void ResolutionTest::listsWhatCanBeRead_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QString>("expected");
    const QString full = QStringLiteral("Automatic,1024x768 60HzD16,1280x1024 60HzD35,1280x1024 75HzD36,"
                                        "1920x1080 60HzD82,1920x1080 60HzC16");
    const QString ceaOnly = QStringLiteral("Automatic,1920x1080 60HzC16");
    QTest::newRow("a monitor") << QByteArray(dmt) << full;
    QTest::newRow("cut") << QByteArray(dmt).left(150)
                         << QStringLiteral("Automatic,1280x1024 75HzD36,1920x1080 60HzD82,1920x1080 60HzC16");
    QTest::newRow("no JSON") << QByteArray("edid \xff\xc3{{ [{]}} 1080") << ceaOnly;
    QTest::newRow("an object") << QByteArray(R"({"code": {}})") << ceaOnly;
}

void ResolutionTest::listsWhatCanBeRead()
{
    QFETCH(QByteArray, first);
    const TestDevice device;
    device.write(dmtAnswer, first);
    device.write(ceaAnswer, cea);
    ResolutionContainer container;
    QTEST(listed(container), "expected");
    device.removeTool(QStringLiteral("/opt/vc/bin/tvservice"));
    QCOMPARE(listed(container), QStringLiteral("Automatic"));
}

void ResolutionTest::setsAStoredResolution_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("call");
    QTest::newRow("Automatic") << 0 << "kt-set-resolution";
    QTest::newRow("1920x1080 60Hz") << 4 << "kt-set-resolution DMT 82"; // the first of two
    QTest::newRow("1280x1024 75Hz") << 3 << "kt-set-resolution DMT 36";
    QTest::newRow("1280x1024") << 2 << "kt-set-resolution DMT 35";
    for (const char *unknown : {"800x600", "1920X1080", "1280x1024 50Hz", "1280", "", "x; reboot"})
        QTest::newRow(unknown) << -1 << "";
}

void ResolutionTest::setsAStoredResolution()
{
    QFETCH(int, row);
    QFETCH(QString, call);
    const QString stored = QString::fromLatin1(QTest::currentDataTag());
    const TestDevice device;
    device.write(dmtAnswer, dmt);
    device.write(ceaAnswer, cea);
    ResolutionContainer console; // it has read no list so far
    console.setResolutionFromConsole(stored);
    QCOMPARE(device.calls(QStringLiteral("kt-set-resolution")).join(QLatin1Char('|')), call);
    QCOMPARE(console.isCheckedResolution(stored), row >= 0);

    ResolutionContainer container;
    device.forgetCalls();
    container.setResolution(stored);
    const bool text = row == 0 || stored.endsWith(QLatin1String("Hz"));
    QCOMPARE(device.calls(QStringLiteral("kt-set-resolution")).join(QLatin1Char('|')),
             text ? call : QString());
    QCOMPARE(container.getCurrentPrimaryResolution(stored), row);
}

void ResolutionTest::waitsOnceOnly()
{
    const TestDevice device;
    device.write(dmtAnswer, dmt);
    device.write(ceaAnswer, cea);
    ResolutionContainer container(2000);
    QVERIFY(container.isCheckedResolution(QStringLiteral("1280x1024")));
    QVERIFY(!container.getActualMode().isEmpty());
    device.forgetCalls();
    device.setFault(QStringLiteral("tvservice"), QStringLiteral("hang"));
    // The modes of a monitor that may be gone are no offer.
    QVERIFY(!container.isCheckedResolution(QStringLiteral("1280x1024")));
    QVERIFY(container.getActualMode().isEmpty());
    QCOMPARE(device.calls(QStringLiteral("tvservice")), QStringList(QStringLiteral("tvservice -j -m DMT")));
    QVERIFY(device.calls(QStringLiteral("kt-set-resolution")).isEmpty());
    device.setFault(QStringLiteral("tvservice"), QStringLiteral("none"));
    QVERIFY(container.isCheckedResolution(QStringLiteral("1280x1024")));
    QVERIFY(!container.getActualMode().isEmpty());
}

QTEST_GUILESS_MAIN(ResolutionTest)
#include "resolutiontest.moc"
