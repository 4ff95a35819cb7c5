// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <NetworkManagerQt/GenericTypes>

#include <QJsonObject>
#include <QString>

#include <optional>

/// How an interface gets its IPv4 address: from DHCP, or one that is set by hand.
struct Addressing
{
    /// What an interface of the document wants; nothing when its static address cannot be used.
    static std::optional<Addressing> fromDocument(const QJsonObject &interface);
    /// What a stored profile says.
    static Addressing fromProfile(const QVariantMap &ipv4);

    /// The setting "ipv4" of a profile.
    QVariantMap toProfile() const;

    bool isStatic = false;
    QString address;
    int prefixLength = 0;
    QString gateway; ///< may be empty
};
