// SPDX-License-Identifier: MIT
#include "mediareader/contentreader.h"

#include "MediaKits/MediaInfo/Facts/sensiblefacts.h"
#include "mediareader/containerend.h"
#include "mediareader/openedfile.h"

#include <QStringList>

#include <algorithm>
#include <cstdlib>

namespace {

// Ends of streams that lie no further apart count as one.
constexpr qint64 sameEndMs = 1000;
constexpr double msPerSecond = 1000.0;

// Containers whose header states a length. The others are streams: readers look at their ends, or
// take the bytes and the rate of what they begin with.
bool statesLength(const QString &container)
{
    static const QStringList names{
        QStringLiteral("MPEG-4"), QStringLiteral("Matroska"),      QStringLiteral("WebM"),
        QStringLiteral("AVI"),    QStringLiteral("Windows Media"), QStringLiteral("Flash Video"),
        QStringLiteral("Wave"),   QStringLiteral("Wave64"),        QStringLiteral("AIFF"),
        QStringLiteral("AU"),     QStringLiteral("FLAC"),          QStringLiteral("MPEG Audio"),
        QStringLiteral("TTA"),    QStringLiteral("WavPack"),       QStringLiteral("Monkey's Audio"),
        QStringLiteral("CAF"),    QStringLiteral("RealMedia"),
    };
    return names.contains(container);
}

// Containers of which the library tells the length of what is there.
bool measuresLength(const QString &container)
{
    return container == QLatin1String("Wave") || container == QLatin1String("Flash Video");
}

bool isMatroska(const QString &container)
{
    return container == QLatin1String("Matroska") || container == QLatin1String("WebM");
}

// Containers that know the length of each stream.
bool statesStreams(const QString &container)
{
    return isMatroska(container) || container == QLatin1String("MPEG-4") ||
           container == QLatin1String("AVI");
}

// Reads one file; the questions that need its container's name.
class ContentReader
{
public:
    ContentReader(const OpenedFile &file, const MediaFormatInfo &format)
        : m_file(file), m_format(format), m_container(file.text(OpenedFile::general, 0, L"Format"))
    {
    }

    MediaContent read(const QString &path) const;

private:
    int count(MediaInfo_stream_C kind) const { return m_file.number(kind, 0, L"StreamCount"); }
    bool isFilled(MediaInfo_stream_C kind, int stream) const;
    qint64 endMs(MediaInfo_stream_C kind, int stream) const;
    QSize pictureSize() const;
    qint64 soundEndMs() const;
    void readHeader(MediaContent &content, const QString &path) const;
    void readEnds(MediaContent &content, int films, int sounds) const;
    bool isLengthOfAll(const MediaContent &content) const;

    const OpenedFile &m_file;
    const MediaFormatInfo &m_format;
    QString m_container;
};

bool ContentReader::isFilled(MediaInfo_stream_C kind, int stream) const
{
    const auto tells = [&](const wchar_t *parameter) {
        return m_file.wholeNumber(kind, stream, parameter) > 0;
    };
    return tells(L"Duration") || tells(L"StreamSize") ||
           tells(kind == OpenedFile::sound ? L"SamplingCount" : L"FrameCount");
}

qint64 ContentReader::endMs(MediaInfo_stream_C kind, int stream) const
{
    const qint64 lengthMs = m_file.wholeNumber(kind, stream, L"Duration");
    // Elsewhere the length counts from the file's beginning.
    return isMatroska(m_container) && lengthMs > 0
               ? lengthMs + m_file.wholeNumber(kind, stream, L"Delay")
               : lengthMs;
}

QSize ContentReader::pictureSize() const
{
    const MediaInfo_stream_C kind =
        count(OpenedFile::picture) > 0 ? OpenedFile::picture : OpenedFile::still;
    return {m_file.number(kind, 0, L"Width"), m_file.number(kind, 0, L"Height")};
}

qint64 ContentReader::soundEndMs() const
{
    const qint64 first = endMs(OpenedFile::sound, 0);
    for (int stream = 1; stream < count(OpenedFile::sound); ++stream) {
        if (std::abs(endMs(OpenedFile::sound, stream) - first) > sameEndMs)
            return 0;
    }
    return first;
}

// For the library, a size that a header leaves open is one that isn't reached.
void ContentReader::readHeader(MediaContent &content, const QString &path) const
{
    if (statesLength(m_container))
        content.toldMs = m_format.duration;
    const std::optional<qint64> toldSize = toldFileSize(path);
    const bool isTruncated =
        m_file.text(OpenedFile::general, 0, L"IsTruncated") == QLatin1String("Yes");
    content.isCutOff = toldSize ? *toldSize > m_format.fileSize : isTruncated;
    if (content.isCutOff && measuresLength(m_container))
        content.toldMs =
            sensibleMs(double(m_format.duration) / msPerSecond * double(toldSize.value_or(0)) /
                       double(std::max<qint64>(m_format.fileSize, 1)));
}

// Where Matroska leaves out how long the streams are, the library gives all of them the length of
// the file.
bool ContentReader::isLengthOfAll(const MediaContent &content) const
{
    const auto isWhole = [this](qint64 end) {
        return end == 0 || std::abs(end - m_format.duration) <= sameEndMs;
    };
    return !statesStreams(m_container) ||
           (isMatroska(m_container) && isWhole(content.pictureEndMs) &&
            isWhole(content.soundEndMs));
}

void ContentReader::readEnds(MediaContent &content, int films, int sounds) const
{
    if (statesStreams(m_container)) {
        content.pictureEndMs = films > 0 ? endMs(OpenedFile::picture, 0) : 0;
        content.soundEndMs = sounds > 0 ? soundEndMs() : 0;
    } else if (films == 0 && sounds == 1) {
        content.soundEndMs = content.toldMs;
    }
    // Subtitles may go on when the film is over.
    if (count(OpenedFile::subtitles) > 0 && isLengthOfAll(content)) {
        content.toldMs = 0;
        content.pictureEndMs = 0;
        content.soundEndMs = 0;
    }
}

MediaContent ContentReader::read(const QString &path) const
{
    MediaContent content;
    const int films = count(OpenedFile::picture);
    const int sounds = count(OpenedFile::sound);
    content.pictureSize = pictureSize();
    content.hasPicture = films > 0 ? isFilled(OpenedFile::picture, 0)
                                   : count(OpenedFile::still) > 0 && !content.pictureSize.isEmpty();
    for (int stream = 0; stream < sounds; ++stream)
        content.hasSound = content.hasSound || isFilled(OpenedFile::sound, stream);
    readHeader(content, path);
    readEnds(content, films, sounds);
    return content;
}

} // namespace

MediaContent readContent(const OpenedFile &file, const QString &path, const MediaFormatInfo &format)
{
    return ContentReader(file, format).read(path);
}
