// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/maskadapter.h"

#include <QEvent>

MaskAdapter::MaskAdapter(QWidget *target, QWidget *content, QObject *parent)
    : QObject(parent), m_target(target), m_mask(new VideoMask(target))
{
    m_mask->setContent(content);
    target->installEventFilter(this);
}

void MaskAdapter::setVideoSize(const QSize &size)
{
    m_videoSize = size;
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
    const QSize fitted = m_videoSize.scaled(m_target->size(), Qt::KeepAspectRatio);
    if (fitted.isEmpty())
        return;
    m_scale = double(fitted.width()) / m_videoSize.width();
    onScaleChanged();
}
