// SPDX-License-Identifier: MIT
#pragma once

#include "support/desktop.h"
#include "support/guisupport.h"

/// A film of one grey for each half, and what is seen of it on the screen.
namespace ScreenFilm {

constexpr int halfSeconds = 6;
const QColor firstColour(0x60, 0x60, 0x60);
const QColor secondColour(0x90, 0x90, 0x90);

/// Of 640x480 pixels, with sound; fails the running test when it can't be made.
void make(const QString &path);
bool isFilm(const QColor &colour);

} // namespace ScreenFilm

/// A widget's rectangle in pixels of the screen.
inline QRect onScreen(const QWidget &widget)
{
    return {widget.mapToGlobal(QPoint(0, 0)), widget.size()};
}

/// What the window manager keeps above an open editor: the frame of what is kept of the picture.
class CropFrame
{
public:
    explicit CropFrame(const QWidget &dialog)
        : m_picture(*child(dialog, "lblVideoShow")), m_frame(*child(m_picture, "chopWidget"))
    {
    }

    QRect picture() const { return onScreen(m_picture); }
    QRect rect() const { return onScreen(m_frame); }
    // Away from the thick handles.
    QPoint onItsEdge() const { return rect().topLeft() + QPoint(0, rect().height() / 4); }
    QPoint inside() const { return rect().center(); }
    QPoint outside() const { return picture().bottomRight() - QPoint(20, 20); }

    /// Its lines, the film inside them, and where it can be the dimmed film around.
    bool isSeen(const QColor &film) const;
    bool isUnseen() const;

private:
    const QWidget &m_picture;
    const QWidget &m_frame;
};

/// A window of another program.
class Cover
{
public:
    static QColor colour() { return QColor(0xff, 0xcc, 0); }

    explicit Cover(const QRect &over);
    ~Cover();

private:
    QProcess m_program;
};
