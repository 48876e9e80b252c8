// SPDX-License-Identifier: MIT
#pragma once

#include "support/guisupport.h"

#include <QSpinBox>
#include <QTimeEdit>

/// Fields of a cut editor; times in ms, boxes in pixels of the film.

inline QTimeEdit *timeEdit(const QWidget &dialog, const char *name)
{
    return child<QTimeEdit>(dialog, name);
}

inline int timeOf(const QWidget &dialog, const char *name)
{
    return timeEdit(dialog, name)->time().msecsSinceStartOfDay();
}

inline void setTime(const QWidget &dialog, const char *name, int ms)
{
    timeEdit(dialog, name)->setTime(QTime::fromMSecsSinceStartOfDay(ms));
}

inline QSpinBox *spinBox(const QWidget &dialog, const char *name)
{
    return child<QSpinBox>(dialog, name);
}

inline QRect boxOf(const QWidget &dialog)
{
    return {spinBox(dialog, "sbX")->value(), spinBox(dialog, "sbY")->value(),
            spinBox(dialog, "sbW")->value(), spinBox(dialog, "sbH")->value()};
}

inline void setBox(const QWidget &dialog, const QRect &box)
{
    spinBox(dialog, "sbX")->setValue(box.x());
    spinBox(dialog, "sbY")->setValue(box.y());
    spinBox(dialog, "sbW")->setValue(box.width());
    spinBox(dialog, "sbH")->setValue(box.height());
}

/// Marks a part; an empty box leaves the picture whole.
inline void mark(const QWidget &dialog, int start, int end, const QRect &box = {})
{
    // From the whole on, so that no field is held back by another.
    constexpr int wide = 9999;
    setTime(dialog, "tedtStart", 0);
    setTime(dialog, "tedtEnd", end);
    setTime(dialog, "tedtStart", start);
    if (box.isEmpty())
        return;
    setBox(dialog, {0, 0, wide, wide});
    setBox(dialog, box);
}
