// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/shottask.h"

#include "MediaKits/MediaInfo/shownpicture.h"
#include "MediaKits/MediaTasksManager/filterescape.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

const QString inputUrlKey = QStringLiteral("inputUrl");
const QString outputUrlKey = QStringLiteral("outputUrl");
const QString posKey = QStringLiteral("pos");
const QString widthKey = QStringLiteral("width");
const QString captionKey = QStringLiteral("caption");

// How far before the end the frames up to it are looked for, each of which is written, and by what
// the next try goes further.
constexpr int firstBackMs = 250;
constexpr int backFactor = 8;

// Of captions, in pixels and in parts of the font's size.
const QString captionFamily = QStringLiteral("Noto Sans CJK SC"); // one font has to do for a line
constexpr int captionFontPart = 20;                               // of the picture's width
constexpr int smallestFont = 11;
constexpr int largestFont = 40;
constexpr double lineHeight = 1.4;
constexpr double usualLetterWidth = 0.58;
constexpr int firstWideLetter = 0x1100; // from where on letters are about as wide as high

int captionFont(int width)
{
    return std::clamp(width / captionFontPart, smallestFont, largestFont);
}

// As many letters of both ends as are sure to have room.
QString fitted(const QString &text, int width)
{
    const double room = double(width) / captionFont(width);
    const auto widthOf = [](QChar c) {
        return c.unicode() < firstWideLetter ? usualLetterWidth : 1.0;
    };
    double whole = 0.0;
    for (const QChar c : text)
        whole += widthOf(c);
    if (whole <= room)
        return text;
    int head = 0;
    int tail = 0;
    for (double used = 1.0; head + tail < text.size();) {
        const bool takesHead = head <= tail;
        used += widthOf(takesHead ? text[head] : text[text.size() - 1 - tail]);
        if (used > room)
            break;
        ++(takesHead ? head : tail);
    }
    return text.left(head) + QChar(0x2026) + text.right(tail);
}

// 0 when it isn't known.
qint64 toldEndMs(const MediaInfoData &source)
{
    if (source.content.pictureEndMs > 0)
        return source.content.pictureEndMs;
    return source.format ? source.format->duration : 0;
}

} // namespace

ShotTask::ShotTask(const QVariantMap &shot, const QSharedPointer<MediaInfoData> &source)
    : FFmpegExTask(QString(), QString()),
      m_shot(shot),
      m_source(source),
      m_beginMs(shot.value(posKey).toInt())
{
    FFmpegExTask::setParam(new FFmpegExTaskParam(
        tree(shot.value(posKey).toInt(), option(QStringLiteral("-vframes"), QStringLiteral("1")))));
}

QSize ShotTask::pictureSize(const MediaInfoData *source, double scale)
{
    if (!source || !source->video || source->video->width <= 0 || source->video->height <= 0)
        return {};
    const QSizeF size = QSizeF(shownSize(*source->video)) * (scale > 0.0 ? scale : 1.0);
    return size.toSize().expandedTo({1, 1});
}

int ShotTask::captionHeight(int width, int lines)
{
    return qRound(captionFont(width) * lineHeight * lines) + captionFont(width) / 2;
}

QVariantMap ShotTask::qualityOption(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("jpg") ? option(QStringLiteral("-q:v"), QStringLiteral("2"))
                                          : QVariantMap();
}

void ShotTask::prepare()
{
    FFmpegExTask::prepare();
    tellSource(m_source);
}

// By itself ffmpeg scales the pixels that are stored, whatever their shape, and takes a size of
// less than a pixel for that of the source.
QString ShotTask::sizeFilter() const
{
    const QVariant width = m_shot.value(widthKey);
    const double scale = double(m_shot.value(QStringLiteral("scale")).toFloat());
    QSize size = pictureSize(m_source.data(), width.isValid() ? 1.0 : scale);
    if (width.isValid() && !size.isEmpty())
        size = QSize(width.toInt(), qRound(double(size.height()) * width.toInt() / size.width()))
                   .expandedTo({1, 1});
    const bool isPlain = size.isEmpty() || (turnedPixelAspect(*m_source->video) == 1.0 &&
                                            std::min(size.width(), size.height()) > 1);
    if (!isPlain)
        return QStringLiteral("scale=%1:%2,setsar=1").arg(size.width()).arg(size.height());
    return width.isValid() ? QStringLiteral("scale=%1:-1").arg(width.toInt())
                           : QStringLiteral("scale=iw*%1:-1").arg(scale > 0.0 ? scale : 1.0);
}

