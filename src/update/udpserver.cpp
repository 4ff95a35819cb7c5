// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/udpserver.h"

#include "config/jsontext.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QTemporaryFile>

Q_LOGGING_CATEGORY(lcUdpServer, "kt.update.udpserver")

UdpServer::UdpServer(const QHostAddress &address, const QString &name, QObject *parent)
    : QObject(parent)
    , m_address(address)
    , m_name(name)
{ }

UdpServer::UdpServer(const QHostAddress &address, QObject *parent)
    : QObject(parent)
    , m_address(address)
    , m_name(address.toString())
    , m_fileName(QStringLiteral("UNKNOWN"))
{ }

QHostAddress UdpServer::address() const
{
    return m_address;
}

QString UdpServer::name() const
{
    return m_name;
}

QString UdpServer::version() const
{
    return m_version;
}

QString UdpServer::fileName() const
{
    return m_fileName;
}

QString UdpServer::startTransfer(const QString &file, bool reportProgress)
{
    emit trigger_StartTransfer(UdpFileRequest(m_address, file), reportProgress);
    return QStringLiteral("%1: %2").arg(m_name, file);
}

int UdpServer::compareVersion(const QString &other) const
{
    const QStringList ours = m_version.split(QLatin1Char('.'));
    const QStringList theirs = other.split(QLatin1Char('.'));
    for (int i = 0; i < qMin(ours.size(), theirs.size()); ++i) {
        const int our = ours.at(i).toInt();
        const int their = theirs.at(i).toInt();
        if (our != their)
            return our > their ? 1 : -1;
    }
    return ours.size() == theirs.size() ? 0 : 1;
}

void UdpServer::setRxUpdateJson(QTemporaryFile *index)
{
    if (!index || !index->seek(0) || index->size() > indexLimit)
        return;
    const QJsonObject root = JsonText::parsed(index->read(indexLimit));
    m_version = QStringLiteral("0.0");
    for (const QJsonValue entry : root.value(QLatin1String("FIRMWARES")).toArray()) {
        const QJsonObject firmware = entry.toObject();
        const QString version = firmware.value(QLatin1String("version")).toString();
        if (compareVersion(version) < 0) {
            m_version = version;
            m_fileName = firmware.value(QLatin1String("filename")).toString();
        }
    }
    qCInfo(lcUdpServer).noquote() << m_name << "offers" << m_version << m_fileName;
}
