// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskadapter.h"

#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskwidget.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/edgedrag.h"

#include <QScopedValueRollback>

ChopMaskAdapter::ChopMaskAdapter(QWidget *target, QObject *parent)
    : MaskAdapter(target, new ChopMaskWidget, parent),
      m_chopWidget(static_cast<ChopMaskWidget *>(mask()->content()))
{
    connect(m_chopWidget, &ChopMaskWidget::chopRectChanged, this,
            &ChopMaskAdapter::onMaskRectChanged);
    mask()->setDrawnRegion(m_chopWidget->drawnRegion());
}

void ChopMaskAdapter::setChopX(int x)
{
    setChopRect({QPoint(x, m_chopRect.y()), m_chopRect.size()});
}

void ChopMaskAdapter::setChopY(int y)
{
    setChopRect({QPoint(m_chopRect.x(), y), m_chopRect.size()});
}

void ChopMaskAdapter::setChopW(int w)
{
    setChopRect({m_chopRect.topLeft(), QSize(w, m_chopRect.height())});
}

void ChopMaskAdapter::setChopH(int h)
{
    setChopRect({m_chopRect.topLeft(), QSize(m_chopRect.width(), h)});
}

void ChopMaskAdapter::setChopRect(QRect rt)
{
    if (rt != m_chopRect) {
        m_chopRect = rt;
        emit chopRectChanged(rt);
    }
    placeFrame();
}

void ChopMaskAdapter::onScaleChanged()
{
    setChopRect(m_chopRect);
}

// Rounded to the surface's pixels and back, the numbers would drift.
void ChopMaskAdapter::placeFrame()
{
    if (!isScaleKnown() || !mask())
        return;
    const QScopedValueRollback<bool> placing(m_placing, true);
    m_chopWidget->setChopRect(EdgeDrag::rounded(onWidget(QRectF(m_chopRect))));
}

void ChopMaskAdapter::onMaskRectChanged(const QRect &rect)
{
    mask()->setDrawnRegion(m_chopWidget->drawnRegion());
    if (m_placing || !isScaleKnown())
        return;
    const QRect found = EdgeDrag::rounded(inPicture(QRectF(rect)));
    if (found == m_chopRect)
        return;
    m_chopRect = found;
    emit chopRectChanged(found);
}
