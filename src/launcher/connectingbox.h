// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "widgets/connectiondialog.h"

#include <QObject>
#include <QTimer>

/// Shows the name of the server from the client's start until the session's own window is likely to be there.
class ConnectingBox : public QObject
{
    Q_OBJECT

public:
    /// How long the box is shown when the client does not end before.
    static constexpr int timeMs = 10000;

    explicit ConnectingBox(QObject *parent = nullptr);

public slots:
    void show(const QString &name);
    void closeConnectionDialog();

private:
    ConnectionDialog m_dialog;
    QTimer m_timer;
};
