// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mutiimagetask.h"

#include "MediaKits/MediaTasksManager/ffmpegextask.h"
#include "MediaKits/MediaTasksManager/filterescape.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"

#include <QDir>

namespace {

constexpr double stepWeight = 0.1;
constexpr double shotWeight = 10.0;
constexpr double stitchWeightEach = 0.5;
constexpr int fewestStitched = 2;

const QString inputUrlKey = QStringLiteral("inputUrl");
const QString outputUrlKey = QStringLiteral("outputUrl");

QVariantMap tree(const QVariantMap &input, const QVariantMap &output)
{
    return {{QStringLiteral("input"), QVariantMap{{QStringLiteral("inputs"), QVariantList{input}}}},
            {QStringLiteral("output"), output}};
}

MediaTask *exTask(const QVariantMap &options)
{
    auto *task = new FFmpegExTask(QString(), QString());
    task->setParam(new FFmpegExTaskParam(options));
    return task;
}

} // namespace

QVariantMap MutiImageTask::shotTree(const QVariantMap &shot)
{
    const QString scale =
        QStringLiteral("%1").arg(double(shot.value(QStringLiteral("scale")).toFloat()));
    const QString watermark = shot.value(QStringLiteral("watermark")).toString();
    const QString filter =
        watermark.isEmpty()
            ? QStringLiteral("scale=iw*%1:-1").arg(scale)
            : QStringLiteral("\"movie='%1' [wm];[in][wm]overlay=(main_w-overlay_w)/2:"
                             "(main_h-overlay_h)/2,scale=iw*%2:-1[out]\"")
                  .arg(quoteFilterPath(watermark), scale);
    const double seconds = shot.value(QStringLiteral("pos")).toInt() / 1000.0;
    const QVariantMap input{{inputUrlKey, shot.value(inputUrlKey)},
                            {QStringLiteral("options"),
                             QVariantList{FFmpegExTask::option(
                                 QStringLiteral("-ss"), QStringLiteral("%1").arg(seconds))}}};
    const QVariantMap output{
        {outputUrlKey, shot.value(outputUrlKey)},
        {QStringLiteral("options"),
         QVariantList{FFmpegExTask::option(QStringLiteral("-vframes"), QStringLiteral("1")),
                      FFmpegExTask::option(QStringLiteral("-vf"), filter)}}};
    return tree(input, output);
}

QVariantMap MutiImageTask::stitchTree(const QVariantMap &stitch)
{
    const QString tile = QStringLiteral("tile=%1x%2")
                             .arg(stitch.value(QStringLiteral("column")).toString(),
                                  stitch.value(QStringLiteral("line")).toString());
    const QVariantMap output{{outputUrlKey, stitch.value(outputUrlKey)},
                             {QStringLiteral("options"),
                              QVariantList{FFmpegExTask::option(QStringLiteral("-vf"), tile)}}};
    return tree({{inputUrlKey, stitch.value(inputUrlKey)}}, output);
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
    return input.isEmpty()
               ? outputProblem(outputPath(text("outputDir"), text("baseName"), text("format")))
               : input;
}

void MutiImageTask::addShots(QVector<TaskItem> &items, const QString &pictureDir, bool stitched)
{
    const QString format = text("format");
    const QVariantList images = m_param->map.value(QStringLiteral("images")).toList();
    int number = 0;
    for (const QVariant &image : images) {
        ++number;
        const QString picture =
            QStringLiteral("%1/%2.%3").arg(pictureDir, QString::number(number), format);
        QVariantMap shot = image.toMap();
        shot.insert(inputUrlKey, m_aliases.forInput(text("inputUrl")));
        shot.insert(outputUrlKey, picture);
        shot.insert(QStringLiteral("watermark"), m_aliases.forFilter(text("watermark")));
        items.append({exTask(shotTree(shot)), shotWeight});
        if (!stitched) {
            const QString name =
                QStringLiteral("%1_%2").arg(text("baseName"), QString::number(number));
            items.append(
                {moveStep(picture, outputPath(text("outputDir"), name, format)), stepWeight});
        }
    }
}

void MutiImageTask::addStitch(QVector<TaskItem> &items, const QString &pictureDir) const
{
    const QString format = text("format");
    const int count = m_param->map.value(QStringLiteral("images")).toList().size();
    const QString result = pictureDir + QLatin1String("/l.") + format;
    const QVariantMap stitch{{inputUrlKey, pictureDir + QLatin1String("/%d.") + format},
                             {outputUrlKey, result},
                             {QStringLiteral("line"), count},
                             {QStringLiteral("column"), 1}};
    items.append({exTask(stitchTree(stitch)), count * stitchWeightEach});
    items.append(
        {moveStep(result, outputPath(text("outputDir"), text("baseName"), format)), stepWeight});
}

GroupMediaTask *MutiImageTask::buildGroup()
{
    m_aliases.clear();
    const QString tempDir = newWorkDir(text("outputDir"));
    const bool stitched =
        m_param->map.value(QStringLiteral("isPiiic")).toBool() &&
        m_param->map.value(QStringLiteral("images")).toList().size() >= fewestStitched;
    QVector<TaskItem> items;
    items.append({createStep(tempDir), stepWeight});
    const QString pictureDir = m_aliases.forPictures(tempDir);
    addShots(items, pictureDir, stitched);
    if (stitched)
        addStitch(items, pictureDir);
    items.append({deleteStep(tempDir), stepWeight});
    return new GroupMediaTask(items, false);
}
