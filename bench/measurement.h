// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHash>
#include <QString>
#include <QVector>

/// The figures of several runs of one program.
class Measurement
{
public:
    /// Runs a program of this folder and adds its figures to `into`, if given. When the program fails, ends
    /// this process.
    static void run(Measurement *into, const QString &program, const QString &platform,
                    const QString &task = QString(), bool withoutOpenGl = false);

    /// Returns CLOCK_MONOTONIC in nanoseconds; `Bench::startVariable` passes it on.
    static qint64 clock();

    double median(const QString &figure) const { return quantile(figure, 0.5); }
    double quantile(const QString &figure, double part) const;
    double median(const char *figure) const { return median(QLatin1String(figure)); }

private:
    void add(const QByteArray &output);

    QHash<QString, QVector<double>> m_values;
};

struct Readings
{
    Measurement bare;
    Measurement plainBare; ///< without OpenGL, as the launcher is
    Measurement launcher;
    Measurement bareOffScreen;
    Measurement launcherOffScreen;
    Measurement sessions;
    Measurement servers;
    Measurement month;
};
