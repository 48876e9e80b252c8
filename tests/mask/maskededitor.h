// SPDX-License-Identifier: MIT
#pragma once

#include "resources/look.h"
#include "support/guisupport.h"

#include <QDialog>
#include <QLabel>
#include <QtTest>

/// The picture is shown at half its size.
inline constexpr QSize videoSize(800, 600);
inline constexpr QRect surfaceRect(20, 30, 400, 300);

/// An editor with a native surface, as the player needs it.
struct MaskedEditor
{
    MaskedEditor()
    {
        dialog.resize(600, 400);
        surface->setAttribute(Qt::WA_NativeWindow);
        surface->setGeometry(surfaceRect);
        QPixmap night(surfaceRect.size());
        night.fill(Qt::black);
        surface->setPixmap(night);
    }
    bool show()
    {
        dialog.show();
        return QTest::qWaitForWindowActive(&dialog) &&
               QTest::qWaitFor([] { return overlay() != nullptr; });
    }
    static QWidget *overlay() { return visibleWindow("VideoMask"); }

    QDialog dialog;
    QLabel *surface = new QLabel(&dialog);
};

/// A rectangle by its edges.
inline QRect edges(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}
