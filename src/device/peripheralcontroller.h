// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/peripheralmodel.h"

#include <QMap>

/// The values of the redirection column.
namespace Redirection {
inline const QString native = QStringLiteral("Native");     ///< the device is used locally
inline const QString redirect = QStringLiteral("Redirect"); ///< the device is handed to the session
} // namespace Redirection

/// The USB devices that can be redirected to a session: plugged-in devices and manually added ones. Devices
/// with the same identifier share one entry. Identifiers look like "03ba:04ce" and are stored in lower case.
class PeripheralController : public QObject
{
    Q_OBJECT

public:
    explicit PeripheralController(QObject *parent = nullptr);

    /// The entries, owned by the model. Devices that are not plugged in are in italics.
    PeripheralModel &model();

    /// Adds the plugged-in devices that are not listed yet, as "Native".
    void readPeripherals();
    /// The name from the database of identifiers, or "USB DEVICE".
    QString getProductName(const QString &vid, const QString &pid);
    /// Adds a device that is not plugged in. Ignores invalid, listed and blacklisted identifiers.
    void addDevice(const QString &vid, const QString &pid);

    bool containsDevice(const QString &id) const;
    /// Whether the terminal itself needs the device, so that it is never redirected.
    bool blackListedDevice(const QString &id) const;
    void setRedirection(const QString &id, const QString &redirection);
    void removeDevice(const QString &id);
    void removeAllDevices();
    /// In the order of the list.
    QList<Item *> getDeviceList() const;
    Item *lastItemAdded() const; ///< null if it has been removed

    /// Whether a text is an identifier, in lower or upper case.
    static bool isIdentifier(const QString &text);

private:
    void append(const QString &id, bool pluggedIn);

    PeripheralModel m_model;
    QMap<QString, Item *> m_items; ///< by identifier
    QString m_lastAdded;
};
