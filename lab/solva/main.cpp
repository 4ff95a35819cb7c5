// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "solva/solvaclient.h"

#include "session/sessionprogram.h"

#include <QTextCodec>
#include <QTextStream>

namespace {

SessionEnd runSession(int argc, char **argv, const SolvaArguments &arguments)
{
    const QCoreApplication application(argc, argv);
    SolvaClient client(arguments);
    return runToEnd(&client);
}

/// Writes the outcome to standard output, which the launcher logs. It reads no status file of this program.
void report(const SessionEnd &end)
{
    QTextStream out(stdout);
    for (const QString &line : end.output)
        out << "xfreerdp: " << line << '\n';
    for (const QString &line : {reasonText(end.reason), reasonNextStep(end.reason), end.raw})
        if (!line.isEmpty())
            out << "solva-client: " << line << '\n';
}

} // namespace

int main(int argc, char **argv)
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    qRegisterMetaType<SessionEnd>();
    const SolvaArguments arguments = parseSolvaArguments(readArguments(argc, argv));
    if (!arguments.error.isEmpty()) {
        QTextStream(stderr) << "solva-client: " << arguments.error << '\n';
        return WrongUsage;
    }
    SessionEnd end;
    do {
        end = runSession(argc, argv, arguments);
        report(end);
    } while (reasonRow(end.reason).explainedBy != ExplainedBy::Nobody && explain(argc, argv, end));
    return exitCodeOf(end);
}
