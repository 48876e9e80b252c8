// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>
#include <QVector>

class MediaRowWidget;
class RowSight;

/// A list of rows. Its items hold the rows' data.
class RowList : public QListWidget
{
    Q_OBJECT

public:
    explicit RowList(QWidget *parent = nullptr);

    /// A new item at the end, which holds the path; its row comes by `showRow`.
    QListWidgetItem *addPath(const QString &path);
    /// Puts a row on its item.
    void showRow(MediaRowWidget *row);
    MediaRowWidget *rowOf(QListWidgetItem *item) const;
    /// Those that have a row, in their order.
    QVector<MediaRowWidget *> rows() const;
    /// Takes the row's item out with its data; the row goes, later.
    QListWidgetItem *takeItemOf(MediaRowWidget *row);
    void deleteRow(MediaRowWidget *row);
    void clearRows();

protected:
    /// Scrolls to the row that the focus goes to.
    bool focusNextPrevChild(bool next) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    RowSight *m_sight;
};
