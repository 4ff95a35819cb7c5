// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/messagedispatcher.h"

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
                             note(QStringLiteral("update ") + url + password + user + file);
                             *result = 1;
                         });
        QObject::connect(&dispatcher, &MessageDispatcher::check_resetPossible, &dispatcher,
                         [this](int *result) { *result = refusal; });
        QObject::connect(&dispatcher, &MessageDispatcher::ask_resetDevice, &dispatcher,
                         [note] { note(QStringLiteral("reset")); });
        QObject::connect(&dispatcher, &MessageDispatcher::getConfiguration, &dispatcher,
                         [note] { note(QStringLiteral("configuration")); });
        QObject::connect(&dispatcher, &MessageDispatcher::getProfile, &dispatcher,
                         [note] { note(QStringLiteral("profile")); });
        QObject::connect(&dispatcher, &MessageDispatcher::mergeRemoteConfig, &dispatcher,
                         [note](const QJsonObject &remote, int *) {
                             note(QStringLiteral("merge ")
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
    void messages_data();
    void messages();
    void manyActions();
};

void MessageDispatcherTest::messages_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("mergeAllowed");
    QTest::addColumn<QString>("made");
    const auto row
        = [](const char *name, const QByteArray &body, const char *made, bool mergeAllowed = true) {
              QTest::newRow(name) << body << mergeAllowed << QString::fromLatin1(made);
          };
    const QByteArray merge = R"({"code": 200, "data": {"a": {"b": 1}}})";
    row("merge", merge, R"(merge {"a":{"b":1}})");
    row("merge not allowed", merge, "", false);
    row("actions",
        R"({"data": [{"action": "REBOOT"}, {"action": "GET_CONFIGURATION"}, {"action": "GET_PROFILE"},
            {"action": "UPDATE_FIRMWARE", "params": {"downloadUrl": "ftp://h/f"}}], "code": "x"})",
        "reset,configuration,profile,update ftp://h/f", false);
    row("no url", R"({"data": [{"action": "UPDATE_FIRMWARE"}, {"action": "UPDATE_FIRMWARE", "params": 1},
            {"action": "UPDATE_FIRMWARE", "params": {"downloadUrl": {}}}]})",
        "update ,update ,update ");
    row("what is no action", R"({"data": [1, null, "REBOOT", ["REBOOT"], {}, {"action": ["REBOOT"]},
            {"action": "reboot"}, {"action": "REBOOT "}, {"action": "GET_PROFILE"}]})",
        "profile");
    row("data is text", R"({"data": "REBOOT"})", "");
    row("data is a number", R"({"data": 1})", "");
    row("an array", R"([{"data": [{"action": "REBOOT"}]}])", "");
    row("cut off", R"({"data": [{"action": "REBOOT"})", "");
    row("nothing", "", "");
    row("deep", R"({"data":)" + QByteArray(100000, '['), "");
}

void MessageDispatcherTest::messages()
{
    QFETCH(const QByteArray, body);
    QFETCH(const bool, mergeAllowed);
    QFETCH(const QString, made);
    Requests requests;
    requests.dispatcher.dispatch(body, mergeAllowed);
    QCOMPARE(requests.made.join(QLatin1Char(',')), made);
    requests.made.clear();
    requests.refusal = 1;
    requests.dispatcher.dispatch(body, mergeAllowed);
    QCOMPARE(requests.made.join(QLatin1Char(',')), QString(made).remove(QStringLiteral("reset,")));
}

void MessageDispatcherTest::manyActions()
{
    constexpr int count = 100000;
    Requests requests;
    requests.dispatcher.dispatch(
        "{\"data\": [{}" + QByteArray(R"(,{"action":"GET_CONFIGURATION"})").repeated(count) + "]}", false);
    QCOMPARE(requests.made.size(), count);
}

QTEST_GUILESS_MAIN(MessageDispatcherTest)
#include "messagedispatchertest.moc"
