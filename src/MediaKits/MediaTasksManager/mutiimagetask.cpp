// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mutiimagetask.h"

#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaTasksManager/ffmpegextask.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"
#include "MediaKits/MediaTasksManager/shottask.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr double stepWeight = 0.1;
constexpr double shotWeight = 10.0;
constexpr double stitchWeightEach = 0.5;
constexpr int fewestStitched = 2;
constexpr int captionLines = 2;
// Between the pictures of a sheet, as a part of their width.
constexpr int sheetGapPart = 40;
constexpr int smallestGap = 4;

// What the encoder of JPEG takes, and what ffmpeg takes of any picture.
constexpr int longestJpegSide = 65500;
constexpr qint64 mostPixels = 268'000'000;

const QString inputUrlKey = QStringLiteral("inputUrl");
const QString outputUrlKey = QStringLiteral("outputUrl");
const QString captionKey = QStringLiteral("caption");

using Info = QSharedPointer<MediaInfoData>;

// What is laid together isn't to lose twice.
QString losslessFormat(const QString &format)
{
    return format == QLatin1String("jpg") ? QStringLiteral("png") : format;
}

int linesOf(int count, int columns)
{
    return (count + columns - 1) / columns;
}

int sheetGap(int width)
{
    return std::max(width / sheetGapPart, smallestGap);
}

// A moment with what all shots have, which counts. Of a caption that is the name of the file.
QVariantMap wholeShot(QVariantMap moment, const QVariantMap &common)
{
    for (auto key = common.begin(); key != common.end(); ++key)
        moment.insert(key.key(), key.value());
    if (common.contains(captionKey)) {
        moment.insert(captionKey,
                      QStringList{common.value(captionKey).toString(),
                                  timeText(moment.value(QStringLiteral("pos")).toInt())});
    }
    return moment;
}

// A picture is looked at for its being there, and for nothing else.
ResultVerdict checkPicture(const QVector<QSharedPointer<MediaInfoData>> &read)
{
    ExpectedResult picture;
    picture.hasPicture = true;
    return checkResult(picture, read.first().data(), {});
}

} // namespace

QVariantMap MutiImageTask::stitchTree(const QVariantMap &stitch)
{
    QString tile = QStringLiteral("tile=%1x%2")
                       .arg(stitch.value(QStringLiteral("column")).toString(),
                            stitch.value(QStringLiteral("line")).toString());
    if (const int gap = stitch.value(QStringLiteral("gap")).toInt(); gap > 0)
        tile += QStringLiteral(":padding=%1:margin=%1:color=white").arg(gap);
    QVariantList options{FFmpegExTask::option(QStringLiteral("-vf"), tile)};
    const QVariantMap quality = ShotTask::qualityOption(stitch.value(outputUrlKey).toString());
    if (!quality.isEmpty())
        options += quality;
    const QVariantMap output{{outputUrlKey, stitch.value(outputUrlKey)},
                             {QStringLiteral("options"), options}};
    const QVariantMap input{{inputUrlKey, stitch.value(inputUrlKey)}};
    return {{QStringLiteral("input"), QVariantMap{{QStringLiteral("inputs"), QVariantList{input}}}},
            {QStringLiteral("output"), output}};
}

QString MutiImageTask::text(const char *key) const
{
    return m_param->map.value(QLatin1String(key)).toString();
}

QString MutiImageTask::subject() const
{
    return QDir::toNativeSeparators(text("inputUrl"));
}

QString MutiImageTask::problem() const
{
    const QString input = inputProblem(text("inputUrl"));
    if (!input.isEmpty())
        return input;
    const QString name = isOnePicture() ? text("baseName") : numberedName(imageList().size());
    const QString output = outputProblem(outputPath(text("outputDir"), name, text("format")));
    return output.isEmpty() ? sizeProblem() : output;
}

// Every picture would be taken before the tool refuses what they add up to.
QString MutiImageTask::sizeProblem() const
{
    if (!isOnePicture())
        return {};
    const Info source = m_param->map.value(QStringLiteral("sourceInfo")).value<Info>();
    QSize part = ShotTask::pictureSize(source.data(), onePictureScale());
    if (part.isEmpty())
        return {};
    const int inRow = std::max(columns(), 1);
    if (columns() > 0)
        part += QSize(0, ShotTask::captionHeight(part.width(), captionLines));
    const int lines = linesOf(imageList().size(), inRow);
    const int gap = columns() > 0 ? sheetGap(part.width()) : 0;
    const qint64 width = qint64(part.width()) * inRow + qint64(gap) * (inRow + 1);
    const qint64 height = qint64(part.height()) * lines + qint64(gap) * (lines + 1);
    const bool isJpeg = text("format") == QLatin1String("jpg");
    if (width * height <= mostPixels &&
        (!isJpeg || std::max(width, height) <= qint64(longestJpegSide)))
        return {};
    return tr("图片过大（%1x%2 像素），请减少张数或缩小图片").arg(width).arg(height);
}

