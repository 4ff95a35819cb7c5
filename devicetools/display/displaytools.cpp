// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/displaytools.h"

#include "devicetools-display/edidsound.h"
#include "devicetools-display/xdisplay.h"
#include "devicetools/checks.h"
#include "devicetools/document.h"
#include "devicetools/tool.h"

#include <QProcess>

#include <limits>

namespace DisplayTools {

namespace {

const QString helpers = QStringLiteral("/usr/libexec/kt964/");
constexpr int stepLimitMs = 8000;

DisplaySettings settings()
{
    return DisplaySettings::from(Document::read().value_or(QJsonObject()));
}

QVector<CodedMode> modesOf(const Output *output)
{
    return output ? DisplayMode::list(output->modes) : QVector<CodedMode>();
}

int show(XDisplay &display, const QVector<Output> &outputs, const std::optional<CodedMode> &mode)
{
    if (!mode)
        return Tool::fail(QStringLiteral("the monitor has no such mode"));
    const QString problem = display.apply(Layout::plan(outputs, mode->mode, settings()));
    return problem.isEmpty() ? Tool::Done : Tool::fail(problem);
}

/// The stored mode, or the preferred one if the monitor does not offer that.
int showStored(XDisplay &display, const QVector<Output> &outputs)
{
    const Output *primary = Layout::primary(outputs);
    if (!primary)
        return Tool::fail(QStringLiteral("no monitor is connected"));
    const QVector<CodedMode> modes = modesOf(primary);
    const auto stored = DisplayMode::find(modes, settings().primaryResolution);
    return show(display, outputs, stored ? stored : DisplayMode::preferred(modes));
}

int printMode(const QVector<Output> &outputs)
{
    const Output *primary = Layout::primary(outputs);
    for (const MonitorMode &mode : primary ? primary->modes : QVector<MonitorMode>()) {
        if (mode.id != primary->currentMode)
            continue;
        const auto coded = DisplayMode::find(modesOf(primary), mode.timing);
        const QString code = coded
            ? QStringLiteral(" (%1 %2)").arg(DisplayMode::name(coded->group)).arg(coded->code)
            : QString();
        Tool::print(DisplayMode::text(mode.timing) + code);
        return Tool::Done;
    }
    return Tool::fail(QStringLiteral("no monitor is in use"));
}

void start(QProcess &process, const QString &program, const QStringList &arguments)
{
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
}

bool hasSucceeded(QProcess &process)
{
    if (!process.waitForFinished(stepLimitMs) && process.error() != QProcess::FailedToStart) {
        Tool::fail(process.program() + QStringLiteral(": ") + process.errorString());
        process.kill();
        process.waitForFinished(stepLimitMs);
        return false;
    }
    return process.error() == QProcess::UnknownError && process.exitCode() == Tool::Done;
}

} // namespace

int setResolution(const QStringList &arguments)
{
    const bool isQuestion = arguments == QStringList(QStringLiteral("-m"));
    const bool isNamed = arguments.size() == 2;
    const auto group = isNamed ? DisplayMode::groupNamed(arguments.at(0)) : std::nullopt;
    const auto code
        = isNamed ? Checks::number(arguments.at(1), 1, std::numeric_limits<int>::max()) : std::nullopt;
    if (!isQuestion && !arguments.isEmpty() && !(group && code))
        return Tool::WrongUsage;
    const auto display = XDisplay::open();
    if (!display)
        return Tool::Failed;
    const QVector<Output> outputs = display->outputs();
    if (isQuestion)
        return printMode(outputs);
    const QVector<CodedMode> modes = modesOf(Layout::primary(outputs));
    return show(*display, outputs,
                isNamed ? DisplayMode::find(modes, *group, *code) : DisplayMode::preferred(modes));
}

int tvService(const QStringList &arguments)
{
    const bool isSound = arguments == QStringList(QStringLiteral("-a"));
    const bool isList = arguments.size() == 3
        && arguments.mid(0, 2) == QStringList{QStringLiteral("-j"), QStringLiteral("-m")};
    const auto group = isList ? DisplayMode::groupNamed(arguments.at(2)) : std::nullopt;
    if (!isSound && !group)
        return Tool::WrongUsage;
    const auto display = XDisplay::open();
    if (!display)
        return Tool::Failed;
    const QVector<Output> outputs = display->outputs();
    if (group) {
        Tool::print(QString::fromUtf8(DisplayMode::toJson(modesOf(Layout::primary(outputs)), *group)));
        return Tool::Done;
    }
    for (const Output &output : outputs) {
        for (const QString &format : output.isConnected ? EdidSound::formats(output.edid) : QStringList())
            Tool::print(format);
    }
    return Tool::Done;
}

int reportDisplay(const QStringList &arguments)
{
    if (!arguments.isEmpty())
        return Tool::WrongUsage;
    const auto display = XDisplay::open();
    if (!display)
        return Tool::Failed;
    const QVector<Output> outputs = display->outputs();
    const int status = showStored(*display, outputs);
    if (!Layout::primary(outputs))
        return status;
    QProcess message;
    start(message, helpers + QStringLiteral("kt-message"),
          {QStringLiteral("display"),
           Layout::secondary(outputs) ? QStringLiteral("add") : QStringLiteral("remove")});
    return hasSucceeded(message) ? status : Tool::Failed;
}

int setBlanking(const QStringList &arguments)
{
    const bool isNever = arguments == QStringList(QStringLiteral("never"));
    if (!arguments.isEmpty() && !isNever)
        return Tool::WrongUsage;
    const auto display = XDisplay::open();
    if (!display)
        return Tool::Failed;
    display->setBlanking(isNever ? 0 : settings().screenSaverMinutes);
    return Tool::Done;
}

int restoreDisplay(const QStringList &arguments)
{
    if (!arguments.isEmpty())
        return Tool::WrongUsage;
    QProcess keyboard;
    start(keyboard, QStringLiteral("/usr/bin/kt-set-keyboard"), {QStringLiteral("--stored")});
    if (const auto display = XDisplay::open()) {
        showStored(*display, display->outputs());
        display->setBlanking(settings().screenSaverMinutes);
    }
    hasSucceeded(keyboard);
    return Tool::Done;
}

} // namespace DisplayTools
