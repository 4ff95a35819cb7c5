// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "models/itemmodel.h"

#include <QtTest>

namespace {

Item *row(const char *name, const QString &type = QString())
{
    auto *item = new Item(QLatin1String(name));
    item->setValue(Item::Type, type);
    return item;
}

QStringList names(const ItemModel &model)
{
    QStringList result;
    for (int i = 0; i < model.rowCount(); ++i)
        result += model.index(i, 0).data().toString();
    return result;
}
} // namespace

/// The rows of every list: the tree of items, and the model that views see.
class ItemModelTest : public QObject
{
    Q_OBJECT

private slots:
    void tellsViewsOfEveryChange()
    {
        ItemModel model(3);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        auto *group = row("group", ItemType::group);
        group->appendChild(row("member one"));
        group->appendChild(row("member two"));
        model.appendChildren({row("a"), row("b"), group});
        model.appendChild(row("first"), 0);
        QCOMPARE(names(model), QStringList({"first", "a", "b", "group"}));
        model.downItem(model.index(0, 0));
        QCOMPARE(names(model).first(), "a");

        const QModelIndex parent = model.index(3, 0);
        model.upItem(model.index(1, 0, parent));
        QCOMPARE(model.index(0, 0, parent).data().toString(), "member two");
        model.remItem(model.index(0, 0, parent));
        QCOMPARE(model.rowCount(parent), 1);
        model.removeByIndex(9);
        model.removeByIndex(0);
        QCOMPARE(model.rowCount(), 3);
        model.remAllItems();
        QCOMPARE(model.rowCount(), 0);
    }
};

QTEST_MAIN(ItemModelTest)
#include "itemmodeltest.moc"
