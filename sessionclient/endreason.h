// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

/// Why a session ended, as the user sees it.
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
    BadAddress,
    ProxyRejected
};

/// Who explains the end to the user.
enum class ExplainedBy {
    Nobody,
    Launcher, ///< by its message about a wrong address
    Client    ///< by ReasonWindow
};

struct ExitCodes
{
    int first;
    int last;
};

struct ReasonRow
{
    EndReason reason;
    int status; ///< for the launcher; see sessionEndedStatus
    ExplainedBy explainedBy;
    const char *text;
    const char *nextStep;
    QVector<ExitCodes> exitCodes; ///< of xfreerdp
};

/// The status of a session that ended normally.
constexpr int sessionEndedStatus = 6;

/// Lists every reason with its status, texts and exit codes.
const QVector<ReasonRow> &reasonTable();

const ReasonRow &reasonRow(EndReason reason);
EndReason reasonForExitCode(int exitCode);

QString reasonText(EndReason reason);
QString reasonNextStep(EndReason reason);
