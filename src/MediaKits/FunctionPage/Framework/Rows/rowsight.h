// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>

#include <functional>

class MediaRowWidget;
class QAbstractItemView;

/// Lets the rows of a view make their widgets when they come in sight, one after the other, so that
/// a thousand of them are no load. Sets the view up for rows, which is the same for lists and
/// trees.
class RowSight : public QObject
{
    Q_OBJECT

public:
    static constexpr int rowHeight = 112;

    /// @param view becomes the owner
    /// @param rows tells all rows as they stand, one below the other
    RowSight(QAbstractItemView *view, std::function<QVector<MediaRowWidget *>()> rows);

    /// A row was put on its item.
    /// @param count of the rows that there are now
    void rowShown(int count);
    /// Scrolls to the row at the end, in a long import once it has come to rest.
    /// @param count of the rows that there are now
    void scrollToNewest(int count);
    /// Gathers the changes of an import.
    void lookSoon();

    /// The row that the focus is in, null for none.
    static MediaRowWidget *focusedRow();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void onTimeout();
    void look();

    QAbstractItemView *m_view;
    const std::function<QVector<MediaRowWidget *>()> m_rows;
    QTimer m_timer;
    bool m_newestWanted = false;
};
