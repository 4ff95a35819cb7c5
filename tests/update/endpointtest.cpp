// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/log.h"
#include "onlyinnamespace.h"
#include "testdevice.h"
#include "update/consoleformat.h"
#include "management/devicestatus.h"
#include "update/terminalservermodule.h"
#include "testtable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QUdpSocket>

#include <algorithm>
#include <functional>

using namespace ConsoleFormat;

namespace {

const QHostAddress loopback(QHostAddress::LocalHost);
const QString documentPath = "/var/lib/kt964/config.json";

class Console : public QUdpSocket
{
public:
    Console() { bind(loopback); }
    void tell(const QByteArray &datagram) { writeDatagram(datagram, loopback, WireFormat::devicePort); }
    /// The next answer; empty when none comes.
    QByteArray answer()
    {
        if (!QTest::qWaitFor([this] { return hasPendingDatagrams(); }, TestGroup::waitMs()))
            return QByteArray();
        QByteArray datagram(static_cast<int>(pendingDatagramSize()), '\0');
        readDatagram(datagram.data(), datagram.size());
        return datagram;
    }
    QByteArray ask(const QByteArray &datagram)
    {
        tell(datagram);
        return answer();
    }
};

/// The endpoint, and receivers of its signals that write down what they were asked for.
struct Device
{
    explicit Device(int resultOfAll = 0)
        : result(resultOfAll)
    {
        using Endpoint = TerminalServerModule;
        QObject::connect(&endpoint, &Endpoint::check_resetPossible, &endpoint, answering("check"));
        QObject::connect(&endpoint, &Endpoint::firmwareUpdateLatest, &endpoint, answering("latest"));
        QObject::connect(&endpoint, &Endpoint::ask_resetDevice, &endpoint, [this] { asked += "reset"; });
        QObject::connect(&endpoint, &Endpoint::applyConfig, &endpoint, [this] { asked += "apply"; });
        QObject::connect(&endpoint, &Endpoint::firmwareUpdateURL, &endpoint,
                         [this](const QString &url, const QString &password, const QString &user,
                                const QString &file, int *answer) {
                             asked += QStringList({url, password, user, file}).join(' ').toLatin1();
                             *answer = result;
                         });
        QObject::connect(&endpoint, &Endpoint::firmwareUpdateCORVID, &endpoint,
                         [this](const QString &server, const QString &file, int *answer) {
                             asked += QStringList({server, file}).join(' ').toLatin1();
                             *answer = result;
                         });
        QObject::connect(&endpoint, &Endpoint::saveConfiguration, &endpoint,
                         [this](const QJsonObject &remote, int *answer) {
                             asked += "save " + QJsonDocument(remote).toJson(QJsonDocument::Compact)
                                 + QByteArray::number(*answer);
                         });
    }
    std::function<void(int *)> answering(const char *name)
    {
        return [this, name](int *answer) {
            asked += name;
            *answer = result;
        };
    }

    TestDevice device;
    DeviceStatus status;
    TerminalServerModule endpoint{status};
    int result;
    QByteArrayList asked;
};

QString lastLine()
{
    return Log::ring().since(0).entries.last().text;
}

} // namespace

