// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QValidator>

/// Accepts the IPv4 address of a host, or a network mask, in a line edit.
class Ipv4Validator : public QValidator
{
    Q_OBJECT

public:
    enum class Kind {
        Host, ///< the address of one machine
        Mask,
    };

    explicit Ipv4Validator(Kind kind, QObject *parent = nullptr);

    State validate(QString &input, int &position) const override;

    static bool isHost(const QString &text);
    static bool isMask(const QString &text);

private:
    Kind m_kind;
};
