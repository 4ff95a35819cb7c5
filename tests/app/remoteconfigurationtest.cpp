// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "config/keys.h"
#include "testtable.h"
#include "widgets/generaldialog.h"

#include <QNetworkProxy>
#include <QtTest>
#include <QtWidgets>

namespace {

const QString tool = "kt-set-resolution";
/// The calls that change the device.
const QRegularExpression
    configuring("^(kt-switch|kt-set-[hknt]|kt-set-resolution [CD]|kt-network-config (set|con|dis))");

/// A started program, and what a console does with them.
struct Device : Launcher
{
    explicit Device(const QList<Setting> &settings = {})
        : Launcher(settings)
    {
        program->start();
        QTRY_VERIFY(!program->audio().devices().isEmpty());
        settle();
        TestDevice::waitForTools();
        device.forgetCalls();
    }
    void settle() { QTRY_VERIFY(!program->applier().isBusy()); }
    int merge(const QByteArray &text)
    {
        QJsonObject remote = QJsonDocument::fromJson(text).object();
        if (!text.contains("firmware info"))
            remote.insert(Key::firmwareInfo, QJsonObject{{Key::configurationVersion, 15}});
        int result = 0;
        program->remoteConfiguration().mergeRemoteConfig(remote, &result);
        return result;
    }
    /// A console asks for this when it has its reply; by then the device has begun to follow anyway.
    void apply()
    {
        program->controller().applyRemoteConfig();
        settle();
    }
    QJsonValue stored(const QString &section) const { return device.stored({section}); }
};

} // namespace

/// What becomes of documents from afar: on disk, on the screen and in the device's tools.
class RemoteConfigurationTest : public QObject
{
    Q_OBJECT

private slots:
    void refuses_data()
    {
        const TestTable<QByteArray> table("remote");
        table.row("no way up", R"({"firmware info": {"configuration version": 13}})");
        table.row("no version", R"({"firmware info": {}})");
        table.row("full disk", R"({"general settings": {"device name": "full"}})");
    }

    void refuses()
    {
        QFETCH(const QByteArray, remote);
        Device device;
        const QString path = device.device.path("/var/lib/kt964/config.json");
        const QJsonObject before = device.device.document();
        if (remote.contains("full"))
            QVERIFY(QFile::rename(path, path + ".aside") && QDir().mkdir(path));
        const QSignalSpy merged(&device.program->remoteConfiguration(),
                                &RemoteConfiguration::configurationMerged);
        QCOMPARE(device.merge(remote), 1);
        QCOMPARE(device.program->configuration().getDocument().object(), before);
        QCOMPARE(merged.size(), 0);
        QCOMPARE(device.device.calls().filter(configuring), QStringList());
    }

