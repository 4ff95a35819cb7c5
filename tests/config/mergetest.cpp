// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "documents.h"

#include "config/compatibility.h"
#include "config/merge.h"

/// Whether a document from afar fits ours, and what becomes of ours when it is laid over it.
class MergeTest : public QObject
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

    void merges_data() { Documents::addRows("merges.json"); }
    void merges()
    {
        QFETCH(const QJsonObject, row);
        QJsonObject local = row.value("local").toObject();
        Merge::mergeJsonObject(local, row.value("remote").toObject());
        QCOMPARE(local, row.value("merged").toObject());
    }
};

QTEST_APPLESS_MAIN(MergeTest)
#include "mergetest.moc"
