// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

#include "MediaKits/AppInstance/LocalStore/functionsettings.h"

#include <QStandardPaths>
#include <QVector>

namespace {

namespace Section = FunctionSection;

const QVector<MediaFunctionRecord> &records()
{
    static const QVector<MediaFunctionRecord> table = {
        {QStringLiteral("首页"), {}, {}, 0, 0},
        {QStringLiteral("视频转换"), QStringLiteral("视频转换"), Section::converter, 13, 14},
        {QStringLiteral("视频压缩"), QStringLiteral("视频压缩"), Section::compressor, 15, 16},
        {QStringLiteral("视频剪裁"), QStringLiteral("视频剪辑"), Section::cutter, 17, 18},
        {QStringLiteral("视频合并"), QStringLiteral("视频合并"), Section::merger, 19, 20},
        {QStringLiteral("视频美化"), QStringLiteral("视频美化"), Section::beautifier, 21, 22},
        {QStringLiteral("视频转GIF"), QStringLiteral("视频转GIF"), Section::gif, 23, 24},
        {QStringLiteral("视频配乐"), QStringLiteral("视频配音"), Section::dubbing, 25, 26},
        {QStringLiteral("视频截图"), QStringLiteral("视频截图"), Section::shot, 27, 28},
        {QStringLiteral("视频水印"), QStringLiteral("视频水印"), Section::watermark, 29, 30},
        {QStringLiteral("音频转换"), QStringLiteral("音频转换"), Section::audioConverter, 31, 32},
        {QStringLiteral("屏幕录像"), QStringLiteral("屏幕录像"), Section::screenCap, 0, 0},
    };
    return table;
}

} // namespace

const MediaFunctionRecord &functionRecord(MediaFunction function)
{
    return records()[int(function)];
}

QString defaultOutputDir(MediaFunction function)
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
           QStringLiteral("/墨泉影音工坊/") + functionRecord(function).folder;
}
