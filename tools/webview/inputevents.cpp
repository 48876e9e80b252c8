// SPDX-License-Identifier: MIT
#include "webview/inputevents.h"

#include "browser/viewinput.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWidget>

namespace {

struct MouseRow
{
    quint32 code;
    QEvent::Type type;
    Qt::MouseButton button;
};

constexpr MouseRow mouseRows[] = {
    {MouseMoved, QEvent::MouseMove, Qt::NoButton},
    {LeftDown, QEvent::MouseButtonPress, Qt::LeftButton},
    {LeftUp, QEvent::MouseButtonRelease, Qt::LeftButton},
    {LeftDoubleClick, QEvent::MouseButtonDblClick, Qt::LeftButton},
    {RightDown, QEvent::MouseButtonPress, Qt::RightButton},
    {RightUp, QEvent::MouseButtonRelease, Qt::RightButton},
    {RightDoubleClick, QEvent::MouseButtonDblClick, Qt::RightButton},
    {MiddleDown, QEvent::MouseButtonPress, Qt::MiddleButton},
    {MiddleUp, QEvent::MouseButtonRelease, Qt::MiddleButton},
    {MiddleDoubleClick, QEvent::MouseButtonDblClick, Qt::MiddleButton},
};

Qt::MouseButtons buttonsOf(quint32 flags)
{
    Qt::MouseButtons buttons;
    buttons.setFlag(Qt::LeftButton, (flags & LeftHeld) != 0);
    buttons.setFlag(Qt::RightButton, (flags & RightHeld) != 0);
    buttons.setFlag(Qt::MiddleButton, (flags & MiddleHeld) != 0);
    return buttons;
}

Qt::KeyboardModifiers modifiersOf(quint32 flags)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, (flags & ShiftHeld) != 0);
    modifiers.setFlag(Qt::ControlModifier, (flags & ControlHeld) != 0);
    return modifiers;
}

QKeyEvent keyEvent(QEvent::Type type, const KeyCode &key, quint32 flags, const QString &text)
{
    const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
    return QKeyEvent(type, key.qtKey, held, key.scanCode, key.native, quint32(held), text,
                     (flags & KeyRepeated) != 0);
}

} // namespace

void InputEvents::setTarget(QWidget *target)
{
    m_target = target;
    m_flush.setSingleShot(true);
    connect(&m_flush, &QTimer::timeout, this, &InputEvents::flush, Qt::UniqueConnection);
    if (m_hasFocus)
        focus(true);
}

void InputEvents::send(QEvent &event)
{
    if (m_target)
        QCoreApplication::sendEvent(m_target, &event);
}

QPoint InputEvents::global(const QPoint &point) const
{
    return m_target ? m_target->mapToGlobal(point) : point;
}

void InputEvents::mouse(quint32 code, const QPoint &point, quint32 flags)
{
    flush();
    for (const MouseRow &row : mouseRows) {
        if (row.code != code)
            continue;
        QMouseEvent event(row.type, point, global(point), row.button, buttonsOf(flags),
                          modifiersOf(flags));
        send(event);
    }
}

void InputEvents::wheel(const QPoint &point, int delta, quint32 flags)
{
    flush();
    QWheelEvent event(point, global(point), {}, QPoint(0, delta), buttonsOf(flags),
                      modifiersOf(flags), Qt::NoScrollPhase, false);
    send(event);
}

void InputEvents::keyDown(const KeyCode &key, quint32 flags)
{
    flush();
    m_down = {true, key, flags, {}};
    m_flush.start(0);
}

void InputEvents::keyPress(uint character)
{
    const QString text = QString::fromUcs4(&character, 1);
    if (m_down.isWaiting) {
        m_down.text += text;
        return;
    }
    // Of an input method.
    QInputMethodEvent event;
    event.setCommitString(text);
    send(event);
}

void InputEvents::keyUp(const KeyCode &key, quint32 flags)
{
    flush();
    QKeyEvent event = keyEvent(QEvent::KeyRelease, key, flags, {});
    send(event);
}

void InputEvents::flush()
{
    if (!m_down.isWaiting)
        return;
    m_down.isWaiting = false;
    // By the first the engine learns of orders such as "copy".
    for (const auto type : {QEvent::ShortcutOverride, QEvent::KeyPress}) {
        QKeyEvent event = keyEvent(type, m_down.key, m_down.flags, m_down.text);
        send(event);
    }
}

void InputEvents::focus(bool isIn)
{
    flush();
    m_hasFocus = isIn;
    QFocusEvent event(isIn ? QEvent::FocusIn : QEvent::FocusOut);
    send(event);
}
