// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/FFMediaInfo/ffprobejson.h"

#include "MediaKits/MediaInfo/Facts/sensiblefacts.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace {

// ffprobe prints these numbers as texts, in bit/s.
int kbitPerSecond(const QJsonObject &object)
{
    const qint64 bitrate = object[QLatin1String("bit_rate")].toString().toLongLong() / 1000;
    return int(qBound<qint64>(0, bitrate, std::numeric_limits<int>::max()));
}

// "30000/1001" and its like.
double quotient(const QString &text, char sign = '/')
{
    const QStringList parts = text.split(QLatin1Char(sign));
    if (parts.size() != 2 || qFuzzyIsNull(parts[1].toDouble()))
        return 0.0;
    return parts[0].toDouble() / parts[1].toDouble();
}

QString codecName(const QJsonObject &stream)
{
    return stream[QLatin1String("codec_name")].toString().toUpper();
}

void readFormat(const QJsonObject &object, MediaFormatInfo &format)
{
    format.duration = sensibleMs(object[QLatin1String("duration")].toString().toDouble());
    format.fileSize = object[QLatin1String("size")].toString().toLongLong();
    format.bitrate = kbitPerSecond(object);
    format.streamCount = object[QLatin1String("nb_streams")].toInt();
}

// Length in ms where the header of the container states one that counts from the file's beginning.
qint64 toldMs(const QJsonObject &format)
{
    static const QStringList headers{
        QStringLiteral("mov"),  QStringLiteral("matroska"), QStringLiteral("avi"),
        QStringLiteral("asf"),  QStringLiteral("flv"),      QStringLiteral("wav"),
        QStringLiteral("aiff"), QStringLiteral("flac"),     QStringLiteral("w64"),
    };
    constexpr double latestStart = 1.0;
    const QString name = format[QLatin1String("format_name")].toString().section(u',', 0, 0);
    const double start = format[QLatin1String("start_time")].toString().toDouble();
    return headers.contains(name) && start <= latestStart
               ? sensibleMs(format[QLatin1String("duration")].toString().toDouble())
               : 0;
}

// Older ffprobes write the angle as a tag, clockwise; newer ones as side data, counter-clockwise.
double rotation(const QJsonObject &stream)
{
    const QJsonObject tags = stream[QLatin1String("tags")].toObject();
    const QJsonValue tag = tags.value(QLatin1String("rotate"));
    if (!tag.isUndefined())
        return tag.toString().toDouble();
    const QJsonArray sideData = stream[QLatin1String("side_data_list")].toArray();
    for (const QJsonValue &entry : sideData) {
        const QJsonValue angle = entry.toObject().value(QLatin1String("rotation"));
        if (angle.isDouble())
            return std::fmod(360.0 - angle.toDouble(), 360.0);
    }
    return 0.0;
}

QSharedPointer<VEncParam> readVideo(const QJsonObject &stream, int containerBitrate)
{
    auto video = QSharedPointer<VEncParam>::create();
    video->fourCC = codecName(stream);
    video->width = stream[QLatin1String("width")].toInt();
    video->height = stream[QLatin1String("height")].toInt();
    video->bitrate = kbitPerSecond(stream);
    if (video->bitrate == 0)
        video->bitrate = containerBitrate;
    video->frameRate = quotient(stream[QLatin1String("r_frame_rate")].toString());
    video->rotate = rotation(stream);
    const double pixelAspect =
        quotient(stream[QLatin1String("sample_aspect_ratio")].toString(), ':');
    if (pixelAspect > 0)
        video->pixelAspect = pixelAspect;
    return video;
}

QString knownName(const QJsonObject &stream, const char *key)
{
    const QString name = stream[QLatin1String(key)].toString();
    return name == QLatin1String("unknown") ? QString() : name;
}

PictureColours readColours(const QJsonObject &stream)
{
    PictureColours colours;
    colours.transfer = knownName(stream, "color_transfer");
    colours.primaries = knownName(stream, "color_primaries");
    colours.matrix = knownName(stream, "color_space");
    static const QRegularExpression plain(QStringLiteral("rgb|bgr|gbr|^pal8"));
    if (plain.match(stream[QLatin1String("pix_fmt")].toString()).hasMatch())
        colours.matrix = QStringLiteral("gbr");
    return colours;
}

bool isCover(const QJsonObject &stream)
{
    const QJsonObject disposition = stream[QLatin1String("disposition")].toObject();
    return disposition[QLatin1String("attached_pic")].toInt() != 0;
}

QSharedPointer<AEncParam> readAudio(const QJsonObject &stream)
{
    auto audio = QSharedPointer<AEncParam>::create();
    audio->fourCC = codecName(stream);
    audio->bitrate = kbitPerSecond(stream);
    audio->sampleRate = stream[QLatin1String("sample_rate")].toString().toInt();
    audio->channel = stream[QLatin1String("channels")].toInt();
    return audio;
}

} // namespace

void readProbeJson(const QJsonObject &document, MediaInfoData &data)
{
    const QJsonValue format = document[QLatin1String("format")];
    if (format.isObject()) {
        readFormat(format.toObject(), *data.format);
        data.content.toldMs = toldMs(format.toObject());
    } else {
        data.format.clear();
    }

    const int containerBitrate = data.format ? data.format->bitrate : 0;
    const QJsonArray streams = document[QLatin1String("streams")].toArray();
    for (const QJsonValue &value : streams) {
        const QJsonObject stream = value.toObject();
        const QString type = stream[QLatin1String("codec_type")].toString();
        // Only a picture that leads the file counts: covers of songs stand further back.
        if (type == QLatin1String("video") && stream[QLatin1String("index")].toInt() == 0) {
            data.video = readVideo(stream, containerBitrate);
            data.colours = readColours(stream);
        } else if (type == QLatin1String("audio")) {
            data.audios.append(readAudio(stream));
        } else if (isCover(stream)) {
            data.hasCover = true;
        } else if (type == QLatin1String("subtitle")) {
            // They may go on when the film is over, and the length is that of the longest.
            data.content.toldMs = 0;
        }
    }
    keepSensible(data);
}
