// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/console.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextStream>
#include <QTimer>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // The log lines of the launcher's libraries are meant for the device.
    QLoggingCategory::setFilterRules(QStringLiteral("kt.*=false"));
    const CommandLine line = parseCommandLine(application.arguments());
    switch (line.kind) {
    case CommandLine::Kind::Help:
        QTextStream(stdout) << helpText();
        return AllDone;
    case CommandLine::Kind::Version:
        QTextStream(stdout) << "kt-console " << KT_VERSION << '\n';
        return AllDone;
    case CommandLine::Kind::Wrong:
        QTextStream(stderr) << "kt-console: " << line.error << "\nTry \"kt-console --help\".\n";
        return WrongCommandLine;
    case CommandLine::Kind::Run:
        break;
    }
    Console console(line.options);
    QObject::connect(&console, &Console::ended, &application, &QCoreApplication::exit);
    QTimer::singleShot(0, &console, &Console::start);
    return QCoreApplication::exec();
}
