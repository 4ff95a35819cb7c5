// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "models/item.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

namespace {

QHash<QString, QIcon> sharedIcons;

void dropSharedIcons()
{
    sharedIcons.clear();
}

/// Rows with the same images share one icon: loading both images for each of thousands of rows would take
/// most of the time to show them.
QIcon sharedIcon(const QString &normal, const QString &selected)
{
    // Images must be released before the application object.
    if (sharedIcons.isEmpty())
        qAddPostRoutine(dropSharedIcons);
    QIcon &icon = sharedIcons[normal + QLatin1Char('\n') + selected];
    if (icon.isNull()) {
        icon = QIcon(normal);
        icon.addFile(selected, QSize(), QIcon::Selected);
    }
    return icon;
}

} // namespace

Item::Item(const QString &name, Item *parent, bool heading, bool italic)
    : m_parent(parent)
    , m_heading(heading)
    , m_italic(italic)
{
    m_values[Name] = name;
}

Item::Item(const Item &other)
    : m_values(other.m_values)
    , m_icon(other.m_icon)
    , m_hasIcon(other.m_hasIcon)
    , m_heading(other.m_heading)
    , m_italic(other.m_italic)
{ }

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): each member handles it.
Item &Item::operator=(const Item &other)
{
    m_values = other.m_values;
    m_icon = other.m_icon;
    m_hasIcon = other.m_hasIcon;
    m_heading = other.m_heading;
    m_italic = other.m_italic;
    return *this;
}

Item::~Item() = default;

QString Item::getValue(int column) const
{
    return column >= 0 && column < columnTotal ? m_values[static_cast<std::size_t>(column)] : QString();
}

void Item::setValue(int column, const QString &value)
{
    if (column >= 0 && column < columnTotal)
        m_values[static_cast<std::size_t>(column)] = value;
}

bool Item::hasChild(int index) const
{
    return index >= 0 && index < childCount();
}

Item *Item::child(int index) const
{
    return hasChild(index) ? m_children[static_cast<std::size_t>(index)].get() : nullptr;
}

int Item::childCount() const
{
    return static_cast<int>(m_children.size());
}

int Item::row() const
{
    if (!m_parent)
        return 0;
    const auto &siblings = m_parent->m_children;
    const auto self
        = std::find_if(siblings.begin(), siblings.end(),
                       [this](const std::unique_ptr<Item> &sibling) { return sibling.get() == this; });
    return self == siblings.end() ? 0 : static_cast<int>(self - siblings.begin());
}

Item *Item::parentItem() const
{
    return m_parent;
}

void Item::appendChild(Item *item, int position)
{
    insertChild(position < 0 ? childCount() : position, item);
}

void Item::insertChild(int position, Item *item)
{
    if (!item)
        return;
    item->m_parent = this;
    const int index = std::clamp(position, 0, childCount());
    m_children.emplace(m_children.begin() + index, item);
}

void Item::removeChild(int index)
{
    if (hasChild(index))
        m_children.erase(m_children.begin() + index);
}

void Item::removeChildren()
{
    m_children.clear();
}

void Item::swapChild(int first, int second)
{
    if (hasChild(first) && hasChild(second))
        std::swap(m_children[static_cast<std::size_t>(first)], m_children[static_cast<std::size_t>(second)]);
}

void Item::setIcon(const QString &normal, const QString &selected)
{
    m_icon = sharedIcon(normal, selected);
    m_hasIcon = true;
}

bool Item::hasIcon() const
{
    return m_hasIcon;
}

QIcon Item::itemIcon() const
{
    return m_icon;
}

bool Item::isItalic() const
{
    return m_italic;
}

bool Item::isHeading() const
{
    return m_heading;
}

bool Item::compare(const Item &other, bool withType) const
{
    return m_values[Name] != other.m_values[Name] || (withType && m_values[Type] != other.m_values[Type]);
}
