// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "network-tools/activation.h"
#include "network-tools/wifinetwork.h"

#include <QString>

/// What an attempt to join has come to, by what wpa_supplicant says of it.
struct JoinNotes
{
    /// An event of the exchange of an 802.1x network.
    void noteEap(const QString &status, const QString &parameter);
    /// A state of the interface. The handshake that proves the key is followed by another state than success
    /// if the key is wrong.
    void noteState(const QString &state);

    bool isHopeless() const { return certificateRejected || failed; }

    bool certificateRejected = false; ///< the server's, or ours by the server
    bool failed = false;
    QString lastState;
};

/// How joining a Wi-Fi network ended.
enum class JoinVerdict { Connected, IncorrectKey, NotFound, CertificateRejected, NoAddress, Failed };

/// `state` is the device's when the attempt ended.
JoinVerdict verdictOf(const Activation::Outcome &outcome, const JoinNotes &notes,
                      WifiNetwork::Security security, NetworkManager::Device::State state);
/// The line that the launcher reads.
QString lineOf(JoinVerdict verdict);
