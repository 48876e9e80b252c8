// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/inputcheck.h"

#include "MediaKits/MediaInfo/shownpicture.h"
#include "platform/undecodablenames.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRect>

QString inputProblem(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists() && isUndecodable(path))
        return QCoreApplication::translate("inputProblem", "文件名不是 UTF-8 编码，请先重命名");
    if (!file.exists())
        return QCoreApplication::translate("inputProblem", "文件不存在");
    if (file.isDir())
        return QCoreApplication::translate("inputProblem", "这是文件夹，不是文件");
    if (!file.isFile())
        return QCoreApplication::translate("inputProblem", "不是普通文件");
    if (!file.isReadable())
        return QCoreApplication::translate("inputProblem", "没有读取权限");
    if (file.size() == 0)
        return QCoreApplication::translate("inputProblem", "文件为空");
    return {};
}

QString cropProblem(const QSharedPointer<MediaInfoData> &source,
                    const QSharedPointer<CropBox> &crop)
{
    const QSize size = source && source->video ? turnedSize(*source->video) : QSize();
    if (size.isEmpty() || !crop)
        return {};
    const QRect wanted(crop->x, crop->y, crop->width, crop->height);
    if (QRect(QPoint(0, 0), size).contains(wanted))
        return {};
    return QCoreApplication::translate("inputProblem",
                                       "裁剪区域超出画面：画面为 %1×%2，要求从 (%3, %4) 起 %5×%6")
        .arg(size.width())
        .arg(size.height())
        .arg(wanted.x())
        .arg(wanted.y())
        .arg(wanted.width())
        .arg(wanted.height());
}
