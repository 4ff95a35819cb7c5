// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "documents.h"

#include "config/compatibility.h"

/// Which documents have the structure of another.
class CompatibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void comparesStructure_data() { Documents::addRows("compatibility.json"); }
    void comparesStructure()
    {
        QFETCH(QJsonObject, row);
        const QJsonObject local = row["local"].toObject();
        const QJsonObject remote = row["remote"].toObject();
        const bool compatible = row["compatible"].toBool();
        QCOMPARE(Compatibility::checkObjects(local, remote), compatible);
        QCOMPARE(Compatibility::checkObjects(remote, local), compatible);
    }

};

QTEST_APPLESS_MAIN(CompatibilityTest)
#include "compatibilitytest.moc"
