// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <limits>

#include <MediaInfoDLL/MediaInfoDLL_Static.h>

/// One file opened by the MediaInfo library.
class OpenedFile
{
public:
    // The library's numbers for kinds of streams.
    static constexpr MediaInfo_stream_C general = MediaInfo_Stream_General;
    static constexpr MediaInfo_stream_C picture = MediaInfo_Stream_Video;
    static constexpr MediaInfo_stream_C sound = MediaInfo_Stream_Audio;
    static constexpr MediaInfo_stream_C still = MediaInfo_Stream_Image;
    static constexpr MediaInfo_stream_C subtitles = MediaInfo_Stream_Text;

    /// @param headersOnly looks no further into the streams than the container's headers make
    ///        needful; a third of the time
    explicit OpenedFile(const QString &path, bool headersOnly = false) : m_handle(MediaInfo_New())
    {
        if (headersOnly)
            MediaInfo_Option(m_handle, L"File_ParseSpeed", L"0");
        MediaInfo_Open(m_handle, path.toStdWString().c_str());
    }
    ~OpenedFile() { MediaInfo_Delete(m_handle); }
    Q_DISABLE_COPY(OpenedFile)

    /// Empty when the library knows no value.
    QString text(MediaInfo_stream_C kind, int stream, const wchar_t *parameter) const
    {
        return QString::fromWCharArray(MediaInfo_Get(m_handle, kind, size_t(stream), parameter,
                                                     MediaInfo_Info_Text, MediaInfo_Info_Name));
    }
    /// The library writes some values with decimals, as the length of an MPEG transport stream.
    qint64 wholeNumber(MediaInfo_stream_C kind, int stream, const wchar_t *parameter) const
    {
        constexpr double most = 1e18;
        return qint64(qBound(-most, text(kind, stream, parameter).toDouble(), most));
    }
    int number(MediaInfo_stream_C kind, int stream, const wchar_t *parameter) const
    {
        constexpr qint64 most = std::numeric_limits<int>::max();
        return int(qBound(-most, wholeNumber(kind, stream, parameter), most));
    }

private:
    void *m_handle;
};
