// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/joinverdict.h"

namespace {

using NetworkManager::Device;

JoinVerdict verdictOf(Device::StateChangeReason reason, bool isSecured)
{
    switch (reason) {
    case Device::NoSecretsReason: // NetworkManager asks for another key, and there is nobody to give one
    case Device::AuthSupplicantDisconnectReason:
    case Device::AuthSupplicantFailedReason:
        return isSecured ? JoinVerdict::IncorrectKey : JoinVerdict::NotFound;
    case Device::SsidNotFound:
    case Device::AuthSupplicantTimeoutReason:
        return JoinVerdict::NotFound;
    case Device::ConfigUnavailableReason:
    case Device::DhcpStartFailedReason:
    case Device::DhcpErrorReason:
    case Device::DhcpFailedReason:
        return JoinVerdict::NoAddress;
    default:
        return JoinVerdict::Failed;
    }
}

} // namespace

void JoinNotes::noteEap(const QString &status, const QString &parameter)
{
    if (status == QLatin1String("remote certificate verification")) {
        certificateRejected = parameter != QLatin1String("success");
    } else if (status.endsWith(QLatin1String("TLS alert"))) {
        // Of the alerts, "bad certificate", "certificate expired", "unknown CA" and their like.
        certificateRejected = certificateRejected
            || parameter.contains(QLatin1String("certificate"), Qt::CaseInsensitive)
            || parameter.contains(QLatin1String("unknown CA"), Qt::CaseInsensitive);
    } else if (status == QLatin1String("completion")) {
        failed = parameter != QLatin1String("success");
    }
}

void JoinNotes::noteState(const QString &state)
{
    static const QStringList before{QStringLiteral("disconnected"), QStringLiteral("scanning"),
                                    QStringLiteral("authenticating"), QStringLiteral("associating")};
    if (lastState == QLatin1String("4way_handshake") && before.contains(state))
        failed = true;
    lastState = state;
}

JoinVerdict verdictOf(const Activation::Outcome &outcome, const JoinNotes &notes,
                      WifiNetwork::Security security, Device::State state)
{
    using End = Activation::Outcome::End;
    const bool isSecured = security != WifiNetwork::Security::Open;
    if (outcome.end == End::Connected)
        return JoinVerdict::Connected;
    if (notes.certificateRejected)
        return JoinVerdict::CertificateRejected;
    if (notes.failed)
        return JoinVerdict::IncorrectKey;
    if (outcome.end == End::Failed)
        return verdictOf(outcome.reason, isSecured);
    if (outcome.end != End::TimedOut)
        return JoinVerdict::Failed;
    if (state >= Device::ConfiguringIp && state <= Device::Activated)
        return JoinVerdict::NoAddress;
    return state == Device::NeedAuth ? JoinVerdict::IncorrectKey : JoinVerdict::NotFound;
}

QString lineOf(JoinVerdict verdict)
{
    switch (verdict) {
    case JoinVerdict::Connected:
        return QStringLiteral("connected");
    case JoinVerdict::IncorrectKey:
        return QStringLiteral("incorrect key");
    case JoinVerdict::NotFound:
        return QStringLiteral("network not found");
    case JoinVerdict::CertificateRejected:
        return QStringLiteral("certificate verification failed");
    case JoinVerdict::NoAddress:
        return QStringLiteral("no address");
    case JoinVerdict::Failed:
        break;
    }
    return QStringLiteral("failed");
}
