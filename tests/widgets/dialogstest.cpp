// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "parts.h"
#include "testtable.h"
#include "widgets/generaldialog.h"

#include <QtTest>
#include <QtWidgets>

/// The box for messages and questions, and the one that stands while a client starts.
class DialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void staysOnTheScreen_data()
    {
        const TestTable<QString> table("text");
        table.row("one word of wide letters", QString(10000, 'W'));
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
        QVERIFY(!part(dialog, "inputLineEdit")->isVisible());
    }

    void showsTheWholeText()
    {
        GeneralDialog dialog(nullptr, GeneralDialog::Error);
        dialog.setTitle("Error");
        dialog.setMessage(QString("word ").repeated(60) + "\n\n" + QString("word ").repeated(30));
        dialog.show();
        const auto *label = part<QLabel>(dialog, "messageLabel");
        QVERIFY(label->height() >= label->heightForWidth(label->width()));
    }

    void handsBackWhatWasEntered()
    {
        GeneralDialog dialog(nullptr, GeneralDialog::Prompt);
        dialog.setPasswordMode();
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(part<QLineEdit>(dialog, "inputLineEdit")->echoMode(), QLineEdit::Password);
        QTest::keyClicks(dialog.focusWidget(), "name");
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.getInput(), "name");
    }
};

QTEST_MAIN(DialogsTest)
#include "dialogstest.moc"
