// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>

/// What the system's ffprobe and the bytes themselves tell of a GIF.
struct GifFile
{
    QSize size;
    int frames = 0;
    double seconds = 0.0;
    bool loops = false; ///< for ever
};

GifFile probeGif(const QString &path);

/// Mean difference of a GIF's colours from those of a film's part, 0 to 255.
/// @param part options that choose it of the film, as "-ss 1 -t 2"
double colourError(const QString &gif, const QString &film, const QString &part, int frameRate);
