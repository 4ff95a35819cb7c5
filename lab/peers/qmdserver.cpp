// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/qmdserver.h"

#include "lab-peers/httppeer.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr int longestBody = 64 * 1024 * 1024;
const QByteArray devices = "/qmd/api/da/v1/devices/";
const QByteArray headEnd = "\r\n\r\n";

int contentLength(const QByteArray &head)
{
    for (const QByteArray &header : head.split('\n')) {
        if (header.toLower().startsWith("content-length:"))
            return header.mid(15).trimmed().toInt();
    }
    return 0;
}

/// Returns JSON in one line, and other bytes percent-encoded.
QByteArray inOneLine(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    return document.isNull() ? body.left(1000).toPercentEncoding(" ")
                             : document.toJson(QJsonDocument::Compact);
}

} // namespace

struct QmdServer::Request
{
    QByteArray method;
    QString serial;
    QString resource;
    QByteArray body;

    static Request parse(const QByteArray &head, const QByteArray &body);
};

QmdServer::Request QmdServer::Request::parse(const QByteArray &head, const QByteArray &body)
{
    const QList<QByteArray> words = head.left(head.indexOf('\r')).split(' ');
    const QByteArray target = words.value(1);
    Request request{words.value(0), QString(), QStringLiteral("?"), body};
    if (!target.startsWith(devices))
        return request;
    const QString path = QString::fromUtf8(QByteArray::fromPercentEncoding(target.mid(devices.size())));
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    request.serial = path.left(slash < 0 ? path.size() : slash);
    const QString name = slash < 0 ? QStringLiteral("checkin") : path.mid(slash + 1);
    for (const char *known : {"checkin", "heartbeat", "configuration", "profileConfiguration"})
        if (name == QLatin1String(known))
            request.resource = name;
    return request;
}

QmdServer::QmdServer(const QString &spoolFolder, QObject *parent)
    : TlsServer(parent)
    , m_spool(spoolFolder)
{ }

std::optional<QmdServer::Mode> QmdServer::modeOf(const QString &word)
{
    static const QHash<QString, Mode> words{
        {QStringLiteral("normal"), Mode::Normal}, {QStringLiteral("slow"), Mode::Slow},
        {QStringLiteral("silent"), Mode::Silent}, {QStringLiteral("500"), Mode::Error},
        {QStringLiteral("cut"), Mode::Cut},       {QStringLiteral("rubbish"), Mode::Rubbish},
        {QStringLiteral("huge"), Mode::Huge},     {QStringLiteral("redirect"), Mode::Redirect},
    };
    const auto found = words.find(word);
    return found == words.end() ? std::nullopt : std::make_optional(*found);
}

QmdServer::Mode QmdServer::mode() const
{
    return modeOf(m_spool.mode()).value_or(m_mode);
}

void QmdServer::receive(QTcpSocket *socket)
{
    const QByteArray seen = socket->peek(longestHead);
    const int end = seen.indexOf(headEnd);
    const int length = end < 0 ? 0 : contentLength(seen.left(end));
    if ((end < 0 && seen.size() == longestHead) || length < 0 || length > longestBody)
        return socket->abort();
    if (end < 0 || socket->bytesAvailable() < end + headEnd.size() + length)
        return;
    const QByteArray head = socket->read(end + headEnd.size());
    handle(socket, Request::parse(head, socket->read(length)));
}

void QmdServer::handle(QTcpSocket *socket, const Request &request)
{
    const Reply reply = replyTo(request);
    const QString line = QStringLiteral("%1 %2 %3")
                             .arg(QString::fromLatin1(request.method), request.resource)
                             .arg(reply.status);
    m_requests.append(line);
    m_bodies.insert(request.resource, request.body);
    m_spool.record(request.serial, line.toLatin1() + ' ' + inOneLine(request.body));
    if (reply.status != 0) {
        const QPointer<QTcpSocket> client(socket);
        const int delay = mode() == Mode::Slow ? m_delay : 0;
        QTimer::singleShot(delay, this, [this, client, reply] {
            if (client && client->state() == QAbstractSocket::ConnectedState)
                send(client, reply);
        });
    }
    emit requestReceived(request.serial + QLatin1Char(' ') + line);
}

/// Removes messages from the spool only for a complete reply.
QmdServer::Reply QmdServer::replyTo(const Request &request) const
{
    switch (mode()) {
    case Mode::Silent:
        return {0};
    case Mode::Error:
        return {500, R"({"data": [{"action": "REBOOT"}]})"};
    case Mode::Redirect:
        return {302};
    case Mode::Cut:
        return {200, R"({"data": [{"action": "REBOOT"}]})"};
    case Mode::Rubbish:
        return {200, "\xff{\"data\": [{\"action\": \"REBOOT\"}"};
    case Mode::Huge:
        return {200, R"({"data": [{"action": "REBOOT"}], "padding": ")" + QByteArray(hugeBody, 'x') + "\"}"};
    case Mode::Normal:
    case Mode::Slow:
        break;
    }
    const bool fetches = request.method == "GET" && request.resource.endsWith(QLatin1String("onfiguration"));
    if (request.resource == QLatin1String("?"))
        return {404};
    if (request.method != "PUT" && !fetches)
        return {405};
    return {200, message(request)};
}

QByteArray QmdServer::message(const Request &request) const
{
    QByteArray whole = m_spool.take(request.serial, QStringLiteral("body"));
    if (!whole.isNull())
        return whole;
    QJsonObject message{{QStringLiteral("code"), 0}};
    if (request.method == "GET") {
        const bool profile = request.resource == QLatin1String("profileConfiguration");
        const QByteArray document = m_spool.take(
            request.serial, profile ? QStringLiteral("profile") : QStringLiteral("configuration"));
        if (!document.isNull())
            message.insert(QStringLiteral("data"), QJsonDocument::fromJson(document).object());
    } else if (request.resource != QLatin1String("configuration")) {
        const QJsonArray actions = m_spool.takeActions(request.serial);
        if (!actions.isEmpty())
            message.insert(QStringLiteral("data"), actions);
    }
    return QJsonDocument(message).toJson(QJsonDocument::Compact);
}

void QmdServer::send(QTcpSocket *socket, const Reply &reply) const
{
    const bool cut = mode() == Mode::Cut;
    QByteArray head
        = "HTTP/1.1 " + QByteArray::number(reply.status) + ' ' + reasonPhrase(reply.status) + "\r\n";
    if (reply.status == 302)
        head += "Location: " + m_redirect.toEncoded() + "\r\n";
    head += "Content-Type: application/json\r\nContent-Length: " + QByteArray::number(reply.body.size())
        + headEnd;
    socket->write(head + (cut ? reply.body.left(reply.body.size() / 2) : reply.body));
    socket->flush();
    if (cut)
        socket->disconnectFromHost();
}
