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
    checkIn();
    return true;
}

void DeviceAgent::checkIn()
{
    abort(CheckIn);
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
    if (!document.isEmpty())
        m_replies[CheckIn] = PUT(m_baseUrl, document);
    putConfiguration();
    if (m_heartbeatTimer == 0)
        m_heartbeatTimer = startTimer(heartbeatMs, Qt::CoarseTimer);
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
    if (isPending(kind))
        m_replies[kind]->abort();
}

void DeviceAgent::stop()
{
    if (m_heartbeatTimer != 0)
        killTimer(m_heartbeatTimer);
    m_heartbeatTimer = 0;
    m_gathering = false;
    m_repeat.fill(false);
    for (int kind = 0; kind < KindCount; ++kind)
        abort(static_cast<Kind>(kind));
}
