// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/toolrun.h"

#include <QDateTime>

/// Every call of a device tool that the program makes, by what it does. No other file spells a tool's path or
/// its arguments. Values of the document, the network or the user are quoted here.
namespace DeviceTools {

// Power: the device goes down, up again, or to sleep.
ToolCall shutDown();
ToolCall reboot();
ToolCall sleep();

// The host name: asked for, taken from the document, or reset to the factory's.
ToolCall hostName();
ToolCall applyHostName();
ToolCall resetHostName();

// The network tool.
ToolCall setNetworkConfig(); ///< hands it the document as it stands on disk
ToolCall connectWired();
ToolCall disconnectWired();
ToolCall turnOnWired();
ToolCall turnOffWired();
ToolCall disconnectWifi();
ToolCall autoconnect(); ///< connects all that the document on disk enables
ToolCall checkGateway();
/// Adds an address to an interface or, with `add` false, takes it off. `broadcast` may be empty.
ToolCall setAddress(const QString &interface, const QString &address, int prefixLength, bool add,
                    const QString &broadcast);
/// One query of the network tool, named by its sub-command.
ToolCall networkQuery(const QString &subCommand);
ToolCall routes();
/// Joins an open network (empty key) or one with a pass phrase. It prints how it went and has no limit here.
ToolCall joinWifi(const QString &ssid, const QString &key, bool hidden);
/// Joins an 802.1x network. The arguments are those of the tool, in its order.
ToolCall joinEnterpriseWifi(const QStringList &arguments);
/// Appends a line to the log of addresses that were taken off.
ToolCall logBroadcast(const QString &line);

// Display, sound, keyboard.
ToolCall displayModes(const QString &group); ///< "DMT" or "CEA"
ToolCall currentMode();
ToolCall setAutomaticMode();
ToolCall setMode(const QString &group, const QString &code);
ToolCall restartScreenSaver();
ToolCall hdmiAudio();
ToolCall setKeyboard(const QString &layout, const QString &variant);
ToolCall setNumLock(bool on);

// Time.
ToolCall setTimeZone(const QString &zone);
ToolCall enableNtp(bool enabled); ///< with the system's start
ToolCall startNtp(bool running);  ///< now
ToolCall setNtpServer(const QString &server);
ToolCall setClock(const QDateTime &time);

// The program itself.
ToolCall switchClient(); ///< to the client mode of the document
ToolCall switchToDesktop();
ToolCall installFirmware(); ///< takes as long as it takes, and restarts the device
ToolCall signalSession();   ///< a running session reads its sound devices again

} // namespace DeviceTools
