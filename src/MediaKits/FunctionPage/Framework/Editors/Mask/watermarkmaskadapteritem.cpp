// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapteritem.h"

#include "controls/imagectrl.h"
#include "controls/textctrl.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"

#include <QLabel>
#include <QStackedLayout>

WatermarkMaskAdapterItem::WatermarkMaskAdapterItem(Type type, WatermarkMaskAdapter *adapter,
                                                   QWidget *area)
    : m_type(type), m_adapter(adapter), m_widget(new DrmWidget(area))
{
}

WatermarkMaskAdapterItem::~WatermarkMaskAdapterItem()
{
    if (m_widget)
        m_widget->deleteLater();
}

QWidget *WatermarkMaskAdapterItem::newOutline() const
{
    auto *outline = new QLabel(m_widget);
    outline->setProperty("cls", QStringLiteral("mask"));
    return outline;
}

void WatermarkMaskAdapterItem::addLayers(QWidget *bottom, QWidget *top, int shown)
{
    auto *layers = new QStackedLayout(m_widget);
    layers->setContentsMargins(0, 0, 0, 0);
    layers->setStackingMode(QStackedLayout::StackAll);
    for (QWidget *layer : {bottom, top}) {
        layer->setAttribute(Qt::WA_TransparentForMouseEvents);
        layers->addWidget(layer);
    }
    layers->setCurrentIndex(shown);
}

TextMaskAdapterItem::TextMaskAdapterItem(WatermarkMaskAdapter *adapter, QWidget *area)
    : WatermarkMaskAdapterItem(Text, adapter, area), m_text(new TextCtrl(widget()))
{
    widget()->setAllowedDirections(DrmWidget::moveDirection);
    m_text->setFilling(true);
    addLayers(m_text, newOutline(), 0);
}

ImageMaskAdapterItem::ImageMaskAdapterItem(const QPixmap &picture, WatermarkMaskAdapter *adapter,
                                           QWidget *area)
    : WatermarkMaskAdapterItem(Image, adapter, area), m_image(new ImageCtrl(widget()))
{
    widget()->setAspect(double(picture.height()) / picture.width());
    m_image->setPixmap(picture);
    addLayers(m_image, newOutline(), 1);
}

DelogoMaskAdapterItem::DelogoMaskAdapterItem(WatermarkMaskAdapter *adapter, QWidget *area)
    : WatermarkMaskAdapterItem(Delogo, adapter, area)
{
    widget()->setProperty("cls", QStringLiteral("delogo"));
    QWidget *outline = newOutline();
    addLayers(outline, new QLabel(widget()), 0);
}
