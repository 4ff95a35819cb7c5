// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "models/itemmodel.h"
#include "widgets/groupservertreeview.h"
#include "widgets/listcontainer.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// A list of "a", "b" and "c" with its four buttons.
struct List
{
    explicit List(const QString &warning = QString())
        : model(1)
    {
        for (const char *name : {"a", "b", "c"})
            model.appendChild(new Item(QLatin1String(name)));
        container.setAddButton(&add);
        container.setUpButton(&up);
        container.setDownButton(&down);
        container.setRemoveButton(&remove, warning);
        container.setView(&view);
        container.setModel(&model);
    }

    QString names() const
    {
        QString result;
        for (int row = 0; row < model.rowCount(); ++row)
            result += model.topLevelItem(row)->getValue(Item::Name);
        return result;
    }

    /// The buttons that are enabled, by their first letters.
    QString enabled() const
    {
        return QLatin1String(add.isEnabled() ? "a" : "") + QLatin1String(up.isEnabled() ? "u" : "")
            + QLatin1String(down.isEnabled() ? "d" : "") + QLatin1String(remove.isEnabled() ? "r" : "");
    }

    void choose(int row) { view.setCurrentIndex(model.index(row, 0)); }

    ItemModel model;
    QListView view;
    QPushButton add, up, down, remove;
    ListContainer container;
};

/// Counts what is drawn before the rows.
class CountingStyle : public QProxyStyle
{
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        branches += element == PE_IndicatorBranch ? 1 : 0;
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    mutable int branches = 0;
};

/// Groups of so many servers.
QList<Item *> groups(const QVector<int> &sizes)
{
    QList<Item *> result;
    for (const int size : sizes) {
        result += new Item("group");
        for (int server = 0; server < size; ++server)
            result.last()->appendChild(new Item("server"));
    }
    return result;
}

} // namespace

/// Lists with buttons beside them, and the tree of server groups.
class ListsTest : public QObject
{
    Q_OBJECT

private slots:
    void enablesWhatTheRowAllows()
    {
        List list;
        QCOMPARE(list.enabled(), "a");
        const QStringList expected{"adr", "audr", "aur"};
        for (int row = 0; row < 3; ++row) {
            list.choose(row);
            QCOMPARE(list.enabled(), expected.at(row));
        }
        list.model.appendChild(new Item("d"));
        QCOMPARE(list.enabled(), "audr");
        list.model.removeByIndex(3);
        QCOMPARE(list.enabled(), "aur");
        list.model.remAllItems();
        QCOMPARE(list.enabled(), "a");
    }

    void movesRows()
    {
        List list;
        const QSignalSpy changed(&list.container, &ListContainer::changed);
        list.choose(0);
        list.down.click();
        list.down.click();
        QCOMPARE(list.names(), "bca");
        QCOMPARE(list.enabled(), "aur");
        list.up.click();
        QCOMPARE(list.names(), "bac");
        list.remove.click();
        QCOMPARE(list.names(), "bc");
        QCOMPARE(changed.count(), 4);
    }

    void asksBeforeTheGuardedRowGoes_data()
    {
        const TestTable<QString, int, bool, QStringList, QString> table("warning", "row", "accept", "asked",
                                                                        "left");
        const QString warning = "The group you want to remove is autoconnect group. Proceed?";
        table.row("accepted", warning, 1, true, {warning}, "ac");
        table.row("declined", warning, 1, false, {warning}, "abc");
        table.row("another row", warning, 2, false, {}, "ab");
        table.row("no warning", {}, 1, false, {}, "ac");
    }

    void asksBeforeTheGuardedRowGoes()
    {
        QFETCH(QString, warning);
        QFETCH(int, row);
        QFETCH(bool, accept);
        List list(warning);
        list.container.setGuardedName("b");
        list.choose(row);
        const DialogAnswer answer(accept);
        list.remove.click();
        QTEST(answer.messages, "asked");
        QCOMPARE(answer.titles,
                 QStringList(answer.messages.size() ? QString("Warning") : QString())
                     .mid(0, answer.messages.size()));
        QTEST(list.names(), "left");
    }

    void removesNoOtherRowThanAskedFor()
    {
        List list("Sure?");
        list.container.setGuardedName("b");
        list.choose(1);
        QTimer::singleShot(0, this, [&list] { list.model.removeByIndex(1); });
        const DialogAnswer answer(true);
        list.remove.click();
        QCOMPARE(answer.titles.size(), 1);
        QCOMPARE(list.names(), "ac");
    }

    void rowsAreCountedAsTheyAreSeen()
    {
        ItemModel model(1);
        model.appendChildren(groups({3, 2, 0}));
        GroupServerTreeView view;
        QFont font;
        font.setPixelSize(40);
        view.setFont(font);
        view.setFrameShape(QFrame::NoFrame);
        view.setModel(&model);
        view.resize(300, 4 * GroupServerTreeView::rowHeight);
        view.show();
        const QModelIndex second = model.index(1, 0);
        QCOMPARE(view.visualRect(second).height(), 24);
        QCOMPARE(view.visualRow(second), 1);
        QCOMPARE(view.visualRow(model.index(0, 0, second)), -1);
        QCOMPARE(view.visualRow(QModelIndex()), -1);

        const QSignalSpy moved(&view, &GroupServerTreeView::updateParent);
        view.expand(model.index(0, 0));
        QVERIFY(!moved.isEmpty());
        view.expand(second);
        QCOMPARE(view.visualRow(model.index(1, 0, second)), 6);
        QTRY_COMPARE(view.verticalScrollBar()->maximum(), 4);
        view.verticalScrollBar()->setValue(3);
        QCOMPARE(view.visualRow(model.index(0, 0)), 0);
        QCOMPARE(view.visualRow(second), 4);
        QCOMPARE(view.visualRow(model.index(2, 0)), 7);
    }

    void drawsBranchesWhereThereAreAny()
    {
        ItemModel model(1);
        model.appendChildren(groups({0, 0}));
        CountingStyle style;
        GroupServerTreeView view;
        view.setStyle(&style);
        view.setModel(&model);
        view.grab();
        QCOMPARE(style.branches, 0);
        model.appendChildren(groups({1}));
        view.grab();
        QCOMPARE(style.branches, 1);
    }

    void drawsTheTreeAsOneLine()
    {
        const GroupServerTreeView view;
        QImage image(12, 12, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        view.drawTree(&painter, QRegion(2, 2, 6, 6));
        painter.end();
        for (int x = 0; x < 12; ++x) {
            for (int y = 0; y < 12; ++y)
                QCOMPARE(image.pixelColor(x, y) != QColor(Qt::white), x == y && x >= 2 && x <= 8);
        }
    }

    void anArrowBeginsWithTheRowItStandsOn()
    {
        ItemModel model(1);
        model.appendChild(new Item("title", nullptr, true));
        model.appendChildren(groups({0, 0}));
        GroupServerTreeView view;
        view.setModel(&model);
        const auto chosen = [&view] {
            return view.selectionModel()->selectedIndexes().value(0).row();
        };
        view.selectionModel()->setCurrentIndex(model.index(1, 0), QItemSelectionModel::NoUpdate);
        QCOMPARE(chosen(), -1);
        QTest::keyClick(&view, Qt::Key_Down);
        QCOMPARE(chosen(), 1);
        QTest::keyClick(&view, Qt::Key_Down);
        QCOMPARE(chosen(), 2);
    }
};

QTEST_MAIN(ListsTest)
#include "liststest.moc"
