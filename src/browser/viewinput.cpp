// SPDX-License-Identifier: MIT
#include "browser/viewinput.h"

#include <QMouseEvent>

namespace {

constexpr int firstKeyBeyondCharacters = 257;

// Of a press; the release and the double click follow it.
quint32 downCode(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return LeftDown;
    case Qt::RightButton:
        return RightDown;
    case Qt::MiddleButton:
        return MiddleDown;
    default:
        return ExtraDown;
    }
}

} // namespace

quint32 mouseCode(const QMouseEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseMove:
        return MouseMoved;
    case QEvent::MouseButtonPress:
        return downCode(event.button());
    case QEvent::MouseButtonRelease:
        return downCode(event.button()) + 1;
    case QEvent::MouseButtonDblClick:
        return downCode(event.button()) + 2;
    default:
        return 0;
    }
}

quint32 mouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    quint32 flags = 0;
    const auto add = [&flags](bool isHeld, MouseFlag flag) { flags |= isHeld ? flag : 0U; };
    add(buttons.testFlag(Qt::LeftButton), LeftHeld);
    add(buttons.testFlag(Qt::RightButton), RightHeld);
    add(buttons.testFlag(Qt::MiddleButton), MiddleHeld);
    add(modifiers.testFlag(Qt::ShiftModifier), ShiftHeld);
    add(modifiers.testFlag(Qt::ControlModifier), ControlHeld);
    return flags;
}

quint32 keyFlags(const QKeyEvent &event)
{
    quint32 flags = event.count() >= 2 ? KeyRepeated : 0U;
    if (event.key() >= firstKeyBeyondCharacters || event.modifiers() != Qt::NoModifier)
        flags |= KeyExtended;
    return flags;
}

Qt::CursorShape cursorShape(int info)
{
    switch (info) {
    case CursorCross:
        return Qt::CrossCursor;
    case CursorHand:
        return Qt::PointingHandCursor;
    case CursorText:
        return Qt::IBeamCursor;
    case CursorWait:
        return Qt::WaitCursor;
    case CursorVertical:
        return Qt::SizeVerCursor;
    case CursorHorizontal:
        return Qt::SizeHorCursor;
    default:
        return Qt::ArrowCursor;
    }
}
