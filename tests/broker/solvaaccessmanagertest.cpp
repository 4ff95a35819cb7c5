// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "broker/solvaaccessmanager.h"
#include "lab-peers/brokerserver.h"
#include "outputtofile.h"
#include "testtable.h"

#include <QtTest>

#include <memory>

namespace {

const QString userName = "nurse";
const QString password = "s%41 /:@ü";
const QHostAddress loopback(QHostAddress::LocalHost);

// A broker on the loopback interface with one user and two desktops.
class Broker : public BrokerServer
{
public:
    explicit Broker(bool encrypted = true)
    {
        addUser(userName, password, {{"Ward 3", QString()}, {QString::fromUtf8("Büro 桌"), QString()}});
        setEncrypted(encrypted);
        if (!start(loopback, 0))
            qFatal("no broker: %s", qPrintable(fault()));
    }
    QString address() const { return QString("127.0.0.1:%1").arg(serverPort()); }
};

QStringList names(const SolvaAccessManager &manager)
{
    QStringList result;
    for (const Item *desktop : manager.getDesktops())
        result.append(desktop->getValue(Item::Name));
    return result;
}

QStringList logged;
void keepLogged(QtMsgType, const QMessageLogContext &, const QString &message)
{
    logged.append(message);
}

} // namespace

