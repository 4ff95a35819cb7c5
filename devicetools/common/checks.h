// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <optional>

/// Checks of what comes from outside: arguments, the document, and the network.
namespace Checks {

/// Four decimal numbers of 0 to 255, and nothing else.
std::optional<quint32> ipv4(const QString &text);
/// An address that an interface can have: no 0.0.0.0, loopback, multicast or broadcast.
bool isHostAddress(const QString &text);
/// The length of the prefix that a mask such as 255.255.255.0 stands for, 1 to 32.
std::optional<int> prefixOfMask(const QString &mask);
QString maskOfPrefix(int prefixLength);
/// A decimal number within the two bounds, without sign or blanks.
std::optional<int> number(const QString &text, int least, int greatest);

/// A name of letters, digits, dots and hyphens as DNS has them, up to 253 characters; also an IPv4 address.
bool isHostName(const QString &text);
/// A Wi-Fi network's name: 1 to 32 bytes of UTF-8.
bool isSsid(const QString &text);
/// A pass phrase of 8 to 63 printable characters, or a key of 64 hexadecimal digits.
bool isWpaKey(const QString &text);
/// A text without control characters, of at most `longest` characters.
bool isPlainText(const QString &text, int longest);

} // namespace Checks
