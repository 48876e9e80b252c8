// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/outputdirs.h"

#include <QMap>
#include <QStandardPaths>

namespace {

const QMap<int, QString> &folders()
{
    static const QMap<int, QString> map = {
        {ConvertOutput, QStringLiteral("视频转换")},
        {CompressOutput, QStringLiteral("视频压缩")},
        {CutOutput, QStringLiteral("视频剪辑")},
        {MergeOutput, QStringLiteral("视频合并")},
        {BeautifyOutput, QStringLiteral("视频美化")},
        {GifOutput, QStringLiteral("视频转GIF")},
        {DubbingOutput, QStringLiteral("视频配音")},
        {ShotOutput, QStringLiteral("视频截图")},
        {WatermarkOutput, QStringLiteral("视频水印")},
        {AudioConvertOutput, QStringLiteral("音频转换")},
        {ScreencapOutput, QStringLiteral("屏幕录像")},
    };
    return map;
}

} // namespace

QString defaultOutputDir(int function)
{
    const QString folder = folders().value(function);
    if (folder.isEmpty())
        return {};
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
           QStringLiteral("/墨泉影音工坊/") + folder;
}
