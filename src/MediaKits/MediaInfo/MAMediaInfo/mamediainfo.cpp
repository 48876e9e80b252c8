// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"

#include <MediaInfoDLL/MediaInfoDLL_Static.h>

namespace {

// The library's numbers for kinds of streams.
constexpr MediaInfo_stream_C general = MediaInfo_Stream_General;
constexpr MediaInfo_stream_C picture = MediaInfo_Stream_Video;
constexpr MediaInfo_stream_C sound = MediaInfo_Stream_Audio;

// One opened file of the library.
class OpenedFile
{
public:
    explicit OpenedFile(const QString &path) : m_handle(MediaInfo_New())
    {
        MediaInfo_Open(m_handle, path.toStdWString().c_str());
    }
    ~OpenedFile() { MediaInfo_Delete(m_handle); }
    Q_DISABLE_COPY(OpenedFile)

    // Empty when the library knows no value.
    QString text(MediaInfo_stream_C kind, int stream, const wchar_t *parameter) const
    {
        return QString::fromWCharArray(MediaInfo_Get(m_handle, kind, size_t(stream), parameter,
                                                     MediaInfo_Info_Text, MediaInfo_Info_Name));
    }
    // The library writes some values with decimals, as the length of an MPEG transport stream.
    qint64 wholeNumber(MediaInfo_stream_C kind, int stream, const wchar_t *parameter) const
    {
        return qint64(text(kind, stream, parameter).toDouble());
    }
    int number(MediaInfo_stream_C kind, int stream, const wchar_t *parameter) const
    {
        return int(wholeNumber(kind, stream, parameter));
    }

private:
    void *m_handle;
};

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

} // namespace

void MAMediaInfo::start()
{
    m_mediaKind = NothingUsable;
    const OpenedFile file(path());
    auto data = QSharedPointer<MediaInfoData>::create();
    data->format = newFormat();
    data->format->fileSize = file.wholeNumber(general, 0, L"FileSize");
    data->format->duration = file.wholeNumber(general, 0, L"Duration");
    data->format->streamCount = file.number(general, 0, L"StreamCount");
    if (data->format->streamCount < 1) {
        emit error();
        return;
    }
    m_data = data;

    const int videoCount = file.number(picture, 0, L"StreamCount");
    const int audioCount = file.number(sound, 0, L"StreamCount");
    for (int stream = 0; stream < audioCount; ++stream) {
        m_mediaKind = AudioOnly;
        data->audios.append(readAudio(file, stream));
    }
    if (videoCount > 0) {
        m_mediaKind = HasVideo;
        data->video = readVideo(file);
    }
    emit got();
    emit finish();
}
