// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/consoleformat.h"

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

const UpdateSource source{QStringLiteral("http://h/"), QStringLiteral("joe"), QStringLiteral("secret"),
                          QStringLiteral("a.img")};

} // namespace

/// The bytes between consoles and the device, against tables of the bytes themselves.
class ConsoleFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void writesWhatIsAgreed_data();
    void writesWhatIsAgreed();
    void readsWhatItWrites();
    void refusesWhatDoesNotFit();
    void passesOverOtherAnswers();
};

void ConsoleFormatTest::writesWhatIsAgreed_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QByteArray>("agreed");
    const QByteArray asked(600, '\xee');
    QTest::newRow("request") << request(Command::GetJson) << bytes(40, {{12, "000055aa"}, {16, "13002001"}});
    QTest::newRow("update") << *updateRequest(source, 0x1234)
                            << bytes(276,
                                     {{12, "000055aa"},
                                      {16, "08003412"},
                                      {20, hex("http://h/")},
                                      {84, hex("joe")},
                                      {148, hex("secret")},
                                      {212, hex("a.img")}});
    QTest::newRow("set") << *setJsonRequest("{}")
                         << bytes(43, {{12, "000055aa"}, {16, "15002001"}, {40, "7b7d"}});
    QTest::newRow("info") << deviceInfoReply({0x1234, QString(70, QLatin1Char('a')), "{\"a\":1}"})
                          << bytes(299,
                                   {{8, "05003412f4010000"},
                                    {112, QByteArray(67, 'a').toHex()},
                                    {180, "49747845"},
                                    {200, "07000000"},
                                    {288, "49747845"},
                                    {292, hex("{\"a\":1}")}});
    QByteArray action = asked.left(504);
    action.replace(0, 12, QByteArray::fromHex("3333333333333333eeeeeeee"));
    action.replace(20, 4, QByteArray(4, '\0'));
    action.replace(32, 8, QByteArray::fromHex("01000000eeee0000"));
    QTest::newRow("action") << actionReply(asked, 1) << action;
    QByteArray merge = asked.left(40);
    merge.replace(8, 4, QByteArray(4, '\0')).replace(32, 4, QByteArray::fromHex("02010000"));
    QTest::newRow("merge") << mergeReply(asked, 258) << merge;
    QByteArray document = asked.left(40);
    document.replace(8, 4, QByteArray::fromHex("02000000")).replace(32, 4, QByteArray(4, '\0'));
    QTest::newRow("document") << documentReply(asked, "ab") << document + "ab";
    document.replace(8, 4, QByteArray(4, '\0')).replace(32, 4, QByteArray::fromHex("01000000"));
    QTest::newRow("refusal") << documentRefusal(asked, "ab") << document + QByteArray(2, '\0');
}

void ConsoleFormatTest::writesWhatIsAgreed()
{
    QFETCH(const QByteArray, written);
    QFETCH(const QByteArray, agreed);
    QCOMPARE(written.toHex(), agreed.toHex());
}

void ConsoleFormatTest::readsWhatItWrites()
{
    const QByteArray update = *updateRequest(source, 7);
    const UpdateSource read = decodeUpdateSource(update);
    QCOMPARE(QStringList({read.url, read.user, read.password, read.file}),
             QStringList({source.url, source.user, source.password, source.file}));
    QCOMPARE(decodeJsonText(*setJsonRequest("{1}") + "behind"), QByteArray("{1}"));
    const auto info = decodeDeviceInfo(deviceInfoReply({9, QStringLiteral("1f"), "{}"}) + "behind");
    QVERIFY(info && info->version == 9 && info->serialNumber == QLatin1String("1f") && info->status == "{}");
    const auto action = decodeActionReply(actionReply(update, 1));
    QVERIFY(action && action->command == 8 && action->version == 7 && action->result == 1);
    const QByteArray get = request(Command::GetJson);
    const auto document = decodeDocumentReply(documentReply(get, "{}"));
    QVERIFY(document && document->result == 0 && document->text == "{}");
    const auto refusal = decodeDocumentReply(documentRefusal(get, "{}"));
    QVERIFY(refusal && refusal->result == 1 && refusal->text.isEmpty());
    QVERIFY(decodeMergeReply(mergeReply(request(Command::SetJsonPartial), 3)) == 3u);
}

void ConsoleFormatTest::refusesWhatDoesNotFit()
{
    const QString longest(longestField, QLatin1Char('x'));
    QVERIFY(updateRequest({longest, longest, longest, longest}));
    QVERIFY(!updateRequest({longest + QLatin1Char('x'), {}, {}, {}}));
    QVERIFY(!updateRequest({{}, QStringLiteral("jo\u00eb"), {}, {}}));
    QCOMPARE(setJsonRequest(QByteArray(longestJson, ' '))->size(), requestLimit);
    QVERIFY(!setJsonRequest(QByteArray(longestJson + 1, ' ')));
    QVERIFY(!setJsonRequest(QByteArray("a\0b", 3)));
}

void ConsoleFormatTest::passesOverOtherAnswers()
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

QTEST_APPLESS_MAIN(ConsoleFormatTest)
#include "consoleformattest.moc"
