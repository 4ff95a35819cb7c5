// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// What the console is asked to do with a device.
enum class Command { Info, GetConfig, SetConfig, Reset, UpdateLatest, UpdateUrl, UpdateServer };

/// Whether a command leaves the device other than it was: it is then asked for before a whole subnet is.
bool changesDevice(Command command);
QString nameOf(Command command);

/// The command line, taken apart. Nothing is read or looked up yet.
struct Options
{
    Command command = Command::Info;
    QString file;          ///< of set-config; "-" is standard input
    QString updateSource;  ///< the URL, or the Corvid server
    QString updateFile;    ///< on the Corvid server
    QStringList addresses; ///< as given, names included
    QString targetsFile;
    bool subnet = false;  ///< whoever answers on this machine's subnets
    QString broadcast;    ///< whoever answers to this broadcast address
    QString outputFolder; ///< of get-config
    QString user;         ///< of an update from a URL
    QString passwordFile; ///< the password is its first line
    bool json = false;
    bool dryRun = false;
    bool yes = false;
    bool quiet = false;
    int timeoutMs = 3000;
    int retries = 2;
    int parallel = 300;
    quint16 port = 0;

    bool asksSubnet() const { return subnet || !broadcast.isEmpty(); }
};

struct CommandLine
{
    enum class Kind { Run, Help, Version, Wrong };
    Kind kind = Kind::Wrong;
    QString error; ///< when wrong
    Options options;
};

CommandLine parseCommandLine(const QStringList &arguments);
QString helpText();
