// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QIcon>
#include <QString>

#include <array>
#include <memory>
#include <vector>

/// One named row of a list: a server, a group, a Wi-Fi network, a display mode. Rows form a tree; a row owns
/// its children.
class Item
{
public:
    enum Column { Name = 0, Address = 1, Type = 2 };
    static constexpr int columnTotal = 3;

    /// A `heading` is a title or a placeholder: it is shown but cannot be selected. The constructor does not
    /// add the row to `parent`; call `appendChild` or `insertChild` on the parent for that.
    explicit Item(const QString &name = QString(), Item *parent = nullptr, bool heading = false,
                  bool italic = false);
    /// Copies texts, icon and flags, but neither parent nor children.
    Item(const Item &other);
    Item &operator=(const Item &other);
    virtual ~Item();

    /// Columns other than 0 to 2 are empty and cannot be written.
    QString getValue(int column) const;
    void setValue(int column, const QString &value);

    Item *child(int index) const; ///< null if there is no such child
    int childCount() const;
    int row() const; ///< the index in the parent; 0 without a parent
    Item *parentItem() const;

    /// Takes ownership. A position of -1, or one beyond the end, appends.
    void appendChild(Item *item, int position = -1);
    void insertChild(int position, Item *item);
    void removeChild(int index);
    void removeChildren();
    void swapChild(int first, int second);

    /// Image names for the normal and for the selected row.
    void setIcon(const QString &normal, const QString &selected);
    bool hasIcon() const;
    QIcon itemIcon() const;
    bool isItalic() const;
    bool isHeading() const;

    /// True when the rows differ: by name (case-sensitive) and, with `withType`, also by type.
    bool compare(const Item &other, bool withType) const;

private:
    bool hasChild(int index) const;

    std::array<QString, columnTotal> m_values;
    Item *m_parent = nullptr;
    std::vector<std::unique_ptr<Item>> m_children;
    QIcon m_icon;
    bool m_hasIcon = false;
    bool m_heading = false;
    bool m_italic = false;
};

/// The words of the type column.
namespace ItemType {
inline const QString server = QStringLiteral("server");
inline const QString group = QStringLiteral("group");
} // namespace ItemType
