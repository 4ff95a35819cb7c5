// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// A server that shows another certificate than the one that FreeRDP has stored for it.
struct CertificateChange
{
    QString host;
    QString port;
    QString known;   ///< SHA-256 fingerprint, "8c:57:..."
    QString offered; ///< likewise

    QString server() const { return host + QLatin1Char(':') + port; }
};

/// Finds the change in the output of xfreerdp. Part of the output comes from the server, so anything unclear
/// returns nothing: more fingerprints than two, or a known one that is not in the list of known hosts.
std::optional<CertificateChange> certificateChange(const QStringList &output, const QByteArray &knownHosts);

/// Returns the list of known hosts with the offered certificate in place of the known one.
QByteArray withOfferedCertificate(const QByteArray &knownHosts, const CertificateChange &change);

/// The list of known hosts that xfreerdp keeps for this user.
QByteArray readKnownHosts();

/// Writes the offered certificate into that list. Returns whether it is stored.
bool trustOfferedCertificate(const CertificateChange &change);
