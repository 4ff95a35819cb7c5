// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "network-tools/joinverdict.h"

#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// Listens to what wpa_supplicant says of an attempt to join. NetworkManager passes on only that it failed,
/// and that after half a minute. Who may not listen to wpa_supplicant learns no more than that.
class SupplicantWatch : public QObject
{
    Q_OBJECT

public:
    SupplicantWatch();

    JoinNotes notes() const { return m_notes; }

private slots:
    void noteEap(const QString &status, const QString &parameter);
    void noteProperties(const QString &interface, const QVariantMap &changed, const QStringList &others);

private:
    JoinNotes m_notes;
};
