// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoShot/shotthumbnails.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>
#include <QVector>

class FrameFragmentItemWidget;
class QListWidget;
class QListWidgetItem;

/// The rows of an editor's moments, and their small pictures. There may be thousands: the first
/// hundred get their widgets and pictures at once, further ones when they come in sight, and the
/// latest of these keep them.
class MomentList : public QObject
{
    Q_OBJECT

public:
    /// @param list outlives the use of this object
    MomentList(QListWidget *list, QObject *parent);

    ShotThumbnails &pictures() { return m_pictures; }

    /// Appends a moment, a map with "pos" (ms).
    /// @param scrolls whether the list scrolls there once the picture has come
    /// @param isOfSeries whether `stopSeries` takes it away as long as it has no picture
    void add(const QVariantMap &moment, bool scrolls, bool isOfSeries);
    /// In the list's order.
    QVariantList moments() const;

    /// Whether rows of the series are waiting for their pictures.
    bool isSeriesWaiting() const;
    /// What has come of it stays.
    void stopSeries();
    /// What was added so far is no longer part of it.
    void endSeries();

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// A picture has come, or couldn't be had.
    void pictureTold();

private:
    FrameFragmentItemWidget *makeRow(QListWidgetItem *item);
    void request(FrameFragmentItemWidget *row, const QPersistentModelIndex &scrolledTo);
    bool isInSight(const QListWidgetItem *item) const;
    void look();
    void makeLate(QListWidgetItem *item);

    QListWidget *const m_list;
    ShotThumbnails m_pictures;
    int m_series = 1;                                     ///< number of the present one
    QVector<QPointer<FrameFragmentItemWidget>> m_waiting; ///< of the series, for their pictures
    QVector<QPersistentModelIndex> m_late;                ///< that have come in sight, by and by
    QTimer m_lookTimer;
};
