// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "testdevice.h"

#include "device/toolrun.h"
#include "testgroup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>

namespace {
const QString document = "/var/lib/kt964/config.json";
const QString callLog = "/lab/calls.log";

QJsonValue with(const QJsonValue &value, const QStringList &keys, const QJsonValue &wanted)
{
    if (keys.isEmpty())
        return wanted;
    QJsonObject object = value.toObject();
    object.insert(keys.first(), with(object.value(keys.first()), keys.mid(1), wanted));
    return object;
}
} // namespace

TestDevice::TestDevice()
{
    QProcess::execute(qEnvironmentVariable("KT_BIN_DIR") + "/kt-lab", {"make-root", m_folder.path()});
    qputenv("KT_DEVICE_ROOT", m_folder.path().toLocal8Bit());
}

TestDevice::~TestDevice()
{
    // Another device may have taken over meanwhile.
    if (qgetenv("KT_DEVICE_ROOT") == m_folder.path().toLocal8Bit())
        qunsetenv("KT_DEVICE_ROOT");
}

bool TestDevice::isValid() const
{
    return m_folder.isValid() && exists("/usr/bin/kt-network-config");
}

QString TestDevice::path(const QString &devicePath) const
{
    return m_folder.path() + devicePath;
}

QByteArray TestDevice::read(const QString &devicePath) const
{
    QFile file(path(devicePath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestDevice::write(const QString &devicePath, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(devicePath)).path());
    QFile file(path(devicePath));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

bool TestDevice::exists(const QString &devicePath) const
{
    return QFileInfo::exists(path(devicePath));
}

QJsonObject TestDevice::document() const
{
    return QJsonDocument::fromJson(read(::document)).object();
}

void TestDevice::setDocument(const QJsonObject &content) const
{
    write(::document, QJsonDocument(content).toJson());
}

void TestDevice::store(const QStringList &keys, const QJsonValue &value) const
{
    setDocument(with(document(), keys, value).toObject());
}

QJsonValue TestDevice::stored(const QStringList &keys) const
{
    QJsonValue value = document();
    for (const QString &key : keys)
        value = value[key];
    return value;
}

void TestDevice::setTool(const QString &devicePath, const QByteArray &script) const
{
    removeTool(devicePath); // a stand-in is a link to the lab's program: writing would go through it
    write(devicePath, "#!/bin/sh\n" + script + "\n");
    QFile::setPermissions(path(devicePath), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void TestDevice::removeTool(const QString &devicePath) const
{
    QFile::remove(path(devicePath));
}

void TestDevice::setFault(const QString &tool, const QString &fault) const
{
    const QString file = QString("/lab/faults/") + tool;
    if (fault == "none")
        QFile::remove(path(file));
    else
        write(file, fault.toUtf8());
}

void TestDevice::setState(const QString &name, const QByteArray &content) const
{
    write(QString("/lab/state/") + name, content);
}

void TestDevice::setPlainSound() const
{
    setState("sound-cards.json",
             R"([{"name": "b", "devices": [{"name": "bcm2835 ALSA", "playback": true}]}])");
}

QStringList TestDevice::calls() const
{
    return QString::fromUtf8(read(callLog)).split('\n', Qt::SkipEmptyParts);
}

QStringList TestDevice::calls(const QString &tool) const
{
    QStringList found;
    for (const QString &call : calls()) {
        if (call == tool || call.startsWith(tool + ' '))
            found += call;
    }
    return found;
}

void TestDevice::forgetCalls() const
{
    QFile::remove(path(callLog));
}

void TestDevice::waitForTools()
{
    QTRY_VERIFY(!QCoreApplication::instance()->findChild<ToolRun *>());
}
