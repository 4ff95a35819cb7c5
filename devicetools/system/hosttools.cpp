// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/hosttools.h"

#include "devicetools-system/systembus.h"
#include "devicetools/document.h"
#include "devicetools/tool.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <map>

namespace HostTools {

namespace {

constexpr int suffixLength = 6;
constexpr qint64 lineLimit = 256;

SystemBus::Method hostMethod(const char *name)
{
    return {"org.freedesktop.hostname1", "/org/freedesktop/hostname1", "org.freedesktop.hostname1", name};
}

SystemBus::Method loginMethod(const char *name)
{
    return {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager", name};
}

QString firstLine(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readLine(lineLimit)).trimmed()
                                          : QString();
}

/// The hardware address as hexadecimal digits; empty unless the interface is a wired one with a device behind
/// it.
QString hardwareAddress(const QString &interface)
{
    static const QRegularExpression pattern(
        QRegularExpression::anchoredPattern(QStringLiteral("([0-9a-f]{2}:){5}[0-9a-f]{2}")));
    const QString address = firstLine(interface + QStringLiteral("/address"));
    const bool isWired = firstLine(interface + QStringLiteral("/type")) == QLatin1String("1")
        && QFile::exists(interface + QStringLiteral("/device"))
        && !QFile::exists(interface + QStringLiteral("/wireless"))
        && !QFile::exists(interface + QStringLiteral("/phy80211"));
    if (!isWired || !pattern.match(address).hasMatch() || address == QLatin1String("00:00:00:00:00:00"))
        return {};
    return QString(address).remove(QLatin1Char(':'));
}

QString nameInDocument()
{
    const QJsonObject root = Document::read().value_or(QJsonObject());
    return Document::text(root.value(QLatin1String("general settings")).toObject(), "device name");
}

} // namespace

int setHostName(const QStringList &arguments)
{
    const bool isDefault = arguments == QStringList(QStringLiteral("-r"));
    if (!isDefault && arguments != QStringList(QStringLiteral("-j")))
        return Tool::WrongUsage;
    const QString name = isDefault ? defaultHostName() : nameInDocument();
    if (!isDeviceName(name))
        return Tool::fail(QStringLiteral("the document has no device name that a host can have"));
    constexpr bool interactive = false;
    const QString problem = SystemBus::call(hostMethod("SetStaticHostname"), {name, interactive});
    return problem.isEmpty() ? Tool::Done : Tool::fail(problem);
}

int lulling(const QStringList &arguments)
{
    static const std::map<QString, const char *> methods{{QStringLiteral("-s"), "PowerOff"},
                                                         {QStringLiteral("-r"), "Reboot"},
                                                         {QStringLiteral("-S"), "Suspend"}};
    const auto method = methods.find(arguments.value(0));
    if (arguments.size() != 1 || method == methods.end())
        return Tool::WrongUsage;
    constexpr bool interactive = false;
    const QString problem = SystemBus::call(loginMethod(method->second), {interactive});
    return problem.isEmpty() ? Tool::Done : Tool::fail(problem);
}

QString defaultHostName(const QString &interfaces, const QString &machineId)
{
    const QDir folder(interfaces);
    QStringList names = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    names.prepend(QStringLiteral("eth0"));
    QString digits;
    for (const QString &name : qAsConst(names)) {
        digits = hardwareAddress(folder.filePath(name));
        if (!digits.isEmpty())
            break;
    }
    // Machine identifiers are not for others to see.
    if (digits.isEmpty())
        digits = QString::fromLatin1(
            QCryptographicHash::hash(firstLine(machineId).toLatin1() + "kt964", QCryptographicHash::Sha256)
                .toHex());
    return QStringLiteral("kt964-") + digits.right(suffixLength);
}

bool isDeviceName(const QString &name)
{
    static const QRegularExpression pattern(
        QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z0-9]([A-Za-z0-9-]{0,61}[A-Za-z0-9])?")));
    return pattern.match(name).hasMatch();
}

} // namespace HostTools
