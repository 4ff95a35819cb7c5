// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/endreason.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

constexpr char translationContext[] = "EndReason";

// clang-format off
/// The exit codes are those of xfreerdp 2.11: with 0 to 12 the server ended the session, with 128 to 159 the session did
/// not start. The documented licence codes are 16 to 26, but this version subtracts where it should add and exits with
/// 240 to 250. Both ranges are listed, so that a corrected client works too.
QVector<ReasonRow> makeTable()
{
    return {
        {EndReason::Ended, sessionEndedStatus, ExplainedBy::Nobody,
         QT_TRANSLATE_NOOP("EndReason", "The session has ended."),
         "",
         {{0, 0}, {11, 12}}},
        {EndReason::EndedByServer, sessionEndedStatus, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The server ended your session."),
         QT_TRANSLATE_NOOP("EndReason", "It was closed from the server's side, for example by an administrator. "
                                        "You can connect again."),
         {{1, 2}}},
        {EndReason::TimeLimit, sessionEndedStatus, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "Your session reached a time limit."),
         QT_TRANSLATE_NOOP("EndReason", "The server closes sessions that are idle or wait too long for a log-on. "
                                        "You can connect again."),
         {{3, 4}}},
        {EndReason::TakenOver, sessionEndedStatus, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "Your session was continued on another device."),
         QT_TRANSLATE_NOOP("EndReason", "Connect again to bring it back here. If it was not you, tell your "
                                        "administrator."),
         {{5, 5}}},
        {EndReason::NameNotFound, 11, ExplainedBy::Launcher,
         QT_TRANSLATE_NOOP("EndReason", "The server's name is not known."),
         QT_TRANSLATE_NOOP("EndReason", "Check how the name is written, and the network's name server."),
         {{139, 140}}},
        {EndReason::Unreachable, 12, ExplainedBy::Launcher,
         QT_TRANSLATE_NOOP("EndReason", "The server does not answer."),
         QT_TRANSLATE_NOOP("EndReason", "Check the address and the network cable, and whether the server is "
                                        "switched on."),
         {{141, 141}, {147, 147}}},
        {EndReason::ConnectionLost, 13, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The connection to the server was lost."),
         QT_TRANSLATE_NOOP("EndReason", "Your programs may still be running there. Check the network, then connect "
                                        "again."),
         {{131, 131}}},
        {EndReason::LogonRejected, 14, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The server rejected the log-on."),
         QT_TRANSLATE_NOOP("EndReason", "Check the user name, the password and the domain in the automatic log-on "
                                        "settings."),
         {{10, 10}, {132, 132}, {134, 134}, {154, 154}, {159, 159}}},
        {EndReason::PasswordExpired, 15, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The password must be changed."),
         QT_TRANSLATE_NOOP("EndReason", "It has expired, or is to be changed at the first log-on. Change it on "
                                        "another computer, or ask your administrator."),
         {{148, 149}, {152, 152}}},
        {EndReason::AccountLocked, 16, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The account is locked."),
         QT_TRANSLATE_NOOP("EndReason", "There were too many failed log-ons. Wait a while, or ask your administrator "
                                        "to unlock it."),
         {{135, 135}}},
        {EndReason::AccountUnusable, 17, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The account cannot be used."),
         QT_TRANSLATE_NOOP("EndReason", "It is disabled, has expired or is restricted. Ask your administrator."),
         {{151, 151}, {153, 153}, {156, 157}}},
        {EndReason::NotAllowed, 18, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The server does not let this account in."),
         QT_TRANSLATE_NOOP("EndReason", "Ask your administrator for the right to log on remotely."),
         {{7, 7}, {9, 9}, {144, 144}, {155, 155}, {158, 158}}},
        {EndReason::DomainUnreachable, 19, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "Nobody could check the log-on."),
         QT_TRANSLATE_NOOP("EndReason", "The domain's log-on service does not answer. Check the domain's name and "
                                        "this device's clock, or try again later."),
         {{150, 150}}},
        {EndReason::SecurityMismatch, 20, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The server asks for a different kind of log-on."),
         QT_TRANSLATE_NOOP("EndReason", "It may want the user name before it shows a desktop: switch on the automatic "
                                        "log-on, or ask your administrator."),
         {{8, 8}, {133, 133}, {146, 146}}},
        {EndReason::CertificateRefused, 21, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The server's identity could not be confirmed."),
         QT_TRANSLATE_NOOP("EndReason", "Its certificate is not the one that this device knows, or the encryption "
                                        "failed. Ask your administrator whether the server was renewed."),
         {{143, 143}}},
        {EndReason::NoLicence, 22, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The server has no licence for this device."),
         QT_TRANSLATE_NOOP("EndReason", "Ask your administrator to check the remote-desktop licences."),
         {{16, 26}, {240, 250}}},
        {EndReason::ServerFault, 23, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The server could not run the session."),
         QT_TRANSLATE_NOOP("EndReason", "It broke off or ran short of memory. Try again; if it stays like this, tell "
                                        "your administrator."),
         {{6, 6}, {32, 32}, {130, 130}, {142, 142}}},
        {EndReason::ClientFault, 24, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The session program failed."),
         QT_TRANSLATE_NOOP("EndReason", "Try again. If it stays like this, restart the device and tell your "
                                        "administrator."),
         {{128, 129}, {136, 138}, {145, 145}, {255, 255}}},
        {EndReason::ClientMissing, 25, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The session program is not installed."),
         QT_TRANSLATE_NOOP("EndReason", "Ask your administrator to install FreeRDP (xfreerdp) on this device."),
         {}},
        {EndReason::Stopped, 26, ExplainedBy::Nobody,
         QT_TRANSLATE_NOOP("EndReason", "The session was stopped by this device."),
         "",
         {}},
        {EndReason::BadFile, 27, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The connection's description cannot be used."),
         QT_TRANSLATE_NOOP("EndReason", "Check the server and log-on settings, then connect again."),
         {}},
        {EndReason::BadAddress, 28, ExplainedBy::Launcher,
         QT_TRANSLATE_NOOP("EndReason", "The server's address is not valid."),
         QT_TRANSLATE_NOOP("EndReason", "Enter a host name or an IP address."),
         {}},
        {EndReason::ProxyRejected, 29, ExplainedBy::Client,
         QT_TRANSLATE_NOOP("EndReason", "The proxy rejected the log-on."),
         QT_TRANSLATE_NOOP("EndReason", "Check the proxy's user name and password in the network settings. The proxy must "
                                        "accept the log-on scheme \"Basic\"."),
         {}},
    };
}
// clang-format on

bool covers(const ReasonRow &row, int exitCode)
{
    return std::any_of(row.exitCodes.begin(), row.exitCodes.end(), [exitCode](const ExitCodes &codes) {
        return exitCode >= codes.first && exitCode <= codes.last;
    });
}

} // namespace

const QVector<ReasonRow> &reasonTable()
{
    static const QVector<ReasonRow> table = makeTable();
    return table;
}

const ReasonRow &reasonRow(EndReason reason)
{
    const QVector<ReasonRow> &table = reasonTable();
    const auto row = std::find_if(table.begin(), table.end(), [reason](const ReasonRow &candidate) {
        return candidate.reason == reason;
    });
    Q_ASSERT(row != table.end());
    return *row;
}

EndReason reasonForExitCode(int exitCode)
{
    for (const ReasonRow &row : reasonTable()) {
        if (covers(row, exitCode))
            return row.reason;
    }
    return EndReason::ClientFault;
}

QString reasonText(EndReason reason)
{
    return QCoreApplication::translate(translationContext, reasonRow(reason).text);
}

QString reasonNextStep(EndReason reason)
{
    return QCoreApplication::translate(translationContext, reasonRow(reason).nextStep);
}
