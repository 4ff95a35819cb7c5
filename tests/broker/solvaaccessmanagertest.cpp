// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "broker/solvaaccessmanager.h"
#include "lab-peers/brokerserver.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <cstdio>
#include <memory>
#include <unistd.h>

namespace {

const QString userName = QStringLiteral("nurse");
const QString password = QStringLiteral("s%41 /:@ü");
const QHostAddress loopback(QHostAddress::LocalHost);

// A broker on the loopback interface with one user and two desktops.
class Broker : public BrokerServer
{
public:
    explicit Broker(bool encrypted = true)
    {
        addUser(userName, password,
                {{QStringLiteral("Ward 3"), QString()}, {QString::fromUtf8("Büro 桌"), QString()}});
        setEncrypted(encrypted);
        if (!start(loopback, 0))
            qFatal("no broker: %s", qPrintable(fault()));
    }
    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(serverPort()); }
};

QStringList names(const SolvaAccessManager &manager)
{
    QStringList result;
    for (const Item *desktop : manager.getDesktops())
        result.append(desktop->getValue(Item::Name));
    return result;
}

// Leads standard output into a file until it is gone.
class PrintedLines
{
public:
    explicit PrintedLines(QTemporaryFile *file)
    {
        std::fflush(stdout);
        file->open();
        m_stdout = dup(STDOUT_FILENO);
        dup2(file->handle(), STDOUT_FILENO);
    }
    ~PrintedLines()
    {
        std::fflush(stdout);
        dup2(m_stdout, STDOUT_FILENO);
        close(m_stdout);
    }

private:
    int m_stdout;
};

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
    void desktopsOfAUser_data();
    void desktopsOfAUser();
    void failures_data();
    void failures();
    void credentials_data();
    void credentials();
    void earlierCredentialsAreForgotten();
    void newLogOnReplacesTheOldOne();
    void endsWithALogOnUnderWay();
    void secretsArePrintedAndNotLogged();
};

void SolvaAccessManagerTest::desktopsOfAUser_data()
{
    QTest::addColumn<BrokerServer::Mode>("mode");
    QTest::addColumn<bool>("encrypted");
    QTest::addColumn<int>("count");
    QTest::newRow("https") << BrokerServer::Mode::Normal << true << 2;
    QTest::newRow("http") << BrokerServer::Mode::Normal << false << 2;
    QTest::newRow("slow") << BrokerServer::Mode::Slow << true << 2;
    QTest::newRow("huge") << BrokerServer::Mode::Huge << true << 10000;
    QTest::newRow("empty") << BrokerServer::Mode::Empty << true << 0;
    QTest::newRow("no line ends") << BrokerServer::Mode::NoLineEnds << true << 1;
}

void SolvaAccessManagerTest::desktopsOfAUser()
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
    manager.getSolvaServers((encrypted ? QString() : QStringLiteral("http://")) + broker.address(), userName,
                            password, QString());
    QVERIFY(manager.isBusy());
    QTRY_COMPARE(replies, QList<QVariantList>{{SolvaAccessManager::noError}});
    QVERIFY(!manager.isBusy());
    QCOMPARE(manager.getDesktops().size(), count);
    if (count >= 2)
        QCOMPARE(names(manager).mid(0, 2),
                 (QStringList{QStringLiteral("Ward 3"), QString::fromUtf8("Büro 桌")}));
    QCOMPARE(broker.requests().last(), QStringLiteral("GET /_mpcdesktops?version=v3 nurse 200"));
}

void SolvaAccessManagerTest::failures_data()
{
    QTest::addColumn<BrokerServer::Mode>("mode");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("text");
    const QString none;
    QTest::newRow("500") << BrokerServer::Mode::Error << none << QStringLiteral("Internal Server Error");
    QTest::newRow("cut") << BrokerServer::Mode::Cut << none << QStringLiteral("closed");
    QTest::newRow("silent") << BrokerServer::Mode::Slow << none << QStringLiteral("does not answer");
    QTest::newRow("redirect") << BrokerServer::Mode::Redirect << none << QStringLiteral("edirect");
    QTest::newRow("too long") << BrokerServer::Mode::Normal << none << QStringLiteral("too long");
    QTest::newRow("no HTTPS there") << BrokerServer::Mode::Normal << QStringLiteral("http://") << none;
    QTest::newRow("nobody there") << BrokerServer::Mode::Normal << QStringLiteral("127.0.0.1:1")
                                  << QStringLiteral("refused");
    QTest::newRow("no address") << BrokerServer::Mode::Normal << QStringLiteral("a b:c/%") << none;
    QTest::newRow("no scheme of ours")
        << BrokerServer::Mode::Normal << QStringLiteral("gopher://127.0.0.1") << QStringLiteral("gopher");
}

void SolvaAccessManagerTest::failures()
{
    QFETCH(BrokerServer::Mode, mode);
    QFETCH(QString, address);
    QFETCH(QString, text);
    const Broker elsewhere;
    Broker broker;
    broker.setMode(mode);
    broker.setDelay(60000);
    broker.setBody(QByteArray("name:A\n").repeated(2 * SolvaAccessManager::bodyLimit / 7));
    broker.setRedirect(QUrl(QStringLiteral("https://%1/_mpcdesktops?version=v3").arg(elsewhere.address())));
    SolvaAccessManager manager;
    manager.setReplyTime(mode == BrokerServer::Mode::Slow ? 200 : 10000);
    QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
    const bool own = address.isEmpty() || address.endsWith(QLatin1Char('/'));
    manager.getSolvaServers(own ? address + broker.address() : address, userName, password, QString());
    QTRY_COMPARE(replies.size(), 1);
    const QString told = replies.first().first().toString();
    QVERIFY2(told.contains(text) && told != SolvaAccessManager::noError && !told.isEmpty(), qPrintable(told));
    QVERIFY2(!told.contains(QStringLiteral("s%")), qPrintable(told));
    QVERIFY(manager.getDesktops().isEmpty());
    QVERIFY(elsewhere.requests().isEmpty());
}

