// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/jsonlistmodel.h"

#include <QFont>

namespace {

/// A row that keeps the object it was read from.
class JsonItem : public Item
{
public:
    using Item::Item;
    QJsonObject object;
};

void insertIfChanged(QJsonObject &object, QLatin1String key, const QString &text)
{
    const QJsonValue stored = object.value(key);
    if (!stored.isString() || stored.toString() != text)
        object.insert(key, text);
}

} // namespace

JsonListModel::JsonListModel(const Keys &keys, const QString &icon, QObject *parent)
    : ItemModel(keys.address.isEmpty() ? 1 : 2, parent)
    , m_keys(keys)
    , m_icon(icon)
{ }

Item *JsonListModel::row(const QJsonObject &object) const
{
    auto *item = new JsonItem(object.value(m_keys.name).toString());
    item->object = object;
    if (!m_keys.address.isEmpty())
        item->setValue(Item::Address, object.value(m_keys.address).toString());
    return item;
}

QJsonObject JsonListModel::objectOf(const Item &item) const
{
    const auto *known = dynamic_cast<const JsonItem *>(&item);
    QJsonObject object = known ? known->object : QJsonObject();
    insertIfChanged(object, m_keys.name, item.getValue(Item::Name));
    if (!m_keys.address.isEmpty())
        insertIfChanged(object, m_keys.address, item.getValue(Item::Address));
    return object;
}

void JsonListModel::setArray(const QJsonArray &array)
{
    QList<Item *> rows;
    for (const QJsonValue &value : array) {
        if (value.isObject())
            rows += row(value.toObject());
    }
    remAllItems();
    appendChildren(rows);
}

QJsonArray JsonListModel::array() const
{
    QJsonArray array;
    for (int i = 0; i < rowCount(); ++i)
        array.append(objectOf(*topLevelItem(i)));
    return array;
}

QJsonObject JsonListModel::object(const QModelIndex &index) const
{
    const Item *found = item(index);
    return found ? objectOf(*found) : QJsonObject();
}

void JsonListModel::setObject(const QModelIndex &index, const QJsonObject &object)
{
    auto *found = dynamic_cast<JsonItem *>(item(index));
    if (!found)
        return;
    found->object = object;
    found->setValue(Item::Name, object.value(m_keys.name).toString());
    if (!m_keys.address.isEmpty())
        found->setValue(Item::Address, object.value(m_keys.address).toString());
    emit dataChanged(index, index.siblingAtColumn(columnCount() - 1));
}

QModelIndex JsonListModel::appendObject(const QJsonObject &object)
{
    appendChild(row(object));
    return index(rowCount() - 1, 0);
}

void JsonListModel::setMarkedName(const QString &name)
{
    m_markedName = name;
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::FontRole});
}

QString JsonListModel::markedName() const
{
    return m_markedName;
}

QVariant JsonListModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::FontRole || m_markedName.isEmpty() || !index.isValid()
        || item(index)->getValue(Item::Name) != m_markedName)
        return ItemModel::data(index, role);
    QFont font;
    font.setItalic(true);
    return font;
}

QVariant JsonListModel::decoration(const Item &) const
{
    return m_icon;
}
