// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/trackevent.h"

#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/DataTracker/volcdatatracker.h"

#include <QMap>

namespace {

constexpr int keyBehaviourEventId = 33;

QString pageName(int page)
{
    static const QMap<int, QString> names{
        {0, QStringLiteral("首页")},      {1, QStringLiteral("视频转换")},
        {2, QStringLiteral("视频压缩")},  {3, QStringLiteral("视频剪裁")},
        {4, QStringLiteral("视频合并")},  {5, QStringLiteral("视频美化")},
        {6, QStringLiteral("视频转GIF")}, {7, QStringLiteral("视频配乐")},
        {8, QStringLiteral("视频截图")},  {9, QStringLiteral("视频水印")},
        {10, QStringLiteral("音频转换")}, {11, QStringLiteral("屏幕录像")},
    };
    return names.value(page);
}

} // namespace

void trackEvent(int page, const QString &event, const QVariantMap &params)
{
    trackEvent(page, event, params, OskDataTracker::instance(), VolcDataTracker::instance());
}

void trackEvent(int page, const QString &event, QVariantMap params, OskDataTracker &osk,
                VolcDataTracker &volc)
{
    if (event == QLatin1String("button_click"))
        params.insert(QStringLiteral("button_click"), pageName(page));
    if (event == QLatin1String("video_convert_start")) {
        osk.trackTableEvent(keyBehaviourEventId);
        params.insert(QStringLiteral("current_page"), pageName(page));
    }
    volc.event(event, params);
}
