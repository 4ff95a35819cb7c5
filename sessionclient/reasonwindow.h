// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QTimer>
#include <QWidget>

class QLabel;

/// Tells the user why the session ended. Closes by itself after a while.
class ReasonWindow : public QWidget
{
    Q_OBJECT

public:
    static constexpr int shownSeconds = 20;

    explicit ReasonWindow(const SessionEnd &end, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void build(const SessionEnd &end);
    void countDown();
    void showRemaining();

    QLabel *m_remainingLabel = nullptr;
    QTimer *m_timer;
    int m_remaining = shownSeconds;
};
