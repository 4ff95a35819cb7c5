// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/terminalservermodule.h"

#include "config/jsontext.h"
#include "device/diagnostics.h"
#include "management/devicestatus.h"
#include "update/consoleformat.h"
#include "update/wireformat.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QUdpSocket>

Q_LOGGING_CATEGORY(lcEndpoint, "kt.update.endpoint")

namespace {

const QString serverPrefix = QStringLiteral("CORVID://");
/// The tools reply within half a minute; consoles ask again after seconds.
constexpr int longestInfoQueue = 1000;
constexpr int receiveBuffer = 1024 * 1024; // the system may grant less

} // namespace

TerminalServerModule::TerminalServerModule(DeviceStatus &status, QObject *parent)
    : QObject(parent)
    , m_configuration(QStringLiteral("config.json"), true)
    , m_status(status)
{
    m_discoveryWindow.setInterval(discoveryWindowMs);
    connect(this, &TerminalServerModule::hasTsFindReplies, this, &TerminalServerModule::takeTsFindReplies);
    connect(&m_discoveryWindow, &QTimer::timeout, this, &TerminalServerModule::takeServer);
    open();
}

bool TerminalServerModule::open()
{
    m_socket = new QUdpSocket(this);
    m_socket->setProxy(QNetworkProxy::NoProxy); // an HTTP proxy carries no datagrams
    connect(m_socket, &QUdpSocket::readyRead, this, &TerminalServerModule::checkCommand);
    if (!m_socket->bind(QHostAddress::Any, WireFormat::devicePort))
        Diagnostics::print(QStringLiteral("Error binding address"));
    // A server sends many blocks while the window is being drawn.
    m_socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, receiveBuffer);
    return true;
}

void TerminalServerModule::checkCommand()
{
    // One is there when this is called: asking for it first would cost every block of a file a system call
    // more. What is left when the time is over makes the socket call again.
    QElapsedTimer turn;
    turn.start();
    do {
        QByteArray datagram(WireFormat::receiveLimit, '\0');
        const qint64 size
            = m_socket->readDatagram(datagram.data(), datagram.size(), &m_sender.address, &m_sender.port);
        if (size < 0) {
            qCCritical(lcEndpoint, "%s: %s", Q_FUNC_INFO, qPrintable(m_socket->errorString()));
            continue;
        }
        datagram.truncate(static_cast<int>(size));
        takeDatagram(datagram);
    } while (m_socket->hasPendingDatagrams() && !turn.hasExpired(turnMs));
}

void TerminalServerModule::takeDatagram(const QByteArray &datagram)
{
    if (const auto block = WireFormat::decodeFileBlock(datagram))
        emit ask_HasUdpFileData({m_sender.address, block->position, block->total, block->data});
    else if (const auto list = WireFormat::decodeServerList(datagram))
        emit hasTsFindReplies(list->names, list->addresses);
    // Most answers would do as requests: one forged datagram would set two devices to answering each other
    // for good. A device answers from its own port, as a console may ask from it.
    else if (m_enabled && !(isADevice(m_sender) && ConsoleFormat::isAnswer(datagram)))
        takeCommand(datagram);
}

bool TerminalServerModule::isADevice(const Peer &peer)
{
    return peer.port == WireFormat::devicePort;
}

void TerminalServerModule::takeCommand(const QByteArray &request)
{
    using ConsoleFormat::Command;
    const quint16 code = ConsoleFormat::decodeRequest(request).command;
    switch (static_cast<Command>(code)) {
    case Command::DeviceInfo:
        return replyDeviceInfo(request);
    case Command::Reset:
        return resetDevice(request);
    case Command::UpdateLatest:
        return udpUpdate(request);
    case Command::UpdateByUrl:
        return urlUpdate(request);
    case Command::GetJson:
        return getJSONConfiguration(request);
    case Command::SetJsonPartial:
        return setJSONPartialConfiguration(request);
    }
    Diagnostics::print(QStringLiteral("ANOTHER COMMAND %1").arg(code));
}

void TerminalServerModule::enableComunication(bool enabled)
{
    m_enabled = enabled;
}

