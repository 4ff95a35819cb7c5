// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/unixsignalhandler.h"

#include <QtTest>

#include <cerrno>
#include <csignal>

namespace {
constexpr int morePipeThanThereIs = 70000;
}

/// SIGUSR1, raised for real.
class UnixSignalHandlerTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsASignalThatComesBeforeTheEventLoop()
    {
        // Raised by main, before there was an application.
        const QSignalSpy told(UnixSignalHandler::instance(), &UnixSignalHandler::notifyController);
        QTRY_COMPARE(told.size(), 1);
    }

    void tellsABurstOnce()
    {
        const QSignalSpy told(UnixSignalHandler::instance(), &UnixSignalHandler::notifyController);
        for (int i = 0; i < morePipeThanThereIs; ++i)
            ::raise(SIGUSR1);
        QCOMPARE(told.size(), 0); // nothing is done in the handler itself
        QTRY_COMPARE(told.size(), 1);
        ::raise(SIGUSR1);
        QTRY_COMPARE(told.size(), 2);
        QCoreApplication::processEvents();
        QCOMPARE(told.size(), 2);
    }

    void leavesErrnoAlone()
    {
        for (int i = 0; i < morePipeThanThereIs; ++i) {
            errno = ENOENT;
            ::raise(SIGUSR1);
            if (errno != ENOENT)
                QFAIL("the handler changes errno under the code that it interrupts");
        }
    }
};

int main(int argc, char *argv[])
{
    if (!UnixSignalHandler::install())
        return 1;
    ::raise(SIGUSR1);
    const QCoreApplication application(argc, argv);
    UnixSignalHandlerTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "unixsignalhandlertest.moc"
