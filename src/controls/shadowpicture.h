// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QSize>

class QPainter;
class QWidget;

struct ShadowLook
{
    int radius = 10; ///< room around the target in pixels
    QPoint offset;
    QColor colour = QColor::fromRgba(0x24000000);
    bool flat = false;

    bool operator==(const ShadowLook &other) const
    {
        return radius == other.radius && offset == other.offset && colour == other.colour &&
               flat == other.flat;
    }
    bool operator!=(const ShadowLook &other) const { return !(*this == other); }
};

/// The blurred outline of a window. A window that is alike along its edges, as most are, has its
/// picture kept as four corners and the strips between them, whatever its size is.
class ShadowPicture
{
public:
    /// Draws the shadow of `target`, which is larger than it by the radius on each side. The
    /// outline of a translucent target is taken from a grab of it, once.
    void draw(QPainter *painter, QWidget *target, const ShadowLook &look);

    /// The target's outline may have changed.
    void forgetOutline();

private:
    /// An image that keeps its outer `corner` pixels when it is drawn at another size.
    struct Stretchable
    {
        QImage image; // in device pixels
        int corner = 0;
        bool stretches = false;
    };

    void updateOutline(QWidget *target, const QSize &size);
    void updatePicture(const QSize &size, double scale, const ShadowLook &look);
    static void drawStretched(QPainter *painter, const Stretchable &source, const QSize &size);

    Stretchable m_outline;
    Stretchable m_picture;
    ShadowLook m_look;
    QSize m_basis; // the target's size that the picture was made for
    double m_scale = 0;
};
