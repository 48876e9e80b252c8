// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/Facts/factsstream.h"

#include "MediaKits/MediaInfo/Facts/sensiblefacts.h"

#include <QDataStream>
#include <QFile>
#include <QFileInfo>

namespace {

struct Write
{
    template<typename... Fields>
    void operator()(const Fields &...fields)
    {
        (stream << ... << fields);
    }
    QDataStream &stream;
};

struct Read
{
    template<typename... Fields>
    void operator()(Fields &...fields)
    {
        (stream >> ... >> fields);
    }
    QDataStream &stream;
};

// One order of the fields for both directions.

template<typename Pass>
void passFacts(Pass pass, MediaInfoData &info)
{
    MediaFormatInfo &format = *info.format;
    pass(format.formatName, format.duration, format.fileSize, format.bitrate, format.streamCount);
    MediaContent &content = info.content;
    pass(content.hasPicture, content.hasSound, content.pictureSize, content.pictureEndMs,
         content.soundEndMs, content.toldMs, content.isCutOff);
    pass(info.colours.transfer, info.colours.primaries, info.colours.matrix, info.hasCover);
}

template<typename Pass>
void passPicture(Pass pass, VEncParam &video)
{
    pass(video.fourCC, video.bitrate, video.frameRate, video.width, video.height, video.rotate,
         video.pixelAspect);
}

template<typename Pass>
void passSound(Pass pass, AEncParam &audio)
{
    pass(audio.fourCC, audio.channel, audio.sampleRate, audio.bitrate);
}

void write(QDataStream &stream, MediaInfoData info)
{
    const Write pass{stream};
    passFacts(pass, info);
    stream << !info.video.isNull() << quint32(info.audios.size());
    if (info.video)
        passPicture(pass, *info.video);
    for (const auto &audio : qAsConst(info.audios))
        passSound(pass, *audio);
}

QSharedPointer<MediaInfoData> read(QDataStream &stream)
{
    const Read pass{stream};
    auto info = QSharedPointer<MediaInfoData>::create();
    info->format = QSharedPointer<MediaFormatInfo>::create();
    passFacts(pass, *info);
    bool hasVideo = false;
    quint32 sounds = 0;
    stream >> hasVideo >> sounds;
    if (hasVideo) {
        info->video = QSharedPointer<VEncParam>::create();
        passPicture(pass, *info->video);
    }
    for (quint32 i = 0; i < sounds && stream.status() == QDataStream::Ok; ++i) {
        info->audios += QSharedPointer<AEncParam>::create();
        passSound(pass, *info->audios.last());
    }
    return info;
}

} // namespace

QByteArray packed(const ReadRequest &request)
{
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << quint8(request.depth) << QFile::encodeName(request.path);
    return message;
}

ReadRequest unpackedRequest(const QByteArray &message)
{
    QDataStream stream(message);
    quint8 depth = 0;
    QByteArray path;
    stream >> depth >> path;
    const bool isKnown = depth <= quint8(ReadDepth::Headers);
    return {QFile::decodeName(path), isKnown ? ReadDepth(depth) : ReadDepth::Streams};
}

QByteArray packed(const ReadAnswer &answer)
{
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << quint8(answer.outcome);
    if (answer.info)
        write(stream, *answer.info);
    return message;
}

ReadAnswer unpackedAnswer(const QByteArray &message)
{
    QDataStream stream(message);
    quint8 outcome = quint8(ReadOutcome::Failed);
    stream >> outcome;
    ReadAnswer answer{ReadOutcome(outcome), {}};
    if (answer.outcome == ReadOutcome::Read)
        answer.info = read(stream);
    const bool isWhole = stream.status() == QDataStream::Ok && stream.atEnd();
    if (!isWhole || answer.outcome > ReadOutcome::Failed)
        return {};
    if (answer.info)
        keepSensible(*answer.info);
    return answer;
}

QSharedPointer<MediaFormatInfo> newFormatInfo(const QString &path)
{
    auto format = QSharedPointer<MediaFormatInfo>::create();
    format->formatName = QFileInfo(path).suffix().toUpper();
    return format;
}
