// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/resolutioncontainer.h"
#include "testdevice.h"
#include "testtable.h"

#include <QTest>

#include <optional>

namespace {

const QString dmtAnswer = "/lab/answers/tvservice.-j.-m.DMT";
const QString ceaAnswer = "/lab/answers/tvservice.-j.-m.CEA";
const char *const dmt = R"([
    {"code": 82, "width": 1920, "height": 1080, "rate": 60, "scan": "p"},
    {"code": 36, "width": 1280, "height": 1024, "rate": 75},
    {"code": 9, "width": 800, "height": 600, "rate": 60}, {"code": 34, "width": 1280, "height": 1024, "rate": 50},
    {"code": 35, "width": 1280, "height": 1024, "rate": 60}, {"code": 16, "width": 1024, "height": 768, "rate": 60},
    7, {"width": "x"}, {"code": 1, "width": 1e300, "height": 768, "rate": 60}])";
const char *const cea = R"([{"code": 5, "width": 1920, "height": 1080, "rate": 60, "scan": "i"},
    {"code": 16, "width": 1920, "height": 1080, "rate": 60, "scan": "p"}])";

std::vector<Item> read(ResolutionContainer &container)
{
    std::optional<std::vector<Item>> found;
    container.getResolutions(&container, [&found](const std::vector<Item> &modes) { found = modes; });
    const bool replied = QTest::qWaitFor([&found] { return found.has_value(); }, TestGroup::waitMs());
    return replied ? *found : std::vector<Item>();
}

QString listed(ResolutionContainer &container)
{
    QStringList texts;
    for (const Item &mode : read(container))
        texts += mode.getValue(0) + mode.getValue(2).left(1) + mode.getValue(1);
    return texts.join(',');
}
} // namespace

class ResolutionTest : public QObject
{
    Q_OBJECT

private slots:
    void listsWhatCanBeRead_data()
    {
        const TestTable<QByteArray, QString> table("first", "expected");
        const QString full = "Automatic,1024x768 60HzD16,1280x1024 60HzD35,1280x1024 75HzD36,"
                             "1920x1080 60HzD82,1920x1080 60HzC16";
        const QString ceaOnly = "Automatic,1920x1080 60HzC16";
        table.row("a monitor", QByteArray(dmt), full);
        table.row("cut", QByteArray(dmt).left(150),
                  "Automatic,1280x1024 75HzD36,1920x1080 60HzD82,1920x1080 60HzC16");
        table.row("no JSON", "edid \xff\xc3{{ [{]}} 1080", ceaOnly);
        table.row("an object", R"({"code": {}})", ceaOnly);
    }

    void listsWhatCanBeRead()
    {
        QFETCH(QByteArray, first);
        const TestDevice device;
        device.write(dmtAnswer, first);
        device.write(ceaAnswer, cea);
        ResolutionContainer container;
        QTEST(listed(container), "expected");
        // The modes of a monitor that may be gone are no offer.
        device.removeTool("/opt/vc/bin/tvservice");
        QCOMPARE(listed(container), "Automatic");
    }

    void setsAStoredResolution_data()
    {
        const TestTable<int, QString> table("row", "call");
        table.row("Automatic", 0, "kt-set-resolution");
        table.row("1920x1080 60Hz", 4, "kt-set-resolution DMT 82"); // the first of two
        table.row("1280x1024", 2, "kt-set-resolution DMT 35");
        for (const char *unknown : {"800x600", "1920X1080", "1280x1024 50Hz", "1280", "", "x; reboot"})
            table.row(unknown, -1, "");
    }

    void setsAStoredResolution()
    {
        QFETCH(int, row);
        QFETCH(QString, call);
        const QString stored = QString::fromLatin1(QTest::currentDataTag());
        const TestDevice device;
        device.write(dmtAnswer, dmt);
        device.write(ceaAnswer, cea);
        ResolutionContainer console; // it has read no list so far
        console.setResolutionFromConsole(stored);
        const std::vector<Item> modes = read(console);
        QCOMPARE(ResolutionContainer::rowIn(modes, stored), row);
        QCOMPARE(console.isCheckedResolution(stored), row >= 0);
        const auto expected = call.isEmpty() ? QStringList() : QStringList(call);
        TestDevice::waitForTools();
        QCOMPARE(device.calls("kt-set-resolution"), expected);
    }
};

QTEST_GUILESS_MAIN(ResolutionTest)
#include "resolutiontest.moc"
