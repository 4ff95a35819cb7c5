// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/keyboardtools.h"

#include "devicetools-system/systembus.h"
#include "devicetools/document.h"
#include "devicetools/tool.h"

#include <QFile>
#include <QProcess>

namespace KeyboardTools {

namespace {

constexpr int limitMs = 6000;
constexpr qint64 listLimit = 1024LL * 1024;
const QString list = QStringLiteral("/etc/keyboard_layouts");

struct Answer
{
    QString problem;
    QString output;
};

Answer runSetxkbmap(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("setxkbmap"), arguments);
    if (!process.waitForFinished(limitMs)) {
        const QString reason = process.errorString();
        process.kill();
        process.waitForFinished(limitMs);
        return {QStringLiteral("setxkbmap: ") + reason, {}};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {QString::fromLocal8Bit(process.readAllStandardError().left(listLimit)), {}};
    return {{}, QString::fromLocal8Bit(process.readAllStandardOutput())};
}

/// From now on, for the keyboards that the X server has.
QString useNow(const XkbLayout &wanted)
{
    return runSetxkbmap(
               {QStringLiteral("-layout"), wanted.layout, QStringLiteral("-variant"), wanted.variant})
        .problem;
}

/// Asking is much quicker than setting.
bool isInUse(const XkbLayout &wanted)
{
    XkbLayout present;
    for (const QString &line : runSetxkbmap({QStringLiteral("-query")}).output.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("layout:")))
            present.layout = line.section(QLatin1Char(':'), 1).trimmed();
        if (line.startsWith(QLatin1String("variant:")))
            present.variant = line.section(QLatin1Char(':'), 1).trimmed();
    }
    return present.layout == wanted.layout && present.variant == wanted.variant;
}

/// From the next start on, and for keyboards that are plugged in later.
QString store(const XkbLayout &wanted)
{
    constexpr bool convert = false; // the console keeps its own
    constexpr bool interactive = false;
    return SystemBus::call(
        {"org.freedesktop.locale1", "/org/freedesktop/locale1", "org.freedesktop.locale1", "SetX11Keyboard"},
        {wanted.layout, QStringLiteral("pc105"), wanted.variant, QString(), convert, interactive});
}

QString storedCode()
{
    const QJsonObject root = Document::read().value_or(QJsonObject());
    return Document::text(root.value(QLatin1String("keyboard settings")).toObject(), "layout");
}

void findServer()
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("DISPLAY", ":0");
    if (!qEnvironmentVariableIsSet("XAUTHORITY"))
        qputenv("XAUTHORITY", "/run/kt964/Xauthority");
}

} // namespace

int setKeyboard(const QStringList &arguments)
{
    const bool isStored = arguments == QStringList(QStringLiteral("--stored"));
    if (!isStored && arguments.size() != 2)
        return Tool::WrongUsage;
    const QString code = isStored ? storedCode() : arguments.at(0);
    if (isStored && code.isEmpty())
        return Tool::Done; // the first start: there is no document yet
    const auto wanted = layoutFor(code, isStored ? listed(code, list) : arguments.at(1));
    if (!wanted)
        return Tool::reject(QStringLiteral("that is no name of a keyboard layout"));
    findServer();
    if (isStored && isInUse(*wanted))
        return Tool::Done;
    const QString now = useNow(*wanted);
    if (!now.isEmpty())
        return Tool::fail(now); // a layout that does not exist is not stored either
    const QString later = isStored ? QString() : store(*wanted);
    return later.isEmpty() ? Tool::Done : Tool::fail(later);
}

std::optional<XkbLayout> layoutFor(const QString &code, const QString &layout)
{
    return XkbLayout::from(layout.isEmpty() ? code.toLower() : layout);
}

QString listed(const QString &code, const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString separator = QStringLiteral(": ");
    for (const QByteArray &line : file.read(listLimit).split('\n')) {
        const QString text = QString::fromUtf8(line).trimmed();
        if (text.section(separator, 0, 0).trimmed() == code)
            return text.section(separator, 1, 1).trimmed();
    }
    return {};
}

} // namespace KeyboardTools
