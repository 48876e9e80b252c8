// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidgetItem>
#include <QTreeWidgetItem>

/// Where a row's objects live: the data of its item.
enum RowItemRole {
    SourcePathRole = Qt::UserRole + 1, ///< string
    TaskRole = Qt::UserRole + 2,       ///< `QSharedPointer<MediaTask>`
    MediaInfoRole = Qt::UserRole + 3,  ///< `QSharedPointer<MediaInfoData>`, once probed
    PictureRole = Qt::UserRole + 4,    ///< pixmap of the row's size, once there is one
};

/// The item of a list or the first column of a tree's item, as its row sees it. Not the owner.
class RowItem
{
public:
    explicit RowItem(QListWidgetItem *item) : m_listItem(item) {}
    explicit RowItem(QTreeWidgetItem *item) : m_treeItem(item) {}

    /// Invalid when the item is gone.
    QVariant data(int role) const
    {
        if (m_listItem)
            return m_listItem->data(role);
        return m_treeItem ? m_treeItem->data(0, role) : QVariant();
    }
    void setData(int role, const QVariant &value)
    {
        if (m_listItem)
            m_listItem->setData(role, value);
        else if (m_treeItem)
            m_treeItem->setData(0, role, value);
    }
    QListWidgetItem *listItem() const { return m_listItem; }
    QTreeWidgetItem *treeItem() const { return m_treeItem; }
    bool isNull() const { return !m_listItem && !m_treeItem; }
    /// Forgets the item, ahead of its deletion.
    void clear()
    {
        m_listItem = nullptr;
        m_treeItem = nullptr;
    }

private:
    QListWidgetItem *m_listItem = nullptr;
    QTreeWidgetItem *m_treeItem = nullptr;
};
