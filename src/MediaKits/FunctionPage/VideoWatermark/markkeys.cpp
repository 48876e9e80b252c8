// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/markkeys.h"

#include "MediaKits/FunctionPage/VideoWatermark/markset.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int farStep = 10;     // picture pixels
constexpr int pasteOffset = 16; // picture pixels

struct Copied
{
    QVariantMap map;
    MarkedPicture picture; // that it was copied from
};

Copied &clipboard()
{
    static Copied copied;
    return copied;
}

QPoint directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

bool moveMark(MarkSet &marks, const QKeyEvent &event)
{
    const QPoint direction = directionOf(event.key());
    const bool isOther =
        event.modifiers() & ~(Qt::ShiftModifier | Qt::ControlModifier | Qt::KeypadModifier);
    if (direction.isNull() || isOther || marks.currentType() == 0)
        return false;
    const QPoint by = direction * (event.modifiers().testFlag(Qt::ShiftModifier) ? farStep : 1);
    if (event.modifiers().testFlag(Qt::ControlModifier))
        marks.resizeCurrent(by);
    else
        marks.moveCurrent(by);
    return true;
}

void copyMark(const MarkSet &marks, const MarkedPicture &picture)
{
    if (const Mark mark = marks.current())
        clipboard() = {*mark, picture};
}

void pasteMark(MarkSet &marks, const MarkedPicture &picture)
{
    const Copied &copied = clipboard();
    if (copied.map.isEmpty())
        return;
    QVariantMap map = marksFor({copied.map}, copied.picture, picture).first().toMap();
    QRectF rect = map.value(MarkKey::rect).toRectF();
    const QSizeF room = QSizeF(picture.size) - rect.size();
    rect.moveTo(std::clamp(rect.x() + pasteOffset, 0.0, std::max(0.0, room.width())),
                std::clamp(rect.y() + pasteOffset, 0.0, std::max(0.0, room.height())));
    map[MarkKey::rect] = rect;
    marks.add(Mark::create(map));
}
