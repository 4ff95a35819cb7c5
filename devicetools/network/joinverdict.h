// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "network-tools/activation.h"
#include "network-tools/wifinetwork.h"

#include <QString>

/// What the exchange of an 802.1x network has come to, by what wpa_supplicant says of it.
struct EapNotes
{
    void note(const QString &status, const QString &parameter);

    bool certificateRejected = false; ///< the server's, or ours by the server
    bool failed = false;
};

/// How joining a Wi-Fi network ended.
enum class JoinVerdict { Connected, IncorrectKey, NotFound, CertificateRejected, NoAddress, Failed };

/// `state` is the device's when the attempt ended.
JoinVerdict verdictOf(const Activation::Outcome &outcome, const EapNotes &notes,
                      WifiNetwork::Security security, NetworkManager::Device::State state);
/// The line that the launcher reads.
QString lineOf(JoinVerdict verdict);
