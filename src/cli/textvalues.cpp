// SPDX-License-Identifier: MIT
#include "cli/textvalues.h"

#include "MediaKits/MediaTasksManager/readylook.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

std::optional<int> wholeMs(double seconds)
{
    const double ms = std::round(seconds * 1000.0);
    if (!(ms >= 0.0) || ms > std::numeric_limits<int>::max())
        return std::nullopt;
    return int(ms);
}

struct FloatField
{
    const char *key;
    float VideoBeautyParam::*field;
    double min;
    double max;
};

// The ranges that ffmpeg's eq, colorbalance, atempo and volume take.
const FloatField floatFields[] = {
    {"contrast", &VideoBeautyParam::contrast, -1000.0, 1000.0},
    {"brightness", &VideoBeautyParam::brightness, -1.0, 1.0},
    {"saturation", &VideoBeautyParam::saturation, 0.0, 3.0},
    {"red", &VideoBeautyParam::red, -1.0, 1.0},
    {"green", &VideoBeautyParam::green, -1.0, 1.0},
    {"blue", &VideoBeautyParam::blue, -1.0, 1.0},
    {"volume", &VideoBeautyParam::volume, 0.0, 100.0},
    {"speed", &VideoBeautyParam::speed, 0.5, 100.0},
};

// A factor of 0 counts as one that was never set; this one mutes as well.
constexpr float inaudible = 0.001F;

struct BoolField
{
    const char *key;
    bool VideoBeautyParam::*field;
};

const BoolField boolFields[] = {
    {"reverse", &VideoBeautyParam::reverse},
    {"vflip", &VideoBeautyParam::vflip},
    {"hflip", &VideoBeautyParam::hflip},
};

bool setLook(VideoBeautyParam &beauty, const QString &name)
{
    const QVector<ReadyLook> &looks = readyLooks();
    for (int i = 0; i < looks.size(); ++i) {
        if (looks[i].isEnabled && name == QString::fromUtf8(looks[i].name)) {
            applyReadyLook(i, beauty);
            return true;
        }
    }
    return false;
}

bool setField(VideoBeautyParam &beauty, const QString &key, const QString &value)
{
    if (key == QLatin1String("filter"))
        return setLook(beauty, value);
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber)
        return false;
    for (const FloatField &row : floatFields) {
        if (key == QLatin1String(row.key)) {
            beauty.*row.field = float(number);
            if (row.field == &VideoBeautyParam::volume && beauty.volume < inaudible)
                beauty.volume = inaudible;
            return number >= row.min && number <= row.max;
        }
    }
    for (const BoolField &row : boolFields) {
        if (key == QLatin1String(row.key)) {
            beauty.*row.field = value == QLatin1String("1");
            return value == QLatin1String("0") || value == QLatin1String("1");
        }
    }
    beauty.rotate = value.toInt(&isNumber);
    return key == QLatin1String("rotate") && isNumber && beauty.rotate >= -3 && beauty.rotate <= 3;
}

} // namespace

std::optional<int> parseTimeMs(const QString &text)
{
    static const QRegularExpression clock(
        QStringLiteral("^(\\d{1,3}):([0-5]\\d):([0-5]\\d(?:\\.\\d{1,3})?)$"));
    static const QRegularExpression plain(QStringLiteral("^\\d+(?:\\.\\d+)?$"));
    const QRegularExpressionMatch match = clock.match(text);
    if (match.hasMatch()) {
        return wholeMs(match.captured(1).toInt() * 3600.0 + match.captured(2).toInt() * 60.0 +
                       match.captured(3).toDouble());
    }
    if (plain.match(text).hasMatch())
        return wholeMs(text.toDouble());
    return std::nullopt;
}

std::optional<QVector<int>> parseTimesMs(const QString &text)
{
    QVector<int> times;
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString &part : parts) {
        const std::optional<int> time = parseTimeMs(part);
        if (!time)
            return std::nullopt;
        times += *time;
    }
    return times;
}

std::optional<CropBox> parseCropBox(const QString &text)
{
    static const QRegularExpression box(
        QStringLiteral("^(\\d{1,5}),(\\d{1,5}),(\\d{1,5}),(\\d{1,5})$"));
    const QRegularExpressionMatch match = box.match(text);
    const CropBox crop{match.captured(1).toInt(), match.captured(2).toInt(),
                       match.captured(3).toInt(), match.captured(4).toInt()};
    if (!match.hasMatch() || crop.width == 0 || crop.height == 0)
        return std::nullopt;
    return crop;
}

std::optional<QSize> parseGifSize(const QString &text)
{
    constexpr int leastSide = 10;
    constexpr int mostSide = 4000;
    static const QRegularExpression sides(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = sides.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const bool fits = std::min(size.width(), size.height()) >= leastSide &&
                      std::max(size.width(), size.height()) <= mostSide;
    return match.hasMatch() && fits ? std::make_optional(size) : std::nullopt;
}

std::optional<double> parseScale(const QString &text)
{
    constexpr double largest = 5.0;
    bool isNumber = false;
    const double scale = text.toDouble(&isNumber);
    return isNumber && scale >= 0.0 && scale <= largest ? std::make_optional(scale) : std::nullopt;
}

std::optional<QString> parsePictureFormat(const QString &text)
{
    const QStringList known{QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("bmp")};
    return known.contains(text.toLower()) ? std::make_optional(text.toLower()) : std::nullopt;
}

std::optional<VideoBeautyParam> parseBeauty(const QString &text)
{
    VideoBeautyParam beauty;
    const QStringList settings = text.split(QLatin1Char(','));
    for (const QString &setting : settings) {
        const int equals = setting.indexOf(QLatin1Char('='));
        if (equals < 1 || !setField(beauty, setting.left(equals), setting.mid(equals + 1)))
            return std::nullopt;
    }
    return beauty;
}

QStringList readyLookNames()
{
    QStringList names;
    for (const ReadyLook &look : readyLooks()) {
        if (look.isEnabled)
            names += QString::fromUtf8(look.name);
    }
    return names;
}

std::optional<quint32> parseWindow(const QString &text)
{
    bool isNumber = false;
    const quint32 window = text.toUInt(&isNumber, 0);
    return isNumber && window != 0 ? std::make_optional(window) : std::nullopt;
}

std::optional<int> parseSound(const QString &text)
{
    const QStringList words{QStringLiteral("none"), QStringLiteral("system"), QStringLiteral("mic"),
                            QStringLiteral("all")};
    const int flags = words.indexOf(text);
    return flags >= 0 ? std::make_optional(flags) : std::nullopt;
}
