// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/generalpage.h"

#include <QtTest>

class GeneralPageTest : public QObject
{
    Q_OBJECT

private slots:
    void checksTheDevicesName()
    {
        for (const char *name : {"a", "7", "kt-7", "KT964", "a--b"})
            QVERIFY2(GeneralPage::checkHostname(name), name);
        for (const char *name : {"", "-", "-a", "a-", "a b", "a.b", "a_b", "a\n", "ü", "a;reboot"})
            QVERIFY2(!GeneralPage::checkHostname(QString::fromUtf8(name)), name);
    }
};

QTEST_APPLESS_MAIN(GeneralPageTest)
#include "generalpagetest.moc"
