// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/toolpaths.h"

#include "platform/executable.h"
#include "platform/wordsize.h"

#include <QFileInfo>

namespace {

QString beside(const char *tail)
{
    return QFileInfo(executablePath()).path() + QLatin1String(tail);
}

} // namespace

QString ffmpegPath()
{
    static const QString path =
        beside(isWideSystem() ? "/module/ffmpeg/ffmpeg" : "/module/ffmpeg/x86/ffmpeg");
    return path;
}

QString ffprobePath()
{
    static const QString path = beside("/module/ffmpeg/ffprobe");
    return path;
}

QString kuxFfmpegPath()
{
    static const QString path = beside("/module/kux/ffmpeg");
    return path;
}

QString macPath()
{
    static const QString path = beside("/module/mac/mac");
    return path;
}

QString mediaReaderPath()
{
    static const QString path = beside("/module/mediainfo/mediareader");
    return path;
}

QString mplayerPath()
{
    static const QString path = beside("/module/mplayer/mplayer");
    return path;
}

QString playerPath()
{
    static const QString path = beside("/module/morplayer/morplayer");
    return path;
}

QString toolPath()
{
    static const QString path = beside("/module/ffmpeg/tool");
    return path;
}

QString tool2Path()
{
    static const QString path = beside("/module/ffmpeg/tool2");
    return path;
}
