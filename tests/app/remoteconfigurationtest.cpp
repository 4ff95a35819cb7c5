// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "app/settingscontroller.h"
#include "config/keys.h"
#include "widgets/generaldialog.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QDir>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QStackedWidget>
#include <QTest>

namespace {

const QString tool = QStringLiteral("kt-set-resolution");

/// A launcher with its controller, and what a console does with them.
struct Device : Launcher
{
    explicit Device(const QList<Setting> &settings = {})
        : Launcher(settings)
    {
        device.forgetCalls();
    }
    int merge(const QByteArray &text)
    {
        QJsonObject remote = QJsonDocument::fromJson(text).object();
        if (!text.contains("firmware info"))
            remote.insert(Key::firmwareInfo, QJsonObject{{Key::configurationVersion, 15}});
        int result = 0;
        emit window->mergeRemoteConfig(remote, &result);
        return result;
    }
    void apply() { emit window->applyConfig(); }
    QJsonValue stored(QLatin1String section) const { return device.document().value(section); }
    int page() const { return part<QStackedWidget>("mainStackedWidget")->currentIndex(); }

    SettingsController controller{window.get()};
};

} // namespace

/// What becomes of documents from afar: on disk, on the screen and in the device's tools.
class RemoteConfigurationTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void refuses_data();
    void refuses();
    void showsAtOnceAndAppliesOnRequest();
    void appliesWhatThereIsToApply_data();
    void appliesWhatThereIsToApply();
    void keepsWhatIsItsOwn();
    void upgradesFirst();
    void waitsForTheEndOfASession();
};

void RemoteConfigurationTest::initTestCase()
{
    if (qgetenv("KT_LAB_NAMESPACE") != "inside")
        QSKIP("the window searches for servers in the lab's network namespace only");
}

void RemoteConfigurationTest::refuses_data()
{
    QTest::addColumn<QByteArray>("remote");
    QTest::newRow("no way up") << QByteArray(R"({"firmware info": {"configuration version": 13}})");
    QTest::newRow("no version") << QByteArray(R"({"firmware info": {}})");
    QTest::newRow("full disk") << QByteArray(R"({"general settings": {"device name": "full"}})");
}

void RemoteConfigurationTest::refuses()
{
    QFETCH(const QByteArray, remote);
    Device device;
    const QString path = device.device.path(QStringLiteral("/var/lib/kt964/config.json"));
    const QJsonObject before = device.device.document();
    if (remote.contains("full"))
        QVERIFY(QFile::rename(path, path + QLatin1String(".aside")) && QDir().mkdir(path));
    const QSignalSpy merged(&device.controller.remoteConfiguration(),
                            &RemoteConfiguration::configurationMerged);
    QCOMPARE(device.merge(remote), 1);
    QCOMPARE(device.controller.configuration().getDocument().object(), before);
    QCOMPARE(merged.size(), 0);
    QCOMPARE(device.device.calls(), QStringList());
}

void RemoteConfigurationTest::showsAtOnceAndAppliesOnRequest()
{
    Device device;
    device.controller.on_settingsButton_clicked();
    device.part<QCheckBox>("proxyCheckBox")->click();
    device.part<QCheckBox>("mirrorCheckBox")->click();
    device.device.forgetCalls();
    GeneralDialog question(device.window.get(), GeneralDialog::Question);
    question.open();
    QCOMPARE(device.merge(R"({"general settings": {"device name": "Ward 3", "client mode": "rdp"},
        "display settings": {"primary": {"resolution": "1280x800 60Hz"}}, "unknown": 1})"),
             0);
    QVERIFY(device.window->isVisible() && !question.isVisible());
    QCOMPARE(device.page(), int(SettingsApp::LauncherPage));
    QCOMPARE(device.window->clientMode(), SettingsApp::ClientMode::Rdp);
    QVERIFY(!device.device.document().contains(QStringLiteral("unknown")));
    // What was edited goes without a question to the device.
    QCOMPARE(device.device.calls(),
             QStringList({"tvservice -j -m DMT", "tvservice -j -m CEA", "kt-set-hostname -j"}));
    device.apply();
    device.apply();
    QCOMPARE(device.device.calls(tool), QStringList("kt-set-resolution DMT 28"));
    QCOMPARE(device.device.calls(QStringLiteral("kt-network-config")), QStringList());
}

