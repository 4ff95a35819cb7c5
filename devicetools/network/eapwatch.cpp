// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/eapwatch.h"

#include <QDBusConnection>

EapWatch::EapWatch()
{
    QDBusConnection::systemBus().connect(QStringLiteral("fi.w1.wpa_supplicant1"), QString(),
                                         QStringLiteral("fi.w1.wpa_supplicant1.Interface"),
                                         QStringLiteral("EAP"), this, SLOT(note(QString, QString)));
}

void EapWatch::note(const QString &status, const QString &parameter)
{
    m_notes.note(status, parameter);
}
