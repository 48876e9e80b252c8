// SPDX-License-Identifier: MIT
#include "controls/windowshadow.h"

#include "controls/correctplace.h"
#include "platform/compositor.h"
#include "platform/inputshape.h"

#include <QCoreApplication>
#include <QPainter>
#include <QWheelEvent>
#include <QWindow>

#include <memory>

Q_DECLARE_METATYPE(QEvent *)

namespace {
constexpr Qt::WindowFlags shadowFlags =
    Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus;
constexpr Qt::WindowStates largeStates = Qt::WindowMaximized | Qt::WindowFullScreen;
} // namespace

WindowShadow::WindowShadow(QWidget *target) : QDialog(target, shadowFlags), m_target(target)
{
    qRegisterMetaType<QEvent *>();
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(this, &WindowShadow::afterEvent, this, &WindowShadow::onAfterEvent,
            Qt::QueuedConnection);
    if (target == nullptr)
        return;
    target->setWindowFlag(Qt::FramelessWindowHint);
    target->installEventFilter(this);
    if (target->isVisible())
        onTargetShow();
}

void WindowShadow::setup(int radius, const QPoint &offset, const QColor &colour)
{
    m_look.radius = radius;
    m_look.offset = offset;
    m_look.colour = colour;
    if (m_target != nullptr && !isLarge())
        place();
    update();
}

void WindowShadow::setRadius(int radius)
{
    setup(radius, m_look.offset, m_look.colour);
}

void WindowShadow::setColour(const QColor &colour)
{
    setup(m_look.radius, m_look.offset, colour);
}

void WindowShadow::setFlat(bool flat)
{
    m_look.flat = flat;
    update();
}

void WindowShadow::setVisible(bool visible)
{
    QDialog::setVisible(visible && targetIsUp() && !isLarge() && isCompositingActive());
    if (isVisible())
        windowHandle()->installEventFilter(this);
}

bool WindowShadow::eventFilter(QObject *watched, QEvent *event)
{
    // Once it is exposed, the window manager has it and hears of its shape.
    if (watched == windowHandle() && event->type() == QEvent::Expose)
        passPointerThrough(winId());
    if (m_target != nullptr && watched == m_target->windowHandle() &&
        event->type() == QEvent::Expose)
        correctPlace(m_target);
    if (watched != m_target)
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Move:
        if (!isLarge())
            place();
        break;
    case QEvent::Resize:
        onTargetResize();
        break;
    case QEvent::WindowStateChange:
        onTargetWindowState();
        break;
    case QEvent::Show:
        onTargetShow();
        break;
    case QEvent::Hide:
        m_isSettled = false;
        setHidden(true);
        break;
    case QEvent::StyleChange:
        m_picture.forgetOutline();
        break;
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void WindowShadow::onTargetResize()
{
    if (!targetIsUp()) {
        hide();
        return;
    }
    if (!isLarge())
        place();
    if (m_isSettled)
        show();
}

void WindowShadow::onTargetWindowState()
{
    const Qt::WindowStates state = m_target->windowState() & (largeStates | Qt::WindowMinimized);
    if (state == Qt::WindowNoState) {
        setWindowState(state);
        place();
        setVisible(m_target->isVisible());
    } else {
        hide();
        setWindowState(state);
    }
}

void WindowShadow::onTargetShow()
{
    m_target->setAttribute(Qt::WA_Mapped);
    if (QWindow *handle = m_target->windowHandle())
        handle->installEventFilter(this);
    m_picture.forgetOutline();
    emit afterEvent(std::make_unique<QShowEvent>().release());
}

void WindowShadow::onAfterEvent(QEvent *event)
{
    const std::unique_ptr<QEvent> owned(event);
    if (owned->type() != QEvent::Show || !targetIsUp())
        return;
    m_isSettled = true;
    if (!isLarge())
        place();
    show();
}

bool WindowShadow::targetIsUp() const
{
    return m_target != nullptr && m_target->isVisible() && !m_target->isMinimized();
}

// Large windows have no shadow: it would lie outside the screen.
bool WindowShadow::isLarge() const
{
    return m_target != nullptr && ((m_target->windowState() | windowState()) & largeStates) != 0;
}

void WindowShadow::place()
{
    const int grow = m_look.radius;
    const QRect target = m_target->geometry();
    const QRect grown = target.adjusted(-grow, -grow, grow, grow).translated(m_look.offset);
    setGeometry(grown);
}

bool WindowShadow::event(QEvent *event)
{
    if (event->type() == QEvent::Wheel) {
        passWheelOn(static_cast<QWheelEvent *>(event));
        return true;
    }
    const bool result = QDialog::event(event);
    if (event->type() == QEvent::Show && m_target != nullptr &&
        isVisible() != m_target->isVisible())
        setVisible(m_target->isVisible());
    return result;
}

void WindowShadow::passWheelOn(const QWheelEvent *event)
{
    if (m_target == nullptr)
        return;
    const QPoint global = event->globalPosition().toPoint();
    QWidget *child = m_target->childAt(m_target->mapFromGlobal(global));
    if (child == nullptr)
        return;
    auto copy = std::make_unique<QWheelEvent>(child->mapFromGlobal(global), event->globalPosition(),
                                              event->pixelDelta(), event->angleDelta(),
                                              event->buttons(), event->modifiers(), event->phase(),
                                              event->inverted(), event->source());
    QCoreApplication::postEvent(child, copy.release());
    child->setFocus();
}

void WindowShadow::paintEvent(QPaintEvent * /*event*/)
{
    if (m_target == nullptr)
        return;
    // No background from the style: that of the target's own style sheet would be meant for it.
    QPainter painter(this);
    m_picture.draw(&painter, m_target, m_look);
}
