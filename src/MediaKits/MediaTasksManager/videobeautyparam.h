// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>

#include <tuple>

/// Look, turn, speed and volume of a video, as the beauty editor leaves them.
struct VideoBeautyParam
{
    float contrast = 1.0F;   ///< neutral 1
    float brightness = 0.0F; ///< neutral 0
    float saturation = 1.0F; ///< neutral 1
    float red = 0.0F;        ///< colour balance of a channel, -1 to 1, neutral 0
    float green = 0.0F;
    float blue = 0.0F;
    int rotate = 0;      ///< quarter turns, positive clockwise
    float volume = 1.0F; ///< factor
    float speed = 1.0F;  ///< factor
    bool reverse = false;
    bool vflip = false;
    bool hflip = false;
    int filterIndex = -1; ///< row of the ready-made look, -1 for none
};

/// Whether two records give the same result, wherever their settings came from.
inline bool isSameLook(const VideoBeautyParam &one, const VideoBeautyParam &other)
{
    const auto settings = [](const VideoBeautyParam &look) {
        return std::tie(look.contrast, look.brightness, look.saturation, look.red, look.green,
                        look.blue, look.rotate, look.volume, look.speed, look.reverse, look.vflip,
                        look.hflip);
    };
    return settings(one) == settings(other);
}

Q_DECLARE_METATYPE(QSharedPointer<VideoBeautyParam>)
