// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A device of a test's own: a temporary device root with the lab's stand-in tools, in force as
/// KT_DEVICE_ROOT for as long as the object lives.
class TestDevice
{
public:
    TestDevice();
    ~TestDevice();
    TestDevice(const TestDevice &) = delete;
    TestDevice &operator=(const TestDevice &) = delete;

    bool isValid() const;
    /// The path of a device file ("/tmp/msg.json") on this machine.
    QString path(const QString &devicePath) const;
    QByteArray read(const QString &devicePath) const;
    void write(const QString &devicePath, const QByteArray &content) const;
    bool exists(const QString &devicePath) const;

    /// The device's configuration document as it stands on disk.
    QJsonObject document() const;
    void setDocument(const QJsonObject &document) const;
    /// Changes one value of the document, by the keys on the way to it.
    void store(const QStringList &keys, const QJsonValue &value) const;
    /// The value that the document holds there.
    QJsonValue stored(const QStringList &keys) const;

    /// Replaces a tool ("/usr/bin/kt-lulling") by a shell script.
    void setTool(const QString &devicePath, const QByteArray &script) const;
    void removeTool(const QString &devicePath) const;
    /// Makes a stand-in misbehave: "hang", "crash", "garbage", "flood", "exit 3", "slow 200"; "none" mends
    /// it.
    void setFault(const QString &tool, const QString &fault) const;
    /// What a stand-in answers from, such as "cable" or "wifi-list.json"; docs/lab.md lists them.
    void setState(const QString &name, const QByteArray &content) const;

    /// Leaves only the sound device that needs no writing down in the document.
    void setPlainSound() const;

    /// The calls of stand-ins so far, a line each: the tool's name and its arguments.
    QStringList calls() const;
    /// Only the calls of one tool.
    QStringList calls(const QString &tool) const;
    void forgetCalls() const;
    /// Waits until no tool runs that this process has started: none will be called that was not so far.
    static void waitForTools();

private:
    QTemporaryDir m_folder;
};
