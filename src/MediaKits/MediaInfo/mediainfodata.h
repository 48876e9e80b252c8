// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QMetaType>
#include <QSharedPointer>
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

/// What one file holds. A reader that found no media leaves `format` null.
struct MediaInfoData
{
    QSharedPointer<MediaFormatInfo> format;
    /// The first picture stream, null when there is none; `fourCC` is the codec's name.
    QSharedPointer<VEncParam> video;
    /// One record a sound stream, in the order of the streams.
    QVector<QSharedPointer<AEncParam>> audios;
};

Q_DECLARE_METATYPE(QSharedPointer<MediaInfoData>)
