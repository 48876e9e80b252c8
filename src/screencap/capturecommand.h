// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

/// What the text of a recording's command depends on.
struct CaptureCommand
{
    bool isFullScreen = true;
    int definition = 0; ///< 0 standard, 1 high, 2 as the source
    bool isPlayedSoundWanted = false;
    QStringList inputs; ///< names of the sound inputs that are wanted
    QString outputPath;

    /// Size that a whole screen is fitted into; empty for the source's own.
    static QSize boxOf(int definition);
    /// Arguments for ffmpeg in one text.
    QString text() const;
};
