// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>

#include <functional>

class QObject;

/// Hands a small picture of a video to `callback`: null at once for a file that is missing or no
/// video by its name, otherwise later, and null when no picture can be had. Pictures are made one
/// after the other.
/// @param context the callback isn't called any more once it is gone
void requestThumbnail(const QString &path, QObject *context,
                      const std::function<void(const QPixmap &)> &callback);
