// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "documents.h"

#include "config/secrets.h"
#include "testtable.h"

#include <QtTest>

using Documents::object;

class SecretsTest : public QObject
{
    Q_OBJECT

private slots:
    void blanksTheSecretsAndNothingElse()
    {
        QVERIFY(!object("secrets.json").isEmpty());
        QCOMPARE(QJsonDocument(Secrets::blanked(object("secrets.json"))).toJson(),
                 QJsonDocument(object("secrets-blanked.json")).toJson());
        QCOMPARE(Secrets::blanked(QJsonObject()), QJsonObject());
        const QJsonObject old
            = {{"wifi", QJsonObject{{"essid", "home"}, {"key", "secret"}, {"keyboard", "US"}}}};
        const QJsonObject wifi = Secrets::blanked(old).value("wifi").toObject();
        QCOMPARE(wifi, (QJsonObject{{"essid", "home"}, {"key", ""}, {"keyboard", "US"}}));
    }

    void namesEverySecret()
    {
        QStringList values = Secrets::valuesIn(object("secrets.json"));
        values.sort();
        QCOMPARE(values.join('|'),
                 "20231|5f4dcc3b5aa765d61d8327deb882cf99|a pass phrase|ftp%20pass|fw|inner|log on|mine|"
                 "p|p12|pr'oxy\"\\|shadow|x1|x2|x3");
    }

    void redacts_data()
    {
        const TestTable<QString, QString> table("text", "clean");

        table.row("plain", "run: login hunter2!", "run: login ***!");
        table.row("inside a word", "xhunter2x", "x***x");
        table.row("longest first", "hunter2000", "***");
        table.row("quoted for the shell", "'it'\\''s me'", "'***'");
        table.row("as the framework quotes it", R"("a\"b\\c")", R"("***")");
        table.row("percent-encoded", "http://h/?p=it%27s%20me", "http://h/?p=***");
        table.row("short: as a word only", "ab abc (ab) cab", "*** abc (***) cab");
        table.row("in a URL, known or not", "GET ftp://u:other@h/x", "GET ftp://u:***@h/x");
        table.row("an @ in the password", "ftp://u:p@ss@h:21/x", "ftp://u:***@h:21/x");
        table.row("no password", "http://h:80/a@b u@h", "http://h:80/a@b u@h");
    }

    void redacts()
    {
        QFETCH(QString, text);
        QFETCH(QString, clean);
        const QStringList values{"hunter2", "hunter2000", "it's me", "a\"b\\c", "ab"};
        QCOMPARE(Secrets::redacted(text, values), clean);
    }
};

QTEST_APPLESS_MAIN(SecretsTest)
#include "secretstest.moc"
