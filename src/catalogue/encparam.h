// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

/// A target format that the user can pick.
struct VADisplayCategory
{
    /// id / 1000 is the kind: 1 video, 2 audio, 3 device.
    quint32 id = 0;
    /// Upper case; its lower-case form is the suffix of the output file.
    QString title;
    /// 1 video, 2 audio: the folder of the icon.
    qint32 type = 0;
    /// Base name of the icon in that folder.
    QString icon;
};

/// Video side of a preset; also describes a probed video stream.
struct VEncParam
{
    /// Codec label, blanks included.
    QString fourCC;
    /// Pixels; 0 when the preset sets no size.
    qint32 width = 0;
    qint32 height = 0;
    /// kbit/s
    qint32 bitrate = 0;
    /// Frames a second.
    double frameRate = 0.0;
    /// Degrees, of probed streams only.
    double rotate = 0.0;
    /// Width of a pixel by its height, of probed streams only.
    double pixelAspect = 1.0;
    /// Names and values, in turn, of options by which an encoder keeps closer to the rate than by
    /// itself.
    QStringList rateOptions = {};
};

/// Audio side of a preset; also describes a probed audio stream.
struct AEncParam
{
    /// Codec label, blanks included.
    QString fourCC;
    qint32 channel = 0;
    /// Hz
    qint32 sampleRate = 0;
    /// kbit/s
    qint32 bitrate = 0;
};

/// One preset. Both records are null when everything stays as in the source; those of the
/// catalogue are shared and never changed.
struct EncParam
{
    quint32 id = 0;
    /// Shown to the user, blanks included.
    QString name;
    quint32 displayCategoryID = 0;
    quint32 formatID = 0;
    QSharedPointer<VEncParam> video;
    QSharedPointer<AEncParam> audio;
};

Q_DECLARE_METATYPE(QSharedPointer<EncParam>)
Q_DECLARE_METATYPE(QSharedPointer<VADisplayCategory>)
