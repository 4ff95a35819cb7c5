// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// The console's commands.
enum class Command { Info, GetConfig, SetConfig, Reset, UpdateLatest, UpdateUrl, UpdateServer };

/// Whether a command changes a device. Such a command needs a confirmation before it runs on a subnet.
bool changesDevice(Command command);
QString nameOf(Command command);

/// The parsed command line. Files are not read and names are not looked up yet.
struct Options
{
    Command command = Command::Info;
    QString file;          ///< of set-config; "-" is standard input
    QString updateSource;  ///< the URL, or the Corvid server
    QString updateFile;    ///< on the Corvid server
    QStringList addresses; ///< as given, with names
    QString targetsFile;
    bool subnet = false;  ///< all devices that reply on this machine's subnets
    QString broadcast;    ///< all devices that reply to this broadcast address
    QString outputFolder; ///< of get-config
    QString user;         ///< of an update from a URL
    QString passwordFile; ///< its first line is the password
    bool json = false;
    bool dryRun = false;
    bool yes = false;
    bool quiet = false;
    int timeoutMs = 3000;
    int retries = 2;
    int parallel = 300;
    quint16 port = 0;

    bool searchesSubnet() const { return subnet || !broadcast.isEmpty(); }
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
