// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "measurement.h"

#include "figures.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <ctime>

namespace {

constexpr int limitMs = 600000;

} // namespace

qint64 Measurement::clock()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000000000LL + now.tv_nsec;
}

void Measurement::run(Measurement *into, const QString &program, const QString &platform, const QString &task,
                      bool withoutOpenGl)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    if (withoutOpenGl)
        environment.insert(QStringLiteral("QT_XCB_GL_INTEGRATION"), QStringLiteral("none"));
    environment.insert(QLatin1String(Bench::startVariable), QString::number(clock()));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') + program,
                  task.isEmpty() ? QStringList() : QStringList(task));
    const bool ended = process.waitForFinished(limitMs);
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        qFatal("%s has failed: %s", qPrintable(program), process.readAllStandardError().constData());
    if (into)
        into->add(process.readAllStandardOutput());
}

void Measurement::add(const QByteArray &output)
{
    QHash<QString, double> figures;
    for (const QByteArray &line : output.split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 2)
            figures.insert(QString::fromLatin1(words.first()), words.last().toDouble());
    }
    // Computed for each run before the median.
    figures.insert(QStringLiteral("building"),
                   figures.value(QStringLiteral("painted")) - figures.value(QStringLiteral("loaded")));
    for (auto figure = figures.constBegin(); figure != figures.constEnd(); ++figure)
        m_values[figure.key()] += figure.value();
}

double Measurement::quantile(const QString &figure, double part) const
{
    QVector<double> values = m_values.value(figure);
    if (values.isEmpty())
        qFatal("%s was not measured", qPrintable(figure));
    std::sort(values.begin(), values.end());
    return values.at(qRound(part * (values.size() - 1)));
}
