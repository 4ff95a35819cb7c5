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

// As JSON in one line, where it is JSON.
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

bool QmdServer::modeOf(const QString &word, Mode *mode)
{
    static const QHash<QString, Mode> words{
        {QStringLiteral("normal"), Mode::Normal}, {QStringLiteral("slow"), Mode::Slow},
        {QStringLiteral("silent"), Mode::Silent}, {QStringLiteral("500"), Mode::Error},
        {QStringLiteral("cut"), Mode::Cut},       {QStringLiteral("rubbish"), Mode::Rubbish},
        {QStringLiteral("huge"), Mode::Huge},     {QStringLiteral("redirect"), Mode::Redirect},
    };
    *mode = words.value(word, *mode);
    return words.contains(word);
}

QmdServer::Mode QmdServer::mode() const
{
    Mode mode = m_mode;
    modeOf(m_spool.mode(), &mode);
    return mode;
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
    int status = 200;
    const QByteArray body = answerTo(request, &status);
    const QString line
        = QStringLiteral("%1 %2 %3").arg(QString::fromLatin1(request.method), request.resource).arg(status);
    m_requests.append(line);
    m_bodies.insert(request.resource, request.body);
    m_spool.record(request.serial, line.toLatin1() + ' ' + inOneLine(request.body));
    if (status != 0) {
        const QPointer<QTcpSocket> client(socket);
        const int delay = mode() == Mode::Slow ? m_delay : 0;
        QTimer::singleShot(delay, this, [this, client, status, body] {
            if (client && client->state() == QAbstractSocket::ConnectedState)
                send(client, status, body);
        });
    }
    emit requestReceived(request.serial + QLatin1Char(' ') + line);
}

// What waits for the device is taken only by an answer that gets through.
QByteArray QmdServer::answerTo(const Request &request, int *status) const
{
    const bool fetches = request.resource.endsWith(QLatin1String("onfiguration"));
    switch (mode()) {
    case Mode::Silent:
        *status = 0;
        return QByteArray();
    case Mode::Error:
        *status = 500;
        return R"({"data": [{"action": "REBOOT"}]})";
    case Mode::Redirect:
        *status = 302;
        return QByteArray();
    case Mode::Cut:
        return R"({"data": [{"action": "REBOOT"}]})";
    case Mode::Rubbish:
        return "\xff{\"data\": [{\"action\": \"REBOOT\"}";
    case Mode::Huge:
        return R"({"data": [{"action": "REBOOT"}], "padding": ")" + QByteArray(hugeBody, 'x') + "\"}";
    case Mode::Normal:
    case Mode::Slow:
        break;
    }
    if (request.resource == QLatin1String("?"))
        *status = 404;
    else if (request.method != "PUT" && !(fetches && request.method == "GET"))
        *status = 405;
    return *status == 200 ? message(request) : QByteArray();
}

QByteArray QmdServer::message(const Request &request) const
{
    const QByteArray whole = m_spool.take(request.serial, QStringLiteral("body"));
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

void QmdServer::send(QTcpSocket *socket, int status, const QByteArray &body) const
{
    const bool cut = mode() == Mode::Cut;
    QByteArray head = "HTTP/1.1 " + QByteArray::number(status) + ' ' + reasonPhrase(status) + "\r\n";
    if (status == 302)
        head += "Location: " + m_redirect.toEncoded() + "\r\n";
    head += "Content-Type: application/json\r\nContent-Length: " + QByteArray::number(body.size()) + headEnd;
    socket->write(head + (cut ? body.left(body.size() / 2) : body));
    socket->flush();
    if (cut)
        socket->disconnectFromHost();
}