/// The reply waits for the device's tools; other requests are answered meanwhile.
void TerminalServerModule::replyDeviceInfo(const QByteArray &request)
{
    Diagnostics::print(QStringLiteral("GET INFO"));
    if (m_awaitingInfo >= longestInfoQueue) {
        qCWarning(lcEndpoint) << "too many consoles ask for the status at a time";
        return;
    }
    ++m_awaitingInfo;
    const Peer console = m_sender;
    const quint16 version = ConsoleFormat::decodeRequest(request).version;
    m_status.request(this, [this, console, version](const JSONStatus &status) {
        --m_awaitingInfo;
        replyTo(console, ConsoleFormat::deviceInfoReply({version, status.getSerialNumber(), status.get()}),
                "replyDeviceInfo");
    });
}

void TerminalServerModule::resetDevice(const QByteArray &request)
{
    int result = 0;
    emit check_resetPossible(&result);
    Diagnostics::print(QStringLiteral("3 ERROR CODE =%1").arg(result));
    reply(ConsoleFormat::actionReply(request, static_cast<quint32>(result)), Q_FUNC_INFO);
    if (result == 0)
        emit ask_resetDevice();
}

void TerminalServerModule::udpUpdate(const QByteArray &request)
{
    int result = 0;
    emit firmwareUpdateLatest(&result);
    Diagnostics::print(QStringLiteral("1 ERROR CODE =%1").arg(result));
    reply(ConsoleFormat::actionReply(request, static_cast<quint32>(result)), Q_FUNC_INFO);
}

void TerminalServerModule::urlUpdate(const QByteArray &request)
{
    int result = 0;
    ConsoleFormat::UpdateSource source = ConsoleFormat::decodeUpdateSource(request);
    if (source.url.startsWith(serverPrefix)) {
        const QString server = source.url.mid(serverPrefix.size());
        emit firmwareUpdateCORVID(server, source.file.remove(QLatin1Char('/')), &result);
    } else {
        emit firmwareUpdateURL(source.url, source.password, source.user, source.file, &result);
    }
    Diagnostics::print(QStringLiteral("2 ERROR CODE =%1").arg(result));
    reply(ConsoleFormat::actionReply(request, static_cast<quint32>(result)), Q_FUNC_INFO);
}

void TerminalServerModule::getJSONConfiguration(const QByteArray &request)
{
    Diagnostics::print(QStringLiteral("GET JSON"));
    m_configuration.readContent();
    const QByteArray text = m_configuration.getJsonString().toLatin1();
    const bool known = ConsoleFormat::decodeRequest(request).version == ConsoleFormat::documentVersion;
    reply(known ? ConsoleFormat::documentReply(request, text) : ConsoleFormat::documentRefusal(request, text),
          Q_FUNC_INFO);
}

void TerminalServerModule::setJSONPartialConfiguration(const QByteArray &request)
{
    Diagnostics::print(QStringLiteral("SET JSON PARTIAL"));
    int result = 0;
    emit check_resetPossible(&result);
    emit saveConfiguration(JsonText::parsed(ConsoleFormat::decodeJsonText(request)), &result);
    reply(ConsoleFormat::mergeReply(request, static_cast<quint32>(result)), Q_FUNC_INFO);
    if (result == 0)
        emit applyConfig();
}

void TerminalServerModule::reply(const QByteArray &datagram, const char *operation)
{
    replyTo(m_sender, datagram, operation);
}

void TerminalServerModule::replyTo(const Peer &peer, const QByteArray &datagram, const char *operation)
{
    if (isADevice(peer) && !ConsoleFormat::isAnswer(datagram))
        return; // another device would take it for a request
    if (m_socket->writeDatagram(datagram, peer.address, peer.port) != datagram.size())
        qCCritical(lcEndpoint, "%s: %s", operation, qPrintable(m_socket->errorString()));
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
        if (!sendToServer(WireFormat::discoveryRequest(), QHostAddress(broadcast), Q_FUNC_INFO))
            error = 1;
    }
}

bool TerminalServerModule::sendToServer(const QByteArray &request, const QHostAddress &server,
                                        const char *operation)
{
    const bool sent = m_socket->writeDatagram(request, server, WireFormat::serverPort) == request.size();
    if (!sent)
        qCCritical(lcEndpoint, "%s: %s", operation, qPrintable(m_socket->errorString()));
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
    if (!sendToServer(WireFormat::fileBlockRequest(request.fileName, request.position), request.server,
                      Q_FUNC_INFO))
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
