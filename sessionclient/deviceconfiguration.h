// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>

/// Reads the device's configuration document; empty if there is no usable one. The connection file says what
/// to connect to, the document which of this device's hardware a session uses.
QJsonObject deviceConfiguration();
