// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "figures.h"

#include <QObject>

/// Waits, in the process that is measured, for the first window to be painted, and prints when that was and
/// what the process held then. It comes with its source file alone: Qt calls it while the application is
/// constructed, so that a program is measured with its own `main`.
class PaintWatch : public QObject
{
    Q_OBJECT

public:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_painting = false;
    bool m_painted = false;
};

namespace Bench {

/// Each measured program says what happens then.
void loaded();
void painted();

} // namespace Bench
