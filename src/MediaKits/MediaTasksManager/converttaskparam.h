// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/MediaTasksManager/mediaselection.h"
#include "MediaKits/MediaTasksManager/mediataskparam.h"
#include "MediaKits/MediaTasksManager/videobeautyparam.h"

#include <QVariantList>

/// Where the picture of a result comes from.
enum class ResultPicture {
    AsSource, ///< from the source, through a filter graph where something is done to it
    OwnChain, ///< from the source, through a graph in any case
    Black,    ///< the source has none: black frames as long as its sound
    None,     ///< nowhere: sound alone is wanted
};

/// How a GIF comes to its 256 colours.
enum class GifPalette {
    Fixed,  ///< the encoder's own, the same for every picture
    Own,    ///< wanted: chosen for this picture
    Chosen, ///< the step that chooses them: its result is `paletteFile`
    Used,   ///< the step that takes them from `paletteFile`
};

/// How the sounds of a dubbed video come together.
struct SoundMix
{
    int lengthMs = 0; ///< of the result, 0 when unknown
    int channels = 2;
    int sampleRate = 0; ///< Hz, 0 for that of the music
};

/// One wanted conversion: a record with value semantics; copies share what the pointers hold.
struct ConvertTaskParam : MediaTaskParam
{
    static constexpr int paramType = 4;
    ConvertTaskParam() : MediaTaskParam(paramType) {}

    QString inputFile;
    QString inputFormat; ///< the source's format word, its suffix; chooses the chain of steps
    QString outputName;  ///< base name without suffix
    QString outputDir;   ///< empty stands for "."
    QString format;      ///< output suffix, which also decides the container
    int durationMs = 0;  ///< length of the source, 0 when unknown
    int speed = 0;       ///< encoder speed 1 (fastest) to 9 (slowest), 0 for the encoder's own
    /// A source without sound gets a silent track.
    bool silentTrack = false;
    ResultPicture picture = ResultPicture::AsSource;
    /// The crop is done although the preset has no size.
    bool cropsAlone = false;
    /// The preset's frame lies across while the picture is fitted into it, as a look turns both by
    /// an odd number of quarter turns afterwards.
    bool turnsFrame = false;
    /// Of results that are GIFs.
    GifPalette palette = GifPalette::Fixed;
    QString paletteFile;
    /// The sound, which alone would run on, ends with the picture.
    bool endsWithPicture = false;
    QSharedPointer<EncParam> encParam;
    QSharedPointer<TimeSpan> timeRange;
    QSharedPointer<CropBox> cropRect;
    QSharedPointer<VideoBeautyParam> beauty;
    QSharedPointer<MediaInfoData> sourceInfo;
    /// Overlays: maps with "filter" ("delogo", "drawtext" or "watermark"), "rect" (QRectF in
    /// source pixels), "startTime" and "endTime" (ms; an end of 0 or less: the whole video) and
    /// "font", "fontcolor", "opacity", "text", "imagefile" as the kind needs them.
    QVariantList videoFilters;
    /// Dubbings: maps with "filter" ("dubbing"), "musics" (maps of "filePath", "volume" as a
    /// factor, "startTime" in ms, "duration" of the file in ms where it is known), "videoVolume"
    /// (factor) and "isMax" (false silences the video).
    QVariantList audioFilters;
    /// Null for the plain way, in which sounds get quieter the more of them there are. With it,
    /// maps of "musics" may have "skip" (ms at the beginning of the file that are left out),
    /// "fadeAt" (ms of the result where the music begins to fade out) and "fade" (ms it takes).
    QSharedPointer<SoundMix> soundMix;
};
