// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsonmodule.h"
#include "config/merge.h"
#include "testdevice.h"
#include "update/terminalservermodule.h"

#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The console's program and the device's endpoint, each as it is, over the lab's network.
class ConsoleEndpointTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void findsTheDevice();
    void bringsTheConfigurationBack();
    void actsAndIsRefused();
    void getsNoAnswerWhileManagementIsOff();

private:
    int console(const QString &line);

    TestDevice m_device;
    TerminalServerModule m_endpoint;
    int m_result = 0; // of all that the device is asked for
    QStringList m_asked;
    QByteArray m_output;
};

int ConsoleEndpointTest::console(const QString &line)
{
    QProcess process;
    process.start(qEnvironmentVariable("KT_BIN_DIR") + QLatin1String("/kt-console"),
                  line.split(QLatin1Char(' ')));
    if (!QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 60000))
        return -1;
    m_output = process.readAllStandardOutput();
    return process.exitCode();
}

void ConsoleEndpointTest::initTestCase()
{
    if (qgetenv("KT_LAB_NAMESPACE") != "inside")
        QSKIP("the port belongs into the lab's network namespace");
    using Endpoint = TerminalServerModule;
    connect(&m_endpoint, &Endpoint::saveConfiguration, this, [this](const QJsonObject &remote, int *result) {
        QJsonObject document = m_device.document();
        Merge::mergeJsonObject(document, remote);
        m_device.setDocument(document);
        *result = m_result;
    });
    connect(&m_endpoint, &Endpoint::check_resetPossible, this, [this](int *result) { *result = m_result; });
    connect(&m_endpoint, &Endpoint::ask_resetDevice, this, [this] { m_asked += QStringLiteral("reset"); });
    connect(&m_endpoint, &Endpoint::firmwareUpdateLatest, this, [this](int *result) { *result = m_result; });
    connect(
        &m_endpoint, &Endpoint::firmwareUpdateURL, this,
        [this](const QString &url, const QString &password, const QString &user, const QString &file, int *) {
            m_asked += {url, password, user, file};
        });
    connect(&m_endpoint, &Endpoint::firmwareUpdateCORVID, this,
            [this](const QString &server, const QString &file, int *) {
                m_asked += {server, file};
            });
}

void ConsoleEndpointTest::init()
{
    m_result = 0;
    m_asked.clear();
}

void ConsoleEndpointTest::findsTheDevice()
{
    m_device.setDocument({{QStringLiteral("general settings"),
                           QJsonObject{{QStringLiteral("device name"), QStringLiteral("ward")}}}});
    QCOMPARE(console(QStringLiteral("info --subnet --timeout 2 --json")), 0);
    const QJsonObject found = QJsonDocument::fromJson(m_output).object();
    QCOMPARE(found.value(QStringLiteral("address")).toString(), QStringLiteral("10.77.0.10"));
    QVERIFY(m_output.contains("\"device name\":\"ward\""));
}

void ConsoleEndpointTest::bringsTheConfigurationBack()
{
    const QJsonObject first{
        {QStringLiteral("firmware info"), QJsonObject{{QStringLiteral("configuration version"), 15}}},
        {QStringLiteral("general settings"),
         QJsonObject{{QStringLiteral("device name"), QStringLiteral("Büro €")}}}};
    m_device.setDocument(first);
    const QTemporaryDir folder;
    QCOMPARE(console(QStringLiteral("get-config 10.77.0.10 --output ") + folder.path()), 0);
    QJsonObject second = first;
    second.insert(QStringLiteral("general settings"),
                  QJsonObject{{QStringLiteral("device name"), QStringLiteral("other")}});
    m_device.setDocument(second);
    QCOMPARE(console(QStringLiteral("set-config %1/10.77.0.10.json 10.77.0.10").arg(folder.path())), 0);
    QCOMPARE(m_device.document(), first);
}

void ConsoleEndpointTest::actsAndIsRefused()
{
    QCOMPARE(console(QStringLiteral("reset 10.77.0.10")), 0);
    QCOMPARE(console(QStringLiteral("update ftp://10.77.0.21/a.img --user joe 10.77.0.10")), 0);
    QCOMPARE(console(QStringLiteral("update server Office /fw/a.img 10.77.0.10")), 0);
    QCOMPARE(m_asked.mid(0, 1), QStringList(QStringLiteral("reset")));
    QCOMPARE(m_asked.mid(1),
             QStringList({QStringLiteral("ftp://10.77.0.21/a.img"), QString(), QStringLiteral("joe"),
                          QString(), QStringLiteral("Office"), QStringLiteral("fwa.img")}));
    m_result = 1;
    QCOMPARE(console(QStringLiteral("reset 10.77.0.10")), 1);
    QCOMPARE(console(QStringLiteral("update latest 10.77.0.10")), 1);
    QCOMPARE(m_asked.count(QStringLiteral("reset")), 1);
}

void ConsoleEndpointTest::getsNoAnswerWhileManagementIsOff()
{
    m_endpoint.enableComunication(false);
    QCOMPARE(console(QStringLiteral("get-config 10.77.0.10 --timeout 0.1")), 3);
    m_endpoint.enableComunication(true);
}

QTEST_GUILESS_MAIN(ConsoleEndpointTest)
#include "endpointtest.moc"
