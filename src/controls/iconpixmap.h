// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QLabel>
#include <QPixmap>

/// A picture of the resources for a label; its size is that at 100 %. Unlike a bare QPixmap, an
/// icon takes the @2x picture on a dense screen.
inline QPixmap iconPixmap(const QString &path, const QSize &size)
{
    return QIcon(path).pixmap(size);
}

/// A picture as large as a frame has room for, in the screen's own pixels.
/// @param frame in pixels at 100 %
/// @param ratio of the screen that it is shown on
inline QPixmap fittedPixmap(const QPixmap &picture, const QSize &frame, qreal ratio)
{
    QPixmap fitted = picture.scaled(frame * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    fitted.setDevicePixelRatio(ratio);
    return fitted;
}

/// Shows a picture in a label that becomes as large as it.
inline void showFitted(QLabel &label, const QPixmap &picture, const QSize &frame)
{
    const qreal ratio = label.devicePixelRatioF();
    const QPixmap fitted = fittedPixmap(picture, frame, ratio);
    label.setFixedSize((QSizeF(fitted.size()) / ratio).toSize());
    label.setPixmap(fitted);
}
