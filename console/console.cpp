// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/console.h"

#include "console/discovery.h"
#include "console/files.h"
#include "console/printer.h"
#include "console/targets.h"
#include "console/updaterequest.h"
#include "console/workerpool.h"

#include <QDir>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace {

void printError(const QString &text)
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
    const Expected<Task> built = task();
    if (!built)
        return fail(built.error());
    m_task = *built;
    if (!m_options.outputFolder.isEmpty() && !QDir().mkpath(m_options.outputFolder))
        return fail(QStringLiteral("cannot create the folder %1").arg(m_options.outputFolder));
    const Expected<QList<QHostAddress>> named = Targets::named(m_options);
    if (!named)
        return fail(named.error());
    m_devices = *named;
    if (m_options.searchesSubnet())
        return discover();
    if (m_devices.isEmpty())
        return fail(QStringLiteral("no device in %1").arg(m_options.targetsFile));
    work();
}

Expected<Task> Console::task() const
{
    Task task;
    task.command = m_options.command;
    task.dryRun = m_options.dryRun;
    task.timeoutMs = m_options.timeoutMs;
    task.retries = m_options.retries;
    task.port = m_options.port;
    if (task.command == Command::SetConfig) {
        const Expected<QJsonObject> wanted = Files::readObject(m_options.file);
        if (!wanted)
            return Error{wanted.error()};
        task.configuration = *wanted;
    }
    if (task.command == Command::UpdateUrl || task.command == Command::UpdateServer) {
        const Expected<QByteArray> request = updateRequest();
        if (!request)
            return Error{request.error()};
        task.update = *request;
    }
    return task;
}

Expected<QByteArray> Console::updateRequest() const
{
    if (m_options.command == Command::UpdateServer)
        return UpdateRequest::fromServer(m_options.updateSource, m_options.updateFile);
    const Expected<QString> password = Files::readPassword(m_options.passwordFile);
    if (!password)
        return Error{password.error()};
    return UpdateRequest::fromUrl(m_options.updateSource, m_options.user, *password);
}

void Console::discover()
{
    const Expected<QList<QHostAddress>> broadcasts = Targets::broadcasts(m_options);
    if (!broadcasts)
        return fail(broadcasts.error());
    auto *discovery
        = new Discovery(*broadcasts, m_options.port, m_options.timeoutMs, 1 + m_options.retries, this);
    connect(discovery, &Discovery::failed, this, [this](const QString &reason) { fail(reason); });
    connect(discovery, &Discovery::ended, this, &Console::work);
    connect(discovery, &Discovery::found, this, &Console::handleFound);
    discovery->start();
}

/// For "info" the reply to the broadcast is the result already.
void Console::handleFound(const Result &result)
{
    const bool complete = m_options.command == Command::Info;
    if (complete) {
        m_devices.removeAll(result.device);
        m_results += result;
    } else if (!m_devices.contains(result.device)) {
        m_devices += result.device;
    }
    m_progress.show(QStringLiteral("%1 found").arg(complete ? m_results.size() : m_devices.size()));
}

void Console::work()
{
    if (m_devices.isEmpty() && m_results.isEmpty())
        return fail(QStringLiteral("no device answers in the subnet"), DeviceSilent);
    if (!isConfirmed())
        return;
    m_total = m_devices.size() + m_results.size();
    m_progress.show(QStringLiteral("%1 of %2").arg(m_results.size()).arg(m_total));
    auto *pool = new WorkerPool(m_task, m_devices, m_options.parallel, this);
    connect(pool, &WorkerPool::deviceEnded, this, &Console::handleResult);
    connect(pool, &WorkerPool::ended, this, &Console::end);
    pool->start();
}

bool Console::isConfirmed()
{
    if (!m_options.searchesSubnet() || !changesDevice(m_options.command) || m_options.dryRun || m_options.yes)
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
    fail(QStringLiteral("declined; no device was changed"));
    return false;
}

void Console::handleResult(const Result &result)
{
    m_results += result;
    const auto silent = std::count_if(m_results.cbegin(), m_results.cend(),
                                      [](const Result &one) { return one.outcome == Outcome::NoAnswer; });
    // A change is printed at once; reports are sorted and printed at the end.
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
        // A refusal takes precedence over silence, and trouble on this machine over both.
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
        if (!m_options.outputFolder.isEmpty() && result.outcome == Outcome::Done)
            result = withDocumentSaved(result);
        print(result);
    }
}

/// The message names the file, or says why it could not be written.
Result Console::withDocumentSaved(Result result) const
{
    const QString name
        = QDir(m_options.outputFolder).filePath(result.device.toString() + QStringLiteral(".json"));
    const QString error = Files::writePrivate(name, result.document);
    result.message = error.isEmpty() ? name : error;
    if (!error.isEmpty())
        result.outcome = Outcome::Failed;
    return result;
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
    printError(error);
    emit ended(code);
}
