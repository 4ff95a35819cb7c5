// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "userlauncher.h"

#include "figures.h"
#include "measurement.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>

namespace {

constexpr int startLimitMs = 130000; ///< more than two queries that hang
constexpr int actionLimitMs = 70000;
constexpr int endLimitMs = 2000;
constexpr int logEnd = 1000;

const QString document = QStringLiteral("/var/lib/kt964/config.json");

} // namespace

BenchDevice::BenchDevice()
{
    const QString lab = QCoreApplication::applicationDirPath() + QStringLiteral("/kt-lab");
    const bool made = QProcess::execute(lab, {QStringLiteral("make-root"), root()}) == 0;
    QFile::remove(root() + document);
    if (!made || !QFile::copy(qEnvironmentVariable("KT_DEVICE_ROOT") + document, root() + document))
        qFatal("a device cannot be made in %s", qPrintable(root()));
}

void BenchDevice::setFault(const QString &fault, const QString &call) const
{
    QStringList calls(call);
    if (call.isEmpty()) {
        calls.clear();
        for (const char *folder : {"/usr/bin", "/usr/sbin", "/opt/vc/bin", "/etc/init.d"})
            calls += QDir(root() + QLatin1String(folder)).entryList(QDir::Files);
        calls.removeAll(QStringLiteral("sudo")); // the tool behind it waits already
    }
    for (const QString &name : qAsConst(calls)) {
        QFile file(root() + QStringLiteral("/lab/faults/") + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(fault.toUtf8()) < 0)
            qFatal("no fault for %s", qPrintable(name));
    }
}

int BenchDevice::toolCalls(const QByteArray &containing) const
{
    QFile file(root() + QStringLiteral("/lab/calls.log"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray calls = file.readAll();
    return calls.count(containing.isEmpty() ? QByteArray("\n") : containing);
}

UserLauncher::UserLauncher(const QString &program, const BenchDevice &device)
    : m_log(device.root() + QStringLiteral("/lab/kt964.log"))
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KT_DEVICE_ROOT"), device.root());
    environment.insert(QLatin1String(Bench::startVariable), QString::number(Measurement::clock()));
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(m_log); // a full pipe would stop the program
    m_process.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program,
                    {QStringLiteral("user")});
    if (!m_process.waitForStarted())
        qFatal("%s does not start", qPrintable(program));
}

/// The program ends by itself when its input ends, and so ends its tools too.
UserLauncher::~UserLauncher()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(endLimitMs)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

double UserLauncher::millisecondsToPaint()
{
    return lineWith("painted ", startLimitMs).split(' ').value(1).toDouble();
}

void UserLauncher::act(const QString &action)
{
    m_process.write(action.toLatin1() + '\n');
    lineWith("done", actionLimitMs);
}

QByteArray UserLauncher::lineWith(const QByteArray &word, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(limitMs)) {
        while (m_process.canReadLine()) {
            const QByteArray line = m_process.readLine();
            if (line.startsWith(word))
                return line.trimmed();
        }
        if (m_process.state() == QProcess::NotRunning)
            break;
        m_process.waitForReadyRead(100);
    }
    QFile log(m_log);
    log.open(QIODevice::ReadOnly);
    qFatal("the program does not say \"%s\": %s", word.constData(), log.readAll().right(logEnd).constData());
}
