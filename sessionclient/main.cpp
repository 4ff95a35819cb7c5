// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "sessionclient.h"

#include "session/sessionprogram.h"
#include "session/sessionstatus.h"

#include <QFile>
#include <QTextCodec>
#include <QTextStream>

namespace {

struct Outcome
{
    SessionEnd end;
    bool explain = false;
};

Outcome runSession(int argc, char **argv, const QString &connectionFile)
{
    const QCoreApplication application(argc, argv);
    SessionClient client(connectionFile);
    const SessionEnd end = runToEnd(&client);
    return {end, client.mayExplain() && reasonRow(end.reason).explainedBy == ExplainedBy::Client};
}

int fail(SessionExitCode code, const QString &message)
{
    QTextStream(stderr) << "zClient: " << message << '\n';
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    // Paths, names and arguments are UTF-8 in every locale.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    qRegisterMetaType<SessionEnd>();
    if (argc != 3 || qstrcmp(argv[1], "-x") != 0)
        return fail(WrongUsage, QStringLiteral("usage: zClient -x FILE"));

    const QString file = QFile::decodeName(argv[2]);
    Outcome outcome;
    do {
        outcome = runSession(argc, argv, file);
        const QString fault = writeStatusFile(file + QStringLiteral(".status"), outcome.end);
        if (!fault.isEmpty())
            return fail(StatusNotWritten, QStringLiteral("cannot write the status: ") + fault);
        // The window opens after the status is written.
    } while (outcome.explain && explain(argc, argv, outcome.end));
    return exitCodeOf(outcome.end);
}
