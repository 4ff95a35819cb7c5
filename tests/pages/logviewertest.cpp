// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsonmodule.h"
#include "device/logring.h"
#include "dialoganswer.h"
#include "pages/logviewerdialog.h"
#include "testdevice.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// A viewer on the screen, and its parts.
struct Viewer
{
    explicit Viewer(const LogRing &ring)
        : configuration("config.json", true)
        , dialog(ring, configuration)
    {
        dialog.show();
    }
    template <typename Widget>
    Widget *part(const char *name) const
    {
        return dialog.findChild<Widget *>(name);
    }
    QTableView *table() const { return part<QTableView>("logTableView"); }
    QAbstractItemModel *rows() const { return table()->model(); }
    QCheckBox *follow() const { return part<QCheckBox>("followCheckBox"); }
    QString label(const char *name) const { return part<QLabel>(name)->text(); }
    QString text(int row) const { return rows()->index(row, 3).data().toString(); }
    QString topText() const { return text(table()->rowAt(0)); }
    QString bottomText() const { return text(table()->rowAt(table()->viewport()->height() - 2)); }

    JsonModule configuration;
    LogViewerDialog dialog;
};

void add(LogRing &ring, int first, int count)
{
    for (int number = first; number < first + count; ++number)
        ring.append(LogSeverity::Debug, "kt.test", QString("line %1").arg(number));
}

} // namespace

class LogViewerTest : public QObject
{
    Q_OBJECT

private slots:
    void filtersByTextAndSeverity()
    {
        LogRing ring;
        ring.append(LogSeverity::Debug, "kt.device", "Started");
        ring.append(LogSeverity::Warning, "kt.device", "cannot start");
        ring.append(LogSeverity::Fatal, "kt.app", "end");
        const Viewer viewer(ring);
        auto *filter = viewer.part<QLineEdit>("filterLineEdit");
        filter->setText("start");
        QCOMPARE(viewer.rows()->rowCount(), 2);
        viewer.part<QComboBox>("severityComboBox")->setCurrentText("Warnings and errors");
        QCOMPARE(viewer.text(0), "cannot start");
        QCOMPARE(viewer.label("countLabel"), "1 of 3 lines");

        ring.append(LogSeverity::Critical, "kt.app", "cannot restart");
        ring.append(LogSeverity::Information, "kt.app", "restart");
        QTRY_COMPARE(viewer.label("countLabel"), "2 of 5 lines");
        QCOMPARE(viewer.text(1), "cannot restart");
    }

    void followsAFullLogUntilTheUserScrollsUp()
    {
        LogRing ring;
        add(ring, 0, LogRing::capacity);
        const Viewer viewer(ring);
        QTRY_COMPARE(viewer.bottomText(), "line 4999");
        // The current line is the first to go; the view must not run after it.
        viewer.table()->setCurrentIndex(viewer.rows()->index(0, 0));
        QVERIFY(!viewer.follow()->isChecked());
        viewer.follow()->setChecked(true);
        add(ring, 5000, 30);
        QTRY_COMPARE(viewer.bottomText(), "line 5029");
        QCOMPARE(viewer.text(0), "line 30");
        add(ring, 5030, 3 * LogRing::capacity);
        QTRY_COMPARE(viewer.bottomText(), "line 20029");
        QVERIFY(viewer.follow()->isChecked());

        viewer.table()->setCurrentIndex(viewer.rows()->index(LogRing::capacity - 1, 0));
        QTest::keyClick(viewer.table(), Qt::Key_PageUp);
        QTest::keyClick(viewer.table(), Qt::Key_PageUp);
        QVERIFY(!viewer.follow()->isChecked());
        const QString top = viewer.topText();
        add(ring, 20030, 500);
        QTRY_COMPARE(viewer.text(LogRing::capacity - 1), "line 20529");
        QCOMPARE(viewer.topText(), top);
    }

    void savesToTheFirstStickOrSaysWhyNot()
    {
        const TestDevice device;
        const LogRing ring;
        const Viewer viewer(ring);
        const DialogAnswer answer(true);
        auto *save = viewer.part<QPushButton>("saveButton");
        save->click();
        QCOMPARE(answer.messages, QStringList{"No USB stick was found. Plug one in and try again."});

        const QDir stick(device.path("/media/A"));
        QDir().mkpath(stick.path());
        QDir().mkpath(device.path("/media/B"));
        device.setTool("/usr/bin/tar", "exit 2");
        save->click();
        QTRY_COMPARE(answer.messages.last(), "The archive could not be made.");
        QCOMPARE(stick.entryList(QDir::Files | QDir::Hidden), QStringList());

        device.removeTool("/usr/bin/tar");
        device.setDocument({{"general settings", QJsonObject{{"device name", "hall"}}}});
        save->click();
        QTRY_VERIFY(save->isEnabled());
        const QStringList saved = stick.entryList({"kt964-support-hall-*.tar.gz"}, QDir::Files);
        QCOMPARE(saved.size(), 1);
        QCOMPARE(viewer.label("statusLabel"), QString("Saved on USB stick \"A\" as %1.").arg(saved.first()));
        QVERIFY(!QGuiApplication::overrideCursor());
    }
};

QTEST_MAIN(LogViewerTest)
#include "logviewertest.moc"
