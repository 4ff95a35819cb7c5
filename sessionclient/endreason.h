// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

// Why a session ended, in the words of the person in front of it.
enum class EndReason {
    Ended,
    EndedByServer,
    TimeLimit,
    TakenOver,
    NameNotFound,
    Unreachable,
    ConnectionLost,
    LogonRejected,
    PasswordExpired,
    AccountLocked,
    AccountUnusable,
    NotAllowed,
    DomainUnreachable,
    SecurityMismatch,
    CertificateRefused,
    NoLicence,
    ServerFault,
    ClientFault,
    ClientMissing,
    Stopped,
    BadFile,
    BadAddress
};

// Who tells the person about it.
enum class ExplainedBy {
    Nobody,
    Launcher, // its message about a wrong address is the right one
    Client    // we do, in a window of our own
};

struct ExitCodes
{
    int first;
    int last;
};

struct ReasonRow
{
    EndReason reason;
    int status; // what the launcher reads; see SessionEndedStatus
    ExplainedBy explainedBy;
    const char *text;
    const char *nextStep;
    QVector<ExitCodes> exitCodes; // of xfreerdp
};

constexpr int SessionEndedStatus = 6;

// The one table of reasons.
const QVector<ReasonRow> &reasonTable();

const ReasonRow &reasonRow(EndReason reason);
EndReason reasonForExitCode(int exitCode);

QString reasonText(EndReason reason);
QString reasonNextStep(EndReason reason);
