// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "documents.h"
#include "testdevice.h"

#include "config/defaults.h"
#include "config/jsonmodule.h"
#include "testtable.h"

#include <QtTest>

#include <optional>

namespace {

const QString file = "/var/lib/kt964/config.json";
const QString marker = "/var/lib/kt964/RECOVERY";
const QString hostNameReset = "kt-set-hostname -r";

QJsonObject factoryDocument()
{
    return Defaults::document("kt964", Defaults::networkSettings({}));
}
} // namespace

/// Which documents the device starts with, and how it comes back to the factory defaults.
class RecoveryTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QFile::remove(m_device.path(marker));
        TestDevice::waitForTools();
        m_device.forgetCalls();
        m_module.emplace("config.json", true);
        m_module->getParameters(factoryDocument());
    }

    void asksForTheSectionsOfTheVersion_data() { Documents::addRows("required-sections.json"); }
    void asksForTheSectionsOfTheVersion()
    {
        QFETCH(QJsonObject, row);
        QJsonObject root = factoryDocument();
        const QJsonObject inserted = row["insert"].toObject();
        for (auto section = inserted.begin(); section != inserted.end(); ++section)
            root.insert(section.key(), section.value());
        root.remove(row["remove"].toString());
        const bool correct = row["correct"].toBool();
        m_device.setDocument(root);

        QCOMPARE(m_module->isConfigCorrect(), correct);
        QCOMPARE(m_device.document(), correct ? root : factoryDocument());
        TestDevice::waitForTools();
        QCOMPARE(m_device.calls(), correct ? QStringList() : QStringList(hostNameReset));
    }

    void replacesWhatIsNoDocument_data()
    {
        const TestTable<QByteArray> table("content");
        for (const char *name : {"array.json", "truncated.json"})
            table.row(name, Documents::text(QLatin1String(name)));
        table.row("empty", {});
        table.row("followed by something", "{}x");
        table.row("bytes", QByteArray("{\"k\": \"\xff\xfe\"}\0", 13));
        table.row("nested too deep", QByteArray("{\"a\":").repeated(100000));
    }

    void replacesWhatIsNoDocument()
    {
        QFETCH(QByteArray, content);
        m_device.write(file, content);
        QVERIFY(!m_module->isConfigCorrect());
        QCOMPARE(m_device.read(file), QJsonDocument(factoryDocument()).toJson(QJsonDocument::Indented));
        QCOMPARE(m_module->getDocument().object(), factoryDocument());
        QVERIFY(m_module->isConfigCorrect());
    }

    void recoversWhenAsked()
    {
        m_device.setDocument(Documents::object("version-14.upgraded.json"));
        m_device.write(marker, "");
        m_device.setFault("kt-set-hostname", "crash");
        QVERIFY(!m_module->isConfigCorrect());
        QCOMPARE(m_device.document(), factoryDocument());
        QVERIFY(!m_device.exists(marker));
        QVERIFY(m_module->isConfigCorrect());
        m_device.setFault("kt-set-hostname", "none");
    }

    void leavesOtherDocumentsAlone()
    {
        const QString other = "/var/lib/kt964/other.json";
        m_device.write(other, "{}");
        m_device.write(marker, "");
        JsonModule module("other.json", true);
        module.getParameters(factoryDocument());
        QVERIFY(module.isConfigCorrect());
        QCOMPARE(m_device.read(other), QByteArray("{}"));
        QVERIFY(m_device.exists(marker));
    }

    void triesAgainWhenItCouldNotWrite()
    {
        QFile::remove(m_device.path(file));
        QVERIFY(QDir().mkdir(m_device.path(file)));
        m_device.write(marker, "");
        QVERIFY(!m_module->isConfigCorrect());
        QCOMPARE(m_module->getDocument().object(), factoryDocument());
        QVERIFY(m_device.exists(marker));
        QVERIFY(QDir().rmdir(m_device.path(file)));
        QVERIFY(!m_module->isConfigCorrect());
        QVERIFY(!m_device.exists(marker));
    }

private:
    const TestDevice m_device;
    std::optional<JsonModule> m_module;
};

QTEST_GUILESS_MAIN(RecoveryTest)
#include "recoverytest.moc"
