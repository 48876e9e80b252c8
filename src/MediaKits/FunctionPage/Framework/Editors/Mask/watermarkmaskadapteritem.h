// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"

#include <QMap>
#include <QPixmap>
#include <QPointer>
#include <QRectF>
#include <QVariant>

class ImageCtrl;
class QStackedLayout;
class QWidget;
class TextCtrl;
class WatermarkMaskAdapter;

/// One box over a picture, made and owned by its adapter.
class WatermarkMaskAdapterItem
{
public:
    enum Type { Text = 1, Image = 2, Delogo = 3 };

    virtual ~WatermarkMaskAdapterItem();
    Q_DISABLE_COPY(WatermarkMaskAdapterItem)

    Type type() const { return m_type; }
    WatermarkMaskAdapter *adapter() const { return m_adapter; }
    DrmWidget *widget() const { return m_widget; }
    bool isSelected() const { return m_selected; }

    /// Settings of the content; the keys are the editor's.
    QVariant property(int key) const { return m_properties.value(key); }
    void setProperty(int key, const QVariant &value) { m_properties.insert(key, value); }

protected:
    /// @param area parent of the box, which the item deletes
    WatermarkMaskAdapterItem(Type type, WatermarkMaskAdapter *adapter, QWidget *area);

    /// Puts the content into the box; the outline lies with it in one place.
    void addLayers(QWidget *bottom, QWidget *top, int shown);
    QWidget *newOutline() const;

private:
    friend class WatermarkMaskAdapter;

    const Type m_type;
    WatermarkMaskAdapter *const m_adapter;
    const QPointer<DrmWidget> m_widget;
    QMap<int, QVariant> m_properties;
    QRectF m_rect; ///< in picture pixels, as last set or dragged
    bool m_selected = false;
    bool m_visible = true;
};

/// A text; its box can't be resized, since its size follows the text.
class TextMaskAdapterItem : public WatermarkMaskAdapterItem
{
public:
    TextMaskAdapterItem(WatermarkMaskAdapter *adapter, QWidget *area);
    TextCtrl *text() const { return m_text; }

private:
    TextCtrl *const m_text;
};

/// A picture that keeps its shape.
class ImageMaskAdapterItem : public WatermarkMaskAdapterItem
{
public:
    ImageMaskAdapterItem(const QPixmap &picture, WatermarkMaskAdapter *adapter, QWidget *area);
    ImageCtrl *image() const { return m_image; }

private:
    ImageCtrl *const m_image;
};

/// A place to be painted over.
class DelogoMaskAdapterItem : public WatermarkMaskAdapterItem
{
public:
    DelogoMaskAdapterItem(WatermarkMaskAdapter *adapter, QWidget *area);
};

Q_DECLARE_METATYPE(WatermarkMaskAdapterItem *)
