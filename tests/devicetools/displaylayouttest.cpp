// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/displaylayout.h"
#include "devicetools-display/edidsound.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>
#include <QTest>

#include <numeric>

namespace {

const ModeTiming fullHd{1920, 1080, 2200, 1125, 148500, false};
const ModeTiming fullHdInterlaced{1920, 1080, 2200, 1125, 74250, true};
const ModeTiming xga{1024, 768, 1344, 806, 65000, false};
const ModeTiming panel{1366, 768, 1526, 793, 72600, false};
const ModeTiming panelAt40{1366, 768, 1526, 793, 48400, false};

ModeTiming withClock(ModeTiming timing, int khz)
{
    timing.clockKhz = khz;
    return timing;
}

QString coded(const std::optional<CodedMode> &mode)
{
    return mode ? QStringLiteral("%1 %2").arg(DisplayMode::name(mode->group)).arg(mode->code) : QString();
}

Output output(quint32 id, const QVector<ModeTiming> &timings, bool isPrimary = false)
{
    Output result;
    result.id = id;
    result.isConnected = !timings.isEmpty();
    result.isPrimary = isPrimary;
    for (const ModeTiming &timing : timings)
        result.modes += MonitorMode{id * 100 + static_cast<quint32>(result.modes.size()), timing,
                                    result.modes.isEmpty()};
    return result;
}

/// A monitor's description with one block of CTA-861 that holds `blocks`.
QByteArray edid(const QByteArray &blocks, bool basicAudio)
{
    QByteArray cta
        = QByteArray::fromHex("0203") + char(4 + blocks.size()) + char(basicAudio ? 0x40 : 0) + blocks;
    cta = cta.left(127) + QByteArray(qMax(0, 127 - cta.size()), '\0');
    cta += static_cast<char>(-std::accumulate(cta.begin(), cta.end(), 0));
    return QByteArray(128, '\0') + cta;
}

} // namespace

class DisplayLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void everyRealModeHasOneCode()
    {
        const auto code = [](const ModeTiming &timing) {
            return coded(DisplayMode::list({{1, timing, false}}).value(0));
        };
        QCOMPARE(code(fullHd), "CEA 16"); // also DMT 82
        QCOMPARE(code(withClock(fullHd, 148350)), "CEA 16");
        QCOMPARE(code(fullHdInterlaced), "CEA 5");
        QCOMPARE(code(xga), "DMT 16");
        QCOMPARE(code({4096, 2160, 4176, 2222, 556190, false}), "DMT 88"); // 87 is 0.1 % away
        // In no standard: always the same code, and an interlaced one marked as such.
        const QString own = code(panel);
        QVERIFY2(own.startsWith("DMT ") && own.mid(4).toInt() >= DisplayMode::firstOwnCode, qPrintable(own));
        QCOMPARE(code(panel), own);
        QVERIFY(code(panelAt40) != own);
        QVERIFY(code({1024, 768, 1264, 817, 44900, true}).startsWith("CEA "));

        const auto modes = DisplayMode::list({{1, withClock(fullHd, 148350), false},
                                              {2, fullHd, false},
                                              {3, panel, true},
                                              {4, panelAt40, false},
                                              {5, fullHdInterlaced, false},
                                              {6, {}, false}});
        QCOMPARE(modes.size(), 5); // 59.94 and 60 Hz are one
        QCOMPARE(DisplayMode::find(modes, ModeGroup::Cea, 16)->mode.id, 2U);
        QCOMPARE(DisplayMode::find(modes, withClock(fullHd, 148350))->mode.id, 2U);
        QCOMPARE(DisplayMode::preferred(modes)->mode.id, 3U);
        QCOMPARE(coded(DisplayMode::find(modes, QString("1920x1080 60Hz"))),
                 "CEA 16");                                                  // and not the interlaced one
        QCOMPARE(coded(DisplayMode::find(modes, QString("1366x768"))), own); // and not the one of 40 Hz
        QVERIFY(!DisplayMode::find(modes, QString("1024x768 60Hz")));
        const QJsonArray json = QJsonDocument::fromJson(DisplayMode::toJson(modes, ModeGroup::Cea)).array();
        QCOMPARE(json.size(), 2);
        QCOMPARE(json.at(0).toObject().value("scan").toString(), "i");
        QCOMPARE(json.at(0).toObject().value("rate").toInt(), 60);
        QCOMPARE(json.at(1).toObject().value("scan").toString(), "p");
    }

    void arrangesTheSecondDisplay_data()
    {
        QTest::addColumn<QByteArray>("display");
        QTest::addColumn<QRect>("first");
        QTest::addColumn<QRect>("second");
        QTest::addColumn<QSize>("screen");
        const QRect big(0, 0, 1920, 1080);
        const QRect small(0, 0, 1024, 768);
        QTest::newRow("nothing") << QByteArray("{}") << big << small.translated(1920, 0) << QSize(2944, 1080);
        QTest::newRow("left") << QByteArray(R"({"secondary": {"position": "left"}})")
                              << big.translated(1024, 0) << small << QSize(2944, 1080);
        QTest::newRow("top") << QByteArray(R"({"secondary": {"position": "top"}})") << big.translated(0, 768)
                             << small << QSize(1920, 1848);
        QTest::newRow("bottom, and a mode of its own")
            << QByteArray(R"({"secondary": {"position": "bottom", "resolution": "1366x768 60Hz"}})") << big
            << QRect(0, 1080, 1366, 768) << QSize(1920, 1848);
        QTest::newRow("mirrored, scaled")
            << QByteArray(R"({"multi monitor mode": "mirror"})") << big << big << QSize(1920, 1080);
        QTest::newRow("nonsense") << QByteArray(
            R"({"secondary": 7, "multi monitor mode": [], "primary": null})")
                                  << big << small.translated(1920, 0) << QSize(2944, 1080);
    }

    void arrangesTheSecondDisplay()
    {
        QFETCH(QByteArray, display);
        QFETCH(QRect, first);
        QFETCH(QRect, second);
        QFETCH(QSize, screen);
        const QJsonObject root{{"display settings", QJsonDocument::fromJson(display).object()}};
        const QVector<Output> outputs{output(1, {}, true), output(2, {fullHd}), output(3, {xga, panel}),
                                      output(4, {xga})};
        const DisplayLayout layout
            = Layout::plan(outputs, outputs.at(1).modes.first(), DisplaySettings::from(root));
        QCOMPARE(layout.placements.size(), 2); // the primary's monitor is gone, and a third one stays dark
        QCOMPARE(layout.placements.at(0).output, 2U);
        QCOMPARE(QRect(layout.placements.at(0).position, layout.placements.at(0).shown), first);
        QCOMPARE(QRect(layout.placements.at(1).position, layout.placements.at(1).shown), second);
        QCOMPARE(layout.screen(), screen);
    }

    void aMirrorTakesTheSameSizeIfItCan()
    {
        DisplaySettings settings;
        settings.isMirrored = true;
        const QVector<Output> outputs{output(1, {xga, fullHd}), output(2, {panel, fullHdInterlaced, xga})};
        const DisplayLayout layout = Layout::plan(outputs, outputs.at(0).modes.first(), settings);
        QCOMPARE(layout.placements.at(1).mode, 202U);
        QVERIFY(!layout.isScaled());
        QVERIFY(Layout::plan({output(1, {})}, {}, settings).placements.isEmpty());
    }

    void readsTheMonitorsSound()
    {
        const QByteArray pcm = QByteArray::fromHex("23"
                                                   "090707"); // two channels, up to 48 kHz, up to 24 bits
        QCOMPARE(EdidSound::formats(edid(pcm, true)),
                 QStringList(
                     "     PCM supported: Max channels: 2, Max samplerate:  48kHz, Max samplesize 24 bits."));
        QCOMPARE(EdidSound::formats(edid(QByteArray::fromHex("4110"), true)).size(),
                 1); // no more than that it has sound
        QVERIFY(EdidSound::formats(edid(QByteArray::fromHex("4110"), false)).isEmpty());
        // Damaged ones: no block, half a block, a wrong sum, lengths beyond the end.
        QByteArray wrongSum = edid(pcm, true);
        wrongSum[200] = 1;
        for (const QByteArray &bytes : {QByteArray(), QByteArray(128, 0), edid(pcm, true).left(200), wrongSum,
                                        edid(QByteArray::fromHex("3f090707"), false)})
            QVERIFY(EdidSound::formats(bytes).isEmpty());
    }
};

QTEST_GUILESS_MAIN(DisplayLayoutTest)
#include "displaylayouttest.moc"