void RemoteConfigurationTest::appliesWhatThereIsToApply_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QByteArray>("remote");
    QTest::addColumn<QString>("call");
    QTest::newRow("no such mode") << "corvid"
                                  << QByteArray(R"({"display settings": {"primary": {"resolution": "9x9"}}})")
                                  << "kt-set-resolution";
    QTest::newRow("network") << "corvid"
                             << QByteArray(R"({"network settings": {"DNS": {"domain": "ward.example"}}})")
                             << "kt-network-config autoconnect A";
    QTest::newRow("client") << "application" << QByteArray("{}") << "kt-switch -r";
    QTest::newRow("nothing") << "corvid" << QByteArray(R"({"server groups": []})") << "";
}

void RemoteConfigurationTest::appliesWhatThereIsToApply()
{
    QFETCH(const QString, mode);
    QFETCH(const QByteArray, remote);
    QFETCH(const QString, call);
    Device device({{{Key::general, Key::clientMode}, mode},
                   {{Key::display, Key::primary, Key::resolution}, QStringLiteral("1024x768 60Hz")}});
    QCOMPARE(device.merge(remote), 0);
    device.device.forgetCalls();
    const QSignalSpy icons(&device.controller.networkStatus(), &NetworkStatus::wiredIconShown);
    device.apply();
    QTRY_VERIFY(device.device.calls().join(QLatin1Char('|')).contains(call));
    QTRY_COMPARE(icons.isEmpty(), !call.contains(QLatin1String("network"))); // the indicators follow
    QCOMPARE(device.device.calls().isEmpty(), call.isEmpty());
    if (call == tool)
        QCOMPARE(device.stored(Key::display)[Key::primary][Key::resolution], QJsonValue("Automatic"));
}

void RemoteConfigurationTest::keepsWhatIsItsOwn()
{
    const QJsonObject own{{Key::outputDevice, QStringLiteral("own")},
                          {Key::outputPriority, QJsonArray({"HDMI", "USB"})}};
    Device device({{{Key::audio}, own}});
    QCOMPARE(device.merge(R"({"audio settings": {"output device": "other", "output priority": ["USB"]}})"),
             0);
    QCOMPARE(device.stored(Key::audio)[Key::outputPriority], QJsonValue(QJsonArray({"USB"})));
    QVERIFY(device.stored(Key::audio)[Key::outputDevice] != QJsonValue("other"));
}

void RemoteConfigurationTest::upgradesFirst()
{
    Device device;
    QCOMPARE(device.merge(R"({"firmware info": {"configuration version": 14},
        "connection settings": {"connection mode": "auto"}})"),
             0);
    QCOMPARE(device.stored(Key::connection)[Key::corvidConnection][Key::autoconnect][Key::enabled],
             QJsonValue(true));
    QCOMPARE(device.merge(R"({"network settings": {"proxy": {"enabled": true, "port": 3128}}})"), 0);
    QCOMPARE(QNetworkProxy::applicationProxy().port(), quint16(3128));
}

void RemoteConfigurationTest::waitsForTheEndOfASession()
{
    Device device({{{Key::serverGroups}, oneGroup(QStringLiteral("Office"), {"10.0.0.1", "10.0.0.2"})}});
    auto *list = device.part<QAbstractItemView>("groupServerTreeView");
    list->setCurrentIndex(list->model()->index(0, 0));
    device.tellClient({QStringLiteral("hold"), failure});
    device.click("connectButton");
    QTRY_COMPARE(device.runs(), 1);
    QCOMPARE(device.merge(R"({"general settings": {"client mode": "rdp"},
        "display settings": {"primary": {"resolution": "1280x800 60Hz"}}})"),
             0);
    device.apply();
    QVERIFY(!device.window->isVisible());
    QCOMPARE(device.device.calls(tool), QStringList());
    QCOMPARE(device.stored(Key::general)[Key::clientMode], QJsonValue("rdp"));
    device.letGo();
    QTRY_COMPARE(device.device.calls(tool), QStringList("kt-set-resolution DMT 28"));
    QVERIFY(device.window->isVisible());
    QCOMPARE(device.window->clientMode(), SettingsApp::ClientMode::Rdp);
    QVERIFY(device.window->updateModule().ifUpdateIdle());
    // What was done is not done again, whatever becomes of the merges after it.
    const QString path = device.device.path(QStringLiteral("/var/lib/kt964/config.json"));
    const QString aside = path + QLatin1String(".aside");
    QVERIFY(QFile::rename(path, aside) && QDir().mkdir(path));
    QCOMPARE(device.merge("{}"), 1);
    QVERIFY(QDir().rmdir(path) && QFile::rename(aside, path));
    QCOMPARE(device.merge("{}"), 0);
    device.apply();
    QCOMPARE(device.device.calls(tool).size(), 1);
}

QTEST_MAIN(RemoteConfigurationTest)
#include "remoteconfigurationtest.moc"