QVariantList MutiImageTask::imageList() const
{
    return m_param->map.value(QStringLiteral("images")).toList();
}

int MutiImageTask::columns() const
{
    const int wanted = m_param->map.value(QStringLiteral("columns")).toInt();
    return std::clamp(wanted, 0, imageList().size());
}

bool MutiImageTask::isOnePicture() const
{
    return columns() > 0 || (m_param->map.value(QStringLiteral("isPiiic")).toBool() &&
                             imageList().size() >= fewestStitched);
}

double MutiImageTask::onePictureScale() const
{
    double largest = 0.0;
    const QVariantList images = imageList();
    for (const QVariant &image : images) {
        const double scale = image.toMap().value(QStringLiteral("scale")).toDouble();
        largest = std::max(largest, scale > 0.0 ? scale : 1.0);
    }
    return largest;
}

QString MutiImageTask::numberedName(int number) const
{
    return QStringLiteral("%1_%2").arg(text("baseName"), QString::number(number));
}

// What is wanted may change while the pictures are on their way: all is taken from it now.
void MutiImageTask::addShots(QVector<TaskItem> &items, const QString &pictureDir)
{
    const QString format = text("format");
    const bool isOne = isOnePicture();
    QVariantMap common{{inputUrlKey, aliases().forInput(text("inputUrl"))},
                       {QStringLiteral("watermark"), aliases().forFilter(text("watermark"))}};
    if (isOne)
        common.insert(QStringLiteral("scale"), onePictureScale());
    if (columns() > 0)
        common.insert(captionKey, QFileInfo(text("inputUrl")).fileName());
    const QVariantList images = imageList();
    for (int i = 0; i < images.size(); ++i) {
        const QString name = QString::number(i + 1);
        const QString picture = QStringLiteral("%1/%2.%3")
                                    .arg(pictureDir, name, isOne ? losslessFormat(format) : format);
        common.insert(outputUrlKey, picture);
        const auto source = m_source;
        items.append({nullptr, shotWeight,
                      [=] { return new ShotTask(wholeShot(images[i].toMap(), common), source); }});
        if (!isOne) {
            const QString target = outputPath(text("outputDir"), numberedName(i + 1), format);
            items.append(
                {nullptr, stepWeight, [=] { return moveStep(picture, target, checkPicture); }});
        }
    }
}

void MutiImageTask::addStitch(QVector<TaskItem> &items, const QString &pictureDir) const
{
    const QString format = text("format");
    const int count = imageList().size();
    const int inRow = std::max(columns(), 1);
    const int width = ShotTask::pictureSize(m_source.data(), onePictureScale()).width();
    const QString result = pictureDir + QLatin1String("/l.") + format;
    const QVariantMap stitch{
        {inputUrlKey, pictureDir + QLatin1String("/%d.") + losslessFormat(format)},
        {outputUrlKey, result},
        {QStringLiteral("line"), linesOf(count, inRow)},
        {QStringLiteral("column"), inRow},
        {QStringLiteral("gap"), columns() > 0 ? sheetGap(width) : 0}};
    auto *task = new FFmpegExTask(QString(), QString());
    task->setParam(new FFmpegExTaskParam(stitchTree(stitch)));
    items.append({task, count * stitchWeightEach});
    items.append(
        {moveStep(result, outputPath(text("outputDir"), text("baseName"), format), checkPicture),
         stepWeight});
}

GroupMediaTask *MutiImageTask::buildGroup()
{
    m_source = m_param->map.value(QStringLiteral("sourceInfo")).value<Info>();
    const QString tempDir = newWorkDir(text("outputDir"));
    QVector<TaskItem> items;
    items.append({createStep(tempDir), stepWeight});
    const QString pictureDir = aliases().forPictures(tempDir);
    addShots(items, pictureDir);
    if (isOnePicture())
        addStitch(items, pictureDir);
    items.append({deleteStep(tempDir), stepWeight});
    // Pictures of a run that fails or is stopped are of no use in the folder of the results.
    return new GroupMediaTask(items, true);
}
