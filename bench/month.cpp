// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// Runs the device agent for a month of simulated time: four weeks and two days of heartbeats over HTTPS.
// Within each two days the server replies for one day, is down for twelve hours, and is silent for twelve.

#include "figures.h"

#include "management/deviceagent.h"
#include "management/devicestatus.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <functional>

namespace {

constexpr int halfDays = 60;
constexpr int perHalfDay = 12 * 3600 * 1000 / DeviceAgent::heartbeatMs;
constexpr int startLimitMs = 10000;
constexpr int answerLimitMs = 10000;
/// The wait for a heartbeat without a reply; long enough to send it.
constexpr int silenceMs = 1;

/// The server, in a process of its own, so that only the agent is measured.
class Server
{
public:
    void start()
    {
        m_process.setStandardOutputFile(m_folder.filePath(QStringLiteral("output")));
        m_process.start(QCoreApplication::applicationDirPath() + QLatin1String("/kt-lab"),
                        {QStringLiteral("qmd-server"), QStringLiteral("--address"),
                         QStringLiteral("127.0.0.1"), QStringLiteral("--port"), QString::number(m_port),
                         QStringLiteral("--spool"), m_folder.filePath(QStringLiteral("spool"))});
        QElapsedTimer limit;
        limit.start();
        while (!output().endsWith("ready\n")) {
            if (limit.elapsed() > startLimitMs)
                qFatal("the server does not start");
            QThread::msleep(5);
        }
        m_port = output().split('\n').constFirst().split(' ').value(1).toInt();
    }

    void end()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    void setSilent(bool silent) const
    {
        ::kill(static_cast<pid_t>(m_process.processId()), silent ? SIGSTOP : SIGCONT);
    }

    int port() const { return m_port; }

private:
    QByteArray output() const
    {
        QFile file(m_folder.filePath(QStringLiteral("output")));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};

int openSockets()
{
    int count = 0;
    const QDir files(QStringLiteral("/proc/self/fd"));
    const QStringList names = files.entryList(QDir::Files | QDir::System);
    for (const QString &name : names)
        count += QFile::symLinkTarget(files.filePath(name)).contains(QLatin1String("socket:")) ? 1 : 0;
    return count;
}

struct Month
{
    Server server;
    DeviceStatus status;
    DeviceAgent agent{status};
    int answered = 0;
    int mostSockets = 0;

    void processUntil(const std::function<bool()> &done, int limitMs) const
    {
        QElapsedTimer limit;
        limit.start();
        while (!done() && limit.elapsed() < limitMs)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, silenceMs);
    }

    void beat(int times, int limitMs)
    {
        for (int i = 0; i < times; ++i) {
            agent.heartbeat();
            processUntil([this] { return !agent.isBusy(); }, limitMs);
            // A running event loop does the same.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (i % 100 == 0)
                mostSockets = qMax(mostSockets, openSockets());
        }
    }

    void print(const QByteArray &when) const
    {
        Bench::printMemory(when);
        Bench::print((when + "-sockets").constData(), openSockets());
    }
};

void connectAgent(Month *month)
{
    QObject::connect(&month->agent, &RestClient::restResponse, &month->agent, [month] { ++month->answered; });
    month->agent.setURL(QUrl(QStringLiteral("https://127.0.0.1:%1").arg(month->server.port())));
    month->agent.setDeviceSerial(QStringLiteral("7fabc"));
    month->agent.setConfiguration("{}");
    month->agent.initConnection();
    month->processUntil([month] { return !month->agent.isBusy(); }, answerLimitMs);
}

/// Returns the server's state: of four half days it replies on two, is down on one and silent on one.
void passHalfDay(Month *month, int number)
{
    if (number % 4 < 2) {
        month->beat(perHalfDay, answerLimitMs);
    } else if (number % 4 == 2) {
        month->server.end();
        month->beat(perHalfDay, answerLimitMs);
        month->server.start();
    } else {
        month->server.setSilent(true);
        month->beat(perHalfDay, silenceMs);
        month->server.setSilent(false);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    Month month;
    month.server.start();
    connectAgent(&month);
    for (int number = 0; number < halfDays; ++number) {
        passHalfDay(&month, number);
        if (number == 3)
            month.print("days");
    }
    month.beat(1, answerLimitMs);
    month.print("month");
    Bench::print("month-most-sockets", month.mostSockets);
    Bench::print("month-answered", month.answered);
    Bench::print("month-beats", halfDays * perHalfDay + 1);
    month.server.end();
    return 0;
}