QString ShotTask::captionFilters() const
{
    const QStringList lines = m_shot.value(captionKey).toStringList();
    const QSize size =
        pictureSize(m_source.data(), double(m_shot.value(QStringLiteral("scale")).toFloat()));
    if (lines.isEmpty() || size.isEmpty())
        return {};
    const int font = captionFont(size.width());
    QString filters =
        QStringLiteral(",pad=iw:ih+%1:0:0:white").arg(captionHeight(size.width(), lines.size()));
    for (int i = 0; i < lines.size(); ++i) {
        const int y = size.height() + font / 3 + qRound(font * lineHeight * i);
        filters += QStringLiteral(",drawtext=font=%1:fontsize=%2:fontcolor=0x333333:"
                                  "x=(w-text_w)/2:y=%3+(%2-ascent):text=%4")
                       .arg(escapeDrawtextText(captionFamily), QString::number(font),
                            QString::number(y), escapeLiteralText(fitted(lines[i], size.width())));
    }
    return filters;
}

QString ShotTask::filterText() const
{
    const QString watermark = m_shot.value(QStringLiteral("watermark")).toString();
    const QString caption = captionFilters();
    if (watermark.isEmpty())
        return caption.isEmpty() ? sizeFilter()
                                 : QLatin1Char('"') + sizeFilter() + caption + QLatin1Char('"');
    return QStringLiteral("\"movie='%1' [wm];[in][wm]overlay=(main_w-overlay_w)/2:"
                          "(main_h-overlay_h)/2,%2[out]\"")
        .arg(quoteFilterPath(watermark), sizeFilter() + caption);
}

// A moment is told to the ms: six digits would miss frames of a film of more than a quarter of an
// hour.
QVariantMap ShotTask::tree(int beginMs, const QVariantMap &taken) const
{
    constexpr int digits = 10;
    constexpr double secondMs = 1000.0;
    const QString seconds = QString::number(beginMs / secondMs, 'g', digits);
    const QVariantMap input{
        {inputUrlKey, m_shot.value(inputUrlKey)},
        {QStringLiteral("options"), QVariantList{option(QStringLiteral("-ss"), seconds)}}};
    const QString target = m_shot.value(outputUrlKey).toString();
    QVariantList options{taken, option(QStringLiteral("-vf"), filterText())};
    const QVariantMap quality = qualityOption(target);
    if (!quality.isEmpty())
        options += quality;
    return {{QStringLiteral("input"), QVariantMap{{QStringLiteral("inputs"), QVariantList{input}}}},
            {QStringLiteral("output"),
             QVariantMap{{outputUrlKey, target}, {QStringLiteral("options"), options}}}};
}

QVariantMap ShotTask::endTree(const QString &inputUrl)
{
    const QVariantList options{option(QStringLiteral("-map"), QStringLiteral("0:V:0")),
                               option(QStringLiteral("-c"), QStringLiteral("copy")),
                               option(QStringLiteral("-f"), QStringLiteral("null"))};
    const QVariantMap input{{inputUrlKey, inputUrl}};
    return {{QStringLiteral("input"), QVariantMap{{QStringLiteral("inputs"), QVariantList{input}}}},
            {QStringLiteral("output"), QVariantMap{{outputUrlKey, QStringLiteral("-")},
                                                   {QStringLiteral("options"), options}}}};
}

// Each frame replaces the picture of the frame before.
void ShotTask::searchFrom(int beginMs)
{
    m_beginMs = beginMs;
    FFmpegExTask::setParam(new FFmpegExTaskParam(
        tree(beginMs, option(QStringLiteral("-update"), QStringLiteral("1")))));
}

void ShotTask::measureEnd()
{
    m_isMeasuring = true;
    m_isMeasured = true;
    FFmpegExTask::setParam(new FFmpegExTaskParam(endTree(m_shot.value(inputUrlKey).toString())));
}

void ShotTask::setEnd(qint64 ms)
{
    const int pos = m_shot.value(posKey).toInt();
    m_endMs = ms > 0 ? int(std::min<qint64>(ms, pos)) : pos;
    m_backMs = firstBackMs;
}

// From a moment behind the last frame ffmpeg makes no picture and ends well. Where the source says
// that it ends there may be none either, as sound may go on for long.
bool ShotTask::goesOn(bool endedWell)
{
    const bool hasMeasured = std::exchange(m_isMeasuring, false);
    const bool isThere = QFileInfo(m_shot.value(outputUrlKey).toString()).size() > 0;
    if (!hasMeasured && (!endedWell || isThere || m_beginMs <= 0))
        return false;
    const qint64 toldMs = m_source ? toldEndMs(*m_source) : 0;
    if (hasMeasured) {
        setEnd(account().writtenMs);
    } else if (m_endMs == 0 && toldMs > 0) {
        setEnd(toldMs);
    } else if (!m_isMeasured) {
        measureEnd();
        return true;
    } else {
        m_backMs *= backFactor;
    }
    searchFrom(std::max(m_endMs - m_backMs, 0));
    return true;
}
