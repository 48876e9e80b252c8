// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/Facts/mediainfodata.h"

/// What a conversion into a file of a wanted size is told, and what comes out of it. Sound and
/// container have their share of the size; what is left is the picture's.
struct CompressPlan
{
    int video = 0;     ///< kbit/s, 0 when the source has no picture
    int audio = 0;     ///< kbit/s, 0 when it has no sound, or one that isn't coded by rate
    qint64 bytes = -1; ///< of the result; -1 when the source's length isn't known
};

/// Bitrate of the pictures in kbit/s. Where the file doesn't tell it, it is what the sounds leave
/// of the whole; 0 when that can't be told either, or when there are no pictures.
int pictureBitrate(const MediaInfoData &info);

/// @param rate wanted share of the source's size
/// @param least of the picture in kbit/s, as it was measured; 0 when it wasn't
CompressPlan compressPlan(double rate, const MediaInfoData &info, int least = 0);

/// Size of the result in bytes when these rates are asked for; -1 when it can't be told.
/// @param picture as the result is to have it
/// @param audio kbit/s, 0 for the encoder's own
/// @param least of the picture in the source's size, as above
qint64 sizeAtRates(const VEncParam &picture, int audio, const MediaInfoData &info, int least = 0);

/// The smallest size that the encoders can make of the source, as a share of its own; 0.2 where
/// too little is known of it.
double smallestShare(const MediaInfoData &info, int least = 0);

/// Whether only a trial tells the least rate of the picture: what the older encoders need at least
/// depends on the scenes.
bool leastNeedsTrial(const MediaInfoData &info);
/// Whether the least rate may be above what a share leaves for the picture.
bool leastMatters(double rate, const MediaInfoData &info);
/// What lets the encoder keep to a rate also in a short film, as `VEncParam::rateOptions`.
QStringList rateOptions(int video, const MediaInfoData &info);
