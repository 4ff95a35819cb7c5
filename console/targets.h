// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHostAddress>
#include <QList>
#include <QString>
#include <QStringList>

struct Options;

/// Which devices are meant.
namespace Targets {

/// The addresses and names of a list: one on each line, "#" begins a comment.
QStringList parse(const QByteArray &list);

/// The devices that the options name, each once and in the order given; names are looked up. `error` says
/// what is unknown or could not be read.
QList<QHostAddress> named(const Options &options, QString *error);

/// The broadcast addresses to ask: the one given, or those of this machine's subnets.
QList<QHostAddress> broadcasts(const Options &options, QString *error);

} // namespace Targets
