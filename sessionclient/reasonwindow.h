// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QTimer>
#include <QWidget>

class QHBoxLayout;
class QLabel;

/// Tells the user why the session ended. If the server's certificate has changed, asks whether to trust the
/// new one. Closes by itself after a while; the answer is then no.
class ReasonWindow : public QWidget
{
    Q_OBJECT

public:
    static constexpr int shownSeconds = 20;
    static constexpr int askedSeconds = 60; ///< somebody has to compare fingerprints

    explicit ReasonWindow(const SessionEnd &end, QWidget *parent = nullptr);

    /// Whether the user trusts the new certificate.
    bool isTrusted() const { return m_trusted; }

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void build(const SessionEnd &end);
    void addTrustButton(QHBoxLayout *row);
    void countDown();
    void showRemaining();

    QLabel *m_remainingLabel = nullptr;
    QTimer *m_timer;
    int m_remaining;
    bool m_trusted = false;
};
