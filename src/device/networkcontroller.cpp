// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/networkcontroller.h"

#include "device/commands.h"
#include "device/devicetools.h"
#include "device/paths.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QNetworkInterface>

#include <algorithm>

Q_LOGGING_CATEGORY(lcNetwork, "kt.device.network")

namespace {

const QString configTool = QStringLiteral("/usr/bin/kt-network-config");
/// The tool expects this word in every call.
const QString fixedWord = QStringLiteral("A");

QJsonObject values(const QByteArray &output)
{
    return QJsonDocument::fromJson(output).object().value(QLatin1String("values")).toObject();
}

QString flag(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

QString encryptionOf(const QString &pairwise)
{
    if (pairwise == QLatin1String("TKIP"))
        return QStringLiteral("tkip");
    if (pairwise == QLatin1String("CCMP"))
        return QStringLiteral("ccmp");
    return pairwise == QLatin1String("TKIP CCMP") ? QStringLiteral("auto") : QString();
}

QString securityOf(const QString &authentication)
{
    if (authentication == QLatin1String("NONE"))
        return QStringLiteral("open");
    if (authentication == QLatin1String("PSK"))
        return QStringLiteral("personal");
    return authentication == QLatin1String("802.1x") ? QStringLiteral("enterprise") : QString();
}

WifiItem scannedNetwork(const QJsonObject &entry)
{
    WifiItem item(entry.value(QLatin1String("ssid")).toString());
    item.encrypt = encryptionOf(entry.value(QLatin1String("pairwise")).toString());
    item.security = securityOf(entry.value(QLatin1String("authentication")).toString());
    item.signalStrength = entry.value(QLatin1String("signal strength")).toInt();
    return item;
}

} // namespace

NetworkController::NetworkController(QObject *parent)
    : QObject(parent)
    , m_commands(m_ownCommands)
{ }

NetworkController::NetworkController(ToolQueue &commands, QObject *parent)
    : QObject(parent)
    , m_commands(commands)
{ }

NetworkController::~NetworkController() = default;

void NetworkController::setNetworkConfig()
{
    m_commands.add(DeviceTools::setNetworkConfig());
}

void NetworkController::connectWired()
{
    m_commands.add(DeviceTools::connectWired());
}

void NetworkController::disableWiredInterface()
{
    m_commands.add(DeviceTools::turnOffWired());
}

void NetworkController::enableWiredInterface()
{
    m_commands.add(DeviceTools::turnOnWired());
}

void NetworkController::disconnect()
{
    m_commands.add(DeviceTools::disconnectWired());
}

void NetworkController::disconnectWifi(const ToolDone &done)
{
    ++m_join; // a join under way is abandoned
    m_commands.add(DeviceTools::disconnectWifi(), done);
}

void NetworkController::autoconnect()
{
    m_commands.add(DeviceTools::autoconnect());
}

void NetworkController::setRoutingTable()
{
    m_commands.add(DeviceTools::checkGateway());
}

void NetworkController::setIpConfigure(const QString &interface, const QString &address, int prefixLength,
                                       bool add, const QString &broadcast)
{
    m_commands.add(DeviceTools::setAddress(interface, address, prefixLength, add, broadcast));
}

void NetworkController::logBroadcast(const QString &line)
{
    m_commands.add(DeviceTools::logBroadcast(line));
}

void NetworkController::setQueryLimit(int milliseconds)
{
    m_queryLimitMs = milliseconds;
}

void NetworkController::afterCommands(QObject *context, const std::function<void()> &step)
{
    m_commands.add([guard = QPointer<QObject>(context), step] {
        if (guard)
            step();
    });
}

void NetworkController::query(const ToolCall &call, QObject *context, const OutputDone &done)
{
    const QString key = call.program + QLatin1Char(' ') + call.arguments.join(QLatin1Char(' '));
    QVector<Waiter> &waiting = m_waiting[key];
    waiting += {context, done};
    if (waiting.size() > 1)
        return;
    ToolCall limited = call;
    limited.limitMs = m_queryLimitMs;
    ToolRun::start(limited, this, [this, key](const ToolResult &result) {
        const QVector<Waiter> ready = m_waiting.take(key);
        for (const Waiter &waiter : ready) {
            if (waiter.context)
                waiter.done(result);
        }
    });
}

void NetworkController::ask(const QString &subCommand, QObject *context, const ReplyDone &done)
{
    query(DeviceTools::networkQuery(subCommand), context, [done](const ToolResult &result) {
        QByteArray word = result.output;
        word.replace('\n', "");
        done(word == "true" || word == "false" ? Reply(word == "true") : std::nullopt);
    });
}

void NetworkController::CheckWiredPlugged(QObject *context, const ReplyDone &done)
{
    ask(QStringLiteral("is-wired-linked"), context, done);
}

void NetworkController::isWiredUp(QObject *context, const ReplyDone &done)
{
    ask(QStringLiteral("is-wired-on"), context, done);
}

void NetworkController::isWifiConnected(QObject *context, const ReplyDone &done)
{
    ask(QStringLiteral("is-wireless-connected"), context, done);
}

void NetworkController::isEthernetConnected(QObject *context, const ReplyDone &done)
{
    ask(QStringLiteral("is-wired-connected"), context, done);
}

void NetworkController::getActualWifi(QObject *context, const PropertyDone &done)
{
    query(DeviceTools::networkQuery(QStringLiteral("check-wireless-point")), context,
          [done](const ToolResult &result) {
              NetworkProperty property;
              const bool associated = readAccessPoint(result.output, property);
              done(associated, property);
          });
}

void NetworkController::getNetworkByInterface(const QString &interface, QObject *context,
                                              const PropertyDone &done)
{
    if (interface != QLatin1String("eth0") && interface != QLatin1String("wlan0")) {
        QTimer::singleShot(0, context, [done] { done(false, NetworkProperty()); });
        return;
    }
    const ToolCall parameters = DeviceTools::networkQuery(QStringLiteral("get-%1-parameters").arg(interface));
    const QPointer<QObject> guard(context);
    query(parameters, context, [this, interface, guard, done](const ToolResult &result) {
        if (!guard)
            return;
        const QByteArray output = result.output;
        query(DeviceTools::routes(), guard, [interface, output, done](const ToolResult &routes) {
            NetworkProperty property;
            readParameters(output, property);
            property.setGateway(gatewayFromRoutes(QString::fromLocal8Bit(routes.output)));
            readNameServers(property);
            readInterface(interface, property);
            done(true, property);
        });
    });
}

void NetworkController::GetWifiNetworkList(QObject *context, const ScanDone &done)
{
    query(DeviceTools::networkQuery(QStringLiteral("get-wifi-list")), context,
          [done](const ToolResult &result) { done(readScan(result.output)); });
}

bool NetworkController::readAccessPoint(const QByteArray &output, NetworkProperty &property)
{
    const QJsonObject found = values(output);
    const QString status = found.value(QLatin1String("status")).toString();
    if (status == QLatin1String("false")) {
        property.setEssid(QString());
    } else if (status == QLatin1String("true")) {
        property.setEssid(found.value(QLatin1String("ssid")).toString());
        property.setSignalQuality(found.value(QLatin1String("signal strength")).toString());
    }
    return status == QLatin1String("true");
}

void NetworkController::readParameters(const QByteArray &output, NetworkProperty &property)
{
    const QJsonObject found = values(output);
    property.setIp(found.value(QLatin1String("ip address")).toString());
    property.setGateway(found.value(QLatin1String("gateway address")).toString());
    property.setNetmask(found.value(QLatin1String("netmask address")).toString());
    property.setTypeIp(found.value(QLatin1String("type")).toString());
}

void NetworkController::readNameServers(NetworkProperty &property)
{
    QFile resolvConf(Paths::nameServers());
    const bool readable = resolvConf.open(QIODevice::ReadOnly);
    readNameServers(readable ? resolvConf.read(Commands::outputLimit) : QByteArray(), property);
}

QString NetworkController::gatewayFromRoutes(const QString &routes)
{
    // Two heading lines, then the kernel's table in its order: its first route is the default route.
    const QStringList fields = routes.split(QLatin1Char('\n')).value(2).simplified().split(QLatin1Char(' '));
    return fields.value(1);
}

void NetworkController::readNameServers(const QByteArray &resolvConf, NetworkProperty &property)
{
    QStringList servers;
    for (const QByteArray &line : resolvConf.split('\n')) {
        const QString text = QString::fromLocal8Bit(line).simplified();
        if (!text.startsWith(QLatin1String("search")) && text.contains(QLatin1String("nameserver")))
            servers += text.split(QLatin1Char(' ')).value(1);
    }
    property.setDns1(servers.value(0));
    property.setDns2(servers.value(1));
}

void NetworkController::readInterface(const QString &name, NetworkProperty &property)
{
    for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces()) {
        if (interface.humanReadableName() != name)
            continue;
        property.setMac(interface.hardwareAddress());
        for (const QNetworkAddressEntry &entry : interface.addressEntries()) {
            if (entry.ip().protocol() != QAbstractSocket::IPv4Protocol || entry.ip().isLoopback())
                continue;
            // Of an address without a broadcast address the system tells the address itself.
            property.setBroadcast(entry.broadcast() == entry.ip() ? QString() : entry.broadcast().toString());
            property.setPrefixLength(entry.prefixLength());
        }
    }
}

