// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/expected.h"

#include <QHostAddress>
#include <QList>
#include <QString>
#include <QStringList>

struct Options;

/// Finds the devices that the user named.
namespace Targets {

/// Parses a list with one address or name on each line; "#" begins a comment.
QStringList parse(const QByteArray &list);

/// Looks up the devices that the options name. Returns each once, in the order given.
Expected<QList<QHostAddress>> named(const Options &options);

/// Returns the broadcast address of the options, or those of this machine's subnets.
Expected<QList<QHostAddress>> broadcasts(const Options &options);

} // namespace Targets
