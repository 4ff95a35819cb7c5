// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/updatelauncher.h"
#include "launcher/updatepage.h"
#include "testdevice.h"
#include "update/updatemodule.h"

#include <QtTest>

class UpdateLauncherTest : public QObject
{
    Q_OBJECT

private slots:
    void comesBackFromAnInstallerThatDoesNothing()
    {
        const TestDevice device;
        UpdatePage page;
        UpdateModule update;
        UpdateLauncher launcher(page, update);
        const QSignalSpy done(&launcher, &UpdateLauncher::windowDone);
        launcher.setInstallerLimit(100);
        launcher.downloadFWFinished(QString()); // the image is in place
        QTRY_COMPARE(device.calls("update-ui").size(), 1);
        QTRY_COMPARE(done.size(), 1);
        QVERIFY(update.ifUpdateIdle());
    }
};

QTEST_MAIN(UpdateLauncherTest)
#include "updatelaunchertest.moc"
