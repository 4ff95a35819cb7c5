// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "documents.h"
#include "testdevice.h"

#include "config/defaults.h"
#include "config/jsonmodule.h"

#include <QDir>

#include <optional>

namespace {

const QString file = QStringLiteral("/var/lib/kt964/config.json");
const QString marker = QStringLiteral("/var/lib/kt964/RECOVERY");
const QString hostNameReset = QStringLiteral("kt-set-hostname -r");

QJsonObject factoryDocument()
{
    return Defaults::document(QStringLiteral("kt964"), Defaults::networkSettings({}));
}

} // namespace

/// Which documents the device starts with, and how it comes back to the factory defaults.
class RecoveryTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void asksForTheSectionsOfTheVersion_data()
    {
        Documents::addRows(QStringLiteral("required-sections.json"));
    }
    void asksForTheSectionsOfTheVersion();
    void replacesWhatIsNoDocument_data();
    void replacesWhatIsNoDocument();
    void recoversWhenAsked();
    void leavesOtherDocumentsAlone();
    void triesAgainWhenItCouldNotWrite();

private:
    const TestDevice m_device;
    std::optional<JsonModule> m_module;
};

void RecoveryTest::init()
{
    QFile::remove(m_device.path(marker));
    m_device.forgetCalls();
    m_module.emplace(QStringLiteral("config.json"), true);
    m_module->getParameters(factoryDocument());
}

void RecoveryTest::asksForTheSectionsOfTheVersion()
{
    QFETCH(QJsonObject, row);
    QJsonObject root = factoryDocument();
    const QJsonObject inserted = row[QLatin1String("insert")].toObject();
    for (auto section = inserted.begin(); section != inserted.end(); ++section)
        root.insert(section.key(), section.value());
    root.remove(row[QLatin1String("remove")].toString());
    const bool correct = row[QLatin1String("correct")].toBool();
    m_device.setDocument(root);

    QCOMPARE(m_module->isConfigCorrect(), correct);
    QCOMPARE(m_device.document(), correct ? root : factoryDocument());
    QCOMPARE(m_device.calls(), correct ? QStringList() : QStringList(hostNameReset));
}

void RecoveryTest::replacesWhatIsNoDocument_data()
{
    QTest::addColumn<QByteArray>("content");
    for (const char *name : {"not-json.txt", "array.json", "truncated.json"})
        QTest::newRow(name) << Documents::text(QLatin1String(name));
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("nested too deep") << QByteArray("{\"a\":").repeated(100000);
}

void RecoveryTest::replacesWhatIsNoDocument()
{
    QFETCH(QByteArray, content);
    m_device.write(file, content);
    QVERIFY(!m_module->isConfigCorrect());
    QCOMPARE(m_device.read(file), QJsonDocument(factoryDocument()).toJson(QJsonDocument::Indented));
    QCOMPARE(m_module->getDocument().object(), factoryDocument());
    QVERIFY(m_module->isConfigCorrect());
}

void RecoveryTest::recoversWhenAsked()
{
    m_device.setDocument(Documents::object(QStringLiteral("version-14.upgraded.json")));
    m_device.write(marker, "");
    m_device.setFault(QStringLiteral("kt-set-hostname"), QStringLiteral("crash"));
    QVERIFY(!m_module->isConfigCorrect());
    QCOMPARE(m_device.document(), factoryDocument());
    QVERIFY(!m_device.exists(marker));
    QVERIFY(m_module->isConfigCorrect());
    m_device.setFault(QStringLiteral("kt-set-hostname"), QStringLiteral("none"));
}

void RecoveryTest::leavesOtherDocumentsAlone()
{
    const QString other = QStringLiteral("/var/lib/kt964/other.json");
    m_device.write(other, "{}");
    m_device.write(marker, "");
    JsonModule module(QStringLiteral("other.json"), true);
    module.getParameters(factoryDocument());
    QVERIFY(module.isConfigCorrect());
    QCOMPARE(m_device.read(other), QByteArray("{}"));
    QVERIFY(m_device.exists(marker));
    QVERIFY(m_device.calls().isEmpty());
}

void RecoveryTest::triesAgainWhenItCouldNotWrite()
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

QTEST_GUILESS_MAIN(RecoveryTest)
#include "recoverytest.moc"
