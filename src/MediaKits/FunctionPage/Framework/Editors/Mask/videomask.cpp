// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/videomask.h"

#include "platform/compositor.h"

#include <QEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace {
// A tool window has no entry in the task bar and is raised with its parent.
constexpr Qt::WindowFlags maskFlags =
    Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus;
} // namespace

VideoMask::VideoMask(QWidget *target)
    : QWidget(target, maskFlags), m_target(target), m_layout(new QVBoxLayout(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_layout->setContentsMargins(0, 0, 0, 0);
    target->installEventFilter(this);
    target->window()->installEventFilter(this);
    follow();
}

void VideoMask::setContent(QWidget *content)
{
    delete m_content;
    m_content = content;
    m_layout->addWidget(content);
}

void VideoMask::setMaskEnabled(bool enabled)
{
    m_maskEnabled = enabled;
    showAsEnabled();
}

void VideoMask::setDrawnRegion(const QRegion &region)
{
    m_drawn = region;
    shapeAsNeeded();
}

void VideoMask::shapeAsNeeded()
{
    if (!isCompositingActive())
        // An empty shape would be none at all.
        setMask(m_drawn.isEmpty() ? QRegion(-1, -1, 1, 1) : m_drawn);
    else if (!mask().isEmpty())
        clearMask();
}

void VideoMask::follow()
{
    setGeometry(QRect(m_target->mapToGlobal(QPoint(0, 0)), m_target->size()));
}

void VideoMask::showAsEnabled()
{
    const bool up = m_target->isVisible() && !m_target->window()->isMinimized();
    if (m_maskEnabled && up) {
        follow();
        shapeAsNeeded();
    }
    setVisible(m_maskEnabled && up);
}

// Children are shown before their window: a mask that came first would be placed below it, since
// the window manager wouldn't know yet what it belongs to.
void VideoMask::showLater()
{
    QTimer::singleShot(0, this, &VideoMask::showAsEnabled);
}

bool VideoMask::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_target) {
        switch (event->type()) {
        case QEvent::Resize:
        case QEvent::Move:
            follow();
            break;
        case QEvent::Show:
            showLater();
            break;
        case QEvent::Hide:
            hide();
            break;
        default:
            break;
        }
    }
    if (watched == m_target->window())
        onWindowEvent(*event);
    return QWidget::eventFilter(watched, event);
}

void VideoMask::onWindowEvent(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Move:
        follow();
        break;
    case QEvent::Resize: // the layout moves what the target lies in
    case QEvent::Show:
    case QEvent::WindowStateChange:
        showLater();
        break;
    case QEvent::Hide:
        hide();
        break;
    default:
        break;
    }
}

void VideoMask::mousePressEvent(QMouseEvent *event)
{
    m_target->window()->activateWindow();
    QWidget::mousePressEvent(event);
}
