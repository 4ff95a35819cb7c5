// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/sessionprogram.h"

#include "session/reasonwindow.h"
#include "session/sessionsignals.h"

#include <QApplication>

SessionExitCode exitCodeOf(const SessionEnd &end)
{
    return reasonRow(end.reason).status == sessionEndedStatus ? SessionEnded : SessionFailed;
}

bool explain(int argc, char **argv, const SessionEnd &end)
{
    const QApplication application(argc, argv);
    const SessionSignals signalSource;
    ReasonWindow window(end);
    QObject::connect(&signalSource, &SessionSignals::stopRequested, &window, &QWidget::close);
    window.show();
    QApplication::exec();
    return window.isTrusted() && trustOfferedCertificate(*end.certificate);
}
