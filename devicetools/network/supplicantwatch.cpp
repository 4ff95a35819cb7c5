// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/supplicantwatch.h"

#include <QDBusConnection>

SupplicantWatch::SupplicantWatch()
{
    const QString service = QStringLiteral("fi.w1.wpa_supplicant1");
    QDBusConnection bus = QDBusConnection::systemBus();
    bus.connect(service, QString(), service + QLatin1String(".Interface"), QStringLiteral("EAP"), this,
                SLOT(noteEap(QString, QString)));
    bus.connect(service, QString(), QStringLiteral("org.freedesktop.DBus.Properties"),
                QStringLiteral("PropertiesChanged"), this,
                SLOT(noteProperties(QString, QVariantMap, QStringList)));
}

void SupplicantWatch::noteEap(const QString &status, const QString &parameter)
{
    m_notes.noteEap(status, parameter);
}

void SupplicantWatch::noteProperties(const QString &, const QVariantMap &changed, const QStringList &)
{
    const QString state = changed.value(QStringLiteral("State")).toString();
    if (!state.isEmpty())
        m_notes.noteState(state);
}
