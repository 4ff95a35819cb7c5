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
    Unchanged, ///< the configuration held all of it already
    Refused,   ///< by the device, which said so
    Unusable,  ///< what the device has sent
    NoAnswer,
    Failed, ///< on our side
};

/// What came of one device.
struct Result
{
    QHostAddress device;
    Outcome outcome = Outcome::Done;
    quint32 code = 0; ///< the device's, when it refused
    QString message;  ///< for a reader, or empty
    QJsonObject report;
    QByteArray document;          ///< as the device sent it
    ConfigurationChanges changes; ///< of the configuration, sent or to be sent
};

Q_DECLARE_METATYPE(Result)
