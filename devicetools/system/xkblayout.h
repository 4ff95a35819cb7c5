// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <optional>

/// A keyboard layout by its names in the XKB database, as in "de" or "de(nodeadkeys)".
struct XkbLayout
{
    QString layout;
    QString variant;

    /// Nothing unless the text consists of such names.
    static std::optional<XkbLayout> from(const QString &text);
    QString toString() const;
};
