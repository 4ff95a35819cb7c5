// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/reasonwindow.h"
#include "sessionclient.h"

#include "session/sessionstatus.h"

#include <QApplication>
#include <QTextCodec>
#include <QTextStream>

namespace {

enum ExitCode { SessionEnded = 0, SessionFailed = 1, WrongUsage = 2, StatusNotWritten = 3 };

struct Outcome
{
    SessionEnd end;
    bool explain = false;
};

// A session needs no window system of ours; starting without one saves its memory for the session.
Outcome runSession(int argc, char **argv, const QString &connectionFile)
{
    const QCoreApplication application(argc, argv);
    SessionClient client(connectionFile);
    Outcome outcome;
    QObject::connect(
        &client, &SessionClient::ended, &client,
        [&outcome](const SessionEnd &end) {
            outcome.end = end;
            QCoreApplication::quit();
        },
        Qt::QueuedConnection);
    client.run();
    QCoreApplication::exec();
    outcome.explain = client.mayExplain() && reasonRow(outcome.end.reason).explainedBy == ExplainedBy::Client;
    return outcome;
}

void explain(int argc, char **argv, const SessionEnd &end)
{
    const QApplication application(argc, argv);
    const UnixSignals signalSource;
    ReasonWindow window(end);
    QObject::connect(&signalSource, &UnixSignals::stopRequested, &window, &QWidget::close);
    window.show();
    QApplication::exec();
}

int fail(ExitCode code, const QString &message)
{
    QTextStream(stderr) << "zClient: " << message << '\n';
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    // Paths, names and arguments are UTF-8, whatever locale the launcher was started in.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    qRegisterMetaType<SessionEnd>();
    if (argc != 3 || qstrcmp(argv[1], "-x") != 0)
        return fail(WrongUsage, QStringLiteral("usage: zClient -x FILE"));

    const QString file = QFile::decodeName(argv[2]);
    const Outcome outcome = runSession(argc, argv, file);
    const QString fault = writeStatusFile(file + QStringLiteral(".status"), outcome.end);
    if (!fault.isEmpty())
        return fail(StatusNotWritten, QStringLiteral("cannot write the status: ") + fault);
    // The outcome is on record before anybody is asked to read it.
    if (outcome.explain)
        explain(argc, argv, outcome.end);
    return reasonRow(outcome.end.reason).status == SessionEndedStatus ? SessionEnded : SessionFailed;
}
