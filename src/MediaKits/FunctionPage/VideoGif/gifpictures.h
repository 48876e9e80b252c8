// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What a GIF takes.
struct GifBytes
{
    int pictures = 0; ///< none for a file that isn't one
    qint64 first = 0; ///< up to the end of the first of them
    qint64 all = 0;
};

GifBytes gifBytes(const QString &path);
