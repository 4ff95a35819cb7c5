// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>

/// One value of the configuration that a merge replaces.
struct Change
{
    QStringList key; ///< from the section down
    QJsonValue from;
    QJsonValue to;
};

/// What a document does to a device's configuration.
struct ConfigurationChanges
{
    QString error; ///< why the device would refuse it, or empty
    int version = 0;
    QList<Change> changed;
    QList<QStringList> ignored; ///< keys that the device lacks, or has with a value of another type

    /// By the device's own rules. A document that states no version is taken to be of the device's.
    static ConfigurationChanges between(const QJsonObject &held, const QJsonObject &wanted);

    /// Drops what a device that has taken it shows otherwise: a resolution that its display does not offer.
    void dropSubstituted();

    /// The first of the changes, as many as one datagram holds, as a document in plain ASCII; `taken` says
    /// how many. Empty when not even the first one fits.
    QByteArray firstPart(int *taken) const;
};

/// The value as it may be shown: no secrets, on one line, for keys of any depth.
QJsonValue withoutSecrets(const QStringList &key, const QJsonValue &value);
