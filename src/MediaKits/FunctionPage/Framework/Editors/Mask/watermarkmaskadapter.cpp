// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapter.h"

#include "controls/repolish.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/edgedrag.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapteritem.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskwidget.h"

#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>

namespace {
// In picture pixels, were they square.
constexpr QSize defaultBox(160, 120);
} // namespace

WatermarkMaskAdapter::WatermarkMaskAdapter(QWidget *target, QObject *parent)
    : MaskAdapter(target, new WatermarkMaskWidget, parent),
      m_maskWidget(static_cast<WatermarkMaskWidget *>(mask()->content()))
{
    qRegisterMetaType<WatermarkMaskAdapterItem *>("WatermarkMaskAdapterItem*");
}

WatermarkMaskAdapter::~WatermarkMaskAdapter() = default;

WatermarkMaskAdapterItem *WatermarkMaskAdapter::addTextItem()
{
    return addItem(std::make_unique<TextMaskAdapterItem>(this, m_maskWidget->area()), defaultBox);
}

WatermarkMaskAdapterItem *WatermarkMaskAdapter::addImageItem(const QString &path)
{
    const QPixmap picture(path);
    if (picture.isNull()) {
        MediaMessageBox::showMessage(tr("错误"), tr("无法打开图片"), target()->window());
        return nullptr;
    }
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

WatermarkMaskAdapterItem *
WatermarkMaskAdapter::addItem(std::unique_ptr<WatermarkMaskAdapterItem> item, const QSize &size)
{
    WatermarkMaskAdapterItem *added = item.get();
    m_items.push_back(std::move(item));
    DrmWidget *box = added->widget();
    connect(box, &DrmWidget::rectMoved, this, [this, added] { onBoxChanged(added); });
    connect(box, &DrmWidget::rectResized, this, [this, added] { onBoxChanged(added); });
    connect(box, &DrmWidget::mousePressed, this, [this, added] { selectItem(added); });
    QTimer::singleShot(0, box, [this, added, box, size] {
        // The editor may have placed it meanwhile.
        if (added->m_rect.isNull())
            setItemRect(added, QRectF(0, 0, size.width() / pixelAspect(), size.height()));
        box->setVisible(added->m_visible);
        showDrawnRegion();
    });
    return added;
}

WatermarkMaskAdapter::Items::const_iterator
WatermarkMaskAdapter::find(const WatermarkMaskAdapterItem *item) const
{
    return std::find_if(m_items.begin(), m_items.end(),
                        [item](const auto &own) { return own.get() == item; });
}

QRectF WatermarkMaskAdapter::itemRect(const WatermarkMaskAdapterItem *item) const
{
    if (!has(item))
        return {};
    if (!isScaleKnown())
        return item->m_rect;
    return inPicture(QRectF(item->widget()->geometry()));
}

void WatermarkMaskAdapter::setItemRect(WatermarkMaskAdapterItem *item, const QRectF &rect)
{
    if (!has(item))
        return;
    item->m_rect = rect;
    placeItem(*item);
}

void WatermarkMaskAdapter::moveItem(WatermarkMaskAdapterItem *item, const QPointF &topLeft)
{
    if (!has(item))
        return;
    item->m_rect.moveTopLeft(topLeft);
    if (isScaleKnown())
        item->widget()->move(onWidget(QRectF(topLeft, QSizeF())).topLeft().toPoint());
}

void WatermarkMaskAdapter::alignItem(WatermarkMaskAdapterItem *item, int place)
{
    if (!has(item) || place < 0 || place > 8)
        return;
    // Twice the way to the right and to the bottom, in halves.
    const QSize room = target()->size() - item->widget()->size();
    item->widget()->move(room.width() * (place % 3) / 2, room.height() * (place / 3) / 2);
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
    removed->widget()->hide();
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
    const QScopedValueRollback<bool> placing(m_placing, true);
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

void WatermarkMaskAdapter::onBoxChanged(WatermarkMaskAdapterItem *item)
{
    showDrawnRegion();
    if (m_placing || !isScaleKnown())
        return;
    item->m_rect = itemRect(item);
    emit itemRectChanged(item, item->m_rect);
}

void WatermarkMaskAdapter::showDrawnRegion()
{
    QRegion region;
    for (const auto &item : m_items) {
        if (!item->widget()->isHidden())
            region += item->widget()->geometry();
    }
    mask()->setDrawnRegion(region);
}
