// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

class QKeyEvent;
class QMouseEvent;

// What a web view is told of mouse and keyboard, in the numbers of its interface.

enum MouseCode : quint32 {
    MouseMoved = 0x200,
    LeftDown = 0x201,
    LeftUp = 0x202,
    LeftDoubleClick = 0x203,
    RightDown = 0x204,
    RightUp = 0x205,
    RightDoubleClick = 0x206,
    MiddleDown = 0x207,
    MiddleUp = 0x208,
    MiddleDoubleClick = 0x209,
    ExtraDown = 0x20B,
    ExtraUp = 0x20C,
    ExtraDoubleClick = 0x20D,
};

enum MouseFlag : quint32 {
    LeftHeld = 1,
    RightHeld = 2,
    ShiftHeld = 4,
    ControlHeld = 8,
    MiddleHeld = 0x10,
};

enum KeyFlag : quint32 {
    KeyExtended = 0x100,
    KeyRepeated = 0x4000,
};

/// The numbers of a view's cursor; any other stands for an arrow.
enum CursorInfo {
    CursorCross = 1,
    CursorHand = 2,
    CursorText = 3,
    CursorWait = 4,
    CursorArrow = 5,
    CursorVertical = 6,
    CursorHorizontal = 7,
};

/// 0 for an event that has none.
quint32 mouseCode(const QMouseEvent &event);
quint32 mouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
quint32 keyFlags(const QKeyEvent &event);
Qt::CursorShape cursorShape(int info);
