// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/maskadapter.h"

#include "MediaKits/MediaInfo/shownpicture.h"

#include <QEvent>

MaskAdapter::MaskAdapter(QWidget *target, QWidget *content, QObject *parent)
    : QObject(parent), m_target(target), m_mask(new VideoMask(target))
{
    m_mask->setContent(content);
    target->installEventFilter(this);
}

void MaskAdapter::setVideoSize(const QSize &size, double pixelAspect)
{
    m_videoSize = size;
    m_pixelAspect = pixelAspect;
    // A surface in sight has had its resize already.
    if (m_target && m_target->isVisible())
        updateScale();
}

void MaskAdapter::setMaskEnabled(bool enabled)
{
    if (m_mask)
        m_mask->setMaskEnabled(enabled);
}

bool MaskAdapter::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_target && event->type() == QEvent::Resize)
        updateScale();
    return QObject::eventFilter(watched, event);
}

void MaskAdapter::updateScale()
{
    if (m_videoSize.isEmpty())
        return;
    const QSize fitted =
        squarePixelSize(m_videoSize, m_pixelAspect).scaled(m_target->size(), Qt::KeepAspectRatio);
    if (fitted.isEmpty())
        return;
    m_scale = fitted.width() / (m_videoSize.width() * m_pixelAspect);
    onScaleChanged();
}

QRectF MaskAdapter::onWidget(const QRectF &inPicture) const
{
    const double across = m_scale * m_pixelAspect;
    return {inPicture.x() * across, inPicture.y() * m_scale, inPicture.width() * across,
            inPicture.height() * m_scale};
}

QRectF MaskAdapter::inPicture(const QRectF &onWidget) const
{
    const double across = m_scale * m_pixelAspect;
    return {onWidget.x() / across, onWidget.y() / m_scale, onWidget.width() / across,
            onWidget.height() / m_scale};
}
