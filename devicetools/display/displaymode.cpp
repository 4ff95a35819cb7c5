// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/displaymode.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <tuple>

namespace DisplayMode {

namespace {

/// CTA-861 gives one code to 60 and 59.94 Hz, which are 1 in 1000 apart; monitors round their clocks to 10
/// kHz.
constexpr int clockTolerance = 400;
constexpr int slowestRate = 60;
constexpr quint32 ownCodes = 900000000;

bool fits(const ModeTiming &standard, const ModeTiming &timing)
{
    return standard.width == timing.width && standard.height == timing.height
        && standard.horizontalTotal == timing.horizontalTotal
        && standard.verticalTotal == timing.verticalTotal && standard.interlaced == timing.interlaced
        && std::abs(standard.clockKhz - timing.clockKhz) <= standard.clockKhz / clockTolerance;
}

/// Two DMT modes differ in nothing but 1 in 1000 of the clock, so the nearest one counts.
const ModeTable::StandardMode *nearest(ModeGroup group, const ModeTiming &timing)
{
    const ModeTable::StandardMode *result = nullptr;
    const auto distance = [&timing](const ModeTable::StandardMode &standard) {
        return std::abs(standard.timing.clockKhz - timing.clockKhz);
    };
    for (const ModeTable::StandardMode &standard : ModeTable::of(group)) {
        if (fits(standard.timing, timing) && (!result || distance(standard) < distance(*result)))
            result = &standard;
    }
    return result;
}

/// FNV-1a over the timing: the same on every machine, and in every version of this program.
int ownCode(const ModeTiming &timing)
{
    quint32 hash = 2166136261U;
    for (const int value : {timing.width, timing.height, timing.horizontalTotal, timing.verticalTotal,
                            timing.clockKhz, timing.interlaced ? 1 : 0}) {
        for (int shift = 0; shift < 32; shift += 8)
            hash = (hash ^ ((static_cast<quint32>(value) >> shift) & 0xff)) * 16777619U;
    }
    return firstOwnCode + static_cast<int>(hash % ownCodes);
}

/// How far a mode is from the standard's of its code, in kHz.
int deviation(const CodedMode &mode)
{
    const ModeTable::StandardMode *standard = nearest(mode.group, mode.mode.timing);
    return standard ? std::abs(standard->timing.clockKhz - mode.mode.timing.clockKhz) : 0;
}

CodedMode coded(const MonitorMode &mode)
{
    for (const ModeGroup group : {ModeGroup::Cea, ModeGroup::Dmt}) {
        if (const ModeTable::StandardMode *standard = nearest(group, mode.timing))
            return {group, standard->code, mode};
    }
    return {mode.timing.interlaced ? ModeGroup::Cea : ModeGroup::Dmt, ownCode(mode.timing), mode};
}

auto place(const CodedMode &mode)
{
    return std::make_tuple(mode.group, mode.code, !mode.mode.isPreferred, deviation(mode));
}

bool sameCode(const CodedMode &left, const CodedMode &right)
{
    return left.group == right.group && left.code == right.code;
}

auto size(const CodedMode &mode)
{
    const ModeTiming &timing = mode.mode.timing;
    return std::make_tuple(!timing.interlaced, qint64(timing.width) * timing.height, rate(timing));
}

QString aspect(const ModeTiming &timing)
{
    const int divisor = qMax(1, std::gcd(timing.width, timing.height));
    const int width = timing.width / divisor;
    return width == 8 ? QStringLiteral("16:10")
                      : QStringLiteral("%1:%2").arg(width).arg(timing.height / divisor);
}

template <typename Condition>
std::optional<CodedMode> firstOf(const QVector<CodedMode> &modes, const Condition &condition)
{
    const auto found = std::find_if(modes.begin(), modes.end(), condition);
    return found == modes.end() ? std::nullopt : std::make_optional(*found);
}

} // namespace

int rate(const ModeTiming &timing)
{
    const qint64 total = qint64(timing.horizontalTotal) * timing.verticalTotal;
    const qint64 perSecond = qint64(timing.clockKhz) * 1000 * (timing.interlaced ? 2 : 1);
    return total > 0 ? static_cast<int>((perSecond + total / 2) / total) : 0;
}

QString text(const ModeTiming &timing)
{
    return QStringLiteral("%1x%2 %3Hz").arg(timing.width).arg(timing.height).arg(rate(timing));
}

QString name(ModeGroup group)
{
    return group == ModeGroup::Cea ? QStringLiteral("CEA") : QStringLiteral("DMT");
}

std::optional<ModeGroup> groupNamed(const QString &name)
{
    for (const ModeGroup group : {ModeGroup::Dmt, ModeGroup::Cea}) {
        if (DisplayMode::name(group) == name)
            return group;
    }
    return std::nullopt;
}

QVector<CodedMode> list(const QVector<MonitorMode> &modes)
{
    QVector<CodedMode> result;
    for (const MonitorMode &mode : modes)
        result += coded(mode);
    std::sort(result.begin(), result.end(),
              [](const CodedMode &left, const CodedMode &right) { return place(left) < place(right); });
    result.erase(std::unique(result.begin(), result.end(), sameCode), result.end());
    return result;
}

QByteArray toJson(const QVector<CodedMode> &modes, ModeGroup group)
{
    QJsonArray array;
    for (const CodedMode &mode : modes) {
        const ModeTiming &timing = mode.mode.timing;
        if (mode.group != group)
            continue;
        array += QJsonObject{
            {QStringLiteral("code"), mode.code},
            {QStringLiteral("width"), timing.width},
            {QStringLiteral("height"), timing.height},
            {QStringLiteral("rate"), rate(timing)},
            {QStringLiteral("aspect_ratio"), aspect(timing)},
            {QStringLiteral("scan"), timing.interlaced ? QStringLiteral("i") : QStringLiteral("p")}};
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<CodedMode> find(const QVector<CodedMode> &modes, ModeGroup group, int code)
{
    return firstOf(modes, [=](const CodedMode &mode) { return mode.group == group && mode.code == code; });
}

std::optional<CodedMode> find(const QVector<CodedMode> &modes, const ModeTiming &timing)
{
    const CodedMode wanted = coded({0, timing, false});
    return find(modes, wanted.group, wanted.code);
}

std::optional<CodedMode> find(const QVector<CodedMode> &modes, const QString &stored)
{
    const auto exact = firstOf(modes, [&](const CodedMode &mode) {
        return !mode.mode.timing.interlaced && text(mode.mode.timing) == stored;
    });
    if (exact)
        return exact;
    std::optional<CodedMode> slowest;
    for (const CodedMode &mode : modes) {
        const ModeTiming &timing = mode.mode.timing;
        const bool offered = rate(timing) >= slowestRate && !timing.interlaced
            && stored == QStringLiteral("%1x%2").arg(timing.width).arg(timing.height);
        if (offered && (!slowest || rate(timing) < rate(slowest->mode.timing)))
            slowest = mode;
    }
    return slowest;
}

std::optional<CodedMode> preferred(const QVector<CodedMode> &modes)
{
    if (const auto wanted = firstOf(modes, [](const CodedMode &mode) { return mode.mode.isPreferred; }))
        return wanted;
    const auto best
        = std::max_element(modes.begin(), modes.end(), [](const CodedMode &left, const CodedMode &right) {
              return size(left) < size(right);
          });
    return best == modes.end() ? std::nullopt : std::make_optional(*best);
}

} // namespace DisplayMode
