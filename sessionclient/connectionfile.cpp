// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/connectionfile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <algorithm>

namespace {

constexpr qint64 largestFile = 1024 * 1024;
constexpr int smallestSide = 200; // the protocol's limits for a desktop
constexpr int largestSide = 8192;

/// Reads typed members and keeps the first error.
class MemberReader
{
public:
    MemberReader(const QJsonObject &object, QString *fault)
        : m_object(object)
        , m_fault(fault)
    { }

    MemberReader object(const char *key) const
    {
        return MemberReader(value(key, QJsonValue::Object).toObject(), m_fault);
    }

    bool has(const char *key) const { return m_object.contains(QLatin1String(key)); }
    bool flag(const char *key) const { return value(key, QJsonValue::Bool).toBool(); }

    QString text(const char *key) const
    {
        QString text = value(key, QJsonValue::String).toString();
        if (!hasControlCharacter(text))
            return text;
        refuse(key, "contains a control character");
        return QString();
    }

    int number(const char *key, int smallest, int largest, int absent) const
    {
        const QJsonValue number = value(key, QJsonValue::Double);
        if (number.isUndefined())
            return absent;
        const int whole = number.toInt(smallest - 1);
        if (whole < smallest || whole > largest)
            refuse(key, "is out of range");
        return whole;
    }

    void refuse(const char *key, const char *why) const
    {
        if (m_fault->isEmpty())
            *m_fault = QStringLiteral("\"%1\" %2").arg(QLatin1String(key), QLatin1String(why));
    }

private:
    QJsonValue value(const char *key, QJsonValue::Type type) const
    {
        QJsonValue found = m_object.value(QLatin1String(key));
        if (found.isUndefined() || found.type() == type)
            return found;
        refuse(key, "has the wrong type");
        return QJsonValue(QJsonValue::Undefined);
    }

    QJsonObject m_object;
    QString *m_fault;
};

QUrl readProxy(const MemberReader &misc)
{
    const QString text = misc.text("proxy_url");
    if (text.isEmpty() || text == QLatin1String("\"\""))
        return QUrl();
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != QLatin1String("http") || url.host().isEmpty())
        misc.refuse("proxy_url", "is not a proxy address");
    return url;
}

SessionDescription readSession(const MemberReader &description)
{
    SessionDescription session;
    const MemberReader misc = description.object("misc");
    session.autoDisconnect = misc.flag("auto_disconnect");
    session.sound = misc.number("audio", 0, 2, 0) == 1;
    session.deviceName = misc.text("UserDeviceName");
    session.proxy = readProxy(misc);

    const MemberReader server = description.object("server");
    session.address = server.text("address");
    session.logOn = server.flag("auto_logon");
    session.domain = server.text("domain");
    session.user = server.text("user");
    session.password = server.text("password");
    session.startProgram = server.flag("start_app");
    session.program = server.text("cmd");
    session.directory = server.text("path");

    const MemberReader desktop = description.object("desktop");
    session.width = desktop.number("width", smallestSide, largestSide, 0);
    session.height = desktop.number("height", smallestSide, largestSide, 0);
    if (session.width == 0 || session.height == 0)
        desktop.refuse("desktop", "has no size");
    session.bitsPerPixel = desktop.number("bitspp", 8, 32, 24);
    session.secondDisplay = desktop.has("secondary");
    desktop.object("secondary"); // only checks the type
    return session;
}

} // namespace

bool hasControlCharacter(const QString &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

/// A leading "/" names a local socket to FreeRDP, a leading "-" looks like an option, and "|" starts a pipe.
bool isUsableAddress(const QString &address)
{
    return !address.isEmpty() && !hasControlCharacter(address)
        && !QStringLiteral("-/|").contains(address.front())
        && std::none_of(address.begin(), address.end(), [](QChar c) { return c.isSpace(); });
}

ParsedConnection parseConnection(const QByteArray &document)
{
    ParsedConnection parsed;
    const QJsonObject root = QJsonDocument::fromJson(document).object();
    if (root.isEmpty())
        return {SessionDescription(), EndReason::BadFile, QStringLiteral("not a JSON object")};

    parsed.session = readSession(MemberReader(root, &parsed.detail).object("zClient"));
    if (!parsed.detail.isEmpty()) {
        parsed.problem = EndReason::BadFile;
    } else if (!isUsableAddress(parsed.session.address)) {
        parsed.problem = EndReason::BadAddress;
        parsed.detail = QStringLiteral("\"address\" is not a server's address");
    }
    return parsed;
}

ParsedConnection readConnectionFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {SessionDescription(), EndReason::BadFile, file.errorString()};
    const QByteArray document = file.read(largestFile + 1);
    if (document.size() > largestFile)
        return {SessionDescription(), EndReason::BadFile, QStringLiteral("too large")};
    return parseConnection(document);
}
