// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mutiimagetask.h"

#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/MediaTasksManager/ffmpegextask.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"
#include "MediaKits/MediaTasksManager/shottask.h"

#include <QDir>

namespace {

constexpr double stepWeight = 0.1;
constexpr double shotWeight = 10.0;
constexpr double stitchWeightEach = 0.5;
constexpr int fewestStitched = 2;

const QString inputUrlKey = QStringLiteral("inputUrl");
const QString outputUrlKey = QStringLiteral("outputUrl");

// A picture is looked at for its being there, and for nothing else.
ResultVerdict checkPicture(const QString &path)
{
    ExpectedResult picture;
    picture.hasPicture = true;
    return checkResult(picture, readWithLibrary(path, ReadDepth::Headers).data(), {});
}

} // namespace

QVariantMap MutiImageTask::stitchTree(const QVariantMap &stitch)
{
    const QString tile = QStringLiteral("tile=%1x%2")
                             .arg(stitch.value(QStringLiteral("column")).toString(),
                                  stitch.value(QStringLiteral("line")).toString());
    const QVariantMap output{{outputUrlKey, stitch.value(outputUrlKey)},
                             {QStringLiteral("options"),
                              QVariantList{FFmpegExTask::option(QStringLiteral("-vf"), tile)}}};
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
    const QString name = isStitched() ? text("baseName") : numberedName(imageList().size());
    return outputProblem(outputPath(text("outputDir"), name, text("format")));
}

QVariantList MutiImageTask::imageList() const
{
    return m_param->map.value(QStringLiteral("images")).toList();
}

bool MutiImageTask::isStitched() const
{
    return m_param->map.value(QStringLiteral("isPiiic")).toBool() &&
           imageList().size() >= fewestStitched;
}

QString MutiImageTask::numberedName(int number) const
{
    return QStringLiteral("%1_%2").arg(text("baseName"), QString::number(number));
}

void MutiImageTask::addShots(QVector<TaskItem> &items, const QString &pictureDir, bool stitched)
{
    const QString format = text("format");
    const QVariantList images = imageList();
    auto source =
        m_param->map.value(QStringLiteral("sourceInfo")).value<QSharedPointer<MediaInfoData>>();
    if (!source)
        source = readInProcess(text("inputUrl"));
    int number = 0;
    for (const QVariant &image : images) {
        ++number;
        const QString picture =
            QStringLiteral("%1/%2.%3").arg(pictureDir, QString::number(number), format);
        QVariantMap shot = image.toMap();
        shot.insert(inputUrlKey, m_aliases.forInput(text("inputUrl")));
        shot.insert(outputUrlKey, picture);
        shot.insert(QStringLiteral("watermark"), m_aliases.forFilter(text("watermark")));
        items.append({new ShotTask(shot, source), shotWeight});
        if (!stitched) {
            const QString target = outputPath(text("outputDir"), numberedName(number), format);
            items.append({moveStep(picture, target, checkPicture), stepWeight});
        }
    }
}

void MutiImageTask::addStitch(QVector<TaskItem> &items, const QString &pictureDir) const
{
    const QString format = text("format");
    const int count = imageList().size();
    const QString result = pictureDir + QLatin1String("/l.") + format;
    const QVariantMap stitch{{inputUrlKey, pictureDir + QLatin1String("/%d.") + format},
                             {outputUrlKey, result},
                             {QStringLiteral("line"), count},
                             {QStringLiteral("column"), 1}};
    auto *task = new FFmpegExTask(QString(), QString());
    task->setParam(new FFmpegExTaskParam(stitchTree(stitch)));
    items.append({task, count * stitchWeightEach});
    items.append(
        {moveStep(result, outputPath(text("outputDir"), text("baseName"), format), checkPicture),
         stepWeight});
}

GroupMediaTask *MutiImageTask::buildGroup()
{
    m_aliases.clear();
    const QString tempDir = newWorkDir(text("outputDir"));
    const bool stitched = isStitched();
    QVector<TaskItem> items;
    items.append({createStep(tempDir), stepWeight});
    const QString pictureDir = m_aliases.forPictures(tempDir);
    addShots(items, pictureDir, stitched);
    if (stitched)
        addStitch(items, pictureDir);
    items.append({deleteStep(tempDir), stepWeight});
    return new GroupMediaTask(items, false);
}
