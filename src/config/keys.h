// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLatin1String>

/// The keys of the configuration document, one constant each. docs/configuration.md describes their values.
namespace Key {

inline constexpr QLatin1String firmwareInfo("firmware info");
inline constexpr QLatin1String configurationVersion("configuration version");
inline constexpr QLatin1String deviceFamily("device family");
inline constexpr QLatin1String deviceModel("device model");

inline constexpr QLatin1String appAutostart("app autostart settings");
inline constexpr QLatin1String program("program");
inline constexpr QLatin1String path("path");

inline constexpr QLatin1String audio("audio settings");
inline constexpr QLatin1String toolbarIcon("toolbar icon");
inline constexpr QLatin1String inputPriority("input priority");
inline constexpr QLatin1String outputPriority("output priority");
inline constexpr QLatin1String inputDevice("input device");
inline constexpr QLatin1String outputDevice("output device");
inline constexpr QLatin1String checkedInputDevice("checked input device");
inline constexpr QLatin1String checkedOutputDevice("checked output device");
inline constexpr QLatin1String audioDeviceName("device name");
inline constexpr QLatin1String audioDeviceNumber("device number");

inline constexpr QLatin1String connection("connection settings");
inline constexpr QLatin1String corvidConnection("corvid connection");
inline constexpr QLatin1String solvaConnection("solva connection");
inline constexpr QLatin1String rdpConnection("rdp connection");
inline constexpr QLatin1String allowManualAddress("allow manual address entry");
inline constexpr QLatin1String showAutodetected("show autodetected");
inline constexpr QLatin1String autoconnect("autoconnect");
inline constexpr QLatin1String brokerAddress("broker address");
inline constexpr QLatin1String allowCustomBrokers("allow custom brokers");
inline constexpr QLatin1String defaultProtocol("default protocol");
inline constexpr QLatin1String rdpServerAddress("rdp server address");
inline constexpr QLatin1String allowCustomRdpServers("allow custom rdp servers");
inline constexpr QLatin1String server("server");
inline constexpr QLatin1String group("group");
inline constexpr QLatin1String desktop("desktop");
inline constexpr QLatin1String serverName("server name");
inline constexpr QLatin1String serverAddress("server address");

inline constexpr QLatin1String display("display settings");
inline constexpr QLatin1String multiMonitorMode("multi monitor mode");
inline constexpr QLatin1String primary("primary");
inline constexpr QLatin1String secondary("secondary");
inline constexpr QLatin1String orientation("orientation");
inline constexpr QLatin1String resolution("resolution");
inline constexpr QLatin1String position("position");
inline constexpr QLatin1String screenSaverTimeout("screen saver timeout");

inline constexpr QLatin1String firmware("firmware settings");
inline constexpr QLatin1String fwFile("fw file");
inline constexpr QLatin1String method("method");
inline constexpr QLatin1String url("url");
inline constexpr QLatin1String corvid("corvid");

inline constexpr QLatin1String general("general settings");
inline constexpr QLatin1String clientMode("client mode");
inline constexpr QLatin1String deviceName("device name");
inline constexpr QLatin1String setupPasswordEnabled("setup GUI password enabled");
inline constexpr QLatin1String setupPasswordHash("setup GUI password hash");

inline constexpr QLatin1String mainWindow("main window");
inline constexpr QLatin1String solvaBrokerHistory("custom solva broker history");
inline constexpr QLatin1String manualServerHistory("manual server history");
inline constexpr QLatin1String selection("selection");

inline constexpr QLatin1String management("management settings");
inline constexpr QLatin1String consoleManagement("corvid console management");
inline constexpr QLatin1String qmdManagement("qmd management");
inline constexpr QLatin1String autodiscoverQmd("autodiscover qmd address");
inline constexpr QLatin1String qmdAddress("qmd address");

inline constexpr QLatin1String redirection("redirection settings");
inline constexpr QLatin1String customDevices("custom devices");
inline constexpr QLatin1String vid("vid");
inline constexpr QLatin1String pid("pid");
inline constexpr QLatin1String redirectionChoice("redirection");
inline constexpr QLatin1String generalPolicy("general policy");
inline constexpr QLatin1String hids("HIDs");
inline constexpr QLatin1String audioDevices("audio");
inline constexpr QLatin1String imaging("imaging");
inline constexpr QLatin1String massStorage("mass storage");
inline constexpr QLatin1String printers("printers");
inline constexpr QLatin1String serialPorts("serial ports");
inline constexpr QLatin1String smartCards("smart cards");

inline constexpr QLatin1String serverGroups("server groups");
inline constexpr QLatin1String groupName("group name");
inline constexpr QLatin1String servers("servers");

inline constexpr QLatin1String autologon("user autologon settings");
inline constexpr QLatin1String username("username");

inline constexpr QLatin1String keyboard("keyboard settings");
inline constexpr QLatin1String layout("layout");
inline constexpr QLatin1String numlockOn("numlock on");

inline constexpr QLatin1String dateTime("date time settings");
inline constexpr QLatin1String ntpEnabled("ntp enabled");
inline constexpr QLatin1String timezone("timezone");
inline constexpr QLatin1String ntpServer("ntp server");

inline constexpr QLatin1String security("security settings");
inline constexpr QLatin1String caCertificates("ca certificates");
inline constexpr QLatin1String clientCertificates("client certificates");
inline constexpr QLatin1String certificateFile("file name");
inline constexpr QLatin1String certificateSubject("subject");
inline constexpr QLatin1String certificateFingerprint("fingerprint");
inline constexpr QLatin1String certificateExpiry("expiry");

inline constexpr QLatin1String shadowing("shadowing settings");

inline constexpr QLatin1String network("network settings");
inline constexpr QLatin1String interfaces("interfaces");
inline constexpr QLatin1String eth("eth");
inline constexpr QLatin1String wlan("wlan");
inline constexpr QLatin1String dns("DNS");
inline constexpr QLatin1String dns1("dns1");
inline constexpr QLatin1String dns2("dns2");
inline constexpr QLatin1String proxy("proxy");
inline constexpr QLatin1String ipAddress("IP address");
inline constexpr QLatin1String wiredIpAddress("Ip address"); ///< the spelling of the factory defaults
inline constexpr QLatin1String networkMask("network mask");
inline constexpr QLatin1String defaultGateway("default gateway");
inline constexpr QLatin1String ssid("ssid");
inline constexpr QLatin1String hiddenSsid("hidden ssid");
inline constexpr QLatin1String wifiSecurity("security");
inline constexpr QLatin1String encryption("encryption");
inline constexpr QLatin1String passphrase("passphrase");
inline constexpr QLatin1String advancedSecurity("advanced security");
inline constexpr QLatin1String authenticationMethod("authentication method");
inline constexpr QLatin1String userPassword("user password");
inline constexpr QLatin1String caCertificate("ca certificate");
inline constexpr QLatin1String pkcs12Certificate("pkcs12 certificate");
inline constexpr QLatin1String pkcs12Password("pkcs12 password");
inline constexpr QLatin1String noProxyForLan("no proxy for LAN");
inline constexpr QLatin1String address("address");
inline constexpr QLatin1String port("port");
inline constexpr QLatin1String userName("user name");

// Keys of several sections.
inline constexpr QLatin1String enabled("enabled");
inline constexpr QLatin1String type("type");
inline constexpr QLatin1String domain("domain");
inline constexpr QLatin1String password("password");

} // namespace Key
