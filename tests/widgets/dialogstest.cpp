// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "widgets/connectiondialog.h"
#include "widgets/generaldialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

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
    void showsWhatItsModeSays_data();
    void showsWhatItsModeSays();
    void staysOnTheScreen_data();
    void staysOnTheScreen();
    void handsBackWhatWasEntered();
    void connectingCannotBeDismissed();
    void connectingNamesTheServerAndItsProgress();
};

void DialogsTest::showsWhatItsModeSays_data()
{
    QTest::addColumn<bool>("input");
    QTest::addColumn<bool>("box");
    QTest::addColumn<bool>("message");
    QTest::addColumn<QString>("accept");
    QTest::addColumn<QStringList>("reject");
    const QString ok = QStringLiteral("OK");
    const QString add = QStringLiteral("Add");
    const QString overwrite = QStringLiteral("Overwrite");
    const QStringList cancel{QStringLiteral("Cancel")};
    QTest::newRow("1") << true << false << true << ok << cancel;
    QTest::newRow("2") << false << false << true << ok << QStringList();
    QTest::newRow("3") << false << false << true << ok << cancel;
    QTest::newRow("4") << true << false << true << add << cancel;
    QTest::newRow("5") << false << false << true << overwrite << cancel;
    QTest::newRow("6") << false << true << true << overwrite << QStringList{QStringLiteral("Skip")};
    QTest::newRow("7") << true << false << false << add << cancel;
    QTest::newRow("8") << true << false << true << add << cancel;
}

void DialogsTest::showsWhatItsModeSays()
{
    const int mode = QByteArray(QTest::currentDataTag()).toInt();
    const GeneralDialog dialog(nullptr, static_cast<GeneralDialog::DialogMode>(mode));
    const auto shown = [&dialog](const char *name) {
        return part<QWidget>(dialog, name)->isVisibleTo(&dialog);
    };
    QTEST(shown("inputLineEdit"), "input");
    QTEST(shown("rememberCheckBox"), "box");
    QTEST(shown("messageLabel"), "message");
    QCOMPARE(part<QCheckBox>(dialog, "rememberCheckBox")->text(),
             QStringLiteral("Remember decision for all"));
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

void DialogsTest::staysOnTheScreen_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one word of wide letters") << QString(10000, QLatin1Char('W'));
    QTest::newRow("many words") << QStringLiteral("word ").repeated(2000);
    QTest::newRow("many lines") << QStringLiteral("a\n").repeated(300);
    QTest::newRow("many line separators") << QString(300, QChar::LineSeparator);
}

void DialogsTest::staysOnTheScreen()
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

void DialogsTest::handsBackWhatWasEntered()
{
    GeneralDialog input(nullptr, GeneralDialog::Input);
    input.show();
    QVERIFY(QTest::qWaitForWindowActive(&input));
    QTest::keyClicks(input.focusWidget(), QStringLiteral("name"));
    QTest::keyClick(input.focusWidget(), Qt::Key_Return);
    QCOMPARE(input.result(), 1);
    QCOMPARE(input.getInput(), QStringLiteral("name"));
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

void DialogsTest::connectingCannotBeDismissed()
{
    ConnectionDialog dialog;
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    dialog.close();
    QVERIFY(dialog.isVisible());
    dialog.hide();
    QVERIFY(!dialog.isVisible());
}

void DialogsTest::connectingNamesTheServerAndItsProgress()
{
    ConnectionDialog dialog;
    const auto shown = [&dialog](const char *name) {
        return part<QWidget>(dialog, name)->isVisibleTo(&dialog);
    };
    QVERIFY(shown("firstLabel") && !shown("addressLabel"));
    dialog.setAddress(QString(10000, QLatin1Char('x')));
    QVERIFY(!shown("firstLabel") && shown("addressLabel"));
    QVERIFY(dialog.sizeHint().width() < 640);
    dialog.setAddress(QStringLiteral("<b>10.0.0.1</b>"));
    QCOMPARE(part<QLabel>(dialog, "addressLabel")->text(), QStringLiteral("<b>10.0.0.1</b>"));
    QCOMPARE(part<QLabel>(dialog, "addressLabel")->textFormat(), Qt::PlainText);
    dialog.showFirstLabel(true);
    QVERIFY(shown("firstLabel"));

    dialog.setStatus(QStringLiteral("Asking"), false);
    QVERIFY(!shown("statusWidget") && !dialog.getConnectionStatus());
    dialog.unlock();
    QVERIFY(shown("statusWidget"));
    dialog.setStatus(QStringLiteral("Done connecting..."), true);
    QVERIFY(shown("statusLabel") && dialog.getConnectionStatus());
    QCOMPARE(dialog.checkStatus(), QStringLiteral("Done connecting..."));
}

QTEST_MAIN(DialogsTest)
#include "dialogstest.moc"
