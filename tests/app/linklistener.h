// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/networkstatus.h"

#include <QNetworkInterface>
#include <QStringList>

#include <utility>

/// The wired interface's addresses, as the kernel has them.
inline QStringList liveAddresses()
{
    QStringList addresses;
    for (const auto &entry : QNetworkInterface::interfaceFromName("eth0").addressEntries()) {
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
            addresses += entry.ip().toString() + QLatin1Char(' ') + entry.broadcast().toString();
    }
    return addresses;
}

/// Writes down what is said of the links, a phrase for each signal.
class LinkListener : public QObject
{
public:
    explicit LinkListener(const NetworkStatus *status)
    {
        using S = NetworkStatus;
        connect(status, &S::wiredStatus, this, [this](const QString &state) { wired("icon %1", state); });
        connect(status, &S::wiredIconShown, this,
                [this](bool shown) { wired(shown ? "shown%1" : "hidden%1", QString()); });
        connect(status, &S::ethernetAddress, this, [this](const QString &text, bool enabled) {
            wired(enabled ? "address %1" : "address %1 off", text);
        });
        connect(status, &S::ethernetIndicator, this,
                [this](const QString &image) { wired("%1", colour(image)); });
        connect(status, &S::serverGroupsAffected, this, [this] { wired("groups%1", QString()); });
        connect(status, &S::wirelessStatus, this, [this](const QString &state, int signal) {
            wireless("icon %1", state + QLatin1Char(' ') + QString::number(signal));
        });
        connect(status, &S::wirelessToolTip, this, [this](const QString &text) { wireless("tip %1", text); });
        connect(status, &S::wifiAddress, this, [this](const QString &text, bool enabled) {
            wireless(enabled ? "address %1" : "address %1 off", text);
        });
        connect(status, &S::wifiIndicator, this,
                [this](const QString &image) { wireless("%1", colour(image)); });
    }

    QString takeWired() { return std::exchange(m_wired, QStringList()).join(", "); }
    QString takeWireless() { return std::exchange(m_wireless, QStringList()).join(", "); }
    QString hearWired() const { return m_wired.join(", "); }
    QString hearWireless() const { return m_wireless.join(", "); }

private:
    static QString colour(const QString &image) { return image.section('_', -1).chopped(4); }
    void wired(const char *phrase, const QString &value) { m_wired += QString(phrase).arg(value); }
    void wireless(const char *phrase, const QString &value) { m_wireless += QString(phrase).arg(value); }

    QStringList m_wired;
    QStringList m_wireless;
};
