// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/tempdircreatetask.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"

#include <QDir>

std::optional<TaskFailure> TempDirCreateTask::perform()
{
    if (!QDir().mkpath(m_param->path))
        return TaskFailure{
            tr("无法在输出目录中创建文件夹：%1").arg(QDir::toNativeSeparators(m_param->path)), {}};
    claimWorkFolder(m_param->path);
    return TaskFailure();
}
