// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "documents.h"
#include "fulldisk.h"
#include "outputtofile.h"
#include "testdevice.h"

#include "app/program.h"
#include "config/keys.h"
#include "testtable.h"

#include <QCheckBox>
#include <QJsonArray>

namespace {

const QString documentPath = "/var/lib/kt964/config.json";
const QString output = "/lab/standard-output";

} // namespace

/// What the program makes of the document that it finds at its start, and of the device by it.
class StartOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void startsWithAnyDocument_data()
    {
        // empty: the factory defaults
        const TestTable<QString, QString, QString> table("found", "left", "printed");
        const auto row = [&table](const char *found, const char *left, const char *printed) {
            table.row(found, QString::fromLatin1(found), QString::fromLatin1(left),
                      QString::fromLatin1(printed));
        };
        const char *const skipped = "UPGRADE TO 15 SKIPPED";
        row("old-network.json", "old-network.upgraded.json", "UPGRADE TO NEW NETWORK,UPGRADE TO 15 STARTED");
        row("version-14.json", "version-14.upgraded.json", "UPGRADE TO 15 STARTED");
        row("bare.json", "bare.upgraded.json", "UPGRADE TO 15 STARTED");
        row("version-14.upgraded.json", "version-14.upgraded.json", skipped);
        row("version-16.json", "version-16.json", skipped);
        row("wrong-types-15.json", "wrong-types-15.json", skipped);
        row("truncated.json", "", "");
    }

    void startsWithAnyDocument()
    {
        QFETCH(QString, found);
        QFETCH(QString, left);
        QFETCH(QString, printed);
        const TestDevice device;
        device.write(documentPath, Documents::text(found));
        device.setPlainSound();
        Program program;
        auto redirected = std::make_unique<OutputToFile>(device.path(output));
        program.start();
        redirected.reset();

        QJsonObject expected;
        if (left.isEmpty())
            program.startDocument().loadDefaultConfig(
                [&](const QJsonObject &defaults) { expected = defaults; });
        else
            expected = Documents::object(left);
        QTRY_VERIFY(!expected.isEmpty());
        QTRY_COMPARE(device.document(), expected);
        if (found == left)
            QCOMPARE(device.read(documentPath), Documents::text(found));
        QCOMPARE(program.window().clientMode() == SettingsApp::ClientMode::Rdp, found == "version-16.json");
        QCOMPARE(program.configuration().getDocument().object(), expected);
        const QStringList lines = QString::fromUtf8(device.read(output)).split('\n');
        QCOMPARE(lines.filter(QRegularExpression("^UPGRADE")).join(','), printed);

        const bool upgraded = printed.contains("STARTED");
        const auto applied = [&device] {
            return QJsonDocument::fromJson(device.read("/lab/state/network.json")).object();
        };
        QTRY_COMPARE(applied(), upgraded ? expected[Key::network].toObject() : QJsonObject());
        const QRegularExpression commands("set-config A .*autoconnect A ");
        QTRY_COMPARE(device.calls().join(' ').contains(commands), upgraded);
        QCOMPARE(program.window().cursor().shape(), Qt::ArrowCursor);

        QVERIFY(program.controller().checkConfigCompatibility(expected));
        expected.remove(Key::mainWindow);
        QVERIFY(!program.controller().checkConfigCompatibility(expected));
    }

    void keepsWhatItUpgradedOnAFullDisk()
    {
        const TestDevice device;
        device.write(documentPath, Documents::text("old-network.json"));
        const QJsonObject upgraded = Documents::object("old-network.upgraded.json");
        Program program;
        {
            const FullDisk full(static_cast<rlim_t>(device.read(documentPath).size()));
            program.start();
            const DialogAnswer answer(true, "secret");
            program.controller().on_settingsButton_clicked();
            QCOMPARE(program.configuration().getDocument().object(), upgraded);
            QCOMPARE(device.document(), Documents::object("old-network.json"));
        }
        program.window().findChild<QCheckBox *>("numLockCheckBox")->click();
        program.controller().on_applyButton_clicked();
        QJsonObject expected = upgraded;
        expected.insert(Key::keyboard, QJsonObject{{"layout", "US"}, {"numlock on", true}});
        expected.insert(Key::audio, device.document().value(Key::audio)); // the devices found meanwhile
        QCOMPARE(device.document(), expected);
    }

    void neverReplacesADocumentThatItCannotRead()
    {
        const TestDevice device;
        const QString path = device.path(documentPath);
        QFile::remove(path);
        QVERIFY(QFile::link(path, path));
        Program program;
        const QSignalSpy unreadable(&program.startDocument(), &StartDocument::unreadable);
        const DialogAnswer answer(true);
        program.start();
        program.applier().follow();
        QTRY_COMPARE_WITH_TIMEOUT(unreadable.size(), 1, 20000);
        program.controller().on_settingsButton_clicked();
        QVERIFY(program.window().findChild<QCheckBox *>("numLockCheckBox") == nullptr);
        const auto edit = [](QJsonObject &root) {
            root.insert(Key::general, QJsonObject());
            return true;
        };
        QCOMPARE(program.configuration().change(edit), JsonModule::Change::Unreadable);
        QVERIFY(QFileInfo(path).isSymLink());
        QVERIFY(device.calls("kt-network-config").filter("set-config").isEmpty());
    }

    void waitsForADocumentThatItCannotReadYet()
    {
        const TestDevice device;
        const QString path = device.path(documentPath);
        QFile::remove(path);
        QVERIFY(QFile::link(path, path));
        Program program;
        const QSignalSpy replaced(&program.startDocument(), &StartDocument::replaced);
        program.start();
        QVERIFY(program.configuration().isProvisional());
        QVERIFY(QFile::remove(path));
        device.write(documentPath, Documents::text("version-14.json"));
        QTRY_COMPARE(replaced.size(), 1);
        QJsonObject expected = Documents::object("version-14.upgraded.json");
        expected.insert(Key::audio, device.document().value(Key::audio)); // the devices found meanwhile
        QCOMPARE(device.document(), expected);
        QTRY_VERIFY(!device.calls("kt-network-config").filter("autoconnect").isEmpty());
    }

    void keepsWhatIsChangedBeforeTheToolsReply()
    {
        const TestDevice device;
        Program program;
        program.start();
        program.configuration().change([](QJsonObject &root) {
            root.insert(Key::serverGroups, QJsonArray{1});
            return true;
        });
        const QStringList wired = {Key::network, Key::interfaces, Key::eth, Key::enabled};
        QVERIFY(!device.exists(documentPath));
        QTRY_COMPARE(device.stored(wired), QJsonValue(true));
        QCOMPARE(device.stored({Key::serverGroups}), QJsonValue(QJsonArray{1}));
    }

    void startsWithoutTools()
    {
        const TestDevice device;
        for (const char *tool : {"hostname", "kt-set-hostname", "kt-network-config"})
            device.setTool(QString("/usr/bin/") + QLatin1String(tool), "kill -ABRT $$");
        Program program;
        program.start();
        QTRY_COMPARE(device.document().keys().size(), 17);
    }
};

QTEST_MAIN(StartOrderTest)
#include "startordertest.moc"
