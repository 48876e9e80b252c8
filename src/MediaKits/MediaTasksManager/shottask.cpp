// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/shottask.h"

#include "MediaKits/MediaTasksManager/filterescape.h"

#include <QFileInfo>

#include <algorithm>

namespace {

const QString inputUrlKey = QStringLiteral("inputUrl");
const QString outputUrlKey = QStringLiteral("outputUrl");
const QString posKey = QStringLiteral("pos");

// How far before the moment the frames up to the end are looked for, and by what the next try goes
// further: the sound of a film may run on long after its last picture.
constexpr int firstBackMs = 2000;
constexpr int backFactor = 8;

QString filterText(const QVariantMap &shot)
{
    const QString scale =
        QStringLiteral("%1").arg(double(shot.value(QStringLiteral("scale")).toFloat()));
    const QString watermark = shot.value(QStringLiteral("watermark")).toString();
    if (watermark.isEmpty())
        return QStringLiteral("scale=iw*%1:-1").arg(scale);
    return QStringLiteral("\"movie='%1' [wm];[in][wm]overlay=(main_w-overlay_w)/2:"
                          "(main_h-overlay_h)/2,scale=iw*%2:-1[out]\"")
        .arg(quoteFilterPath(watermark), scale);
}

// @param taken the option that says how many frames become the picture
QVariantMap treeFrom(const QVariantMap &shot, int beginMs, const QVariantMap &taken)
{
    const QString seconds = QStringLiteral("%1").arg(beginMs / 1000.0);
    const QVariantMap input{{inputUrlKey, shot.value(inputUrlKey)},
                            {QStringLiteral("options"),
                             QVariantList{FFmpegExTask::option(QStringLiteral("-ss"), seconds)}}};
    const QVariantMap output{
        {outputUrlKey, shot.value(outputUrlKey)},
        {QStringLiteral("options"),
         QVariantList{taken, FFmpegExTask::option(QStringLiteral("-vf"), filterText(shot))}}};
    return {{QStringLiteral("input"), QVariantMap{{QStringLiteral("inputs"), QVariantList{input}}}},
            {QStringLiteral("output"), output}};
}

} // namespace

ShotTask::ShotTask(const QVariantMap &shot, const QSharedPointer<MediaInfoData> &source)
    : FFmpegExTask(QString(), QString()), m_shot(shot), m_source(source)
{
    FFmpegExTask::setParam(new FFmpegExTaskParam(tree(shot)));
}

void ShotTask::prepare()
{
    FFmpegExTask::prepare();
    tellSource(m_source);
}

QVariantMap ShotTask::tree(const QVariantMap &shot)
{
    return treeFrom(shot, shot.value(posKey).toInt(),
                    option(QStringLiteral("-vframes"), QStringLiteral("1")));
}

// From a moment behind the last frame ffmpeg makes no picture and ends well. From one before it,
// each frame replaces the picture of the frame before.
bool ShotTask::goesOn(bool endedWell)
{
    const int pos = m_shot.value(posKey).toInt();
    if (!endedWell || m_backMs >= pos ||
        QFileInfo(m_shot.value(outputUrlKey).toString()).size() > 0)
        return false;
    m_backMs = m_backMs == 0 ? firstBackMs : m_backMs * backFactor;
    FFmpegExTask::setParam(
        new FFmpegExTaskParam(treeFrom(m_shot, std::max(pos - m_backMs, 0),
                                       option(QStringLiteral("-update"), QStringLiteral("1")))));
    return true;
}
