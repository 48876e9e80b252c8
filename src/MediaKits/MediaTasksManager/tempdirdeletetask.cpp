// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/tempdirdeletetask.h"

#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"

std::optional<TaskFailure> TempDirDeleteTask::perform()
{
    removeDirRecursively(presentWorkFolder(m_param->dir));
    releaseWorkFolder(m_param->dir);
    return TaskFailure();
}
