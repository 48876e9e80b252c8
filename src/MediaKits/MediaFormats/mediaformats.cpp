// SPDX-License-Identifier: MIT
#include "MediaKits/MediaFormats/mediaformats.h"

#include "platform/undecodablenames.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace {
const char *const videoSuffixes =
    "swf wtv ogv mxf vro webm divx avi mp4 mpg mka mpeg vob 3gp 3g2 wmv asf rm rmvb dat mov flv "
    "f4v m4v mkv mtv";
const char *const specialVideoSuffixes = "qlv qsv kux";
const char *const audioSuffixes = "mp3 wav m4a wma aac flac ac3 m4r ape ogg";
const char *const allSuffixes =
    "png swf wtv ogv mxf vro webm divx avi mp4 mpg mka mpeg vob 3gp 3g2 wmv asf rm rmvb dat mov "
    "flv f4v dvr-ms mp3 wav m4v mkv mod tod m4a m4b m4p m4r wma mts m2ts m2t tp trp ts aac ac3 "
    "ap3 ogg aif aiff mpa flac au cue dv nsv ra ram h.264 aa aax amr tivo mp2 ape caf mtv qlv qsv "
    "kux";

struct ClassRow
{
    FormatClass flag;
    const QStringList &(*suffixes)();
    const char *title;
};

// In the order in which the classes stand in patterns and filters.
const ClassRow classRows[] = {
    {VideoFormatClass, videoFormats, QT_TRANSLATE_NOOP("MediaFormats", "视频文件")},
    {SpecialVideoFormatClass, specialVideoFormats,
     QT_TRANSLATE_NOOP("MediaFormats", "专有视频文件")},
    {AudioFormatClass, audioFormats, QT_TRANSLATE_NOOP("MediaFormats", "音频文件")},
};
const char *const mediaTitle = QT_TRANSLATE_NOOP("MediaFormats", "多媒体文件");
const char *const allTitle = QT_TRANSLATE_NOOP("MediaFormats", "所有格式");
constexpr int allClasses = VideoFormatClass | SpecialVideoFormatClass | AudioFormatClass;

QStringList suffixList(const char *suffixes)
{
    return QString::fromLatin1(suffixes).split(QLatin1Char(' '));
}

QStringList suffixesOf(int flags)
{
    QStringList suffixes;
    for (const ClassRow &row : classRows) {
        if (flags & row.flag)
            suffixes += row.suffixes();
    }
    return suffixes;
}

QStringList patternsOf(const QStringList &suffixes)
{
    QStringList patterns;
    for (const QString &suffix : suffixes)
        patterns += QStringLiteral("*.") + suffix;
    return patterns;
}

// Each pattern is followed by a blank, the last one too.
QString filterEntry(const char *title, const QStringList &suffixes)
{
    QString patterns;
    for (const QString &pattern : patternsOf(suffixes))
        patterns += pattern + QLatin1Char(' ');
    return QStringLiteral("%1(%2)").arg(QCoreApplication::translate("MediaFormats", title),
                                        patterns);
}
} // namespace

const QStringList &videoFormats()
{
    static const QStringList formats = suffixList(videoSuffixes);
    return formats;
}

const QStringList &specialVideoFormats()
{
    static const QStringList formats = suffixList(specialVideoSuffixes);
    return formats;
}

const QStringList &audioFormats()
{
    static const QStringList formats = suffixList(audioSuffixes);
    return formats;
}

const QStringList &videoAndSpecialFormats()
{
    static const QStringList formats = videoFormats() + specialVideoFormats();
    return formats;
}

const QStringList &videoAndAudioFormats()
{
    static const QStringList formats = videoFormats() + audioFormats();
    return formats;
}

const QStringList &allFormats()
{
    static const QStringList formats = suffixList(allSuffixes);
    return formats;
}

bool isSpecialFormat(const QString &suffix)
{
    return specialVideoFormats().contains(suffix.toLower());
}

bool isAudioFormat(const QString &suffix)
{
    return audioFormats().contains(suffix.toLower());
}

bool isVideoFormat(const QString &suffix)
{
    return videoAndSpecialFormats().contains(suffix.toLower());
}

bool isGifFormat(const QString &suffix)
{
    return suffix.compare(QLatin1String("gif"), Qt::CaseInsensitive) == 0;
}

MediaClass mediaClassOf(const QString &suffix)
{
    if (isAudioFormat(suffix))
        return AudioMediaClass;
    return isVideoFormat(suffix) ? VideoMediaClass : UnknownMediaClass;
}

QStringList suffixPatterns(int flags)
{
    return patternsOf(suffixesOf(flags));
}

QString fileDialogFilter(int flags)
{
    QStringList entries;
    if ((flags & allClasses) == allClasses)
        entries += filterEntry(allTitle, allFormats());
    for (const ClassRow &row : classRows) {
        if (flags & row.flag)
            entries += filterEntry(row.title, row.suffixes());
    }
    entries += filterEntry(mediaTitle, suffixesOf(flags));
    return entries.join(QLatin1String(";;"));
}

bool acceptsUrls(const QList<QUrl> &urls, const QStringList &suffixes)
{
    return std::any_of(urls.begin(), urls.end(), [&suffixes](const QUrl &url) {
        const QFileInfo file(url.toLocalFile());
        // Why one can't be opened because of its name is told when it has been dropped.
        const bool isThere = file.isFile() || isUndecodable(file.filePath());
        return url.isLocalFile() && isThere && suffixes.contains(file.suffix().toLower());
    });
}
