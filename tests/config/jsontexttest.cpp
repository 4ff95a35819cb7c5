// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsontext.h"
#include "testtable.h"

#include <QtTest>

class JsonTextTest : public QObject
{
    Q_OBJECT

private slots:
    void findsRepeatedKeys_data();
    void findsRepeatedKeys()
    {
        QFETCH(const QByteArray, text);
        QTEST(JsonText::repeatsKey(text), "repeats");
    }

    void readsLatin1()
    {
        const QJsonObject expected{{"ü", "Büro"}, {"ä", 1}};
        QCOMPARE(JsonText::parsed("{\"\xfc\":\"B\xfcro\",\"\xe4\":1}"), expected);
        QCOMPARE(JsonText::parsed("{\"ü\":\"Büro\",\"ä\":1}"), expected);
        QCOMPARE(JsonText::parsed("{\"\xfc\":{},\"\\u00fc\":{}}"), QJsonObject());
        QCOMPARE(JsonText::parsed("{\"a\":{},\"a\":1}"), QJsonObject());
    }
};

// Out of the class, as the meta-object compiler stumbles over these texts.
void JsonTextTest::findsRepeatedKeys_data()
{
    const TestTable<QByteArray, bool> table("text", "repeats");
    const auto row = [&table](const char *text, bool repeats) {
        table.row(text, QByteArray(text), repeats);
    };
    row(R"({"a":{},"a":{}})", true);
    row(R"([{"b":[{"a":1,"c":{"a":2},"a":[]}]}])", true);
    row(R"({"a":{},"\u0061":{}})", true);
    row(R"({"a\"":1, "a\"" :2})", true);
    row(R"({"a":{"a":{"a":"a"}},"b":["a","a","a",{"a":1}]})", false);
    row(R"({"a":"\",\"a\":1","b":"{\"a\":1,\"a\":"})", false);
    row(R"([{"a":1},{"a":1}])", false);
    row(R"(]}]}"a","a)", false);
    row("", false);
}

QTEST_APPLESS_MAIN(JsonTextTest)
#include "jsontexttest.moc"
