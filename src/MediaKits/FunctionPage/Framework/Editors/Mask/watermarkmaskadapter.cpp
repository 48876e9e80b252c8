// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapter.h"

#include "controls/repolish.h"
#include "controls/textctrl.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/edgedrag.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapteritem.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskwidget.h"
#include "MediaKits/MediaTasksManager/picturefile.h"

#include <QApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {
// In picture pixels, were they square.
constexpr QSize defaultBox(160, 120);
// Of pictures in memory, in pixels: that of a dense screen.
constexpr int longestSide = 4096;

// One of 400 million pixels takes some seconds, in which windows are still painted.
QImage readBeside(QImageReader &reader)
{
    QImage image;
    const std::unique_ptr<QThread> thread(QThread::create([&] { image = reader.read(); }));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    thread->start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    QApplication::restoreOverrideCursor();
    return image;
}

} // namespace

WatermarkMaskAdapter::WatermarkMaskAdapter(QWidget *target, QObject *parent)
    : MaskAdapter(target, new WatermarkMaskWidget, parent),
      m_maskWidget(static_cast<WatermarkMaskWidget *>(mask()->content()))
{
    qRegisterMetaType<WatermarkMaskAdapterItem *>("WatermarkMaskAdapterItem*");
}

WatermarkMaskAdapter::~WatermarkMaskAdapter() = default;

TextMaskAdapterItem *WatermarkMaskAdapter::addTextItem()
{
    return addItem(std::make_unique<TextMaskAdapterItem>(this, m_maskWidget->area()), defaultBox);
}

