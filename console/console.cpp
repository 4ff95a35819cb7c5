// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/console.h"

#include "console/crew.h"
#include "console/discovery.h"
#include "console/files.h"
#include "console/printer.h"
#include "console/targets.h"
#include "console/updaterequest.h"

#include <QDir>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace {

void say(const QString &text)
{
    QTextStream(stderr) << "kt-console: " << text << '\n';
}

int severity(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done:
    case Outcome::Unchanged:
        return AllDone;
    case Outcome::Refused:
    case Outcome::Unusable:
        return DeviceRefused;
    case Outcome::NoAnswer:
        return DeviceSilent;
    case Outcome::Failed:
        break;
    }
    return Trouble;
}

} // namespace

Console::Console(const Options &options, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_progress(!options.quiet)
{ }

void Console::start()
{
    QString error;
    const auto built = task(&error);
    if (!built)
        return fail(error);
    m_task = *built;
    if (!m_options.outputFolder.isEmpty() && !QDir().mkpath(m_options.outputFolder))
        return fail(QStringLiteral("cannot make the folder %1").arg(m_options.outputFolder));
    m_devices = Targets::named(m_options, &error);
    if (!error.isEmpty())
        return fail(error);
    if (m_options.asksSubnet())
        return discover();
    if (m_devices.isEmpty())
        return fail(QStringLiteral("%1 names no device").arg(m_options.targetsFile));
    work();
}

std::optional<Task> Console::task(QString *error) const
{
    Task task;
    task.command = m_options.command;
    task.dryRun = m_options.dryRun;
    task.timeoutMs = m_options.timeoutMs;
    task.retries = m_options.retries;
    task.port = m_options.port;
    if (task.command == Command::SetConfig) {
        const auto wanted = Files::readObject(m_options.file, error);
        if (!wanted)
            return std::nullopt;
        task.configuration = *wanted;
    }
    if ((task.command == Command::UpdateUrl || task.command == Command::UpdateServer)
        && !addUpdate(&task, error))
        return std::nullopt;
    return task;
}

bool Console::addUpdate(Task *task, QString *error) const
{
    const auto password = task->command == Command::UpdateUrl
        ? Files::readPassword(m_options.passwordFile, error)
        : QString();
    if (!password)
        return false;
    const auto request = task->command == Command::UpdateUrl
        ? UpdateRequest::fromUrl(m_options.updateSource, m_options.user, *password, error)
        : UpdateRequest::fromServer(m_options.updateSource, m_options.updateFile, error);
    task->update = request.value_or(QByteArray());
    return request.has_value();
}

void Console::discover()
{
    QString error;
    const QList<QHostAddress> broadcasts = Targets::broadcasts(m_options, &error);
    if (broadcasts.isEmpty())
        return fail(error);
    auto *discovery
        = new Discovery(broadcasts, m_options.port, m_options.timeoutMs, 1 + m_options.retries, this);
    connect(discovery, &Discovery::failed, this, [this](const QString &reason) { fail(reason); });
    connect(discovery, &Discovery::ended, this, &Console::work);
    connect(discovery, &Discovery::found, this, [this](const Result &result) {
        const bool enough = m_options.command == Command::Info;
        if (enough)
            m_devices.removeAll(result.device);
        else if (!m_devices.contains(result.device))
            m_devices += result.device;
        if (enough)
            m_results += result;
        m_progress.show(QStringLiteral("%1 found").arg(enough ? m_results.size() : m_devices.size()));
    });
    discovery->start();
}

void Console::work()
{
    if (m_devices.isEmpty() && m_results.isEmpty())
        return fail(QStringLiteral("no device answers in the subnet"), DeviceSilent);
    if (!mayGoOn())
        return;
    m_total = m_devices.size() + m_results.size();
    m_progress.show(QStringLiteral("%1 of %2").arg(m_results.size()).arg(m_total));
    auto *crew = new Crew(m_task, m_devices, m_options.parallel, this);
    connect(crew, &Crew::deviceEnded, this, &Console::take);
    connect(crew, &Crew::ended, this, &Console::end);
    crew->start();
}

bool Console::mayGoOn()
{
    if (!m_options.asksSubnet() || !changesDevice(m_options.command) || m_options.dryRun || m_options.yes)
        return true;
    m_progress.clear();
    if (isatty(STDIN_FILENO) != 1 || m_options.file == QLatin1String("-")) {
        fail(QStringLiteral("%1 devices found; --yes is needed to change them").arg(m_devices.size()),
             WrongCommandLine);
        return false;
    }
    QTextStream(stderr) << nameOf(m_options.command) << " on " << m_devices.size() << " devices? [y/N] "
                        << Qt::flush;
    const QString answer = QTextStream(stdin).readLine().trimmed();
    if (answer.compare(QLatin1String("y"), Qt::CaseInsensitive) == 0
        || answer.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0)
        return true;
    fail(QStringLiteral("nothing is done"));
    return false;
}

void Console::take(const Result &result)
{
    m_results += result;
    const auto silent = std::count_if(m_results.cbegin(), m_results.cend(),
                                      [](const Result &one) { return one.outcome == Outcome::NoAnswer; });
    // What has been done to a device is on record at once, and reports are sorted at the end.
    if (changesDevice(m_options.command))
        print(result);
    m_progress.show(
        QStringLiteral("%1 of %2, %3 without an answer").arg(m_results.size()).arg(m_total).arg(silent));
}

void Console::end()
{
    m_progress.clear();
    if (!changesDevice(m_options.command))
        printAll();
    int code = AllDone;
    for (const Result &result : qAsConst(m_results)) {
        const int severe = severity(result.outcome);
        // A refusal outweighs silence, and trouble of our own outweighs both.
        if (severe == Trouble || code == AllDone || (severe == DeviceRefused && code == DeviceSilent))
            code = severe;
    }
    emit ended(code);
}

void Console::printAll()
{
    std::sort(m_results.begin(), m_results.end(), [](const Result &left, const Result &right) {
        return left.device.toIPv4Address() < right.device.toIPv4Address();
    });
    if (m_options.command == Command::Info && !m_options.json && m_results.size() > 1)
        QTextStream(stdout) << Printer::heading();
    for (Result &result : m_results) {
        if (!keep(result))
            result.outcome = Outcome::Failed;
        print(result);
    }
}

bool Console::keep(Result &result)
{
    if (m_options.outputFolder.isEmpty() || result.outcome != Outcome::Done)
        return true;
    const QString name
        = QDir(m_options.outputFolder).filePath(result.device.toString() + QStringLiteral(".json"));
    const bool kept = Files::writePrivate(name, result.document, &result.message);
    if (kept)
        result.message = name;
    return kept;
}

void Console::print(const Result &result)
{
    m_progress.clear();
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    const bool report = result.outcome == Outcome::Done && m_results.size() > 1;
    const bool documentItself = m_options.command == Command::GetConfig && result.outcome == Outcome::Done
        && m_options.outputFolder.isEmpty();
    if (m_options.json || (documentItself && m_results.size() > 1))
        out << QString::fromUtf8(Printer::json(m_options.command, result, m_options.dryRun));
    else if (documentItself)
        out << QString::fromUtf8(result.document);
    else if (m_options.command == Command::Info && report)
        out << Printer::row(result);
    else
        out << Printer::text(m_options.command, result, m_options.dryRun);
}

void Console::fail(const QString &error, int code)
{
    m_progress.clear();
    say(error);
    emit ended(code);
}
