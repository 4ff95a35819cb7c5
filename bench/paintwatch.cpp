// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "paintwatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

bool PaintWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (m_painted)
        return false;
    if (event->type() == QEvent::Paint && watched->isWidgetType()
        && static_cast<QWidget *>(watched)->isWindow())
        m_painting = true;
    const bool paints = event->type() == QEvent::Expose || event->type() == QEvent::UpdateRequest;
    if (!paints || m_painting)
        return false;
    // Delivers the event first, so that the clock is read after everything is painted and sent to the
    // display.
    watched->event(event);
    if (m_painting) {
        m_painted = true;
        Bench::print("painted", Bench::sinceStart());
        Bench::printMemory("painted");
        Bench::painted();
    }
    return true;
}

static void watchFirstPaint()
{
    static PaintWatch watch;
    QCoreApplication::instance()->installEventFilter(&watch);
    Bench::print("loaded", Bench::sinceStart());
    Bench::loaded();
}
Q_COREAPP_STARTUP_FUNCTION(watchFirstPaint)
