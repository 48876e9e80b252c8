// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/inputcheck.h"

#include <QCoreApplication>
#include <QFileInfo>

QString inputProblem(const QString &path)
{
    const QFileInfo file(path);
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
