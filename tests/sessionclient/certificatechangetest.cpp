// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/reasonwindow.h"
#include "session/sessionprogram.h"
#include "session/sessionstatus.h"
#include "testtable.h"

#include <QPushButton>
#include <QtTest>

namespace {

const QString offered
    = "a1:82:5d:35:1d:6e:b4:95:2d:27:3f:f0:90:45:09:44:99:ba:b3:11:ea:c8:5f:25:95:47:c1:f1:1b:4d:"
      "59:94";
const QString known
    = "8c:57:55:a4:23:40:08:8c:79:35:82:a0:0a:d8:e9:b8:ad:b1:a8:b4:b8:b0:9f:18:af:fc:f5:54:cd:5f:"
      "c0:64";

QByteArray knownHosts()
{
    return "other 3389 " + known.toLatin1() + " x x\nts1.example 3390 " + known.toLatin1()
        + " x x\nts1.example 3389 " + known.toLatin1() + " Q04gPSB2bQ== Q04gPSB2bQ==\n";
}

/// What xfreerdp 2.11 prints.
QString transcript()
{
    QFile file(QFINDTESTDATA("data/changed-certificate.txt"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

SessionEnd changedCertificate()
{
    SessionEnd end{EndReason::CertificateRefused, "xfreerdp ended with exit code 143", {}};
    end.certificate = certificateChange(transcript().split('\n'), knownHosts());
    return end;
}

} // namespace

class CertificateChangeTest : public QObject
{
    Q_OBJECT

private slots:
    void isFoundOnlyWhenClear_data()
    {
        const TestTable<QString, QString, bool> table("from", "to", "found");
        table.row("as printed", "", "", true);
        table.row("another server", "ts1.example:3389", "ts2.example:3389", false);
        table.row("another stored one", known, QString(known).replace("8c", "8d"), false);
        // The server chooses its certificate's names, line ends included.
        table.row("forged fingerprint", "Common Name: vm", "Common Name: vm\n\tThumbprint:  " + known, false);
        table.row("forged server", "CN = vm", "x\n!!!Certificate for a:1 (RDP-Server) has changed!!!", false);
        table.row("short fingerprint", offered, offered.left(59), false);
    }

    void isFoundOnlyWhenClear()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(bool, found);
        const QString output = from.isEmpty() ? transcript() : transcript().replace(from, to);
        const auto change = certificateChange(output.split('\n'), knownHosts());
        QCOMPARE(change.has_value(), found);
        if (!change)
            return;
        QCOMPARE(change->offered, offered);
        QByteArray expected = knownHosts();
        expected.replace(expected.lastIndexOf(known.toLatin1()), known.size(), offered.toLatin1());
        QCOMPARE(withOfferedCertificate(knownHosts(), *change), expected);
        for (const QString &fingerprint : {known, offered})
            QVERIFY(statusDocument(changedCertificate()).contains(fingerprint.toLatin1()));
    }

    void isTrustedOnlyOnRequest_data()
    {
        const TestTable<int, QString, bool> table("key", "button", "trusted");
        table.row("enter on the other button", int(Qt::Key_Return), "trustButton", false);
        table.row("escape", int(Qt::Key_Escape), "trustButton", false);
        table.row("pressed", int(Qt::Key_Space), "trustButton", true);
    }

    void isTrustedOnlyOnRequest()
    {
        QFETCH(int, key);
        QFETCH(QString, button);
        ReasonWindow window(changedCertificate());
        window.show();
        auto *defaultButton = window.findChild<QPushButton *>("closeButton");
        QVERIFY(defaultButton->isDefault() && window.focusWidget() == defaultButton);
        QTest::keyClick(window.findChild<QPushButton *>(button), Qt::Key(key));
        QVERIFY(!window.isVisible());
        QTEST(window.isTrusted(), "trusted");
    }
};

QTEST_MAIN(CertificateChangeTest)
#include "certificatechangetest.moc"
