// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "broker/solvaaccessmanager.h"
#include "lab-peers/brokerserver.h"
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
} // namespace

// Log-ons to a real broker on the loopback interface.
class SolvaAccessManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void failures_data()
    {
        const TestTable<BrokerServer::Mode, QString, QString> table("mode", "address", "text");
        const QString none;
        table.row("cut", BrokerServer::Mode::Cut, none, "closed");
        table.row("silent", BrokerServer::Mode::Slow, none, "does not answer");
        table.row("redirect", BrokerServer::Mode::Redirect, none, "edirect");
        table.row("too long", BrokerServer::Mode::Normal, none, "too long");
        table.row("no HTTPS there", BrokerServer::Mode::Normal, "http://", none);
        table.row("no address", BrokerServer::Mode::Normal, "a b:c/%", none);
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
        manager.setReplyTime(mode == BrokerServer::Mode::Slow ? 200 : 60000);
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
            QVERIFY(asked.wait(TestGroup::waitMs())); // its challenge is on the way, and must hold nobody up
            manager.getSolvaServers(broker.address(), "teacher", password, QString());
        }
        QTRY_COMPARE(replies, QList<QVariantList>{{SolvaAccessManager::noError}});
        QCOMPARE(names(manager), QStringList{"Accounts"});
    }
};

QTEST_GUILESS_MAIN(SolvaAccessManagerTest)
#include "solvaaccessmanagertest.moc"
