// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compresscontainer.h"

namespace {

struct ContainerRow
{
    const char *source;
    const char *result;
    const char *videoLabel;
    const char *audioLabel;
};

// Suffixes that can't be written, or not with what ffmpeg takes by itself.
const ContainerRow rows[] = {
    {"divx", "avi", "", ""},
    {"dat", "mpg", "", ""},
    {"vro", "mpg", "", ""},
    // ffmpeg's encoder for it takes pictures of sixteens of pixels only.
    {"rm", "mp4", "", ""},
    {"rmvb", "mp4", "", ""},
    {"mtv", "mp4", "", ""},
    // Under this suffix ffmpeg writes sound alone.
    {"mka", "mkv", "", ""},
    // Of itself ffmpeg takes H.263, which has five sizes only, and a speech codec.
    {"3gp", "3gp", "H264", "AAC"},
    {"3g2", "3g2", "H264", "AAC"},
};

} // namespace

CompressContainer compressContainer(const QString &sourceSuffix)
{
    const QString suffix = sourceSuffix.toLower();
    for (const ContainerRow &row : rows) {
        if (suffix == QLatin1String(row.source))
            return {QLatin1String(row.result), QLatin1String(row.videoLabel),
                    QLatin1String(row.audioLabel)};
    }
    return {suffix, {}, {}};
}

QSharedPointer<EncParam> withEncodersOf(const CompressContainer &container, const EncParam &preset)
{
    const auto named = QSharedPointer<EncParam>::create(preset);
    named->video = QSharedPointer<VEncParam>::create(*preset.video);
    named->video->fourCC = container.videoLabel;
    if (container.audioLabel.isEmpty())
        return named;
    named->audio = preset.audio ? QSharedPointer<AEncParam>::create(*preset.audio)
                                : QSharedPointer<AEncParam>::create();
    named->audio->fourCC = container.audioLabel;
    return named;
}
