// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/connectionfile.h"

#include "config/applicationproxy.h"
#include "config/jsontext.h"
#include "config/keys.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QUrl>

Q_LOGGING_CATEGORY(lcConnection, "kt.app.connection")

namespace ConnectionFile {

namespace {

constexpr int colourDepth = 24;
constexpr int successStatus = 6;

QJsonObject desktop(const Session &session)
{
    QJsonObject result = {{QStringLiteral("width"), session.screen.width()},
                          {QStringLiteral("height"), session.screen.height()},
                          {QStringLiteral("bitspp"), colourDepth}};
    if (session.secondaryAtLeft) {
        // The client works out the second display's size and alignment by itself.
        result.insert(QStringLiteral("secondary"),
                      QJsonObject{{QStringLiteral("width"), 0},
                                  {QStringLiteral("height"), 0},
                                  {QStringLiteral("at_left"), *session.secondaryAtLeft},
                                  {QStringLiteral("bottom_aligned"), 0}});
    }
    return result;
}

void setKioskAutoLogin(QJsonObject &server, const QJsonObject &configuration)
{
    const QJsonObject logon = configuration.value(Key::autologon).toObject();
    const QJsonObject application = configuration.value(Key::appAutostart).toObject();
    server.insert(QStringLiteral("auto_logon"), logon.value(Key::enabled).toBool());
    server.insert(QStringLiteral("domain"), logon.value(Key::domain).toString());
    server.insert(QStringLiteral("user"), logon.value(Key::username).toString());
    server.insert(QStringLiteral("password"), logon.value(Key::password).toString());
    server.insert(QStringLiteral("start_app"), application.value(Key::enabled).toBool());
    server.insert(QStringLiteral("cmd"), application.value(Key::program).toString());
    server.insert(QStringLiteral("path"), application.value(Key::path).toString());
}

} // namespace

QString proxyUrl(const QJsonObject &proxy, const QString &server)
{
    if (!proxy.value(Key::enabled).toBool() || ApplicationProxy::bypassedFor(server, proxy))
        return QStringLiteral("\"\"");
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(proxy.value(Key::address).toString());
    url.setPort(proxy.value(Key::port).toInt());
    const QString user = proxy.value(Key::userName).toString();
    const QString password = proxy.value(Key::password).toString();
    if (!user.isEmpty())
        url.setUserName(user, QUrl::DecodedMode);
    if (!user.isEmpty() && !password.isEmpty())
        url.setPassword(password, QUrl::DecodedMode);
    return url.toString(QUrl::FullyEncoded);
}

QJsonObject describe(const Session &session, const QJsonObject &configuration)
{
    QJsonObject server = {{QStringLiteral("address"), session.address}};
    setKioskAutoLogin(server, configuration);
    const QString device = configuration.value(Key::general).toObject().value(Key::deviceName).toString();
    const QJsonObject misc = {{QStringLiteral("audio"), 1},
                              {QStringLiteral("ShowNormalMessages"), false},
                              {QStringLiteral("ShowSystemMessages"), false},
                              {QStringLiteral("auto_disconnect"), session.autoDisconnect},
                              {QStringLiteral("UserDeviceName"), device},
                              {QStringLiteral("proxy_url"), proxyUrl(session.proxy, session.address)}};
    return {{QStringLiteral("zClient"),
             QJsonObject{{QStringLiteral("desktop"), desktop(session)},
                         {QStringLiteral("server"), server},
                         {QStringLiteral("misc"), misc}}}};
}

bool write(const QString &path, const QJsonObject &description)
{
    QFile file(path);
    const QByteArray text = QJsonDocument(description).toJson(QJsonDocument::Indented);
    // It holds the log-on password: its permissions come before its content.
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && file.write(text) == text.size()
        && file.flush())
        return true;
    qCCritical(lcConnection).noquote() << "cannot write" << path << ':' << file.errorString();
    QFile::remove(path); // half of it, or another session's
    return false;
}

Verdict classify(const QByteArray &status)
{
    const QJsonObject object = JsonText::parsed(status);
    if (object.value(QLatin1String("status")).toInt() == successStatus)
        return Verdict::NoError;
    const bool explained = object.value(QLatin1String("log")).toArray().contains(QStringLiteral(":<FAIL>"));
    return explained ? Verdict::ConnectionFailed : Verdict::ConnectionError;
}

} // namespace ConnectionFile
