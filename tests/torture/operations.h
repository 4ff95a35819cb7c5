// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// The operations of the launcher that must survive a fault at each of their system calls.
namespace Operations {

/// Runs the operation up to where the launcher would announce its success, and returns whether it would.
/// `begin` is called when everything before it is done: faults count from there on.
bool run(const QString &name, const QStringList &arguments, const std::function<void()> &begin);

} // namespace Operations
