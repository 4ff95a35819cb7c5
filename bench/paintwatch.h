// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "figures.h"

#include <QObject>

/// Waits in the measured process for the first paint of a window, and prints its time and the memory. Linking
/// its source file is enough: Qt calls it while the application is constructed, so the program keeps its own
/// `main`.
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

/// Each measured program defines its task after the first paint.
void loaded();
void painted();

} // namespace Bench
