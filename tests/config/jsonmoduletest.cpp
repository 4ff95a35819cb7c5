// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "fulldisk.h"
#include "testtable.h"

#include "config/documentfile.h"
#include "config/jsonmodule.h"

#include <QCryptographicHash>
#include <QtTest>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QJsonObject holding(int length)
{
    return {{"k", QString(length, 'v')}};
}
} // namespace

/// The holder of a document and its file.
class JsonModuleTest : public QObject
{
    Q_OBJECT

private slots:
    void leavesExactlyTheLastContent()
    {
        const QString path = m_folder.filePath("last.json");
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

    void changesTheFileByOneCall()
    {
        using Change = JsonModule::Change;
        const QString path = m_folder.filePath("changed.json");
        const auto insert = [](QJsonObject &root) {
            root.insert("mine", true);
            return true;
        };
        JsonModule module(path, false);
        QCOMPARE(module.change(insert), Change::Unreadable);
        QVERIFY(JsonModule(path, false).setObject(holding(100)));
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));

        const QSignalSpy changed(&module, &JsonModule::changed);
        QCOMPARE(module.change([](QJsonObject &root) {
            root = {};
            return false;
        }),
                 Change::Refused);
        QCOMPARE(module.getDocument().object(), holding(100));
        {
            const FullDisk full(100);
            QCOMPARE(module.change(insert), Change::NotWritten);
            QCOMPARE(module.getDocument().object(), holding(100));
            QCOMPARE(module.change(insert, JsonModule::OnFailure::Hold), Change::NotWritten);
            QVERIFY(module.readAgain() && module.getDocument().object().contains("mine"));
        }
        QCOMPARE(changed.size(), 0);
        // What was held alone goes to the file with the next call, even one that changes nothing by itself.
        QCOMPARE(module.change(insert), Change::Written);
        QCOMPARE(module.change(insert), Change::Unchanged);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(QJsonDocument::fromJson(contentOf(path)), module.getDocument());
        QCOMPARE(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser),
                 QFile::ReadOwner | QFile::WriteOwner);
    }

    void keepsTheOldContentWhenTheDiskIsFull()
    {
        const QString path = m_folder.filePath("full.json");
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

    void undoesAWriteThatEndedEarly_data()
    {
        const TestTable<QByteArray, QByteArray> table("journal", "left");
        const QByteArray complete = journal("former");
        table.row("complete", complete, "former");
        table.row("of an empty file", journal(""), "");
        table.row("cut", complete.chopped(1), "half a t");
        table.row("continued", complete + 'x', "half a t");
        table.row("other text", QByteArray(complete).replace("former", "lesser"), "half a t");
        table.row("empty", "", "half a t");
    }

    void undoesAWriteThatEndedEarly()
    {
        QFETCH(QByteArray, journal);
        QFETCH(QByteArray, left);
        const QString path = m_folder.filePath("early.json");
        write(path, "half a t");
        write(path + ".journal", journal);
        const DocumentFile file(path);
        QCOMPARE(file.read().text, left);
        QCOMPARE(contentOf(path), left);
        QVERIFY(!QFile::exists(path + ".journal"));
        // What the journal held is not told from it again, whatever is written now.
        QVERIFY(DocumentFile(path).write("new"));
        QCOMPARE(file.read().text, QByteArray("new"));
        QVERIFY(!QFile::exists(path + ".journal"));
    }

    void leavesAFileThatItCannotReadAlone()
    {
        const QString path = m_folder.filePath("loop.json");
        QVERIFY(QFile::link(path, path));
        DocumentFile file(path);
        QCOMPARE(file.read().state, DocumentFile::State::Failed);
        QVERIFY(!file.write("new"));
        QVERIFY(QFileInfo(path).isSymLink());
        // Nor one whose journal says nothing now.
        const QString other = m_folder.filePath("unknown.json");
        write(other, "half a t");
        QVERIFY(QFile::link(other + ".journal", other + ".journal"));
        QCOMPARE(DocumentFile(other).read().state, DocumentFile::State::Failed);
        QVERIFY(!DocumentFile(other).write("new"));
        QCOMPARE(contentOf(other), QByteArray("half a t"));
        QCOMPARE(DocumentFile(m_folder.filePath("none")).read().state, DocumentFile::State::Missing);
    }

private:
    static QByteArray journal(const QByteArray &former)
    {
        return "kt964-journal 1 " + QByteArray::number(former.size()) + ' '
            + QCryptographicHash::hash(former, QCryptographicHash::Sha256).toHex() + '\n' + former;
    }
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(JsonModuleTest)
#include "jsonmoduletest.moc"
