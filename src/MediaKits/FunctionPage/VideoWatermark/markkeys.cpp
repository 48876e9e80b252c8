// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/markkeys.h"

#include "MediaKits/FunctionPage/VideoWatermark/markset.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int farStep = 10;     // picture pixels
constexpr int pasteOffset = 16; // picture pixels

QVariantMap &clipboard()
{
    static QVariantMap map;
    return map;
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
    const bool isOther = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (direction.isNull() || isOther || marks.currentType() == 0)
        return false;
    marks.moveCurrent(direction * (event.modifiers().testFlag(Qt::ShiftModifier) ? farStep : 1));
    return true;
}

void copyMark(const MarkSet &marks)
{
    if (const Mark mark = marks.current())
        clipboard() = *mark;
}

void pasteMark(MarkSet &marks, const MarkedPicture &picture)
{
    QVariantMap map = clipboard();
    if (map.isEmpty())
        return;
    const int length = picture.durationMs;
    map[MarkKey::startTime] = std::min(map.value(MarkKey::startTime).toInt(), length - 1);
    map[MarkKey::endTime] = std::min(map.value(MarkKey::endTime).toInt(), length);
    QRectF rect = map.value(MarkKey::rect).toRectF();
    const QSizeF room = QSizeF(picture.size) - rect.size();
    rect.moveTo(std::clamp(rect.x() + pasteOffset, 0.0, std::max(0.0, room.width())),
                std::clamp(rect.y() + pasteOffset, 0.0, std::max(0.0, room.height())));
    map[MarkKey::rect] = rect;
    marks.add(Mark::create(map));
}
