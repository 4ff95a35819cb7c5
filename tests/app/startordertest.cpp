// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "documents.h"
#include "testdevice.h"

#include "app/settingsapp.h"
#include "app/settingscontroller.h"
#include "config/keys.h"

#include <unistd.h>

namespace {

const QString documentPath = QStringLiteral("/var/lib/kt964/config.json");
const QString output = QStringLiteral("/lab/standard-output");

/// Our standard output goes into a file of the device for as long as this lives.
class OutputToFile
{
public:
    explicit OutputToFile(const QString &path)
        : m_file(path)
        , m_terminal(::dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        if (!m_file.open(QIODevice::WriteOnly) || ::dup2(m_file.handle(), STDOUT_FILENO) < 0)
            qFatal("cannot redirect the standard output");
    }
    ~OutputToFile()
    {
        std::fflush(stdout);
        ::dup2(m_terminal, STDOUT_FILENO);
        ::close(m_terminal);
    }

private:
    QFile m_file;
    int m_terminal;
};

} // namespace

/// What the program makes of the document that it finds at its start, and of the device by it.
class StartOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void startsWithAnyDocument_data();
    void startsWithAnyDocument();
    void startsWithoutTools();
};

void StartOrderTest::startsWithAnyDocument_data()
{
    QTest::addColumn<QString>("found");
    QTest::addColumn<QString>("left"); // empty: the factory defaults
    QTest::addColumn<QString>("printed");
    const auto row = [](const char *found, const char *left, const char *printed) {
        QTest::newRow(found) << QString::fromLatin1(found) << QString::fromLatin1(left)
                             << QString::fromLatin1(printed);
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

void StartOrderTest::startsWithAnyDocument()
{
    QFETCH(QString, found);
    QFETCH(QString, left);
    QFETCH(QString, printed);
    const TestDevice device;
    device.write(documentPath, Documents::text(found));
    SettingsApp window;
    auto redirected = std::make_unique<OutputToFile>(device.path(output));
    SettingsController controller(&window);
    redirected.reset();

    QJsonObject expected;
    controller.loadDefaultConfig(expected);
    if (!left.isEmpty())
        expected = Documents::object(left);
    QCOMPARE(device.document(), expected);
    if (found == left)
        QCOMPARE(device.read(documentPath), Documents::text(found));
    QCOMPARE(window.clientMode() == SettingsApp::ClientMode::Rdp, found == QLatin1String("version-16.json"));
    QCOMPARE(controller.configuration().getDocument().object(), expected);
    const QStringList lines = QString::fromUtf8(device.read(output)).split(QLatin1Char('\n'));
    QCOMPARE(lines.filter(QRegularExpression(QStringLiteral("^UPGRADE"))).join(QLatin1Char(',')), printed);

    const bool upgraded = printed.contains(QLatin1String("STARTED"));
    const QJsonObject applied
        = QJsonDocument::fromJson(device.read(QStringLiteral("/lab/state/network.json"))).object();
    QCOMPARE(applied, upgraded ? expected[Key::network].toObject() : QJsonObject());
    const QString calls = device.calls().join(QLatin1Char(' '));
    QCOMPARE(calls.contains(QRegularExpression(QStringLiteral("set-config A .*autoconnect A "))), upgraded);
    QCOMPARE(window.cursor().shape(), Qt::ArrowCursor);

    QVERIFY(controller.checkConfigCompatibility(expected));
    expected.remove(Key::mainWindow);
    QVERIFY(!controller.checkConfigCompatibility(expected));
}

void StartOrderTest::startsWithoutTools()
{
    const TestDevice device;
    for (const char *tool : {"hostname", "kt-set-hostname", "kt-network-config"})
        device.setTool(QLatin1String("/usr/bin/") + QLatin1String(tool), "kill -ABRT $$");
    SettingsApp window;
    const SettingsController controller(&window);
    QCOMPARE(device.document().keys().size(), 17);
}

QTEST_MAIN(StartOrderTest)
#include "startordertest.moc"
