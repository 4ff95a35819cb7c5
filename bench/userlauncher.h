// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// A new device: a copy of the one of `KT_DEVICE_ROOT`, with its own faults.
class BenchDevice
{
public:
    BenchDevice();
    QString root() const { return m_folder.path(); }
    /// Gives a fault to one call, such as "kt-network-config.set-config", or without a name to every tool.
    void setFault(const QString &fault, const QString &call = QString()) const;
    int toolCalls(const QByteArray &containing = QByteArray()) const;

private:
    QTemporaryDir m_folder;
};

/// A measured program on a device, from its start to its first paint and on.
class UserLauncher
{
public:
    UserLauncher(const QString &program, const BenchDevice &device);
    ~UserLauncher();
    UserLauncher(const UserLauncher &) = delete;
    UserLauncher &operator=(const UserLauncher &) = delete;

    double millisecondsToPaint();
    /// Lets the user act, and waits until the program says that it has been done.
    void act(const QString &action);

private:
    QByteArray lineWith(const QByteArray &word, int limitMs);

    QString m_log;
    QProcess m_process;
};
