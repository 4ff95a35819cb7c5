// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>
#include <QTemporaryDir>

// How a program ended, and what it printed.
struct Outcome
{
    int status = -1;
    bool crashed = false;
    QByteArray output;
    QByteArray error;
};

// A simulated device in a temporary folder, made and played by the real kt-lab.
class LabDevice
{
public:
    LabDevice();

    QString path(const QString &devicePath) const { return m_folder.path() + QLatin1Char('/') + devicePath; }

    // A tool of usr/bin, or of the path given, called as the device calls it; kt-lab itself with this
    // device's root.
    Outcome call(const QString &tool, const QStringList &arguments = {}) const;
    Outcome lab(QStringList arguments) const;
    Outcome networkConfig(const QString &subCommand, const QString &document = {}) const;

    QString state(const QString &name) const;
    void write(const QString &devicePath, const QByteArray &content) const;
    QByteArray read(const QString &devicePath) const;
    QStringList calls() const;

private:
    QTemporaryDir m_folder;
};
