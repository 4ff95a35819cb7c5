// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "widgets/connectiondialog.h"
#include "widgets/generaldialog.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

template <typename Widget>
Widget *part(const QWidget &dialog, const char *name)
{
    return dialog.findChild<Widget *>(QLatin1String(name));
}

} // namespace

/// The box for messages and questions, and the one that stands while a client starts.
class DialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatItsModeSays_data()
    {
        const TestTable<bool, bool, bool, QString, QStringList> table("input", "box", "message", "accept",
                                                                      "reject");
        const QString ok = "OK";
        const QString add = "Add";
        const QString overwrite = "Overwrite";
        const QStringList cancel{"Cancel"};
        table.row("1", true, false, true, ok, cancel);
        table.row("2", false, false, true, ok, {});
        table.row("3", false, false, true, ok, cancel);
        table.row("4", true, false, true, add, cancel);
        table.row("5", false, false, true, overwrite, cancel);
        table.row("6", false, true, true, overwrite, {"Skip"});
        table.row("7", true, false, false, add, cancel);
        table.row("8", true, false, true, add, cancel);
    }

    void showsWhatItsModeSays()
    {
        const int mode = QByteArray(QTest::currentDataTag()).toInt();
        const GeneralDialog dialog(nullptr, static_cast<GeneralDialog::DialogMode>(mode));
        const auto shown = [&dialog](const char *name) {
            return part<QWidget>(dialog, name)->isVisibleTo(&dialog);
        };
        QTEST(shown("inputLineEdit"), "input");
        QTEST(shown("rememberCheckBox"), "box");
        QTEST(shown("messageLabel"), "message");
        QCOMPARE(part<QCheckBox>(dialog, "rememberCheckBox")->text(), "Remember decision for all");
        QCOMPARE(part<QLineEdit>(dialog, "inputLineEdit")->echoMode(),
                 mode == 8 ? QLineEdit::Password : QLineEdit::Normal);
        const auto *buttons = part<QDialogButtonBox>(dialog, "buttonBox");
        QTEST(buttons->button(QDialogButtonBox::Ok)->text(), "accept");
        QStringList rejecting;
        for (QAbstractButton *button : buttons->buttons()) {
            if (buttons->buttonRole(button) == QDialogButtonBox::RejectRole)
                rejecting += button->text();
        }
        QTEST(rejecting, "reject");
        QCOMPARE(buttons->buttons().size(), rejecting.size() + 1);
    }

    void staysOnTheScreen_data()
    {
        const TestTable<QString> table("text");
        table.row("one word of wide letters", QString(10000, 'W'));
        table.row("many words", QString("word ").repeated(2000));
        table.row("many lines", QString("a\n").repeated(300));
        table.row("many line separators", QString(300, QChar::LineSeparator));
    }

    void staysOnTheScreen()
    {
        QFETCH(QString, text);
        GeneralDialog dialog(nullptr, GeneralDialog::Error);
        dialog.setTitle(text.left(60));
        dialog.setMessage(text);
        dialog.show();
        QCOMPARE(dialog.width(), 400);
        QVERIFY2(dialog.height() < 720, qPrintable(QString::number(dialog.height())));
        for (const char *name : {"titleLabel", "messageLabel"}) {
            const auto *label = part<QLabel>(dialog, name);
            QVERIFY2(label->minimumSizeHint().width() <= label->width(), name);
            QCOMPARE(label->textFormat(), Qt::PlainText);
        }
    }

    void handsBackWhatWasEntered()
    {
        GeneralDialog input(nullptr, GeneralDialog::Input);
        input.show();
        QVERIFY(QTest::qWaitForWindowActive(&input));
        QTest::keyClicks(input.focusWidget(), "name");
        QTest::keyClick(input.focusWidget(), Qt::Key_Return);
        QCOMPARE(input.result(), 1);
        QCOMPARE(input.getInput(), "name");
        QVERIFY(input.added());

        GeneralDialog series(nullptr, GeneralDialog::OverwriteSeries);
        series.show();
        part<QCheckBox>(series, "rememberCheckBox")->click();
        QTest::keyClick(&series, Qt::Key_Escape);
        QVERIFY(series.isHidden());
        QCOMPARE(series.result(), 0);
        QVERIFY(series.checked());
        QVERIFY(!series.added());
    }

    void connectingCannotBeDismissed()
    {
        ConnectionDialog dialog;
        dialog.show();
        QTest::keyClick(&dialog, Qt::Key_Escape);
        dialog.close();
        QVERIFY(dialog.isVisible());
        dialog.hide();
        QVERIFY(!dialog.isVisible());
    }

    void connectingNamesTheServerAndItsProgress()
    {
        ConnectionDialog dialog;
        const auto shown = [&dialog](const char *name) {
            return part<QWidget>(dialog, name)->isVisibleTo(&dialog);
        };
        QVERIFY(shown("firstLabel") && !shown("addressLabel"));
        dialog.setAddress(QString(10000, 'x'));
        QVERIFY(!shown("firstLabel") && shown("addressLabel"));
        QVERIFY(dialog.sizeHint().width() < 640);
        dialog.setAddress("<b>10.0.0.1</b>");
        QCOMPARE(part<QLabel>(dialog, "addressLabel")->text(), "<b>10.0.0.1</b>");
        QCOMPARE(part<QLabel>(dialog, "addressLabel")->textFormat(), Qt::PlainText);
        dialog.showFirstLabel(true);
        QVERIFY(shown("firstLabel"));

        dialog.setStatus("Asking", false);
        QVERIFY(!shown("statusWidget") && !dialog.getConnectionStatus());
        dialog.unlock();
        QVERIFY(shown("statusWidget"));
        dialog.setStatus("Done connecting...", true);
        QVERIFY(shown("statusLabel") && dialog.getConnectionStatus());
        QCOMPARE(dialog.checkStatus(), "Done connecting...");
    }
};

QTEST_MAIN(DialogsTest)
#include "dialogstest.moc"
