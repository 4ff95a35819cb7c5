// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/configurationchanges.h"

#include <QByteArray>
#include <QHostAddress>
#include <QJsonObject>
#include <QMetaType>
#include <QString>

enum class Outcome {
    Done,
    Unchanged, ///< the configuration already contained all values
    Refused,   ///< by the device
    Unusable,  ///< the device's reply
    NoAnswer,
    Failed, ///< on this machine
};

/// The outcome for one device.
struct Result
{
    QHostAddress device;
    Outcome outcome = Outcome::Done;
    quint32 code = 0; ///< the device's result code when it refused
    QString message;  ///< text for the user, or empty
    QJsonObject report;
    QByteArray document;          ///< the configuration as the device sent it
    ConfigurationChanges changes; ///< sent, or planned in a dry run
};

Q_DECLARE_METATYPE(Result)
