// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launchertasks.h"

#include "paintwatch.h"

#include "launcher/corvidpage.h"
#include "launcher/settingsapp.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "widgets/groupservertreeview.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

constexpr int sessionTotal = 50;
constexpr int serverTotal = 5000;
constexpr int rounds = 15;
constexpr int paintLimitMs = 10000;

SettingsApp *launcher()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<SettingsApp *>(window))
            return found;
    }
    qFatal("there is no launcher");
}

/// Finds a widget of the launcher by its name in the forms.
template <typename Type>
Type *part(const char *name)
{
    auto *found = launcher()->findChild<Type *>(QLatin1String(name));
    if (!found)
        qFatal("the launcher has no %s", name);
    return found;
}

/// Counts the paints of a widget.
class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget *widget) { widget->installEventFilter(this); }
    int paints = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

void processUntilPainted(const PaintCount &count)
{
    QElapsedTimer limit;
    limit.start();
    while (count.paints == 0 && limit.elapsed() < paintLimitMs)
        QCoreApplication::processEvents();
    if (count.paints == 0)
        qFatal("the list is not painted");
    // Counts the events that the paint has posted.
    QCoreApplication::processEvents();
}

/// Prints the median time from a change of a list to its paint. Each round prepares the list first.
void printPaintTime(const char *figure, QAbstractItemView *view, const std::function<void()> &prepare,
                    const std::function<void()> &fill)
{
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        prepare();
        QCoreApplication::processEvents();
        PaintCount count(view->viewport());
        QElapsedTimer clock;
        clock.start();
        fill();
        processUntilPainted(count);
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    Bench::print(figure, times[times.size() / 2]);
}

QJsonObject server(int number)
{
    return {{Key::serverName, QStringLiteral("Server %1").arg(number)},
            {Key::serverAddress, QStringLiteral("10.%1.%2.7").arg(number / 250).arg(number % 250)}};
}

/// Returns 5,000 servers in this many groups.
QJsonArray groups(int total)
{
    QJsonArray result;
    for (int group = 0; group < total; ++group) {
        QJsonArray members;
        for (int member = group; member < serverTotal; member += total)
            members.append(server(member));
        result.append(
            QJsonObject{{Key::groupName, QStringLiteral("Group %1").arg(group)}, {Key::servers, members}});
    }
    return result;
}

QMap<QString, QHostAddress> foundServers()
{
    QMap<QString, QHostAddress> result;
    for (int number = 0; number < serverTotal; ++number) {
        const QJsonObject found = server(number);
        result.insert(found.value(Key::serverName).toString(),
                      QHostAddress(found.value(Key::serverAddress).toString()));
    }
    return result;
}

void printGroupTimes()
{
    auto *page = part<CorvidPage>("corvidPage");
    auto *view = part<GroupServerTreeView>("groupServerTreeView");
    const QJsonArray one = groups(1);
    const QJsonArray many = groups(serverTotal);
    const auto empty = [page] {
        page->setGroups({});
    };
    printPaintTime("one-group", view, empty, [&] { page->setGroups(one); });
    printPaintTime("one-group-unfolded", view, empty, [&] {
        page->setGroups(one);
        view->expandAll();
    });
    printPaintTime("many-groups", view, empty, [&] { page->setGroups(many); });
    printPaintTime("many-groups-unfolded", view, empty, [&] {
        page->setGroups(many);
        view->expandAll();
    });
    // A change of the network affects the current list like this.
    printPaintTime(
        "many-groups-again", view, [view] { view->expandAll(); }, [&] { page->setGroups(many); });
}

void printFoundTime()
{
    auto *page = part<CorvidPage>("corvidPage");
    const QMap<QString, QHostAddress> found = foundServers();
    printPaintTime(
        "found", part<GroupServerTreeView>("detectedView"), [page] { page->setServerList({}); },
        [&] { page->setServerList(found); });
}

/// The additional time for reading the groups from the file.
void printReadTime()
{
    const QByteArray text = QJsonDocument(QJsonObject{{Key::serverGroups, groups(1)}}).toJson();
    JsonModule document(QStringLiteral("/dev/null"), false);
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer clock;
        clock.start();
        document.setJsonString(text);
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    Bench::print("document", times[times.size() / 2]);
}

} // namespace

void Bench::showServers()
{
    printGroupTimes();
    printFoundTime();
    printReadTime();
    QCoreApplication::exit();
}

void Bench::runSessions()
{
    auto *view = part<GroupServerTreeView>("groupServerTreeView");
    view->setCurrentIndex(view->model()->index(0, 0));
    auto *button = part<QPushButton>("connectButton");
    static int ended = 0;
    QObject::connect(&launcher()->session(), &SessionService::ended, button,
                     [button](ConnectionFile::Verdict verdict) {
                         if (verdict != ConnectionFile::Verdict::NoError)
                             qFatal("a session has failed");
                         // After the window is shown again.
                         QTimer::singleShot(50, button, [button] {
                             if (++ended == 1)
                                 printMemory("first-session");
                             if (ended < sessionTotal)
                                 return button->click();
                             printMemory("sessions");
                             QCoreApplication::exit();
                         });
                     });
    button->click();
}
