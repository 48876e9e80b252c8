// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Mask/maskadapter.h"

#include <QRectF>

#include <memory>
#include <vector>

class TextMaskAdapterItem;
class WatermarkMaskAdapterItem;
class WatermarkMaskWidget;

/// The boxes over a picture, in picture pixels. What is set or moved by these pixels keeps them,
/// also where the surface is too coarse to show them; only what is dragged takes its own.
/// Operations on an item that isn't (any more) one of the adapter's do nothing.
class WatermarkMaskAdapter : public MaskAdapter
{
    Q_OBJECT

public:
    explicit WatermarkMaskAdapter(QWidget *target, QObject *parent = nullptr);
    ~WatermarkMaskAdapter() override;

    /// A new box is in the upper left, and seen when the event loop has gone round once.
    TextMaskAdapterItem *addTextItem();
    /// As a viewer shows it, turned by what the camera noted, and no larger than screens are; null
    /// when it can't be read.
    static QPixmap uprightPicture(const QString &path);
    /// Null, after a message, when the picture can't be read.
    WatermarkMaskAdapterItem *addImageItem(const QString &path);
    /// Null for no picture.
    WatermarkMaskAdapterItem *addImageItem(const QPixmap &picture);
    WatermarkMaskAdapterItem *addDelogoItem();

    /// The size of a text as it is, which its box should have.
    QSizeF textSize(const TextMaskAdapterItem &item) const;
    QRectF itemRect(const WatermarkMaskAdapterItem *item) const;
    void setItemRect(WatermarkMaskAdapterItem *item, const QRectF &rect);
    void moveItem(WatermarkMaskAdapterItem *item, const QPointF &topLeft);
    /// Inside the picture.
    /// @param place one of nine, 0 to 8, row by row from the upper left; others leave the place
    void alignItem(WatermarkMaskAdapterItem *item, int place);
    /// Whether the box is seen, as in the part of the time that it stands for.
    void setItemVisible(WatermarkMaskAdapterItem *item, bool visible);
    /// Deletes the item.
    void removeItem(WatermarkMaskAdapterItem *item);
    /// Null when none is.
    WatermarkMaskAdapterItem *selectedItem() const { return m_selected; }

public slots:
    void selectItem(WatermarkMaskAdapterItem *item);

signals:
    void itemRectChanged(WatermarkMaskAdapterItem *item, QRectF rect);
    void itemSelectItemChanged(WatermarkMaskAdapterItem *cur, WatermarkMaskAdapterItem *pre);
    /// The mouse has let go of it, wherever it is now.
    void itemReleased(WatermarkMaskAdapterItem *item);
    /// The item is deleted as soon as the slots have returned.
    void itemRemoved(WatermarkMaskAdapterItem *item);

private:
    using Items = std::vector<std::unique_ptr<WatermarkMaskAdapterItem>>;

    void onScaleChanged() override;
    template<class Item>
    Item *addItem(std::unique_ptr<Item> item, const QSize &size);
    void placeNew(WatermarkMaskAdapterItem *item, const QSize &size);
    void placeItem(const WatermarkMaskAdapterItem &item);
    bool isWherePut(const WatermarkMaskAdapterItem &item) const;
    void onBoxMoved(WatermarkMaskAdapterItem *item);
    void onBoxResized(WatermarkMaskAdapterItem *item);
    void takeRect(WatermarkMaskAdapterItem *item, const QRectF &rect);
    void markSelected(WatermarkMaskAdapterItem *item, bool selected);
    void showDrawnRegion();
    Items::const_iterator find(const WatermarkMaskAdapterItem *item) const;
    bool has(const WatermarkMaskAdapterItem *item) const { return find(item) != m_items.end(); }

    WatermarkMaskWidget *const m_maskWidget; ///< owned by the mask
    Items m_items;
    WatermarkMaskAdapterItem *m_selected = nullptr;
};