    void showsAtOnceAndAppliesOnRequest()
    {
        Device device;
        device.program->controller().on_settingsButton_clicked();
        device.part<QCheckBox>("proxyCheckBox")->click();
        device.part<QCheckBox>("mirrorCheckBox")->click();
        device.device.forgetCalls();
        GeneralDialog question(device.window, GeneralDialog::Question);
        question.open();
        QCOMPARE(device.merge(R"({"general settings": {"device name": "Ward 3", "client mode": "rdp"},
            "display settings": {"primary": {"resolution": "1280x800 60Hz"}}, "unknown": 1})"),
                 0);
        QVERIFY(device.window->isVisible() && !question.isVisible());
        QCOMPARE(device.page(), int(SettingsApp::LauncherPage));
        QCOMPARE(device.window->clientMode(), SettingsApp::ClientMode::Rdp);
        QVERIFY(!device.device.document().contains("unknown"));
        // What was edited is gone without a question to the device; what was merged follows after the reply.
        QCOMPARE(device.device.calls().filter(configuring), QStringList());
        device.apply();
        device.apply();
        QCOMPARE(device.device.calls().filter(configuring),
                 QStringList({"kt-set-hostname -j", "kt-set-resolution DMT 28"}));
    }

    void searchesForServersWhenToldTo()
    {
        Device device;
        for (const char *shown : {"false", "true"}) {
            const QSignalSpy searches(device.window, &SettingsApp::refreshServerList);
            const QByteArray merged
                = QByteArray(R"({"connection settings": {"corvid connection": {"show autodetected": %1}}})")
                      .replace("%1", shown);
            QCOMPARE(device.merge(merged), 0);
            QCOMPARE(searches.size(), shown == QByteArray("true") ? 1 : 0);
        }
    }

    void touchesNothingWithoutDifferences()
    {
        Device device;
        const QSignalSpy merged(&device.program->remoteConfiguration(),
                                &RemoteConfiguration::configurationMerged);
        device.program->controller().on_settingsButton_clicked();
        device.part<QCheckBox>("mirrorCheckBox")->click();
        GeneralDialog question(device.window, GeneralDialog::Question);
        question.open();
        const QJsonObject document = device.device.document();
        for (const QJsonObject &remote :
             {document, QJsonObject{{"general settings", document["general settings"]}}})
            QCOMPARE(device.merge(QJsonDocument(remote).toJson()), 0);
        device.apply();
        QCOMPARE(device.device.calls().filter(configuring), QStringList());
        QCOMPARE(device.page(), int(SettingsApp::SettingsPage));
        QVERIFY(question.isVisible() && device.part<QCheckBox>("mirrorCheckBox")->isChecked());
        QCOMPARE(merged.size(), 0);
    }

    void appliesWhatThereIsToApply_data()
    {
        const TestTable<QString, QByteArray, QString> table("mode", "remote", "call");
        table.row("no such mode", "corvid", R"({"display settings": {"primary": {"resolution": "9x9"}}})",
                  "kt-set-resolution");
        table.row("network", "corvid", R"({"network settings": {"DNS": {"domain": "ward.example"}}})",
                  "kt-network-config set-config A");
        table.row("client", "application", R"({"general settings": {"client mode": "corvid"}})",
                  "kt-switch -r");
        table.row("nothing", "corvid", R"({"server groups": []})", "");
    }

    void appliesWhatThereIsToApply()
    {
        QFETCH(const QString, mode);
        QFETCH(const QByteArray, remote);
        QFETCH(const QString, call);
        Device device({{{Key::general, Key::clientMode}, mode},
                       {{Key::display, Key::primary, Key::resolution}, "1024x768 60Hz"}});
        QCOMPARE(device.merge(remote), 0);
        QCOMPARE(device.device.calls().filter(configuring), QStringList()); // its sender has the reply first
        device.apply();
        QTRY_VERIFY(device.device.calls().join('|').contains(call));
        QVERIFY(!call.isEmpty() || device.device.calls().filter(configuring).isEmpty());
        if (call == tool)
            QCOMPARE(device.stored(Key::display)[Key::primary][Key::resolution], QJsonValue("Automatic"));
    }

    void keepsWhatIsItsOwn()
    {
        const QJsonObject own{{Key::outputDevice, "own"}, {Key::outputPriority, QJsonArray({"HDMI", "USB"})}};
        Device device({{{Key::audio}, own}});
        QCOMPARE(
            device.merge(R"({"audio settings": {"output device": "other", "output priority": ["USB"]}})"), 0);
        QCOMPARE(device.stored(Key::audio)[Key::outputPriority], QJsonValue(QJsonArray({"USB"})));
        QVERIFY(device.stored(Key::audio)[Key::outputDevice] != QJsonValue("other"));
    }

    void upgradesFirst()
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

    void waitsForTheEndOfASession()
    {
        Device device({{{Key::serverGroups}, oneGroup("Office", {"10.0.0.1", "10.0.0.2"})}});
        auto *list = device.part<QAbstractItemView>("groupServerTreeView");
        list->setCurrentIndex(list->model()->index(0, 0));
        device.tellClient({"hold", failure});
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
        QVERIFY(device.program->updateModule().ifUpdateIdle());
        // What was done is not done again, whatever becomes of the merges after it.
        const QString path = device.device.path("/var/lib/kt964/config.json");
        const QString aside = path + ".aside";
        QVERIFY(QFile::rename(path, aside) && QDir().mkdir(path));
        QCOMPARE(device.merge("{}"), 1);
        QVERIFY(QDir().rmdir(path) && QFile::rename(aside, path));
        QCOMPARE(device.merge("{}"), 0);
        device.apply();
        QCOMPARE(device.device.calls(tool).size(), 1);
    }
};

QTEST_MAIN(RemoteConfigurationTest)
#include "remoteconfigurationtest.moc"
