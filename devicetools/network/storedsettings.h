// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>

/// The wanted settings: what the document says of the network, stored as NetworkManager's profiles and name
/// servers. Nothing is connected or disconnected by that.
namespace StoredSettings {

/// "network settings" of a document. Returns the exit status.
int store(const QJsonObject &network);

} // namespace StoredSettings
