// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/videobeautyparam.h"

#include <QVector>

/// Settings of a look, as those of the same names of a `VideoBeautyParam`.
struct CBSFilterParam
{
    float contrast = 1.0F;
    float brightness = 0.0F;
    float saturation = 1.0F;
};

/// Colour balance of a look, -1 to 1 a channel.
struct RGBFilterParam
{
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
};

/// A ready-made look, which fills six settings.
struct ReadyLook
{
    const char *name;    ///< for the user, UTF-8
    const char *picture; ///< file name of the picture that shows what the look does
    CBSFilterParam cbs;
    RGBFilterParam rgb;
    bool isEnabled = true; ///< false for a place kept for one to come
};

/// In the order that they are offered in; the index is the `filterIndex` of a `VideoBeautyParam`.
const QVector<ReadyLook> &readyLooks();

/// Fills the settings that a look has, and notes which one it was.
/// @param index of `readyLooks()`
void applyReadyLook(int index, VideoBeautyParam &beauty);

Q_DECLARE_METATYPE(CBSFilterParam)
Q_DECLARE_METATYPE(RGBFilterParam)
