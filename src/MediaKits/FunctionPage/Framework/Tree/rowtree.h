// SPDX-License-Identifier: MIT
#pragma once

#include <QTreeWidget>
#include <QVector>

class MediaRowWidget;
class RowSight;

/// A tree of rows in two levels: sources, and below each its fragments. Its items hold the rows'
/// data.
class RowTree : public QTreeWidget
{
    Q_OBJECT

public:
    explicit RowTree(QWidget *parent = nullptr);

    /// A new source at the end; its row comes by `showRow`.
    QTreeWidgetItem *addSource(const QString &path);
    /// A new fragment below those that the source has, which holds what the source's item tells of
    /// the file; its row comes by `showRow`.
    static QTreeWidgetItem *addFragment(QTreeWidgetItem *source);
    /// Puts a row on its item.
    void showRow(MediaRowWidget *row);

    MediaRowWidget *rowOf(QTreeWidgetItem *item) const;
    /// All rows, as they stand one below the other.
    QVector<MediaRowWidget *> rows() const;
    /// The rows of a source's fragments.
    QVector<MediaRowWidget *> fragmentRows(const QTreeWidgetItem *source) const;

    /// Deletes the item of a row that has none below it; the row goes, later.
    void deleteRow(MediaRowWidget *row);
    void clearRows();

protected:
    /// Scrolls to the row that the focus goes to.
    bool focusNextPrevChild(bool next) override;

private:
    RowSight *m_sight;
};
