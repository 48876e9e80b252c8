// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/momentlist.h"

#include "MediaKits/FunctionPage/VideoShot/framefragmentitemwidget.h"

#include <QEvent>
#include <QListWidget>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace {

// Data of the items.
constexpr int momentRole = 257;
constexpr int seriesRole = 258; // number of the series that it is of, without a row yet

// A row takes some milliseconds to make and its picture some 60 ms and, on a dense screen, 430 KB.
constexpr int mostAtOnce = 100;
constexpr int mostLate = 100;

} // namespace

MomentList::MomentList(QListWidget *list, QObject *parent)
    : QObject(parent), m_list(list), m_pictures(nullptr)
{
    // They are, and a thousand needn't be asked.
    list->setUniformItemSizes(true);
    m_lookTimer.setSingleShot(true);
    connect(&m_lookTimer, &QTimer::timeout, this, &MomentList::look);
    const auto lookSoon = [this] { m_lookTimer.start(); };
    connect(list->verticalScrollBar(), &QScrollBar::valueChanged, this, lookSoon);
    connect(list->verticalScrollBar(), &QScrollBar::rangeChanged, this, lookSoon);
    list->viewport()->installEventFilter(this);
}

bool MomentList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        m_lookTimer.start();
    return QObject::eventFilter(watched, event);
}

void MomentList::add(const QVariantMap &moment, bool scrolls, bool isOfSeries)
{
    auto *item = new QListWidgetItem;
    item->setData(momentRole, moment);
    item->setData(Qt::AccessibleTextRole, tr("截图"));
    const int place = m_list->count();
    const bool isLate = place >= mostAtOnce;
    if (isLate && isOfSeries)
        item->setData(seriesRole, m_series);
    m_list->addItem(item);
    if (isLate)
        return;
    FrameFragmentItemWidget *row = makeRow(item);
    if (isOfSeries)
        m_waiting += row;
    request(row, scrolls ? m_list->model()->index(place, 0) : QModelIndex());
}

FrameFragmentItemWidget *MomentList::makeRow(QListWidgetItem *item)
{
    const int pos = item->data(momentRole).toMap().value(QStringLiteral("pos")).toInt();
    auto *row = new FrameFragmentItemWidget(item, pos, m_list);
    m_list->setItemWidget(item, row);
    if (item == m_list->currentItem())
        row->setCurrent(true);
    return row;
}

// The row outlives its item by a turn of the event loop.
void MomentList::request(FrameFragmentItemWidget *row, const QPersistentModelIndex &scrolledTo)
{
    m_pictures.request(row->ms(), row, [=](const QString &file) {
        if (!file.isEmpty())
            row->loadImage(file);
        if (!file.isEmpty() && scrolledTo.isValid())
            m_list->scrollTo(scrolledTo);
        m_waiting.removeOne(row);
        emit pictureTold();
    });
}

bool MomentList::isInSight(const QListWidgetItem *item) const
{
    return m_list->visualItemRect(item).intersects(m_list->viewport()->rect());
}

void MomentList::look()
{
    const QModelIndex top = m_list->indexAt({m_list->viewport()->width() / 2, 0});
    bool hasBegun = false;
    for (int i = std::max(top.row(), 0); i < m_list->count(); ++i) {
        QListWidgetItem *item = m_list->item(i);
        const bool inSight = isInSight(item);
        if (inSight && !m_list->itemWidget(item))
            makeLate(item);
        if (hasBegun && !inSight)
            return;
        hasBegun = inSight;
    }
}

void MomentList::makeLate(QListWidgetItem *item)
{
    item->setData(seriesRole, 0);
    FrameFragmentItemWidget *row = makeRow(item);
    request(row, {});
    m_pictures.prefer(row);
    m_late += m_list->model()->index(m_list->row(item), 0);
    if (m_late.size() <= mostLate)
        return;
    const QPersistentModelIndex oldest = m_late.takeFirst();
    QListWidgetItem *old = m_list->item(oldest.row());
    if (old && isInSight(old))
        m_late += oldest;
    else if (old)
        m_list->removeItemWidget(old);
}

QVariantList MomentList::moments() const
{
    QVariantList all;
    for (int i = 0; i < m_list->count(); ++i)
        all += m_list->item(i)->data(momentRole);
    return all;
}

bool MomentList::isSeriesWaiting() const
{
    return std::any_of(m_waiting.begin(), m_waiting.end(),
                       [](const auto &row) { return !row.isNull(); });
}

void MomentList::stopSeries()
{
    for (const auto &row : std::exchange(m_waiting, {})) {
        if (row)
            row->on_btnDel_clicked();
    }
    for (int i = m_list->count() - 1; i >= 0; --i) {
        if (m_list->item(i)->data(seriesRole).toInt() == m_series)
            delete m_list->item(i);
    }
    endSeries();
}

void MomentList::endSeries()
{
    m_waiting.clear();
    ++m_series;
}