QList<WifiItem> NetworkController::readScan(const QByteArray &output)
{
    QList<WifiItem> list;
    const QJsonArray scan = QJsonDocument::fromJson(output).array();
    for (const QJsonValue &entry : scan)
        list.append(scannedNetwork(entry.toObject()));
    std::sort(list.begin(), list.end(), compareSignalStrengthDesc);
    return list;
}

bool NetworkController::connectToWifi(const QString &ssid, const QString &key, bool hidden)
{
    return join(DeviceTools::joinWifi(ssid, key, hidden));
}

bool NetworkController::connectToWifi(const WifiItem &item)
{
    const QString caPath = item.caCert.isEmpty() ? QString() : Paths::caCertificates() + item.caCert;
    return join(DeviceTools::joinEnterpriseWifi({item.essid(), item.userName, item.authenticationMethod,
                                                 item.encrypt, item.advancedSecurity, flag(item.hidden),
                                                 caPath, item.clientCert + QLatin1String(".p12"),
                                                 item.userPassword, item.clientCertPassword}));
}

NetworkController::WifiResult NetworkController::wifiResult() const
{
    return m_wifiResult;
}

bool NetworkController::join(const ToolCall &call)
{
    m_wifiResult = Pending;
    const int number = ++m_join;
    // The network that is left is left before another is joined; the join itself keeps no command waiting.
    m_commands.add([this, self = QPointer<NetworkController>(this), call, number] {
        if (!self || number != m_join)
            return;
        ToolRun::start(call, this, [this, number](const ToolResult &result) {
            if (number == m_join)
                endJoin(result);
        });
    });
    return false;
}

void NetworkController::endJoin(const ToolResult &result)
{
    for (const QByteArray &line : result.output.split('\n')) {
        if (line == "connected")
            m_wifiResult = Connected;
        else if (line == "incorrect key")
            m_wifiResult = IncorrectKey;
        else if (line == "certificate verification failed")
            m_wifiResult = CertificateRejected;
    }
    qCDebug(lcNetwork) << "WiFi Configuration exited with" << result.exitCode << "code";
    emit setWifiStatus(m_wifiResult == Connected);
}
