// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/itemmodel.h"

#include <QIcon>
#include <QJsonArray>
#include <QJsonObject>

/// The rows of one array of the document, an object each. What the list does not show of an object stays in
/// it.
class JsonListModel : public ItemModel
{
    Q_OBJECT

public:
    /// The keys of an object's name and address; without an address key the list has names only.
    struct Keys
    {
        QLatin1String name;
        QLatin1String address = QLatin1String();
    };

    JsonListModel(const Keys &keys, const QString &icon, QObject *parent = nullptr);

    /// Replaces all rows. What is no object is left out.
    void setArray(const QJsonArray &array);
    QJsonArray array() const;
    QJsonObject object(const QModelIndex &index) const;
    void setObject(const QModelIndex &index, const QJsonObject &object);
    QModelIndex appendObject(const QJsonObject &object);

    /// The row of this name is shown in italics; an empty name marks none.
    void setMarkedName(const QString &name);
    QString markedName() const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

protected:
    QVariant decoration(const Item &item) const override;

private:
    Item *row(const QJsonObject &object) const;
    QJsonObject objectOf(const Item &item) const;

    Keys m_keys;
    QIcon m_icon; ///< one for all rows: thousands are listed at once
    QString m_markedName;
};
