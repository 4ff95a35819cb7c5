// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsonmodule.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QJsonObject holding(int length)
{
    return {{QStringLiteral("k"), QString(length, QLatin1Char('v'))}};
}

/// While it lives no file of this process grows beyond a size: to a writer the disk is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {size, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_before = {};
};

} // namespace

/// The holder of a document and its file.
class JsonModuleTest : public QObject
{
    Q_OBJECT

private slots:
    void standsInTheStateDirectory();
    void leavesExactlyTheLastContent();
    void readsWhatIsNoDocumentAsEmpty_data();
    void readsWhatIsNoDocumentAsEmpty();
    void givesTextByteForByte();
    void keepsTheOldContentWhenTheDiskIsFull();
    void tellsWhenItCannotWrite();

private:
    QTemporaryDir m_folder;
};

void JsonModuleTest::standsInTheStateDirectory()
{
    QCOMPARE(JsonModule(QStringLiteral("config.json"), true).filePath(),
             QStringLiteral("/var/lib/kt964/config.json"));
    QCOMPARE(JsonModule(QStringLiteral("x/y.json"), false).filePath(), QStringLiteral("x/y.json"));
}

void JsonModuleTest::leavesExactlyTheLastContent()
{
    const QString path = m_folder.filePath(QStringLiteral("last.json"));
    JsonModule module(path, false);
    JsonModule reader(path, false);
    for (const int length : {10, 20000, 0, 5000}) {
        QVERIFY(module.setObject(holding(length)));
        QCOMPARE(contentOf(path), "{\n    \"k\": \"" + QByteArray(length, 'v') + "\"\n}\n");
        QVERIFY(reader.getDocument().object() != holding(length));
        reader.readContent();
        QCOMPARE(reader.getDocument().object(), holding(length));
    }
}

void JsonModuleTest::readsWhatIsNoDocumentAsEmpty_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("half") << QByteArray("{\"k\": {\"a\": 1}, \"b");
    QTest::newRow("followed by something") << QByteArray("{}x");
    QTest::newRow("array") << QByteArray("[{}]");
    QTest::newRow("bytes") << QByteArray("{\"k\": \"\xff\xfe\"}\0", 13);
    QTest::newRow("deep") << QByteArray(100000, '[');
}

void JsonModuleTest::readsWhatIsNoDocumentAsEmpty()
{
    QFETCH(const QByteArray, content);
    const QString path = m_folder.filePath(QStringLiteral("broken.json"));
    QFile::remove(path);
    if (!content.isNull()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    JsonModule module(path, false);
    module.setJsonString("{\"old\": 1}");
    module.readContent();
    QCOMPARE(module.getDocument().object(), QJsonObject());
}

void JsonModuleTest::givesTextByteForByte()
{
    const QString path = m_folder.filePath(QStringLiteral("text.json"));
    JsonModule module(path, false);
    QVERIFY(
        module.setObject({{QStringLiteral("k"), QString::fromUtf8("\xc5\xbb\xe2\x82\xac\xf0\x9f\x96\xa5")}}));
    QCOMPARE(module.getJsonString().toLatin1(), contentOf(path));

    const QByteArray before = contentOf(path);
    module.setJsonString("{\"k\": \"\xc5\xbb\"}");
    QCOMPARE(module.getDocument().object().value(QStringLiteral("k")).toString(), QString(QChar(0x17b)));
    module.setJsonString("{\"k\": ");
    QVERIFY(module.getDocument().isNull());
    QCOMPARE(contentOf(path), before);
}

void JsonModuleTest::keepsTheOldContentWhenTheDiskIsFull()
{
    const QString path = m_folder.filePath(QStringLiteral("full.json"));
    JsonModule module(path, false);
    QVERIFY(module.setObject(holding(100)));
    const QByteArray before = contentOf(path);
    {
        const FullDisk full(200);
        QVERIFY(!module.setObject(holding(5000)));
    }
    QCOMPARE(contentOf(path), before);
    QVERIFY(module.writeContent());
    QCOMPARE(contentOf(path).size(), before.size() + 4900);
}

void JsonModuleTest::tellsWhenItCannotWrite()
{
    JsonModule inNoFolder(m_folder.filePath(QStringLiteral("none/config.json")), false);
    QVERIFY(!inNoFolder.setObject(holding(1)));
    QCOMPARE(inNoFolder.getDocument().object(), holding(1));
    JsonModule folder(m_folder.path(), false);
    QVERIFY(!folder.setObject(holding(1)));
    folder.readContent();
    QVERIFY(folder.getDocument().object().isEmpty());
}

QTEST_APPLESS_MAIN(JsonModuleTest)
#include "jsonmoduletest.moc"
