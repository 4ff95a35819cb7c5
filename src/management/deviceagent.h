// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "management/restclient.h"

#include <QNetworkProxy>
#include <QPointer>
#include <QUrl>

#include <array>

/// Keeps this device known to a management server: checks in once, sends heartbeats and the configuration,
/// and fetches what the server's messages tell it to. docs/management-protocol.md describes the resources.
///
/// What is set takes effect with the next `initConnection`. At most one request of each kind is under way: a
/// newer one takes its place, and a fetch asked for during another follows it, once.
class DeviceAgent : public RestClient
{
    Q_OBJECT

public:
    static constexpr int heartbeatMs = 30000;

    explicit DeviceAgent(QObject *parent = nullptr);

    void setURL(const QUrl &url);
    void setDeviceSerial(const QString &serial);
    void enableComunication(bool enabled);
    /// The configuration document as JSON text.
    void setConfiguration(const QByteArray &configuration);
    void checkProxy();

    /// Checks in anew where something has changed that asks for it, or stops when communication is disabled.
    /// Whether it has checked in.
    bool initConnection();
    /// Describes the device to the server, which asks the device's tools, and starts the heartbeat.
    void checkIn();
    /// One that has got no answer by now is given up.
    void heartbeat();
    void putConfiguration();

    /// Whether any answer is still awaited.
    bool isBusy() const;

public slots:
    void getConfiguration();
    void getProfile();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    enum Kind { CheckIn, Heartbeat, Upload, Configuration, Profile, KindCount };

    void fetch(Kind kind, const char *name);
    QUrl resource(const char *name) const;
    bool isUnderWay(Kind kind) const;
    void giveUp(Kind kind);
    void stop();

    QUrl m_baseUrl; ///< once connected with the path of this device
    int m_heartbeatTimer = 0;
    QString m_serial;
    bool m_enabled = true;
    QByteArray m_configuration;
    bool m_initNeeded = false;
    const QNetworkProxy m_proxy{QNetworkProxy::NoProxy}; ///< the agent's traffic never takes the device's
    std::array<QPointer<QNetworkReply>, KindCount> m_replies;
    std::array<bool, KindCount> m_askedAgain{};
};
