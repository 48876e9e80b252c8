// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/videomask.h"

#include "controls/correctplace.h"
#include "platform/compositor.h"
#include "platform/windowmanager.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

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
    target->setMouseTracking(true);
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
    const bool shows = m_maskEnabled && m_isUp && m_target->isVisible();
    if (shows && !isVisible()) {
        // The window manager may have minimized it together with the editor.
        overrideWindowState(Qt::WindowNoState);
        if (windowHandle() != nullptr)
            windowHandle()->setWindowState(Qt::WindowNoState);
    }
    if (shows) {
        follow();
        shapeAsNeeded();
    }
    setVisible(shows);
    if (shows)
        windowHandle()->installEventFilter(this);
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
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            return passPointer(*static_cast<QMouseEvent *>(event));
        default:
            break;
        }
    }
    if (watched == m_target->window())
        onWindowEvent(*event);
    if (watched == m_handle && event->type() == QEvent::Expose)
        onExposed();
    if (watched == windowHandle() && event->type() == QEvent::Expose)
        correctPlace(this);
    return QWidget::eventFilter(watched, event);
}

// Of a press on the surface beside what is drawn, until its release.
bool VideoMask::passPointer(const QMouseEvent &event)
{
    if (!isVisible() || mask().isEmpty() || m_content.isNull())
        return false;
    // The content's child: for this window's own, its mask would count.
    const QPoint inContent = m_content->mapFromGlobal(event.globalPos());
    QWidget *receiver = m_pressed ? m_pressed.data() : m_content->childAt(inContent);
    if (receiver == nullptr)
        return false;
    m_pressed = event.buttons() != Qt::NoButton ? receiver : nullptr;
    QMouseEvent copy(event.type(), receiver->mapFromGlobal(event.globalPos()), event.globalPos(),
                     event.button(), event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(receiver, &copy);
    m_target->setCursor(receiver->cursor());
    return true;
}

void VideoMask::onWindowEvent(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Move:
        follow();
        break;
    case QEvent::Resize: // the layout moves what the target lies in
        showLater();
        break;
    case QEvent::Show:
        watchHandle();
        showLater();
        break;
    case QEvent::Hide:
        hide();
        break;
    default:
        break;
    }
}

// Only the native window hears from the window manager whether it is to be seen.
void VideoMask::watchHandle()
{
    QWindow *handle = m_target->window()->windowHandle();
    if (handle == m_handle)
        return;
    m_handle = handle;
    handle->installEventFilter(this);
    onExposed();
}

void VideoMask::onExposed()
{
    if (m_isUp == m_handle->isExposed())
        return;
    m_isUp = m_handle->isExposed();
    if (m_isUp && m_target->window()->isModal())
        removeModalState(m_handle->winId());
    showLater();
}

void VideoMask::mousePressEvent(QMouseEvent *event)
{
    m_target->window()->activateWindow();
    QWidget::mousePressEvent(event);
}
