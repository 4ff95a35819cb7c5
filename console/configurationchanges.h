// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>

/// One value of the configuration that a merge changes.
struct Change
{
    QStringList key; ///< path, beginning with the section
    QJsonValue from;
    QJsonValue to;
};

/// The changes that a document makes to a device's configuration.
struct ConfigurationChanges
{
    QString error; ///< why the device would reject the document, or empty
    int version = 0;
    QList<Change> changed;
    QList<QStringList> ignored; ///< keys that the device lacks, or whose type differs

    /// Compares by the device's own rules. A document without a version is taken to have the device's.
    static ConfigurationChanges between(const QJsonObject &held, const QJsonObject &wanted);

    /// Drops a resolution that the device has replaced by "Automatic", because its display lacks it.
    void dropSubstituted();

    struct Part
    {
        QByteArray document; ///< plain ASCII
        int count = 0;       ///< of changes
    };

    /// Returns as many of the first changes as one datagram holds. Empty when the first one does not fit.
    Part firstPart() const;
};

/// Returns the value for display, with its secrets masked; for keys of any depth.
QJsonValue withoutSecrets(const QStringList &key, const QJsonValue &value);
