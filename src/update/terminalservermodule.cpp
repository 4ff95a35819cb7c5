// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/terminalservermodule.h"

#include "device/diagnostics.h"
#include "update/wireformat.h"

#include <QLoggingCategory>
#include <QNetworkInterface>
#include <QUdpSocket>

Q_LOGGING_CATEGORY(lcEndpoint, "kt.update.endpoint")

TerminalServerModule::TerminalServerModule(QObject *parent)
    : QObject(parent)
{
    m_discoveryWindow.setInterval(discoveryWindowMs);
    connect(this, &TerminalServerModule::hasTsFindReplies, this, &TerminalServerModule::takeTsFindReplies);
    connect(&m_discoveryWindow, &QTimer::timeout, this, &TerminalServerModule::takeServer);
    open();
}

bool TerminalServerModule::open()
{
    m_socket = new QUdpSocket(this);
    connect(m_socket, &QUdpSocket::readyRead, this, &TerminalServerModule::checkCommand);
    if (!m_socket->bind(QHostAddress::Any, WireFormat::devicePort))
        Diagnostics::print(QStringLiteral("Error binding address"));
    return true;
}

void TerminalServerModule::checkCommand()
{
    // One is there when this is called: asking for it first would cost every block of a file a system call
    // more.
    do {
        QByteArray datagram(WireFormat::receiveLimit, '\0');
        QHostAddress sender;
        const qint64 size = m_socket->readDatagram(datagram.data(), datagram.size(), &sender);
        if (size < 0) {
            qCCritical(lcEndpoint, "%s: %s", Q_FUNC_INFO, qPrintable(m_socket->errorString()));
            continue;
        }
        datagram.truncate(static_cast<int>(size));
        if (const auto block = WireFormat::decodeFileBlock(datagram))
            emit ask_HasUdpFileData({sender, block->position, block->total, block->data});
        else if (const auto list = WireFormat::decodeServerList(datagram))
            emit hasTsFindReplies(list->names, list->addresses);
    } while (m_socket->hasPendingDatagrams());
}

void TerminalServerModule::findTerminalServer(int &error)
{
    m_servers.clear();
    QList<QString> broadcasts;
    getNetworkInfo(nullptr, nullptr, nullptr, &broadcasts);
    m_discoveryWindow.start();
    if (broadcasts.isEmpty()) {
        qCCritical(lcEndpoint, "%s: %s", Q_FUNC_INFO, "No broadcast addr");
        error = 1;
        return;
    }
    for (const QString &broadcast : qAsConst(broadcasts)) {
        if (!sendToServer(WireFormat::discoveryRequest(), QHostAddress(broadcast)))
            error = 1;
    }
}

bool TerminalServerModule::sendToServer(const QByteArray &request, const QHostAddress &server)
{
    const bool sent = m_socket->writeDatagram(request, server, WireFormat::serverPort) == request.size();
    if (!sent)
        qCCritical(lcEndpoint, "%s: %s", Q_FUNC_INFO, qPrintable(m_socket->errorString()));
    return sent;
}

void TerminalServerModule::getUdpFileData(const UdpFileRequest &request, int &error)
{
    if (error != 0)
        return;
    if (request.fileName.size() > WireFormat::longestFileName) {
        qCCritical(lcEndpoint, "%s: %s", Q_FUNC_INFO, "file name too long");
        error = 1;
        return;
    }
    if (!sendToServer(WireFormat::fileBlockRequest(request.fileName, request.position), request.server))
        error = 1;
}

void TerminalServerModule::takeTsFindReplies(const QStringList &names, const QList<QHostAddress> &addresses)
{
    if (!m_discoveryWindow.isActive())
        return;
    for (int i = 0; i < qMin(names.size(), addresses.size()); ++i) {
        if (!m_servers.contains(names.at(i)))
            m_servers.insert(names.at(i), addresses.at(i));
    }
}

void TerminalServerModule::takeServer()
{
    m_discoveryWindow.stop();
    emit sendServerList(m_servers);
}

void TerminalServerModule::getNetworkInfo(QString *ip, QString *netmask, QString *mac,
                                          QList<QString> *broadcasts)
{
    const auto put = [](QString *target, const QString &value) {
        if (target)
            *target = value;
    };
    put(ip, QStringLiteral("0.0.0.0"));
    put(netmask, QStringLiteral("0.0.0.0"));
    put(mac, QStringLiteral("00:00:00:00:00:00"));
    bool found = false;
    for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces()) {
        for (const QNetworkAddressEntry &entry : interface.addressEntries()) {
            if (entry.ip().protocol() != QAbstractSocket::IPv4Protocol || entry.ip().isLoopback())
                continue;
            if (!found) {
                put(ip, entry.ip().toString());
                put(netmask, entry.netmask().toString());
                put(mac, interface.hardwareAddress());
                found = true;
            }
            // Of an address without a broadcast address the system tells the address itself.
            if (broadcasts && !entry.broadcast().isNull() && entry.broadcast() != entry.ip())
                broadcasts->append(entry.broadcast().toString());
        }
    }
}
