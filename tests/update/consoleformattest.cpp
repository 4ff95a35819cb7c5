// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/consoleformat.h"
#include "testtable.h"

#include <QTest>

using namespace ConsoleFormat;

namespace {

/// Zeros with these bytes, written as hexadecimal, at these offsets.
QByteArray bytes(int size, const QMap<int, QByteArray> &parts)
{
    QByteArray whole(size, '\0');
    for (auto part = parts.cbegin(); part != parts.cend(); ++part) {
        const QByteArray raw = QByteArray::fromHex(part.value());
        whole.replace(part.key(), raw.size(), raw);
    }
    return whole;
}

QByteArray hex(const char *text)
{
    return QByteArray(text).toHex();
}

const UpdateSource source{"http://h/", "joe", "secret", "a.img"};

} // namespace

/// The bytes between consoles and the device, against tables of the bytes themselves.
class ConsoleFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void writesWhatIsAgreed_data()
    {
        const TestTable<QByteArray, QByteArray> table("written", "agreed");
        const QByteArray asked(600, '\xee');
        table.row("request", request(Command::GetJson), bytes(40, {{12, "000055aa"}, {16, "13002001"}}));
        table.row("update", *updateRequest(source, 0x1234),
                  bytes(276,
                        {{12, "000055aa"},
                         {16, "08003412"},
                         {20, hex("http://h/")},
                         {84, hex("joe")},
                         {148, hex("secret")},
                         {212, hex("a.img")}}));
        table.row("set", *setJsonRequest("{}"),
                  bytes(43, {{12, "000055aa"}, {16, "15002001"}, {40, "7b7d"}}));
        table.row("info", deviceInfoReply({0x1234, QString(70, 'a'), "{\"a\":1}"}),
                  bytes(299,
                        {{8, "05003412f4010000"},
                         {112, QByteArray(67, 'a').toHex()},
                         {180, "49747845"},
                         {200, "07000000"},
                         {288, "49747845"},
                         {292, hex("{\"a\":1}")}}));
        QByteArray action = asked.left(504);
        action.replace(0, 12, QByteArray::fromHex("3333333333333333eeeeeeee"));
        action.replace(20, 4, QByteArray(4, '\0'));
        action.replace(32, 8, QByteArray::fromHex("01000000eeee0000"));
        table.row("action", actionReply(asked, 1), action);
        QByteArray merge = asked.left(40);
        merge.replace(8, 4, QByteArray(4, '\0')).replace(32, 4, QByteArray::fromHex("02010000"));
        table.row("merge", mergeReply(asked, 258), merge);
        QByteArray document = asked.left(40);
        document.replace(8, 4, QByteArray::fromHex("02000000")).replace(32, 4, QByteArray(4, '\0'));
        table.row("document", documentReply(asked, "ab"), document + "ab");
        document.replace(8, 4, QByteArray(4, '\0')).replace(32, 4, QByteArray::fromHex("01000000"));
        table.row("refusal", documentRefusal(asked, "ab"), document + QByteArray(2, '\0'));
    }

    void writesWhatIsAgreed()
    {
        QFETCH(const QByteArray, written);
        QFETCH(const QByteArray, agreed);
        QCOMPARE(written.toHex(), agreed.toHex());
    }

    void refusesWhatDoesNotFit()
    {
        const QString longest(longestField, 'x');
        QVERIFY(updateRequest({longest, longest, longest, longest}));
        QVERIFY(!updateRequest({longest + 'x', {}, {}, {}}));
        QVERIFY(!updateRequest({{}, "jo\u00eb", {}, {}}));
        QCOMPARE(setJsonRequest(QByteArray(longestJson, ' '))->size(), requestLimit);
        QVERIFY(!setJsonRequest(QByteArray(longestJson + 1, ' ')));
        QVERIFY(!setJsonRequest(QByteArray("a\0b", 3)));
    }

    void passesOverOtherAnswers()
    {
        const QByteArray lying = QByteArray(4, '\xff');
        QByteArray info = deviceInfoReply({0, QString(), "{}"});
        QVERIFY(!decodeDeviceInfo(info.left(293)));
        QVERIFY(!decodeDeviceInfo(info.left(291)));
        QVERIFY(!decodeDeviceInfo(info.replace(200, 4, lying)));
        QVERIFY(!decodeDeviceInfo(QByteArray(400, '\0')));
        QVERIFY(!decodeActionReply(actionReply(request(Command::Reset), 0).left(503)));
        QVERIFY(!decodeActionReply(actionReply(request(Command::GetJson), 0)));
        QByteArray document = documentReply(request(Command::GetJson), "{}");
        QVERIFY(!decodeDocumentReply(document.left(39)));
        QVERIFY(!decodeDocumentReply(document.replace(8, 4, lying)));
        QVERIFY(!decodeMergeReply(request(Command::GetJson)));
        QVERIFY(!decodeMergeReply(QByteArray()));
    }
};

QTEST_APPLESS_MAIN(ConsoleFormatTest)
#include "consoleformattest.moc"
