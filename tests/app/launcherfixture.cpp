// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "app/resources.h"
#include "config/defaults.h"
#include "config/keys.h"
#include "widgets/connectiondialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QJsonDocument>

namespace {

const char *const client = R"(
lab="$KT_DEVICE_ROOT/lab"
run=$(($(wc -l <"$lab/client-calls" 2>/dev/null || echo 0) + 1))
cp "$2" "$lab/session.$run"
outcome=$(sed -n "${run}p" "$lab/outcomes")
printf '%s in %s\n' "$*" "$PWD" >>"$lab/client-calls"
case $outcome in
none) exit 0 ;;
crash) kill -KILL $$ ;;
flood) head -c 1000000 /dev/zero | tr '\0' x; yes | head -c 1000000; outcome='{"status": 6}' ;;
hold) while [ ! -e "$lab/go" ]; do sleep 0.02; done; rm "$lab/go"; outcome='{"status": 6}' ;;
esac
printf '%s' "$outcome" >"$2.status"
echo the last words without a line end
)";

QJsonValue with(const QJsonValue &value, const QStringList &keys, const QJsonValue &wanted)
{
    if (keys.isEmpty())
        return wanted;
    QJsonObject object = value.toObject();
    object.insert(keys.first(), with(object.value(keys.first()), keys.mid(1), wanted));
    return object;
}

} // namespace

Launcher::Launcher(const QList<Setting> &settings)
    : configuration(QStringLiteral("config.json"), true)
{
    Resources::apply(*qApp);
    QApplication::setQuitOnLastWindowClosed(false);
    QJsonValue document = Defaults::document(QStringLiteral("kt-test"), Defaults::networkSettings({}));
    for (const Setting &setting : settings)
        document = with(document, setting.keys, setting.value);
    device.setDocument(document.toObject());
    device.setTool(QStringLiteral("/opt/Tessaro/zClient"), client);
    configuration.readContent();
    window = std::make_unique<SettingsApp>();
    window->setConfiguration(&configuration);
    window->loadConfiguration();
    ended = std::make_unique<QSignalSpy>(&window->sessionLauncher(), &SessionLauncher::ended);
    window->show();
}

void Launcher::click(const char *button) const
{
    part<QAbstractButton>(button)->click();
}

void Launcher::tellClient(const QStringList &outcomes) const
{
    device.write(QStringLiteral("/lab/outcomes"),
                 (outcomes.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
}

void Launcher::letGo() const
{
    device.write(QStringLiteral("/lab/go"), QByteArray());
}

int Launcher::runs() const
{
    return device.read(QStringLiteral("/lab/client-calls")).count('\n');
}

QJsonObject Launcher::session(int run, const QString &object) const
{
    const QByteArray text = device.read(QStringLiteral("/lab/session.%1").arg(run));
    const QJsonObject root = QJsonDocument::fromJson(text).object();
    return root.value(QLatin1String("zClient")).toObject().value(object).toObject();
}

QStringList Launcher::addresses() const
{
    QStringList result;
    for (int run = 1; run <= runs(); ++run)
        result += session(run, QStringLiteral("server")).value(QLatin1String("address")).toString();
    return result;
}

bool Launcher::connectAndWait()
{
    const int before = ended->count();
    click("connectButton");
    return ended->count() > before || (window->sessionLauncher().isRunning() && ended->wait(30000));
}

QJsonArray Launcher::history() const
{
    return device.document().value(Key::mainWindow).toObject().value(Key::manualServerHistory).toArray();
}

ConnectionDialog *Launcher::connectingBox()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *box = qobject_cast<ConnectionDialog *>(widget))
            return box;
    }
    return nullptr;
}

QJsonArray oneGroup(const QString &name, const QStringList &members)
{
    QJsonArray servers;
    for (const QString &member : members) {
        servers += QJsonObject{{Key::serverName, QString(QStringLiteral("name of ") + member)},
                               {Key::serverAddress, member}};
    }
    return {QJsonObject{{Key::groupName, name}, {Key::servers, servers}}};
}