QPixmap WatermarkMaskAdapter::uprightPicture(const QString &path)
{
    PictureFile picture(path);
    QImageReader &reader = picture.reader();
    const QSize size = reader.size();
    if (std::max(size.width(), size.height()) <= longestSide)
        return QPixmap::fromImageReader(&reader);
    reader.setScaledSize(
        size.scaled(longestSide, longestSide, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return QPixmap::fromImage(readBeside(reader));
}

WatermarkMaskAdapterItem *WatermarkMaskAdapter::addImageItem(const QString &path)
{
    WatermarkMaskAdapterItem *item = addImageItem(uprightPicture(path));
    if (!item)
        MediaMessageBox::showMessage(tr("错误"), tr("无法打开图片"), target()->window());
    return item;
}

WatermarkMaskAdapterItem *WatermarkMaskAdapter::addImageItem(const QPixmap &picture)
{
    if (picture.isNull())
        return nullptr;
    const QSize size =
        picture.width() > defaultBox.width() || picture.height() > defaultBox.height()
            ? picture.size().scaled(defaultBox, Qt::KeepAspectRatio)
            : picture.size();
    return addItem(std::make_unique<ImageMaskAdapterItem>(picture, this, m_maskWidget->area()),
                   size.expandedTo(QSize(1, 1)));
}

WatermarkMaskAdapterItem *WatermarkMaskAdapter::addDelogoItem()
{
    return addItem(std::make_unique<DelogoMaskAdapterItem>(this, m_maskWidget->area()), defaultBox);
}

template<class Item>
Item *WatermarkMaskAdapter::addItem(std::unique_ptr<Item> item, const QSize &size)
{
    Item *added = item.get();
    m_items.push_back(std::move(item));
    placeNew(added, size);
    return added;
}

void WatermarkMaskAdapter::placeNew(WatermarkMaskAdapterItem *item, const QSize &size)
{
    DrmWidget *box = item->widget();
    connect(box, &DrmWidget::rectMoved, this, [this, item] { onBoxMoved(item); });
    connect(box, &DrmWidget::rectResized, this, [this, item] { onBoxResized(item); });
    connect(box, &DrmWidget::mousePressed, this, [this, item] { selectItem(item); });
    connect(box, &DrmWidget::mouseReleased, this, [this, item] {
        m_maskWidget->showGuides({});
        showDrawnRegion();
        emit itemReleased(item);
    });
    connect(box, &DrmWidget::snapped, this, [this](const QVector<QLine> &guides) {
        m_maskWidget->showGuides(guides);
        showDrawnRegion();
    });
    setItemRect(item, QRectF(0, 0, size.width() / pixelAspect(), size.height()));
    // The editor may hide it before it is seen, or have removed it.
    QTimer::singleShot(0, box, [this, item] {
        if (has(item))
            setItemVisible(item, item->m_visible);
    });
}

WatermarkMaskAdapter::Items::const_iterator
WatermarkMaskAdapter::find(const WatermarkMaskAdapterItem *item) const
{
    return std::find_if(m_items.begin(), m_items.end(),
                        [item](const auto &own) { return own.get() == item; });
}

QSizeF WatermarkMaskAdapter::textSize(const TextMaskAdapterItem &item) const
{
    const QSize own = item.text()->sizeHint();
    return {std::ceil(own.width() / pixelAspect() / 2) * 2, double(own.height())};
}

QRectF WatermarkMaskAdapter::itemRect(const WatermarkMaskAdapterItem *item) const
{
    return has(item) ? item->m_rect : QRectF();
}

void WatermarkMaskAdapter::setItemRect(WatermarkMaskAdapterItem *item, const QRectF &rect)
{
    if (!has(item))
        return;
    item->m_rect = rect;
    placeItem(*item);
    emit itemRectChanged(item, rect);
}

void WatermarkMaskAdapter::moveItem(WatermarkMaskAdapterItem *item, const QPointF &topLeft)
{
    if (has(item))
        setItemRect(item, QRectF(topLeft, item->m_rect.size()));
}

void WatermarkMaskAdapter::alignItem(WatermarkMaskAdapterItem *item, int place)
{
    if (!has(item) || place < 0 || place > 8)
        return;
    const int column = place % 3;
    const int row = place / 3;
    // Twice the way to the right and to the bottom, in halves.
    const QSizeF room = QSizeF(videoSize()) - item->m_rect.size();
    moveItem(item, {room.width() * column / 2, room.height() * row / 2});
}

void WatermarkMaskAdapter::setItemVisible(WatermarkMaskAdapterItem *item, bool visible)
{
    if (!has(item))
        return;
    item->m_visible = visible;
    item->widget()->setVisible(visible);
    showDrawnRegion();
}

void WatermarkMaskAdapter::removeItem(WatermarkMaskAdapterItem *item)
{
    const auto place = find(item);
    if (place == m_items.end())
        return;
    if (item == m_selected)
        selectItem(nullptr);
    const auto at = m_items.begin() + (place - m_items.cbegin());
    const std::unique_ptr<WatermarkMaskAdapterItem> removed = std::move(*at);
    m_items.erase(at);
    // It outlives its item by a while.
    removed->widget()->disconnect(this);
    removed->widget()->hide();
    m_maskWidget->showGuides({});
    showDrawnRegion();
    emit itemRemoved(item);
}

void WatermarkMaskAdapter::selectItem(WatermarkMaskAdapterItem *item)
{
    if (item == m_selected || (item != nullptr && !has(item)))
        return;
    WatermarkMaskAdapterItem *before = m_selected;
    m_selected = item;
    markSelected(before, false);
    markSelected(item, true);
    emit itemSelectItemChanged(item, before);
}

void WatermarkMaskAdapter::markSelected(WatermarkMaskAdapterItem *item, bool selected)
{
    if (item == nullptr)
        return;
    item->m_selected = selected;
    item->widget()->setProperty("itemSelected", selected);
    repolish(item->widget());
}

// The boxes stay where they are in the picture.
void WatermarkMaskAdapter::onScaleChanged()
{
    for (const auto &item : m_items)
        placeItem(*item);
    showDrawnRegion();
}

void WatermarkMaskAdapter::placeItem(const WatermarkMaskAdapterItem &item)
{
    const QRectF &rect = item.m_rect;
    if (!isScaleKnown() || rect.isNull())
        return;
    item.widget()->setGeometry(EdgeDrag::rounded(onWidget(rect)));
}

// What the adapter itself has done is told of late for a box that wasn't shown.
bool WatermarkMaskAdapter::isWherePut(const WatermarkMaskAdapterItem &item) const
{
    return !isScaleKnown() || item.widget()->geometry() == EdgeDrag::rounded(onWidget(item.m_rect));
}

// A box at the edge or in the middle of the surface is there in the picture, too.
void WatermarkMaskAdapter::onBoxMoved(WatermarkMaskAdapterItem *item)
{
    showDrawnRegion();
    if (isWherePut(*item))
        return;
    const auto along = [](int start, int size, int bound, double place, double room) {
        const int rest = bound - size - start;
        if (rest == 0)
            return room;
        return std::abs(start - rest) <= 1 ? room / 2 : place;
    };
    const QRect box = item->widget()->geometry();
    const QSize bound = m_maskWidget->area()->size();
    const QPointF place = inPicture(QRectF(box)).topLeft();
    const QSizeF room = QSizeF(videoSize()) - item->m_rect.size();
    QRectF rect = item->m_rect;
    rect.moveLeft(along(box.x(), box.width(), bound.width(), place.x(), room.width()));
    rect.moveTop(along(box.y(), box.height(), bound.height(), place.y(), room.height()));
    takeRect(item, rect);
}

void WatermarkMaskAdapter::onBoxResized(WatermarkMaskAdapterItem *item)
{
    showDrawnRegion();
    if (!isWherePut(*item))
        takeRect(item, inPicture(QRectF(item->widget()->geometry())));
}

void WatermarkMaskAdapter::takeRect(WatermarkMaskAdapterItem *item, const QRectF &rect)
{
    item->m_rect = rect;
    emit itemRectChanged(item, rect);
}

void WatermarkMaskAdapter::showDrawnRegion()
{
    QRegion region;
    for (const auto &item : m_items) {
        if (!item->widget()->isHidden())
            region += item->widget()->geometry();
    }
    region += m_maskWidget->guideRegion();
    mask()->setDrawnRegion(region);
}
