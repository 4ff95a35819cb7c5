// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/log.h"

#include <QLoggingCategory>

namespace {

QtMessageHandler writeAsBefore = nullptr;

LogSeverity severityOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return LogSeverity::Debug;
    case QtInfoMsg:
        return LogSeverity::Information;
    case QtWarningMsg:
        return LogSeverity::Warning;
    case QtCriticalMsg:
        return LogSeverity::Critical;
    case QtFatalMsg:
        break;
    }
    return LogSeverity::Fatal;
}

void keepAndWrite(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const QString category = QString::fromLatin1(context.category);
    if (!category.endsWith(QLatin1String(".credentials")))
        Log::ring().append(severityOf(type), category, message);
    writeAsBefore(type, context, message);
}

} // namespace

namespace Log {

LogRing &ring()
{
    // Never destroyed: the framework still logs while the process ends.
    static LogRing *const kept = new LogRing;
    return *kept;
}

void install()
{
    const QtMessageHandler previous = qInstallMessageHandler(keepAndWrite);
    if (previous != keepAndWrite)
        writeAsBefore = previous;
}

} // namespace Log
