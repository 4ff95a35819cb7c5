// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/itemmodel.h"

#include <QIcon>
#include <QJsonArray>
#include <QJsonObject>

/// Shows an array of objects from the document, one row each. Members that it does not show are kept.
class JsonListModel : public ItemModel
{
    Q_OBJECT

public:
    /// The keys of an object's name and address. Without an address key there is only the name column.
    struct Keys
    {
        QLatin1String name;
        QLatin1String address = QLatin1String();
    };

    JsonListModel(const Keys &keys, const QString &icon, QObject *parent = nullptr);

    /// Replaces all rows. Skips values that are not objects.
    void setArray(const QJsonArray &array);
    QJsonArray array() const;
    QJsonObject object(const QModelIndex &index) const;
    void setObject(const QModelIndex &index, const QJsonObject &object);
    QModelIndex appendObject(const QJsonObject &object);

    /// Shows the row of this name in italics. An empty name marks no row.
    void setMarkedName(const QString &name);
    QString markedName() const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

protected:
    QVariant decoration(const Item &item) const override;

private:
    Item *row(const QJsonObject &object) const;
    QJsonObject objectOf(const Item &item) const;

    Keys m_keys;
    QIcon m_icon; ///< shared by all rows: a list may have thousands
    QString m_markedName;
};
