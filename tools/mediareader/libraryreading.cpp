// SPDX-License-Identifier: MIT
#include "mediareader/libraryreading.h"

#include "mediareader/colournames.h"
#include "mediareader/contentreader.h"
#include "mediareader/openedfile.h"

namespace {

constexpr MediaInfo_stream_C general = OpenedFile::general;
constexpr MediaInfo_stream_C picture = OpenedFile::picture;
constexpr MediaInfo_stream_C sound = OpenedFile::sound;

QSharedPointer<AEncParam> readAudio(const OpenedFile &file, int stream)
{
    auto audio = QSharedPointer<AEncParam>::create();
    audio->fourCC = file.text(sound, stream, L"Format");
    audio->channel = file.number(sound, stream, L"Channel(s)");
    audio->sampleRate = file.number(sound, stream, L"SamplingRate");
    audio->bitrate = file.number(sound, stream, L"BitRate") / 1000;
    return audio;
}

QSharedPointer<VEncParam> readVideo(const OpenedFile &file)
{
    auto video = QSharedPointer<VEncParam>::create();
    video->fourCC = file.text(picture, 0, L"Format");
    video->bitrate = file.number(picture, 0, L"BitRate") / 1000;
    video->frameRate = file.text(picture, 0, L"FrameRate").toDouble();
    video->width = file.number(picture, 0, L"Width");
    video->height = file.number(picture, 0, L"Height");
    video->rotate = file.text(picture, 0, L"Rotation").toDouble();
    const double pixelAspect = file.text(picture, 0, L"PixelAspectRatio").toDouble();
    if (pixelAspect > 0)
        video->pixelAspect = pixelAspect;
    return video;
}

PictureColours readColours(const OpenedFile &file)
{
    const auto named = [&file](const wchar_t *parameter) {
        return ffmpegColourName(file.text(picture, 0, parameter));
    };
    PictureColours colours;
    colours.transfer = named(L"transfer_characteristics");
    colours.primaries = named(L"colour_primaries");
    colours.matrix = named(L"matrix_coefficients");
    if (file.text(picture, 0, L"ColorSpace").startsWith(QLatin1String("RGB"))) {
        colours.matrix = QStringLiteral("gbr");
    } else if (file.text(picture, 0, L"Format") == QLatin1String("JPEG")) {
        // By definition, which the library leaves unsaid.
        colours.matrix = QStringLiteral("bt470bg");
    }
    return colours;
}

// Songs may also tell a picture's address; that is no picture.
bool hasCover(const OpenedFile &file)
{
    const QString mime = file.text(general, 0, L"Cover_Mime");
    return file.text(general, 0, L"Cover") == QLatin1String("Yes") &&
           (mime.isEmpty() || mime.startsWith(QLatin1String("image/"), Qt::CaseInsensitive));
}

} // namespace

QSharedPointer<MediaInfoData> readWithLibrary(const QString &path, ReadDepth depth)
{
    const OpenedFile file(path, depth == ReadDepth::Headers);
    auto data = QSharedPointer<MediaInfoData>::create();
    data->format = newFormatInfo(path);
    data->format->fileSize = file.wholeNumber(general, 0, L"FileSize");
    data->format->duration = file.wholeNumber(general, 0, L"Duration");
    data->format->streamCount = file.number(general, 0, L"StreamCount");
    if (data->format->streamCount < 1)
        return {};
    const int audioCount = file.number(sound, 0, L"StreamCount");
    for (int stream = 0; stream < audioCount; ++stream)
        data->audios.append(readAudio(file, stream));
    if (file.number(picture, 0, L"StreamCount") > 0) {
        data->video = readVideo(file);
        data->colours = readColours(file);
    }
    data->hasCover = hasCover(file);
    data->content = readContent(file, path, *data->format);
    return data;
}
