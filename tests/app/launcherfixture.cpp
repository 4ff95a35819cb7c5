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
#include <QStackedWidget>

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

} // namespace

Launcher::Launcher(const QList<Setting> &settings)
{
    static const bool dressed = (Resources::apply(*qApp), true);
    Q_UNUSED(dressed)
    QApplication::setQuitOnLastWindowClosed(false);
    device.setDocument(Defaults::document("kt-test", Defaults::networkSettings({})));
    for (const Setting &setting : settings)
        device.store(setting.keys, setting.value);
    qRegisterMetaType<ConnectionFile::Verdict>("ConnectionFile::Verdict");
    device.setTool("/opt/Tessaro/zClient", client);
    program = std::make_unique<Program>();
    program->configuration().readContent();
    window = &program->window();
    window->loadConfiguration();
    ended = std::make_unique<QSignalSpy>(&program->session(), &SessionService::ended);
    window->show();
}

void Launcher::click(const char *button) const
{
    part<QAbstractButton>(button)->click();
}

int Launcher::page() const
{
    return part<QStackedWidget>("mainStackedWidget")->currentIndex();
}

void Launcher::tellClient(const QStringList &outcomes) const
{
    device.write("/lab/outcomes", (outcomes.join('\n') + '\n').toUtf8());
}

void Launcher::letGo() const
{
    device.write("/lab/go", QByteArray());
}

int Launcher::runs() const
{
    return device.read("/lab/client-calls").count('\n');
}

QJsonObject Launcher::session(int run, const QString &object) const
{
    const QByteArray text = device.read(QString("/lab/session.%1").arg(run));
    return QJsonDocument::fromJson(text)["zClient"][object].toObject();
}

QStringList Launcher::addresses() const
{
    QStringList result;
    for (int run = 1; run <= runs(); ++run)
        result += session(run, "server").value("address").toString();
    return result;
}

bool Launcher::connectAndWait()
{
    const int before = ended->count();
    click("connectButton");
    return ended->count() > before || (window->session().isRunning() && ended->wait(TestGroup::waitMs()));
}

QJsonArray Launcher::history() const
{
    return device.stored({Key::mainWindow, Key::manualServerHistory}).toArray();
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
        servers += QJsonObject{{Key::serverName, QString(QString("name of ") + member)},
                               {Key::serverAddress, member}};
    }
    return {QJsonObject{{Key::groupName, name}, {Key::servers, servers}}};
}
