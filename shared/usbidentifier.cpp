// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "shared/usbidentifier.h"

#include <QRegularExpression>

namespace UsbIdentifier {

namespace {

constexpr const char *neverRedirected[] = {
    "1d6b:0002", // USB 2.0 root hub
    "0424:9514", // on-board USB hub
    "0424:ec00", // on-board Ethernet adapter
    "0525:a4a2", // USB gadget Ethernet
    "0424:9d01", // dual-screen adapter
};

} // namespace

bool isValid(const QString &text)
{
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(QStringLiteral("[0-9A-Fa-f]{4}[:][0-9A-Fa-f]{4}")));
    return form.match(text).hasMatch();
}

bool isOfTerminal(const QString &identifier)
{
    for (const char *never : neverRedirected) {
        if (identifier.compare(QLatin1String(never), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace UsbIdentifier
