// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/checkin.h"

#include "management/jsonstatus.h"

#include <QJsonDocument>
#include <QVariantMap>

QByteArray CheckInDocument::text(const QString &serial, const JSONStatus &status)
{
    const QVariantMap firmware{{QStringLiteral("firmwareVer"), status.getFWVersion()},
                               {QStringLiteral("receiverVer"), QStringLiteral("2.0.0")},
                               {QStringLiteral("configVer"), status.getConfigVersion()}};
    const QVariantMap device{{QStringLiteral("name"), status.getDeviceName()},
                             {QStringLiteral("family"), QStringLiteral("KT")},
                             {QStringLiteral("model"), QStringLiteral("KT964")},
                             {QStringLiteral("serial"), serial}};
    const QVariantMap network{{QStringLiteral("ethIP"), status.getIpAddress()},
                              {QStringLiteral("ethIPType"), status.getWiredIPType()},
                              {QStringLiteral("ethNetMask"), status.getIpNetmask()},
                              {QStringLiteral("ethMAC"), status.getMacAddress()},
                              {QStringLiteral("WiFiIP"), status.getWifiIpAddress()},
                              {QStringLiteral("WiFiIPType"), status.getIPType()},
                              {QStringLiteral("WiFiMAC"), status.getWmacAddress()}};
    const QVariantMap document{{QStringLiteral("firmwareInfo"), firmware},
                               {QStringLiteral("deviceInfo"), device},
                               {QStringLiteral("networkInfo"), network}};
    return QJsonDocument::fromVariant(document).toJson(QJsonDocument::Compact);
}
