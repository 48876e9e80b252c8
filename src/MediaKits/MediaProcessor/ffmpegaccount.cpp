// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegaccount.h"

#include "MediaKits/MediaProcessor/ffmpegreport.h"

#include <QRegularExpression>
#include <QTime>

#include <algorithm>

namespace {

// A report without line ends is no report.
constexpr int longestLine = 64 * 1024;
constexpr int usPerMs = 1000;
// Beyond it, the header's length may count from another zero than the pictures do.
constexpr double latestStart = 1.0;
// Tags and other junk between the frames of a bare stream give so many errors, and nothing of the
// sound is lost with them.
constexpr int harmlessErrors = 3;
// A recording or a download that was stopped ends within a picture and within a sound frame.
constexpr int brokenOffFrames = 2;

// The demuxers of bare sound streams.
bool isRawSoundFormat(const QByteArray &name)
{
    static const QByteArray names[] = {"mp3", "aac", "ac3", "eac3", "dts", "loas", "truehd", "mlp"};
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// The containers that are cut anywhere, since they have no index.
bool isRecordingFormat(const QByteArray &name)
{
    return name == "mpegts" || name == "mpeg";
}

} // namespace

void FFmpegAccountReader::feedReport(const QByteArray &bytes)
{
    m_rest += bytes;
    int begin = 0;
    for (int i = 0; i < m_rest.size(); ++i) {
        // The running status ends in a carriage return, and a message may follow it.
        if (m_rest[i] != '\n' && m_rest[i] != '\r')
            continue;
        readLine(m_rest.mid(begin, i - begin));
        begin = i + 1;
    }
    m_rest.remove(0, begin);
    if (m_rest.size() > longestLine)
        m_rest.clear();
}

void FFmpegAccountReader::feedPosition(qint64 positionUs)
{
    m_account.writtenMs = std::max(m_account.writtenMs, positionUs / usPerMs);
}

FFmpegAccount FFmpegAccountReader::account() const
{
    FFmpegAccount account = m_account;
    const bool isHarmless = m_isRawSound && m_decodingErrors <= harmlessErrors;
    account.damagedPlaces = m_corruptFrames + (isHarmless ? 0 : m_decodingErrors);
    if (m_isRecording && account.damagedPlaces <= brokenOffFrames)
        account.damagedPlaces = 0;
    return account;
}

void FFmpegAccountReader::readLine(const QByteArray &line)
{
    static const QByteArray repeated("    Last message repeated ");
    static const QRegularExpression sizes(QStringLiteral("^video:(\\d+)kB audio:(\\d+)kB "));
    if (line.isEmpty())
        return;
    if (line.startsWith(repeated)) {
        count(m_last, line.mid(repeated.size()).split(' ').first().toInt());
        return;
    }
    m_last = Damage::None;
    if (!m_isBegun)
        readInput(line);
    // Packets that are said to be corrupt aren't counted: joined recordings and files of an open
    // length have one at each seam and at the end. Decoders tell what they make of a broken one.
    if (line.startsWith("Error while decoding stream #"))
        m_last = Damage::DecodingError;
    else if (line.contains(": corrupt decoded frame in stream ") || line.endsWith("CRC mismatch!"))
        m_last = Damage::CorruptFrame;
    else if (line.endsWith(": partial file") || line.contains("] File ended prematurely"))
        m_account.inputCutOff = true;
    else if (m_isBegun && tellsUnreadableInput(QString::fromLatin1(line)))
        m_account.inputUnreadable = true;
    else if (line.startsWith("video:")) {
        const QRegularExpressionMatch match = sizes.match(QString::fromLatin1(line));
        if (match.hasMatch()) {
            m_account.pictureKb = match.captured(1).toInt();
            m_account.soundKb = match.captured(2).toInt();
        }
    }
    count(m_last, 1);
}

// What stands above the first output. Errors there come from a stream that begins in the middle of
// its first picture, as a recording from the air does.
void FFmpegAccountReader::readInput(const QByteArray &line)
{
    static const QRegularExpression length(
        QStringLiteral("^  Duration: (\\d+:\\d\\d:\\d\\d\\.\\d\\d)(?:, start: (-?[0-9.]+))?"));
    readCover(line);
    if (line.startsWith("Output #0, "))
        m_isBegun = true;
    else if (line.contains("] Estimating duration from bitrate"))
        m_lengthIsGuess = m_lengthIsGuess || m_account.inputMs == 0;
    else if (line.startsWith("Input #0, "))
        setFormat(line.mid(10).split(',').first());
    else if (line.startsWith("  Duration: ") && m_account.inputMs == 0 && !m_lengthIsGuess) {
        const QRegularExpressionMatch match = length.match(QString::fromLatin1(line));
        // The text counts hundredths; a third digit makes them milliseconds.
        const QTime time =
            QTime::fromString(match.captured(1) + QLatin1Char('0'), QStringLiteral("hh:mm:ss.zzz"));
        if (time.isValid() && match.captured(2).toDouble() <= latestStart)
            m_account.inputMs = QTime(0, 0).msecsTo(time);
    }
}

// A song has one cover that is used, its first.
void FFmpegAccountReader::readCover(const QByteArray &line)
{
    static const QRegularExpression cover(
        QStringLiteral("^  Stream #(0:\\d+)[^:]*: Video: .*\\(attached pic\\)$"));
    const QRegularExpressionMatch match = cover.match(QString::fromLatin1(line));
    if (match.hasMatch() && m_coverError.isEmpty())
        m_coverError = "Error while decoding stream #" + match.captured(1).toLatin1() + ':';
    else if (!m_coverError.isEmpty() && line.startsWith(m_coverError))
        m_account.coverLost = true;
}

void FFmpegAccountReader::setFormat(const QByteArray &name)
{
    m_isRawSound = isRawSoundFormat(name);
    m_isRecording = isRecordingFormat(name);
}

void FFmpegAccountReader::count(Damage damage, int times)
{
    if (!m_isBegun)
        return;
    const auto add = [times](int &sum) {
        constexpr int most = 1000000;
        sum = std::min(sum + qBound(0, times, most), most);
    };
    if (damage == Damage::CorruptFrame)
        add(m_corruptFrames);
    else if (damage == Damage::DecodingError)
        add(m_decodingErrors);
}
