// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"

#include "config/keys.h"

#include <QJsonArray>

namespace Defaults {

namespace {

const QString none = QString();
const QString generic = QStringLiteral("generic");
const QString native = QStringLiteral("native");
const QString dhcp = QStringLiteral("dhcp");
const QString fixed = QStringLiteral("static");

// The wired object has its own spelling of the address key, unless there is no wired interface.

QJsonObject appAutostart()
{
    return {{Key::enabled, false}, {Key::path, none}, {Key::program, none}};
}

QJsonObject audio()
{
    const QJsonArray input = {QStringLiteral("USB"), QStringLiteral("Bluetooth"), QStringLiteral("none")};
    const QJsonArray output = {QStringLiteral("USB"), QStringLiteral("Bluetooth"), QStringLiteral("HDMI"),
                               QStringLiteral("Analog"), QStringLiteral("none")};
    return {{Key::toolbarIcon, true}, {Key::inputPriority, input}, {Key::outputPriority, output}};
}

QJsonObject connection()
{
    const QJsonObject corvid
        = {{Key::allowManualAddress, true}, {Key::autoconnect, autoconnect()}, {Key::showAutodetected, true}};
    return {{Key::corvidConnection, corvid},
            {Key::solvaConnection, solvaConnection()},
            {Key::rdpConnection, rdpConnection()}};
}

QJsonObject display()
{
    const QString automatic = QStringLiteral("Automatic");
    // Devices in the field store "landspace", and consoles compare with it.
    return {{Key::multiMonitorMode, QStringLiteral("extend")},
            {Key::primary,
             QJsonObject{{Key::orientation, QStringLiteral("landscape")}, {Key::resolution, automatic}}},
            {Key::screenSaverTimeout, 20},
            {Key::secondary,
             QJsonObject{{Key::orientation, QStringLiteral("landspace")},
                         {Key::position, QStringLiteral("right")},
                         {Key::resolution, automatic}}}};
}

QJsonObject firmware()
{
    return {{Key::fwFile, none}, {Key::method, none},   {Key::password, none},
            {Key::url, none},    {Key::username, none}, {Key::corvid, none}};
}

QJsonObject general(const QString &deviceName)
{
    return {{Key::clientMode, clientMode},
            {Key::deviceName, deviceName},
            {Key::setupPasswordEnabled, false},
            {Key::setupPasswordHash, none}};
}

QJsonObject mainWindow()
{
    return {{Key::solvaBrokerHistory, QJsonArray()},
            {Key::manualServerHistory, QJsonArray()},
            {Key::selection, QStringLiteral("my desktop")}};
}

QJsonObject redirection()
{
    return {{Key::hids, native},
            {Key::audioDevices, native},
            {Key::customDevices, QJsonArray()},
            {Key::generalPolicy, QStringLiteral("default")},
            {Key::imaging, generic},
            {Key::massStorage, generic},
            {Key::printers, generic},
            {Key::serialPorts, generic},
            {Key::smartCards, generic}};
}

QJsonObject autologon()
{
    return {{Key::domain, none}, {Key::enabled, false}, {Key::password, none}, {Key::username, none}};
}

QJsonObject dns()
{
    return {{Key::type, dhcp}, {Key::dns1, none}, {Key::dns2, none}, {Key::domain, none}};
}

void insertAddresses(QJsonObject &object, const QString &ipKey, const QString &ip, const QString &mask,
                     const QString &gateway)
{
    object.insert(ipKey, ip);
    object.insert(Key::networkMask, mask);
    object.insert(Key::defaultGateway, gateway);
}

/// The associated network in the scan; the last one if several have its name.
const WifiItem *associated(const NetworkState &state)
{
    const WifiItem *found = nullptr;
    for (const WifiItem &item : state.scan) {
        if (item.essid() == state.wireless.essid())
            found = &item;
    }
    return found;
}

void insertAssociation(QJsonObject &wlan, const NetworkState &state)
{
    const WifiItem *found = associated(state);
    const bool hidden = state.wirelessPresent && !found;
    wlan.insert(Key::ssid, state.wirelessPresent ? state.wireless.essid() : none);
    wlan.insert(Key::hiddenSsid, hidden);
    const bool known = state.wirelessPresent && found;
    wlan.insert(Key::wifiSecurity, known ? found->security : QStringLiteral("open"));
    wlan.insert(Key::encryption, known ? found->encrypt : QStringLiteral("auto"));
}

} // namespace

QJsonObject autoconnect()
{
    const QJsonObject noServer = {{Key::serverName, none}, {Key::serverAddress, none}};
    return {{Key::server, noServer}, {Key::enabled, false}, {Key::type, Key::group}, {Key::group, none}};
}

QJsonObject solvaConnection()
{
    QJsonObject withDesktop = autoconnect();
    withDesktop.insert(Key::desktop, none);
    return {{Key::brokerAddress, none},
            {Key::autoconnect, withDesktop},
            {Key::allowCustomBrokers, false},
            {Key::defaultProtocol, QStringLiteral("RDP")}};
}

QJsonObject rdpConnection()
{
    return {{Key::rdpServerAddress, none}, {Key::allowCustomRdpServers, false}};
}

QJsonObject firmwareInfo()
{
    return {{Key::configurationVersion, configurationVersion},
            {Key::deviceFamily, QStringLiteral("KT")},
            {Key::deviceModel, QStringLiteral("KT964")}};
}

QJsonObject keyboard()
{
    return {{Key::layout, QStringLiteral("US")}, {Key::numlockOn, false}};
}

QJsonObject management()
{
    return {{Key::consoleManagement, true},
            {Key::qmdManagement, true},
            {Key::autodiscoverQmd, true},
            {Key::qmdAddress, none}};
}

QJsonObject security()
{
    return {{Key::caCertificates, QJsonArray()}, {Key::clientCertificates, QJsonArray()}};
}

QJsonObject dateTime()
{
    return {{Key::ntpEnabled, true},
            {Key::timezone, QStringLiteral("US/Pacific")},
            {Key::ntpServer, QStringLiteral("0.debian.pool.ntp.org")}};
}

QJsonObject shadowing()
{
    return {{QStringLiteral("shadowing enabled"), false},
            {QStringLiteral("shadowing mode"), QStringLiteral("control")},
            {QStringLiteral("user notification enabled"), false},
            {QStringLiteral("password enabled"), false},
            {Key::password, none}};
}

QJsonObject proxy()
{
    return {{Key::enabled, false}, {Key::address, none},  {Key::port, 8080},
            {Key::userName, none}, {Key::password, none}, {Key::noProxyForLan, true}};
}

QJsonObject wiredInterface(bool present, const NetworkProperty &property)
{
    QJsonObject eth = {{Key::enabled, present}};
    if (!present) {
        eth.insert(Key::type, dhcp);
        insertAddresses(eth, Key::ipAddress, none, none, none);
    } else if (property.typeIp() == dhcp) {
        eth.insert(Key::type, dhcp);
        insertAddresses(eth, Key::wiredIpAddress, none, none, none);
    } else if (property.typeIp() == fixed) {
        eth.insert(Key::type, fixed);
        // Mask and gateway are swapped; devices in the field and their consoles rely on it.
        insertAddresses(eth, Key::wiredIpAddress, property.ip(), property.gateway(), property.netmask());
    }
    return eth;
}

QJsonObject wirelessInterface(const NetworkState &state)
{
    QJsonObject wlan = {{Key::enabled, state.wirelessPresent}};
    insertAssociation(wlan, state);
    const bool isStatic = state.wirelessPresent && state.wireless.typeIp() == fixed;
    wlan.insert(Key::type, isStatic ? fixed : dhcp);
    insertAddresses(wlan, Key::ipAddress, isStatic ? state.wireless.ip() : none,
                    isStatic ? state.wireless.netmask() : none, isStatic ? state.wireless.gateway() : none);
    const QJsonObject authentication = wirelessAuthentication();
    for (auto member = authentication.begin(); member != authentication.end(); ++member)
        wlan.insert(member.key(), member.value());
    return wlan;
}

QJsonObject wirelessAuthentication()
{
    return {{Key::advancedSecurity, QStringLiteral("auto")},
            {Key::authenticationMethod, QStringLiteral("peap")},
            {Key::passphrase, none},
            {Key::userName, none},
            {Key::userPassword, none},
            {Key::caCertificate, none},
            {Key::pkcs12Certificate, none},
            {Key::pkcs12Password, none}};
}

QJsonObject networkSettings(const NetworkState &state)
{
    const QJsonObject interfaces = {{Key::eth, wiredInterface(state.wiredPresent, state.wired)},
                                    {Key::wlan, wirelessInterface(state)}};
    return {{Key::interfaces, interfaces}, {Key::dns, dns()}, {Key::proxy, proxy()}};
}

QJsonObject document(const QString &deviceName, const QJsonObject &networkSettings)
{
    return {{Key::firmwareInfo, firmwareInfo()}, {Key::keyboard, keyboard()},
            {Key::appAutostart, appAutostart()}, {Key::audio, audio()},
            {Key::connection, connection()},     {Key::display, display()},
            {Key::firmware, firmware()},         {Key::general, general(deviceName)},
            {Key::mainWindow, mainWindow()},     {Key::redirection, redirection()},
            {Key::autologon, autologon()},       {Key::management, management()},
            {Key::dateTime, dateTime()},         {Key::security, security()},
            {Key::shadowing, shadowing()},       {Key::serverGroups, QJsonArray()},
            {Key::network, networkSettings}};
}

} // namespace Defaults
