// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

/// Answers the modal `GeneralDialog`s that come up while it lives, and remembers what they said.
class DialogAnswer : public QObject
{
    Q_OBJECT

public:
    /// `accept` presses the accept button of each dialog, otherwise it is rejected; `input` is typed first.
    explicit DialogAnswer(bool accept, const QString &input = QString());

    QStringList titles;
    QStringList messages;

private:
    void answer();

    QTimer m_timer;
    bool m_accept;
    QString m_input;
};
