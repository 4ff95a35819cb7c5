// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <optional>
#include <utility>

/// Why a value could not be had.
struct Error
{
    QString text;
};

/// A value, or the error that prevented it.
template <typename T>
class Expected
{
public:
    Expected(T value) // NOLINT(google-explicit-constructor): a return statement converts
        : m_value(std::move(value))
    { }
    Expected(Error error) // NOLINT(google-explicit-constructor)
        : m_error(std::move(error.text))
    { }

    explicit operator bool() const { return m_value.has_value(); }
    const T &operator*() const { return *m_value; }
    const T *operator->() const { return &*m_value; }
    /// Empty when there is a value.
    QString error() const { return m_error; }

private:
    std::optional<T> m_value;
    QString m_error;
};
