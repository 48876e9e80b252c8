// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/toolpaths.h"

#include "platform/executable.h"
#include "platform/wordsize.h"

#include <QFileInfo>

namespace {

QString beside(const char *tail)
{
    static const QString folder = QFileInfo(executablePath()).path();
    return folder + QLatin1String(tail);
}

} // namespace

QString ffmpegPath()
{
    return beside(isWideSystem() ? "/module/ffmpeg/ffmpeg" : "/module/ffmpeg/x86/ffmpeg");
}

QString ffprobePath()
{
    return beside("/module/ffmpeg/ffprobe");
}

QString kuxFfmpegPath()
{
    return beside("/module/kux/ffmpeg");
}

QString macPath()
{
    return beside("/module/mac/mac");
}

QString mediaReaderPath()
{
    return beside("/module/mediainfo/mediareader");
}

QString mplayerPath()
{
    return beside("/module/mplayer/mplayer");
}

QString playerPath()
{
    return beside("/module/morplayer/morplayer");
}

QString toolPath()
{
    return beside("/module/ffmpeg/tool");
}

QString tool2Path()
{
    return beside("/module/ffmpeg/tool2");
}
