// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/tempdircreatetask.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"

#include <QDir>
#include <QFileInfo>

std::optional<TaskFailure> TempDirCreateTask::perform()
{
    const QFileInfo folder(m_param->path);
    switch (makeWorkFolder(m_param->path)) {
    case WorkFolderState::Made:
        break;
    case WorkFolderState::Refused:
        return TaskFailure{
            tr("输出目录中的文件夹被他人占用：%1").arg(QDir::toNativeSeparators(folder.path())),
            {}};
    case WorkFolderState::Failed:
        return TaskFailure{
            tr("无法在输出目录中创建文件夹：%1").arg(QDir::toNativeSeparators(folder.filePath())),
            {}};
    }
    return TaskFailure();
}
