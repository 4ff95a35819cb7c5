// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/resolutioncontainer.h"

#include "device/devicetools.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <utility>

Q_LOGGING_CATEGORY(lcResolution, "kt.device.resolution")

namespace {

constexpr int smallestWidth = 1024;
constexpr int slowestRate = 60;
/// Monitors have some dozens of modes; what has more is no list of a monitor.
constexpr std::size_t modeLimit = 1000;
constexpr int damagedLimit = 256 * 1024;
constexpr int longestMode = 200;

const QString cea = QStringLiteral("CEA");

/// The objects of a JSON array. Of a list that is cut or damaged, those that are whole.
QList<QJsonObject> objectsIn(const QByteArray &output)
{
    QList<QJsonObject> objects;
    const QJsonDocument document = QJsonDocument::fromJson(output);
    if (document.isArray()) {
        for (const QJsonValue &value : document.array())
            objects += value.toObject();
        return objects;
    }
    qCWarning(lcResolution) << "not a list of modes:" << output.left(80);
    static const QRegularExpression flatObject(QStringLiteral("\\{[^{}]*\\}"));
    auto match = flatObject.globalMatch(QString::fromUtf8(output.left(damagedLimit)));
    while (match.hasNext())
        objects += QJsonDocument::fromJson(match.next().captured().toUtf8()).object();
    return objects;
}

/// Width, height and rate of a display text; "Automatic" has none, and so comes first.
std::array<int, 3> numbersOf(const QString &text)
{
    const QString size = text.section(QLatin1Char(' '), 0, 0);
    QString rate = text.section(QLatin1Char(' '), 1);
    rate.remove(QLatin1String("Hz"));
    return {size.section(QLatin1Char('x'), 0, 0).toInt(), size.section(QLatin1Char('x'), 1).toInt(),
            rate.toInt()};
}

int number(const QJsonObject &mode, const char *key)
{
    return mode.value(QLatin1String(key)).toInt();
}

} // namespace

ResolutionContainer::ResolutionContainer(QObject *parent)
    : QObject(parent)
{ }

void ResolutionContainer::getResolutions(QObject *context, const ModesDone &done)
{
    m_waiting.push_back({context, done});
    if (m_waiting.size() > 1)
        return;
    m_readModes.assign(1, Item(automatic));
    readGroups({QStringLiteral("DMT"), cea});
}

void ResolutionContainer::readGroups(const QStringList &groups)
{
    if (groups.isEmpty())
        return finishReading();
    ToolRun::start(DeviceTools::displayModes(groups.first()), this, [this, groups](const ToolResult &result) {
        addModes(result.output, groups.first());
        // Firmware that hangs once would keep us as long for every group.
        readGroups(result.ended() ? groups.mid(1) : QStringList());
    });
}

void ResolutionContainer::addModes(const QByteArray &output, const QString &group)
{
    for (const QJsonObject &object : objectsIn(output)) {
        const int width = number(object, "width");
        const int height = number(object, "height");
        const int rate = number(object, "rate");
        const bool interlaced
            = group == cea && object.value(QLatin1String("scan")).toString() != QLatin1String("p");
        if (width < smallestWidth || height < 1 || rate < slowestRate || interlaced)
            continue;
        if (m_readModes.size() > modeLimit)
            return;
        m_readModes.emplace_back(QStringLiteral("%1x%2 %3Hz").arg(width).arg(height).arg(rate));
        m_readModes.back().setValue(Code, QString::number(number(object, "code")));
        m_readModes.back().setValue(Group, group);
    }
}

void ResolutionContainer::finishReading()
{
    sort(m_readModes);
    m_modes = m_readModes;
    qCInfo(lcResolution) << m_modes.size() - 1 << "modes";
    const std::vector<Waiter> ready = std::exchange(m_waiting, {});
    for (const Waiter &waiter : ready) {
        if (waiter.context)
            waiter.done(m_modes);
    }
}

void ResolutionContainer::sort(std::vector<Item> &modes) const
{
    const auto isPreferred = [this](const Item &mode) {
        return mode.getValue(Group) == m_preferredGroup && mode.getValue(Code) == m_preferredCode;
    };
    std::stable_partition(modes.begin(), modes.end(), isPreferred);
    std::stable_sort(modes.begin(), modes.end(), compare_name);
}

void ResolutionContainer::prefer(const QString &group, const QString &code)
{
    m_preferredGroup = group;
    m_preferredCode = code;
    sort(m_modes);
}

const std::vector<Item> &ResolutionContainer::resolutions() const
{
    return m_modes;
}

bool ResolutionContainer::isCheckedResolution(const QString &stored) const
{
    return rowIn(m_modes, stored) >= 0;
}

void ResolutionContainer::getActualMode(QObject *context, const ModeDone &done)
{
    ToolRun::start(DeviceTools::currentMode(), context, [done](const ToolResult &result) {
        done(QString::fromUtf8(result.output.left(longestMode)).trimmed());
    });
}

void ResolutionContainer::setResolutionFromConsole(const QString &stored)
{
    if (stored == automatic)
        return ToolRun::start(DeviceTools::setAutomaticMode()); // whatever monitor there is
    getResolutions(this, [this, stored](const std::vector<Item> &modes) {
        if (isCheckedResolution(stored))
            ToolRun::start(*callFor(modes, stored));
        else
            qCWarning(lcResolution) << "the monitor has no mode" << stored;
    });
}

bool ResolutionContainer::compare_name(const Item &left, const Item &right)
{
    return numbersOf(left.getValue(Text)) < numbersOf(right.getValue(Text));
}

int ResolutionContainer::rowIn(const std::vector<Item> &modes, const QString &stored)
{
    for (const bool sizeAlone : {false, true}) {
        const auto found = std::find_if(modes.begin(), modes.end(), [&](const Item &mode) {
            const QString text = mode.getValue(Text);
            return (sizeAlone ? text.section(QLatin1Char(' '), 0, 0) : text) == stored;
        });
        if (found != modes.end())
            return static_cast<int>(found - modes.begin());
    }
    return -1;
}

std::optional<ToolCall> ResolutionContainer::callFor(const std::vector<Item> &modes, const QString &stored)
{
    if (stored == automatic) // needs no monitor to be asked
        return DeviceTools::setAutomaticMode();
    const int row = rowIn(modes, stored);
    if (row < 0)
        return std::nullopt;
    const Item &mode = modes.at(static_cast<std::size_t>(row));
    return DeviceTools::setMode(mode.getValue(Group), mode.getValue(Code));
}
