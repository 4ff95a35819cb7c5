// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/merge.h"

#include "documents.h"

/// What becomes of a document when one from afar is laid over it.
class MergeTest : public QObject
{
    Q_OBJECT

private slots:
    void merges_data() { Documents::addRows(QStringLiteral("merges.json")); }
    void merges()
    {
        QFETCH(const QJsonObject, row);
        QJsonObject local = row.value(QLatin1String("local")).toObject();
        Merge::mergeJsonObject(local, row.value(QLatin1String("remote")).toObject());
        QCOMPARE(local, row.value(QLatin1String("merged")).toObject());
    }
};

QTEST_APPLESS_MAIN(MergeTest)
#include "mergetest.moc"
