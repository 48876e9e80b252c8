// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QPixmap>

/// A picture of the resources for a label; its size is that at 100 %. Unlike a bare QPixmap, an
/// icon takes the @2x picture on a dense screen.
inline QPixmap iconPixmap(const QString &path, const QSize &size)
{
    return QIcon(path).pixmap(size);
}
