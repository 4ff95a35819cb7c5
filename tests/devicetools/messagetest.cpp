// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launchermessage/launchermessage.h"
#include "launchermessage/launcherprocess.h"

#include <QJsonDocument>
#include <QtTest>

class MessageTest : public QObject
{
    Q_OBJECT

private slots:
    void writesWhatTheLauncherReads_data();
    void writesWhatTheLauncherReads();
    void signalsOnlyAReadyLauncher_data();
    void signalsOnlyAReadyLauncher();
};

void MessageTest::writesWhatTheLauncherReads_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("link") << "network|eth0|no link"
                          << QByteArray(R"({"network status":{"interface":"eth0","message":"no link"},)"
                                        R"("type":"network status"})");
    QTest::newRow("display") << "display|remove"
                             << QByteArray(R"({"dual monitor status":{"status":"remove"},)"
                                           R"("type":"dual monitor status"})");
    QTest::newRow("audio") << "audio" << QByteArray(R"({"type":"refresh audio"})");
    for (const char *words :
         {"", "network|eth1|link", "network|eth0|up", "network|eth0", "display|on", "audio|x"})
        QTest::addRow("not '%s'", words) << words << QByteArray("{}");
}

void MessageTest::writesWhatTheLauncherReads()
{
    QFETCH(QString, words);
    const QJsonObject message = LauncherMessage::fromArguments(words.split('|')).value_or(QJsonObject());
    QTEST(QJsonDocument(message).toJson(QJsonDocument::Compact), "json");
}

void MessageTest::signalsOnlyAReadyLauncher_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<bool>("ready");
    QTest::newRow("ready") << QByteArray(
        "Name:\tkt964\nUid:\t990\t990\t990\t990\nSigCgt:\t0000000100000200\n")
                           << true;
    QTest::newRow("no handler yet") << QByteArray("Uid:\t990\t990\t990\t990\nSigCgt:\t0000000100000100\n")
                                    << false;
    QTest::newRow("another user") << QByteArray("Uid:\t0\t990\t990\t990\nSigCgt:\t0000000000000200\n")
                                  << false;
    QTest::newRow("gone") << QByteArray() << false;
}

void MessageTest::signalsOnlyAReadyLauncher()
{
    QFETCH(QByteArray, status);
    QTEST(LauncherProcess::isReady(status, 990), "ready");
}

QTEST_GUILESS_MAIN(MessageTest)
#include "messagetest.moc"
