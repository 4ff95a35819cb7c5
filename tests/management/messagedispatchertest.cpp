// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/messagedispatcher.h"
#include "testtable.h"

#include <QJsonDocument>
#include <QTest>

namespace {

/// A dispatcher whose requests are written down, and whose resets can be refused.
struct Requests
{
    Requests()
    {
        const auto note = [this](const QString &request) {
            made += request;
        };
        QObject::connect(&dispatcher, &MessageDispatcher::firmwareUpdateURL, &dispatcher,
                         [note](const QString &url, const QString &password, const QString &user,
                                const QString &file, int *result) {
                             note(QString("update ") + url + password + user + file);
                             *result = 1;
                         });
        QObject::connect(&dispatcher, &MessageDispatcher::check_resetPossible, &dispatcher,
                         [this](int *result) { *result = refusal; });
        QObject::connect(&dispatcher, &MessageDispatcher::ask_resetDevice, &dispatcher,
                         [note] { note("reset"); });
        QObject::connect(&dispatcher, &MessageDispatcher::getConfiguration, &dispatcher,
                         [note] { note("configuration"); });
        QObject::connect(&dispatcher, &MessageDispatcher::getProfile, &dispatcher,
                         [note] { note("profile"); });
        QObject::connect(&dispatcher, &MessageDispatcher::mergeRemoteConfig, &dispatcher,
                         [note](const QJsonObject &remote, int *) {
                             note(QString("merge ")
                                  + QString::fromUtf8(QJsonDocument(remote).toJson(QJsonDocument::Compact)));
                         });
    }

    MessageDispatcher dispatcher;
    int refusal = 0;
    QStringList made;
};
} // namespace

class MessageDispatcherTest : public QObject
{
    Q_OBJECT

private slots:
    void messages_data()
    {
        const TestTable<QByteArray, QString> table("body", "made");
        table.row("merge", R"({"code": 200, "data": {"a": {"b": 1}}})", R"(merge {"a":{"b":1}})");

        table.row(
            "actions",
            R"({"data": [{"action": "REBOOT"}, {"action": "GET_CONFIGURATION"}, {"action": "GET_PROFILE"},
            {"action": "UPDATE_FIRMWARE", "params": {"downloadUrl": "ftp://h/f"}}], "code": "x"})",
            "reset,configuration,profile,update ftp://h/f");
        table.row("no url",
                  R"({"data": [{"action": "UPDATE_FIRMWARE"}, {"action": "UPDATE_FIRMWARE", "params": 1},
            {"action": "UPDATE_FIRMWARE", "params": {"downloadUrl": {}}}]})",
                  "update ,update ,update ");
        table.row("what is no action", R"({"data": [1, null, "REBOOT", ["REBOOT"], {}, {"action": ["REBOOT"]},
            {"action": "reboot"}, {"action": "REBOOT "}, {"action": "GET_PROFILE"}]})",
                  "profile");
        table.row("data is text", R"({"data": "REBOOT"})", "");
        table.row("cut off", R"({"data": [{"action": "REBOOT"})", "");
        table.row("deep", R"({"data":)" + QByteArray(100000, '['), "");
    }

    void messages()
    {
        QFETCH(const QByteArray, body);
        QFETCH(const QString, made);
        Requests requests;
        requests.dispatcher.dispatch(body, true);
        QCOMPARE(requests.made.join(','), made);
        // Neither a merge where none is allowed, nor a reset that is refused.
        requests.made.clear();
        requests.refusal = 1;
        requests.dispatcher.dispatch(body, false);
        QCOMPARE(requests.made.join(','),
                 made.startsWith("merge") ? QString() : QString(made).remove("reset,"));
    }
};

QTEST_GUILESS_MAIN(MessageDispatcherTest)
#include "messagedispatchertest.moc"