void SolvaAccessManagerTest::credentials_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("known");
    QTest::addColumn<QString>("given");
    const QString secret = QStringLiteral("secret");
    const QString own = QStringLiteral("jürgen");
    QTest::newRow("wrong password") << own << secret << QStringLiteral("x");
    QTest::newRow("wrong password with signs") << own << secret << password;
    QTest::newRow("no password") << own << secret << QString();
    QTest::newRow("no user") << QString() << secret << secret;
    QTest::newRow("unknown user") << QStringLiteral("doctor") << secret << secret;
    for (const char *right : {"", "100%", "%41:@/?#", "Grün", "пароль", "鍵 ü"})
        QTest::newRow(right) << own << QString::fromUtf8(right) << QString::fromUtf8(right);
}

void SolvaAccessManagerTest::credentials()
{
    QFETCH(QString, user);
    QFETCH(QString, known);
    QFETCH(QString, given);
    Broker broker;
    broker.addUser(QStringLiteral("jürgen@ward"), known, {{QStringLiteral("Ward 3"), QString()}});
    SolvaAccessManager manager;
    QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
    manager.getSolvaServers(broker.address(), user, given, QStringLiteral("ward"));
    QTRY_COMPARE(replies.size(), 1);
    const bool right = user == QStringLiteral("jürgen") && known == given;
    QCOMPARE(replies.first().first().toString(),
             right ? SolvaAccessManager::noError : QStringLiteral("Host requires authentication"));
    QVERIFY(broker.requests().size() <= 3);
}

void SolvaAccessManagerTest::earlierCredentialsAreForgotten()
{
    Broker broker;
    SolvaAccessManager manager;
    QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
    manager.getSolvaServers(broker.address(), userName, password, QString());
    QTRY_COMPARE(replies.size(), 1);
    manager.getSolvaServers(broker.address(), userName, QStringLiteral("x"), QString());
    QTRY_COMPARE(replies.size(), 2);
    QCOMPARE(replies.last().first().toString(), SolvaAccessManager::credentialsRefused);
}

void SolvaAccessManagerTest::newLogOnReplacesTheOldOne()
{
    Broker slow(false);
    slow.setMode(BrokerServer::Mode::Slow);
    slow.setDelay(10);
    Broker broker;
    broker.addUser(QStringLiteral("teacher"), password, {{QStringLiteral("Accounts"), QString()}});
    SolvaAccessManager manager;
    QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
    QSignalSpy asked(&slow, &BrokerServer::requestReceived);
    QElapsedTimer time;
    for (int i = 0; i < 10; ++i) {
        manager.getSolvaServers(QStringLiteral("http://") + slow.address(), userName, password, QString());
        QVERIFY(asked.wait()); // its challenge is on the way, and must hold nobody up
        time.start();
        manager.getSolvaServers(broker.address(), QStringLiteral("teacher"), password, QString());
        QVERIFY(time.elapsed() < 3000);
    }
    QTRY_COMPARE(replies, QList<QVariantList>{{SolvaAccessManager::noError}});
    QCOMPARE(names(manager), QStringList{QStringLiteral("Accounts")});
}

void SolvaAccessManagerTest::endsWithALogOnUnderWay()
{
    Broker broker;
    broker.setMode(BrokerServer::Mode::Slow);
    auto manager = std::make_unique<SolvaAccessManager>();
    QSignalSpy replies(manager.get(), &SolvaAccessManager::sendReply);
    manager->getSolvaServers(broker.address(), userName, password, QString());
    manager.reset();
    QCOMPARE(replies.size(), 0);
}

void SolvaAccessManagerTest::secretsArePrintedAndNotLogged()
{
    const Broker broker;
    SolvaAccessManager manager;
    QSignalSpy replies(&manager, &SolvaAccessManager::sendReply);
    const QtMessageHandler handler = qInstallMessageHandler(keepLogged);
    QTemporaryFile file;
    {
        const PrintedLines lines(&file);
        manager.getSolvaServers(broker.address(), userName, QStringLiteral("geheim"), QString());
        QVERIFY(QTest::qWaitFor([&replies] { return replies.size() == 1; }));
    }
    file.seek(0);
    const QByteArray printed = file.readAll();
    qInstallMessageHandler(handler);
    const QString url
        = QStringLiteral("https://nurse:geheim@%1/_mpcdesktops?version=v3").arg(broker.address());
    QVERIFY2(printed.startsWith('[' + url.toUtf8() + "]   [nurse]   [geheim]\nSSL ERRRO\n"), printed);
    QVERIFY2(printed.contains("\n Authenticator HTTP Error: ")
                 && printed.endsWith("\nHTTP Error: Host requires authentication\n"),
             printed);
    QVERIFY(logged.filter(QStringLiteral("geheim")).isEmpty());
}

QTEST_GUILESS_MAIN(SolvaAccessManagerTest)
#include "solvaaccessmanagertest.moc"