/// The endpoint against consoles with sockets of their own.
class EndpointTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Log::install(); }

    void answersWithTheDocument()
    {
        Device device;
        Console console;
        const QByteArray text = "{\n    \"name\": \"\xc5\xbb\"\n}\n";
        device.device.write(documentPath, text);
        const QByteArray asked = request(Command::GetJson);
        QCOMPARE(console.ask(asked).toHex(), documentReply(asked, text).toHex());
        QCOMPARE(lastLine(), "GET JSON");
        const QByteArray other = request(Command::GetJson, 0x0121);
        QCOMPARE(console.ask(other).toHex(), documentRefusal(other, text).toHex());
        // A datagram that ends early is the same request; the answer shows nothing of the ones before.
        console.ask(QByteArray(4500, '\xee').replace(16, 4, QByteArray("\x13\0\x20\1", 4)));
        QCOMPARE(console.ask(asked.left(20)).toHex(), documentReply(asked, text).toHex());
        QCOMPARE(console.ask(asked.left(19)).mid(18, 2).toHex(), QByteArray("2000"));
        QCOMPARE(console.ask(asked.left(17)).mid(16, 4).toHex(), QByteArray("13000000"));
    }

    void mergesAPart_data()
    {
        const TestTable<QByteArray, QByteArray> table("text", "merged");
        const QByteArray nothing = "{}";
        table.row("part", R"({"a":1})", R"({"a":1})");
        table.row("UTF-8", "{\"a\":\"\xc3\xb3\"}", "{\"a\":\"\xc3\xb3\"}");
        table.row("Latin-1", "{\"a\":\"\xf3\"}", "{\"a\":\"\xc3\xb3\"}");
        table.row("deep", QByteArray(10000, '['), nothing);
        table.row("cut", "{\"a\":\"" + QByteArray(5000, 'x') + "\"}", nothing);
    }

    void mergesAPart()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QByteArray, merged);
        Device device;
        Console console;
        const QByteArray asked = request(Command::SetJsonPartial) + text;
        QCOMPARE(console.ask(asked).toHex(), mergeReply(asked, 0).toHex());
        QTRY_COMPARE(device.asked, QByteArrayList({"check", "save " + merged + "0", "apply"}));
        device.result = 1;
        device.asked.clear();
        QVERIFY(decodeMergeReply(console.ask(asked)) == 1u);
        QCOMPARE(device.asked, QByteArrayList({"check", "save " + merged + "1"}));
    }

    void actsAndAnswers_data()
    {
        const TestTable<QByteArray, QByteArrayList, QByteArrayList, QString> table("asked", "done", "refused",
                                                                                   "line");
        const auto source = [](const char *url, const char *file) {
            return *updateRequest({QLatin1String(url), "joe", "pw", QLatin1String(file)});
        };
        table.row("reset", request(Command::Reset), {"check", "reset"}, {"check"}, "3 ERROR CODE =");
        const QByteArrayList latest({"latest"});
        table.row("latest", request(Command::UpdateLatest), latest, latest, "1 ERROR CODE =");
        const QByteArrayList url({"ftp://h/d pw joe /a.img"});
        table.row("URL", source("ftp://h/d", "/a.img"), url, url, "2 ERROR CODE =");
        const QByteArrayList server({"srv fwa.img"});
        table.row("server", source("CORVID://srv", "/fw/a.img"), server, server, "2 ERROR CODE =");
    }

    void actsAndAnswers()
    {
        QFETCH(const QByteArray, asked);
        QFETCH(const QByteArrayList, done);
        QFETCH(const QByteArrayList, refused);
        QFETCH(const QString, line);
        for (const int result : {0, 1}) {
            Device device(result);
            Console console;
            QCOMPARE(console.ask(asked).toHex(), actionReply(asked, static_cast<quint32>(result)).toHex());
            QTRY_COMPARE(device.asked, result == 0 ? done : refused);
            QCOMPARE(lastLine(), line + QString::number(result));
        }
    }

    void keepsSilent()
    {
        Device device;
        Console console;
        const QByteArray reset = request(Command::Reset);
        const auto silent = [&](const QByteArray &datagram) {
            console.tell(datagram);
            return console.ask(request(Command::GetJson)).size() != actionReplySize && device.asked.isEmpty();
        };
        // Unknown codes, nothing at all, a server list and a block that nobody asked for.
        QVERIFY(silent(request(static_cast<Command>(6))));
        QVERIFY(silent(QByteArray()));
        QVERIFY(silent(QByteArray(reset).replace(12, 1, "\3")));
        QVERIFY(
            silent(QByteArray(reset).replace(12, 4, "abcd").replace(4, 1, "x").leftJustified(1036, '\0')));
        console.tell(request(static_cast<Command>(0xffff)));
        QTRY_COMPARE(lastLine(), "ANOTHER COMMAND 65535");
        device.endpoint.enableComunication(false);
        const QSignalSpy lists(&device.endpoint, &TerminalServerModule::hasTsFindReplies);
        console.tell(reset);
        console.tell(QByteArray(reset).replace(12, 1, "\3"));
        QTRY_COMPARE(lists.size(), 1);
        QVERIFY(device.asked.isEmpty() && !console.hasPendingDatagrams());
        // A command as long as a block is a command, whatever stands where a block has its total.
        device.endpoint.enableComunication(true);
        QVERIFY(decodeActionReply(console.ask(reset.leftJustified(1036, '\0'))));
        QVERIFY(
            decodeActionReply(console.ask(QByteArray(reset).replace(4, 1, "x").leftJustified(1036, '\0'))));
    }

    /// What the endpoint sends to itself comes from a device's port, and so do its answers.
    void answersNoAnswers()
    {
        Device device;
        device.device.setDocument({{"a", 1}});
        auto *self = device.endpoint.findChild<QUdpSocket *>();
        const auto handled = [&](const QByteArray &datagram) {
            const LogLines old = Log::ring().since(0);
            self->writeDatagram(datagram, loopback, WireFormat::devicePort);
            for (int turn = 0; turn < 4; ++turn)
                device.endpoint.checkCommand();
            const auto lines
                = Log::ring().since(old.first + static_cast<quint64>(old.entries.size())).entries;
            return std::count_if(lines.begin(), lines.end(), [](const LogEntry &line) {
                return line.text.contains(QRegularExpression("^(GET |SET |ANOTHER |. ERROR )"));
            });
        };
        for (const auto command : {Command::DeviceInfo, Command::Reset, Command::UpdateLatest,
                                   Command::UpdateByUrl, Command::GetJson})
            QCOMPARE(handled(request(command)), 1);
        QCOMPARE(handled(request(Command::GetJson, 0)), 1);
        QCOMPARE(handled(*setJsonRequest("{}")), 1);
        device.device.write(documentPath, "");
        QCOMPARE(handled(request(Command::GetJson)), 1);
    }

    /// Each request that is handled brings the next: the device's own work must have its turn all the same.
    void sharesTheTurnWithOthers()
    {
        Device device(1);
        Console console;
        constexpr int most = 100000;
        int handled = 0;
        bool others = false;
        QObject::connect(&device.endpoint, &TerminalServerModule::check_resetPossible, &console, [&] {
            if (!others && ++handled < most)
                console.tell(request(Command::Reset));
        });
        QTimer::singleShot(0, &console, [&] { others = handled > 0; });
        console.tell(request(Command::Reset));
        device.endpoint.checkCommand();
        QTRY_VERIFY(others);
        QVERIFY(handled < most);
    }
};

QTEST_GUILESS_MAIN(EndpointTest)
#include "endpointtest.moc"
