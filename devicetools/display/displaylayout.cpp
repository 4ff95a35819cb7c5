// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/displaylayout.h"

#include <QJsonObject>
#include <QRect>

#include <algorithm>

namespace {

constexpr int defaultTimeout = 20;
const QString automatic = QStringLiteral("Automatic");

QString text(const QJsonObject &object, const char *key, const QString &fallback)
{
    return object.value(QLatin1String(key)).toString(fallback);
}

QSize sizeOf(const MonitorMode &mode)
{
    return {mode.timing.width, mode.timing.height};
}

std::optional<MonitorMode> modeOfSize(const QVector<MonitorMode> &modes, const QSize &size)
{
    QVector<MonitorMode> fitting;
    std::copy_if(modes.begin(), modes.end(), std::back_inserter(fitting),
                 [&](const MonitorMode &mode) { return sizeOf(mode) == size && !mode.timing.interlaced; });
    const auto best = DisplayMode::preferred(DisplayMode::list(fitting));
    return best ? std::make_optional(best->mode) : std::nullopt;
}

/// The second display's mode by the settings; its preferred one if it does not offer the stored one.
std::optional<MonitorMode> secondaryMode(const Output &output, const QSize &primarySize,
                                         const DisplaySettings &settings)
{
    if (settings.isMirrored) {
        if (const auto same = modeOfSize(output.modes, primarySize))
            return same;
    }
    const QVector<CodedMode> modes = DisplayMode::list(output.modes);
    auto wanted = DisplayMode::find(modes, settings.secondaryResolution);
    if (!wanted)
        wanted = DisplayMode::preferred(modes);
    return wanted ? std::make_optional(wanted->mode) : std::nullopt;
}

/// Moves the one that comes second in reading order to the right of the other or below it.
void arrange(Placement &first, Placement &second, const QString &position)
{
    if (position == QLatin1String("left"))
        first.position.setX(second.shown.width());
    else if (position == QLatin1String("top"))
        first.position.setY(second.shown.height());
    else if (position == QLatin1String("bottom"))
        second.position.setY(first.shown.height());
    else
        second.position.setX(first.shown.width());
}

} // namespace

DisplaySettings DisplaySettings::from(const QJsonObject &root)
{
    const QJsonObject display = root.value(QLatin1String("display settings")).toObject();
    const QJsonObject primary = display.value(QLatin1String("primary")).toObject();
    const QJsonObject secondary = display.value(QLatin1String("secondary")).toObject();
    DisplaySettings settings;
    settings.primaryResolution = text(primary, "resolution", automatic);
    settings.secondaryResolution = text(secondary, "resolution", automatic);
    settings.position = text(secondary, "position", QStringLiteral("right"));
    settings.isMirrored = text(display, "multi monitor mode", QString()) == QLatin1String("mirror");
    const QJsonValue timeout = display.value(QLatin1String("screen saver timeout"));
    settings.screenSaverMinutes = qMax(0, timeout.toInt(defaultTimeout));
    return settings;
}

QSize DisplayLayout::screen() const
{
    QRect all;
    for (const Placement &placement : placements)
        all |= QRect(placement.position, placement.shown);
    return all.size();
}

bool DisplayLayout::isScaled() const
{
    return std::any_of(placements.begin(), placements.end(),
                       [](const Placement &placement) { return placement.shown != placement.picture; });
}

DisplayLayout DisplayLayout::unscaled() const
{
    DisplayLayout layout = *this;
    for (Placement &placement : layout.placements)
        placement.shown = placement.picture;
    return layout;
}

namespace Layout {

const Output *primary(const QVector<Output> &outputs)
{
    const auto isUsable = [](const Output &output) {
        return output.isConnected && !output.modes.isEmpty();
    };
    auto found = std::find_if(outputs.begin(), outputs.end(),
                              [&](const Output &output) { return output.isPrimary && isUsable(output); });
    if (found == outputs.end())
        found = std::find_if(outputs.begin(), outputs.end(), isUsable);
    return found == outputs.end() ? nullptr : &*found;
}

const Output *secondary(const QVector<Output> &outputs)
{
    const Output *first = primary(outputs);
    const auto found = std::find_if(outputs.begin(), outputs.end(), [first](const Output &output) {
        return &output != first && output.isConnected && !output.modes.isEmpty();
    });
    return found == outputs.end() ? nullptr : &*found;
}

DisplayLayout plan(const QVector<Output> &outputs, const MonitorMode &mode, const DisplaySettings &settings)
{
    const Output *first = primary(outputs);
    if (!first)
        return {};
    const QSize size = sizeOf(mode);
    DisplayLayout layout;
    layout.placements += {first->id, mode.id, {0, 0}, size, size};
    const Output *second = secondary(outputs);
    const auto other = second ? secondaryMode(*second, size, settings) : std::nullopt;
    if (!other)
        return layout;
    const QSize otherSize = sizeOf(*other);
    layout.placements += {second->id, other->id, {0, 0}, otherSize, settings.isMirrored ? size : otherSize};
    if (!settings.isMirrored)
        arrange(layout.placements[0], layout.placements[1], settings.position);
    return layout;
}

} // namespace Layout
