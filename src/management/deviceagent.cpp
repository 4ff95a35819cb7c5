// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/deviceagent.h"

#include "device/diagnostics.h"
#include "management/checkin.h"
#include "management/devicestatus.h"

#include <QTimerEvent>

#include <utility>

namespace {
const QString devices = QStringLiteral("/qmd/api/da/v1/devices/");
}

DeviceAgent::DeviceAgent(DeviceStatus &status, QObject *parent)
    : RestClient(parent)
    , m_status(status)
{
    connect(&dispatcher(), &MessageDispatcher::getConfiguration, this, &DeviceAgent::getConfiguration);
    connect(&dispatcher(), &MessageDispatcher::getProfile, this, &DeviceAgent::getProfile);
    m_repeatTimer.setSingleShot(true);
    connect(&m_repeatTimer, &QTimer::timeout, this, &DeviceAgent::checkIn);
}

void DeviceAgent::setURL(const QUrl &url)
{
    if (url.toString() == m_baseUrl.toString(QUrl::RemovePath))
        return;
    m_baseUrl = url;
    m_initNeeded = true;
}

void DeviceAgent::setDeviceSerial(const QString &serial)
{
    m_serial = serial;
}

void DeviceAgent::enableComunication(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    m_initNeeded = true;
}

void DeviceAgent::setConfiguration(const QByteArray &configuration)
{
    m_configuration = configuration;
}

void DeviceAgent::checkProxy()
{
    if (m_proxy != QNetworkProxy::applicationProxy())
        m_initNeeded = true;
}

bool DeviceAgent::initConnection()
{
    if (!m_initNeeded)
        return false;
    m_initNeeded = false;
    manager().setProxy(m_proxy);
    stop();
    if (!m_enabled) {
        Diagnostics::print(QStringLiteral("QMD module stopped"));
        return false;
    }
    m_baseUrl.setPath(devices + m_serial);
    m_nextRepeat = m_firstRepeat;
    checkIn();
    return true;
}

void DeviceAgent::checkIn()
{
    abort(CheckIn);
    m_repeatTimer.stop();
    // Without a server, the device's tools need not be queried.
    if (!m_enabled || !isSupported(m_baseUrl))
        return sendCheckIn(QByteArray());
    if (m_gathering)
        return;
    m_gathering = true;
    m_status.request(this, [this](const JSONStatus &status) {
        if (std::exchange(m_gathering, false))
            sendCheckIn(CheckInDocument::text(m_serial, status));
    });
}

void DeviceAgent::sendCheckIn(const QByteArray &document)
{
    QNetworkReply *reply = document.isEmpty() ? nullptr : PUT(m_baseUrl, document);
    m_replies[CheckIn] = reply;
    if (reply) {
        connect(reply, &QNetworkReply::finished, this, [this, reply] {
            if (reply == m_replies[CheckIn]) // and not a later one
                handleCheckInReply(reply->error());
        });
    }
    putConfiguration();
    if (m_heartbeatTimer == 0)
        m_heartbeatTimer = startTimer(heartbeatMs, Qt::CoarseTimer);
}

/// A gateway's word that the server is away is no reply of the server.
void DeviceAgent::handleCheckInReply(QNetworkReply::NetworkError error)
{
    const bool replied = error == QNetworkReply::NoError
        || (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError);
    if (replied)
        return;
    m_repeatTimer.start(m_nextRepeat);
    m_nextRepeat = nextRepeat(m_nextRepeat);
}

int DeviceAgent::nextRepeat(int milliseconds)
{
    return qMin(2 * milliseconds, longestRepeatMs);
}

void DeviceAgent::setFirstRepeat(int milliseconds)
{
    m_firstRepeat = milliseconds;
}

void DeviceAgent::heartbeat()
{
    abort(Heartbeat);
    if (m_enabled)
        m_replies[Heartbeat] = PUT(resource("/heartbeat"), QByteArray());
}

void DeviceAgent::putConfiguration()
{
    if (!m_enabled || m_configuration.isEmpty())
        return;
    abort(Upload);
    m_replies[Upload] = PUT(resource("/configuration"), m_configuration);
}

void DeviceAgent::getConfiguration()
{
    fetch(Configuration, "/configuration");
}

void DeviceAgent::getProfile()
{
    fetch(Profile, "/profileConfiguration");
}

void DeviceAgent::fetch(Kind kind, const char *name)
{
    if (!m_enabled)
        return;
    m_repeat[kind] = isPending(kind);
    if (m_repeat[kind])
        return;
    QNetworkReply *reply = GET(resource(name));
    m_replies[kind] = reply;
    if (!reply)
        return;
    connect(reply, &QNetworkReply::finished, this, [this, kind, name] {
        if (m_repeat[kind])
            fetch(kind, name);
    });
}

bool DeviceAgent::isBusy() const
{
    bool busy = m_gathering;
    for (int kind = 0; kind < KindCount; ++kind)
        busy = busy || isPending(static_cast<Kind>(kind));
    return busy;
}

void DeviceAgent::timerEvent(QTimerEvent *)
{
    heartbeat();
}

QUrl DeviceAgent::resource(const char *name) const
{
    QUrl url = m_baseUrl;
    url.setPath(m_baseUrl.path() + QLatin1String(name));
    return url;
}

bool DeviceAgent::isPending(Kind kind) const
{
    const auto &reply = m_replies[kind];
    return reply && !reply->isFinished();
}

void DeviceAgent::abort(Kind kind)
{
    if (!isPending(kind))
        return;
    // It is no longer ours when its signal arrives.
    const QPointer<QNetworkReply> reply = std::exchange(m_replies[kind], nullptr);
    reply->abort();
}

void DeviceAgent::stop()
{
    if (m_heartbeatTimer != 0)
        killTimer(m_heartbeatTimer);
    m_heartbeatTimer = 0;
    m_repeatTimer.stop();
    m_gathering = false;
    m_repeat.fill(false);
    for (int kind = 0; kind < KindCount; ++kind)
        abort(static_cast<Kind>(kind));
}
