// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "network-tools/joinverdict.h"

#include <QObject>

/// Listens to what wpa_supplicant says of the exchange of an 802.1x network. NetworkManager passes on only
/// that it failed. Who may not listen to it learns no more than that.
class EapWatch : public QObject
{
    Q_OBJECT

public:
    EapWatch();

    EapNotes notes() const { return m_notes; }

private slots:
    void note(const QString &status, const QString &parameter);

private:
    EapNotes m_notes;
};
