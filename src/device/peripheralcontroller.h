// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/peripheralmodel.h"

#include <QMap>

/// The words of the redirection column.
namespace Redirection {
inline const QString native = QStringLiteral("Native");     ///< the device is used locally
inline const QString redirect = QStringLiteral("Redirect"); ///< the device is handed to the session
} // namespace Redirection

/// The USB devices that may be handed to a session: those that are plugged in, and those that somebody has
/// named. Each has one entry, however many of its kind are plugged in. Identifiers are "03ba:04ce" and kept
/// in lower case.
class PeripheralController : public QObject
{
    Q_OBJECT

public:
    explicit PeripheralController(QObject *parent = nullptr);

    /// The entries, which the model owns. One that is not plugged in is in italics.
    PeripheralModel &model();

    /// Adds what is plugged in and not listed yet, to be used locally.
    void readPeripherals();
    /// "USB DEVICE" for a device that the database of identifiers does not name.
    QString getProductName(const QString &vid, const QString &pid);
    /// Adds a device that is not plugged in; one that is listed, may not be redirected or cannot exist is
    /// left out.
    void addDevice(const QString &vid, const QString &pid);

    bool containsDevice(const QString &id) const;
    /// Whether the device runs the terminal itself and is never redirected.
    bool blackListedDevice(const QString &id) const;
    void setRedirection(const QString &id, const QString &redirection);
    void removeDevice(const QString &id);
    void removeAllDevices();
    /// In the order of the list.
    QList<Item *> getDeviceList() const;
    Item *lastItemAdded() const; ///< null when that one has been removed

    /// Whether a text is an identifier, in lower or upper case.
    static bool isIdentifier(const QString &text);

private:
    void append(const QString &id, bool pluggedIn);

    PeripheralModel m_model;
    QMap<QString, Item *> m_items; ///< by identifier
    QString m_lastAdded;
};
