// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QMetaType>
#include <QSharedPointer>
#include <QSize>
#include <QVector>

/// Container level facts of a media file.
struct MediaFormatInfo
{
    /// Upper-cased suffix of the file name, not what the container calls itself.
    QString formatName;
    qint64 duration = 0; ///< ms
    qint64 fileSize = 0; ///< bytes
    int bitrate = 0;     ///< kbit/s
    int streamCount = 0;
};

/// What a file holds beyond the facts that are shown: what its conversion is judged by. A reader
/// that can't tell leaves a field as it is here.
struct MediaContent
{
    bool hasPicture = false; ///< a frame at least, moving or still
    bool hasSound = false;   ///< a sample at least
    QSize pictureSize;
    /// Where the picture and the sound end, in ms from the file's beginning; 0 where the container
    /// doesn't tell it for sure or several sounds end at different times.
    qint64 pictureEndMs = 0;
    qint64 soundEndMs = 0;
    /// Length in ms that the header states; 0 where readers only guess it or measure what is there,
    /// and where it may be that of the subtitles.
    qint64 toldMs = 0;
    /// The file ends before the place that its header tells.
    bool isCutOff = false;
};

/// What the numbers of a picture mean, in ffmpeg's names; empty where the file doesn't tell.
struct PictureColours
{
    QString transfer;  ///< from numbers to light: "bt709", "smpte2084", "arib-std-b67"
    QString primaries; ///< what red, green and blue are: "bt709", "bt2020"
    QString matrix;    ///< how red, green and blue are stored: "bt709", "gbr" for as they are
};

/// What one file holds. A reader that found no media leaves `format` null.
struct MediaInfoData
{
    QSharedPointer<MediaFormatInfo> format;
    /// The first picture stream, null when there is none; `fourCC` is the codec's name.
    QSharedPointer<VEncParam> video;
    /// One record a sound stream, in the order of the streams.
    QVector<QSharedPointer<AEncParam>> audios;
    MediaContent content;
    /// Of the first picture stream.
    PictureColours colours;
    /// There is a picture that belongs to a song, and is no stream of its own here.
    bool hasCover = false;
};

Q_DECLARE_METATYPE(QSharedPointer<MediaInfoData>)
