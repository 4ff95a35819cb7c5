// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The database of USB identifiers: the names of vendors and of their products, one per line. The products of
/// a vendor follow its line, each behind a tab.
namespace UsbIdentifiers {

/// The file is read no further than this, three times the usual size.
constexpr qint64 sizeLimit = 2 * 1024 * 1024;

/// The names of vendor and product in the database `path`; empty when it does not name the product.
QString name(const QString &path, const QString &vid, const QString &pid);

} // namespace UsbIdentifiers
