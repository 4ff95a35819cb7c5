// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariantList>

/// The services of the machine behind the system bus. None of them is asked to let the user confirm anything.
namespace SystemBus {

struct Method
{
    const char *service;
    const char *path;
    const char *interface;
    const char *name;
};

/// Calls a method and waits for its end. Returns an empty text, or why it failed.
QString call(const Method &method, const QVariantList &arguments);
/// Whether the service runs now; the question does not start it.
bool isRunning(const char *service);

} // namespace SystemBus
