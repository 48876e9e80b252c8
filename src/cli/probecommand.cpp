// SPDX-License-Identifier: MIT
#include "cli/probecommand.h"

#include "cli/output.h"
#include "cli/recordjson.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaInfo/FFMediaInfo/ffmediainfo.h"
#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <limits>

namespace {

MediaInfoBase *createReader(const QString &path, ProbeReader reader, QObject *parent)
{
    switch (reader) {
    case ProbeReader::FFProbe:
        return new FFMediaInfo(path, parent);
    case ProbeReader::MediaInfo:
        return new MAMediaInfo(path, parent);
    case ProbeReader::Auto:
        break;
    }
    return createMediaInfo(QFileInfo(path).suffix().toUpper(), path, parent);
}

// A header may tell more ms than an int has room for.
int clampedMs(qint64 ms)
{
    return int(std::min<qint64>(ms, std::numeric_limits<int>::max()));
}

QJsonValue formatJson(const MediaFormatInfo *format)
{
    if (!format)
        return QJsonValue::Null;
    return QJsonObject{
        {QStringLiteral("formatName"), format->formatName},
        {QStringLiteral("duration"), format->duration},
        {QStringLiteral("fileSize"), format->fileSize},
        {QStringLiteral("bitrate"), format->bitrate},
        {QStringLiteral("streamCount"), format->streamCount},
    };
}

QJsonValue videoJson(const VEncParam *video)
{
    if (!video)
        return QJsonValue::Null;
    QJsonObject fields = videoFields(*video);
    fields.insert(QStringLiteral("rotate"), video->rotate);
    return fields;
}

QJsonObject infoJson(const QString &path, const MediaInfoData &info)
{
    QJsonArray audios;
    for (const auto &audio : info.audios)
        audios.append(audioFields(*audio));
    return {
        {QStringLiteral("file"), path},
        {QStringLiteral("format"), formatJson(info.format.data())},
        {QStringLiteral("video"), videoJson(info.video.data())},
        {QStringLiteral("audios"), audios},
    };
}

QString infoText(const QString &path, const MediaInfoData &info)
{
    QStringList lines{path};
    lines += QStringLiteral("  %1  %2  %3")
                 .arg(info.format->formatName, timeText(clampedMs(info.format->duration)),
                      sizeText(info.format->fileSize));
    if (info.video) {
        lines += QStringLiteral("  %1  %2x%3  %4 fps  %5 kbit/s")
                     .arg(info.video->fourCC)
                     .arg(info.video->width)
                     .arg(info.video->height)
                     .arg(info.video->frameRate)
                     .arg(info.video->bitrate);
    }
    for (const auto &audio : info.audios) {
        lines += QStringLiteral("  %1  %2 ch  %3 Hz  %4 kbit/s")
                     .arg(audio->fourCC)
                     .arg(audio->channel)
                     .arg(audio->sampleRate)
                     .arg(audio->bitrate);
    }
    return lines.join(QLatin1Char('\n'));
}

// @param ready called once, maybe before this returns, with the result or null
void probeFile(const QString &path, ProbeReader reader, QObject *parent,
               const std::function<void(const QSharedPointer<MediaInfoData> &)> &ready)
{
    MediaInfoBase *info = createReader(path, reader, parent);
    QObject::connect(info, &MediaInfoBase::got, info, [info, ready] {
        const auto data = info->mediaInfo();
        info->deleteLater();
        ready(data && data->format ? data : QSharedPointer<MediaInfoData>());
    });
    QObject::connect(info, &MediaInfoBase::error, info, [info, ready] {
        info->deleteLater();
        ready({});
    });
    info->start();
}

QSharedPointer<MediaInfoData> probeAndWait(const QString &path, ProbeReader reader)
{
    QObject owner;
    QEventLoop loop;
    QSharedPointer<MediaInfoData> result;
    bool done = false;
    probeFile(path, reader, &owner, [&](const QSharedPointer<MediaInfoData> &info) {
        result = info;
        done = true;
        loop.quit();
    });
    if (!done)
        loop.exec();
    return result;
}

} // namespace

void probeSource(const QString &file, QObject *owner,
                 const std::function<void(const QSharedPointer<MediaInfoData> &)> &ready)
{
    if (inputProblem(file).isEmpty())
        probeFile(file, ProbeReader::Auto, owner, ready);
    else
        ready({});
}

int sourceDurationMs(const QSharedPointer<MediaInfoData> &info)
{
    return info ? clampedMs(info->format->duration) : 0;
}

int probeFiles(const CommandLine &line)
{
    QJsonArray array;
    int exitCode = 0;
    for (const QString &path : line.files) {
        QString problem = inputProblem(path);
        const auto info =
            problem.isEmpty() ? probeAndWait(path, line.reader) : QSharedPointer<MediaInfoData>();
        if (problem.isEmpty() && (!info || (!info->video && info->audios.isEmpty())))
            problem = QCoreApplication::translate("probe", "没有可以识别的音视频内容");
        if (!problem.isEmpty()) {
            printMessage(path + QStringLiteral("：") + problem);
            exitCode = 1;
        } else if (line.json) {
            array.append(infoJson(path, *info));
        } else {
            printLine(infoText(path, *info));
        }
    }
    if (line.json)
        printJson(QJsonDocument(array));
    return exitCode;
}
