// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "management/restclient.h"

#include <QNetworkProxy>
#include <QPointer>
#include <QTimer>
#include <QUrl>

#include <array>

class DeviceStatus;

/// Reports this device to a management server: checks in, sends heartbeats and the configuration, and fetches
/// documents on the server's request. docs/management-protocol.md describes the resources.
///
/// Settings take effect with the next `initConnection`. At most one request of each kind is pending. A newer
/// one replaces it, but a fetch requested during the same fetch follows it, once.
class DeviceAgent : public RestClient
{
    Q_OBJECT

public:
    static constexpr int heartbeatMs = 30000;
    /// A check-in without a reply is repeated after this time, and each further time after twice the time
    /// before.
    static constexpr int firstRepeatMs = 30000;
    static constexpr int longestRepeatMs = 600000;

    /// `status` outlives the agent.
    explicit DeviceAgent(DeviceStatus &status, QObject *parent = nullptr);

    void setURL(const QUrl &url);
    void setDeviceSerial(const QString &serial);
    void enableComunication(bool enabled);
    /// The configuration document as JSON text.
    void setConfiguration(const QByteArray &configuration);
    void checkProxy();

    /// After a relevant change, checks in again, or stops if communication is disabled. Returns whether it
    /// has checked in.
    bool initConnection();
    /// Sends the device's description, once the device's tools have replied, and starts the heartbeat.
    void checkIn();
    /// Aborts the previous heartbeat if it has no reply yet.
    void heartbeat();
    void putConfiguration();

    /// Whether any reply is still pending.
    bool isBusy() const;
    /// Whether a check-in without a reply will be repeated.
    bool isRepeating() const { return m_repeatTimer.isActive(); }
    /// The time before the repetition that follows one after `milliseconds`.
    static int nextRepeat(int milliseconds);
    /// For tests: shortens the time before the first repetition.
    void setFirstRepeat(int milliseconds);

public slots:
    void getConfiguration();
    void getProfile();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    enum Kind { CheckIn, Heartbeat, Upload, Configuration, Profile, KindCount };

    void sendCheckIn(const QByteArray &document);
    void handleCheckInReply(QNetworkReply::NetworkError error);
    void fetch(Kind kind, const char *name);
    QUrl resource(const char *name) const;
    bool isPending(Kind kind) const;
    void abort(Kind kind);
    void stop();

    DeviceStatus &m_status;
    bool m_gathering = false; ///< the description is awaited
    QUrl m_baseUrl;           ///< with the path of this device once connected
    int m_heartbeatTimer = 0;
    QString m_serial;
    bool m_enabled = true;
    QByteArray m_configuration;
    bool m_initNeeded = false;
    const QNetworkProxy m_proxy{QNetworkProxy::NoProxy}; ///< the agent never uses the device's proxy
    QTimer m_repeatTimer;                                ///< of the check-in
    int m_firstRepeat = firstRepeatMs;
    int m_nextRepeat = firstRepeatMs;
    std::array<QPointer<QNetworkReply>, KindCount> m_replies;
    std::array<bool, KindCount> m_repeat{};
};
