// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsontext.h"
#include "testtable.h"

#include <QtTest>

class JsonTextTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheLastMember_data();
    void keepsTheLastMember()
    {
        QFETCH(const QByteArray, text);
        const QByteArray kept = JsonText::withLastMembers(text);
        QCOMPARE(kept.size(), text.size());
        QTEST(kept.simplified(), "kept");
    }

    void readsLatin1()
    {
        const QJsonObject expected{{"ü", "Büro"}, {"ä", 1}};
        QCOMPARE(JsonText::parsed("{\"\xfc\":\"B\xfcro\",\"\xe4\":1}"), expected);
        QCOMPARE(JsonText::parsed("{\"ü\":\"Büro\",\"ä\":1}"), expected);
        QCOMPARE(JsonText::parsed("{\"\xfc\":{},\"\\u00fc\":1}"), QJsonObject({{"ü", 1}}));
        QCOMPARE(JsonText::parsed("{\"a\":{},\"a\":1}"), QJsonObject({{"a", 1}}));
    }
};

// Out of the class, as the meta-object compiler stumbles over these texts.
void JsonTextTest::keepsTheLastMember_data()
{
    const TestTable<QByteArray, QByteArray> table("text", "kept");
    const auto row = [&table](const char *text, const char *kept = nullptr) {
        table.row(text, QByteArray(text), QByteArray(kept ? kept : text));
    };
    row(R"({"a":{},"a":{}})", R"({ "a":{}})");
    row(R"([{"b":[{"a":1,"c":{"a":2},"a":[]}]}])", R"([{"b":[{ "c":{"a":2},"a":[]}]}])");
    row(R"({"a":{},"\u0061":{}})", R"({ "\u0061":{}})");
    row(R"({"a\"":1, "a\"" :2})", R"({ "a\"" :2})");
    row(R"({"a":1,"b":2,"a":{"a":3,"a":4},"a":5})", R"({ "b":2, "a":5})");
    row(R"({"a":{"a":{"a":"a"}},"b":["a","a","a",{"a":1}]})");
    row(R"({"a":"\",\"a\":1","b":"{\"a\":1,\"a\":"})");
    row(R"([{"a":1},{"a":1}])");
    row(R"(]}]}"a","a)");
    row("");
}

QTEST_APPLESS_MAIN(JsonTextTest)
#include "jsontexttest.moc"
