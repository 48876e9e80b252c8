// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskwidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Mask/edgedrag.h"
#include "ui_chopmaskwidget.h"

#include <QMouseEvent>
#include <QPainter>

namespace {
constexpr int edgeWidth = 4;
} // namespace

ChopMaskWidget::ChopMaskWidget(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ChopMaskWidget>())
{
    m_ui->setupUi(this);
    m_ui->allWidget->installEventFilter(this);
    m_ui->chopWidget->installEventFilter(this);
}

ChopMaskWidget::~ChopMaskWidget() = default;

void ChopMaskWidget::setChopRect(const QRect &rect)
{
    if (rect != m_ui->chopWidget->geometry())
        placeFrame(rect);
}

QRegion ChopMaskWidget::drawnRegion() const
{
    const VideoMaskChop &frame = *m_ui->chopWidget;
    return frame.drawnRegion().translated(frame.pos());
}

bool ChopMaskWidget::eventFilter(QObject *watched, QEvent *event)
{
    const bool done = watched == m_ui->chopWidget  ? onFrameEvent(*event)
                      : watched == m_ui->allWidget ? onAreaEvent(*event)
                                                   : QWidget::eventFilter(watched, event);
    emit afterEvent(event);
    return done;
}

QPoint ChopMaskWidget::inArea(const QMouseEvent &mouse) const
{
    return m_ui->allWidget->mapFromGlobal(mouse.globalPos());
}

bool ChopMaskWidget::onFrameEvent(QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        onFramePress(static_cast<QMouseEvent &>(event));
        break;
    case QEvent::MouseMove:
        onFrameDrag(static_cast<QMouseEvent &>(event));
        break;
    case QEvent::MouseButtonRelease:
        testHit(static_cast<QMouseEvent &>(event), false);
        break;
    case QEvent::Move:
    case QEvent::Resize:
        m_ui->allWidget->update(); // the hole goes with the frame
        break;
    default:
        break;
    }
    return false;
}

void ChopMaskWidget::testHit(const QMouseEvent &mouse, bool pressed)
{
    m_direction = EdgeDrag::edgesAt(mouse.pos(), m_ui->chopWidget->size(), edgeWidth);
    m_ui->chopWidget->setCursor(EdgeDrag::cursorFor(m_direction, pressed));
}

void ChopMaskWidget::onFramePress(const QMouseEvent &mouse)
{
    const bool left = mouse.button() == Qt::LeftButton;
    testHit(mouse, left);
    if (!left)
        return;
    m_pressed = m_ui->chopWidget->geometry();
    m_dragOffset = inArea(mouse) - m_pressed.topLeft();
}

void ChopMaskWidget::onFrameDrag(const QMouseEvent &mouse)
{
    if (!(mouse.buttons() & Qt::LeftButton)) {
        testHit(mouse, false);
        return;
    }
    const QSize bound = m_ui->allWidget->size();
    const QPoint pointer = inArea(mouse);
    if (m_direction == 0) {
        const QRect moved(pointer - m_dragOffset, m_pressed.size());
        placeFrame(QRect(EdgeDrag::pushedInto(moved, bound), moved.size()));
    } else {
        placeFrame(EdgeDrag::clamped(EdgeDrag::stretched(m_pressed, m_direction, pointer), bound));
    }
}

bool ChopMaskWidget::onAreaEvent(QEvent &event)
{
    switch (event.type()) {
    case QEvent::Paint:
        paintArea();
        return true;
    case QEvent::MouseButtonPress:
        onAreaPress(static_cast<QMouseEvent &>(event));
        break;
    case QEvent::MouseMove:
        onAreaDrag(static_cast<QMouseEvent &>(event));
        break;
    case QEvent::MouseButtonRelease:
        m_ui->chopWidget->setHandlesVisible(true);
        break;
    default:
        break;
    }
    return false;
}

// What the frame leaves unhandled comes here as well, as an event of its own.
void ChopMaskWidget::onAreaPress(const QMouseEvent &mouse)
{
    if (mouse.button() != Qt::LeftButton || m_ui->chopWidget->geometry().contains(mouse.pos()))
        return;
    m_pressPoint = mouse.pos();
    m_ui->chopWidget->setHandlesVisible(false);
}

void ChopMaskWidget::onAreaDrag(const QMouseEvent &mouse)
{
    if (!(mouse.buttons() & Qt::LeftButton) || m_ui->chopWidget->areHandlesVisible())
        return;
    placeFrame(
        EdgeDrag::clamped(EdgeDrag::spanned(m_pressPoint, mouse.pos()), m_ui->allWidget->size()));
}

// The style has dimmed it already.
void ChopMaskWidget::paintArea()
{
    QPainter painter(m_ui->allWidget);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(m_ui->chopWidget->geometry(), Qt::transparent);
}

void ChopMaskWidget::placeFrame(const QRect &rect)
{
    m_ui->chopWidget->setGeometry(rect);
    emit chopRectChanged(m_ui->chopWidget->geometry());
}