// Log-ons to a real broker on the loopback interface.
class SolvaAccessManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void desktopsOfAUser_data()
    {
        const TestTable<BrokerServer::Mode, bool, int> table("mode", "encrypted", "count");
        table.row("https", BrokerServer::Mode::Normal, true, 2);
        table.row("http", BrokerServer::Mode::Normal, false, 2);
        table.row("huge", BrokerServer::Mode::Huge, true, 10000);
        table.row("empty", BrokerServer::Mode::Empty, true, 0);
    }

    void desktopsOfAUser()
    {
        QFETCH(BrokerServer::Mode, mode);
        QFETCH(bool, encrypted);
        QFETCH(int, count);
        Broker broker(encrypted);
        broker.setMode(mode);
        broker.setDelay(100);
        SolvaAccessManager manager;
        manager.parseServers("name:left from before");
        QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
        manager.getSolvaServers((encrypted ? QString() : "http://") + broker.address(), userName, password,
                                QString());
        QVERIFY(manager.isBusy());
        QTRY_COMPARE(replies, QList<QVariantList>{{SolvaAccessManager::noError}});
        QVERIFY(!manager.isBusy());
        QCOMPARE(manager.getDesktops().size(), count);
        if (count >= 2)
            QCOMPARE(names(manager).mid(0, 2), (QStringList{"Ward 3", QString::fromUtf8("Büro 桌")}));
        QCOMPARE(broker.requests().last(), "GET /_mpcdesktops?version=v3 nurse 200");
    }

    void failures_data()
    {
        const TestTable<BrokerServer::Mode, QString, QString> table("mode", "address", "text");
        const QString none;
        table.row("500", BrokerServer::Mode::Error, none, "Internal Server Error");
        table.row("cut", BrokerServer::Mode::Cut, none, "closed");
        table.row("silent", BrokerServer::Mode::Slow, none, "does not answer");
        table.row("redirect", BrokerServer::Mode::Redirect, none, "edirect");
        table.row("too long", BrokerServer::Mode::Normal, none, "too long");
        table.row("no HTTPS there", BrokerServer::Mode::Normal, "http://", none);
        table.row("nobody there", BrokerServer::Mode::Normal, "127.0.0.1:1", "refused");
        table.row("no address", BrokerServer::Mode::Normal, "a b:c/%", none);
        table.row("no scheme of ours", BrokerServer::Mode::Normal, "gopher://127.0.0.1", "gopher");
    }

    void failures()
    {
        QFETCH(BrokerServer::Mode, mode);
        QFETCH(QString, address);
        QFETCH(QString, text);
        const Broker elsewhere;
        Broker broker;
        broker.setMode(mode);
        broker.setDelay(60000);
        broker.setBody(QByteArray("name:A\n").repeated(2 * SolvaAccessManager::bodyLimit / 7));
        broker.setRedirect(QUrl(QString("https://%1/_mpcdesktops?version=v3").arg(elsewhere.address())));
        SolvaAccessManager manager;
        manager.setReplyTime(mode == BrokerServer::Mode::Slow ? 200 : 10000);
        QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
        const bool own = address.isEmpty() || address.endsWith('/');
        manager.getSolvaServers(own ? address + broker.address() : address, userName, password, QString());
        QTRY_COMPARE(replies.size(), 1);
        const QString told = replies.first().first().toString();
        QVERIFY2(told.contains(text) && told != SolvaAccessManager::noError && !told.isEmpty(),
                 qPrintable(told));
        QVERIFY2(!told.contains("s%"), qPrintable(told));
        QVERIFY(manager.getDesktops().isEmpty());
        QVERIFY(elsewhere.requests().isEmpty());
    }

    void credentials_data()
    {
        const TestTable<QString, QString, QString> table("user", "known", "given");
        const QString secret = "secret";
        const QString own = "jürgen";
        table.row("wrong password", own, secret, "x");
        table.row("wrong password with signs", own, secret, password);
        table.row("no password", own, secret, {});
        table.row("no user", {}, secret, secret);
        table.row("unknown user", "doctor", secret, secret);
        for (const char *right : {"", "100%", "%41:@/?#", "Grün", "пароль", "鍵 ü"})
            table.row(right, own, QString::fromUtf8(right), QString::fromUtf8(right));
    }

    void credentials()
    {
        QFETCH(QString, user);
        QFETCH(QString, known);
        QFETCH(QString, given);
        Broker broker;
        broker.addUser("jürgen@ward", known, {{"Ward 3", QString()}});
        SolvaAccessManager manager;
        QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
        manager.getSolvaServers(broker.address(), user, given, "ward");
        QTRY_COMPARE(replies.size(), 1);
        const bool right = user == "jürgen" && known == given;
        QCOMPARE(replies.first().first().toString(),
                 right ? SolvaAccessManager::noError : "Host requires authentication");
        QVERIFY(broker.requests().size() <= 3);
    }

    void newLogOnReplacesTheOldOne()
    {
        Broker slow(false);
        slow.setMode(BrokerServer::Mode::Slow);
        slow.setDelay(10);
        Broker broker;
        broker.addUser("teacher", password, {{"Accounts", QString()}});
        SolvaAccessManager manager;
        QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
        QSignalSpy asked(&slow, &BrokerServer::requestReceived);
        for (int i = 0; i < 10; ++i) {
            manager.getSolvaServers(QString("http://") + slow.address(), userName, password, QString());
            QVERIFY(asked.wait()); // its challenge is on the way, and must hold nobody up
            manager.getSolvaServers(broker.address(), "teacher", password, QString());
        }
        QTRY_COMPARE(replies, QList<QVariantList>{{SolvaAccessManager::noError}});
        QCOMPARE(names(manager), QStringList{"Accounts"});
    }

    void secretsArePrintedAndNotLogged()
    {
        const Broker broker;
        SolvaAccessManager manager;
        QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
        QTemporaryFile file;
        QVERIFY(file.open());
        const QtMessageHandler handler = qInstallMessageHandler(keepLogged);
        {
            const OutputToFile lines(file.fileName());
            manager.getSolvaServers(broker.address(), userName, "geheim", QString());
            QVERIFY(QTest::qWaitFor([&replies] { return replies.size() == 1; }));
        }
        const QByteArray printed = file.readAll();
        qInstallMessageHandler(handler);
        const QString url = QString("https://nurse:geheim@%1/_mpcdesktops?version=v3").arg(broker.address());
        QVERIFY2(printed.startsWith('[' + url.toUtf8() + "]   [nurse]   [geheim]\nSSL ERRRO\n"), printed);
        QVERIFY2(printed.contains("\n Authenticator HTTP Error: ")
                     && printed.endsWith("\nHTTP Error: Host requires authentication\n"),
                 printed);
        QVERIFY(logged.filter("geheim").isEmpty());
    }
};

QTEST_GUILESS_MAIN(SolvaAccessManagerTest)
#include "solvaaccessmanagertest.moc"
