// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mediamovetask.h"

#include "MediaKits/MediaFormats/outputpath.h"
#include "platform/movefile.h"

#include <QDir>

QString MediaMoveTask::perform()
{
    // Another process may take the free name between the look and the move; the next is tried.
    QString error;
    MoveResult result = MoveResult::NameTaken;
    while (result == MoveResult::NameTaken) {
        const QString target = uniqueOutputPath(m_param->to);
        if (!fileNameFits(target))
            return tr("文件名过长：%1").arg(QDir::toNativeSeparators(target));
        result = moveWithoutReplacing(m_param->from, target, error);
        if (result == MoveResult::Moved)
            emit taskCustomeMsgCome(OutputMoved, this, QVariant(target));
    }
    if (result == MoveResult::Moved)
        return {};
    return tr("无法移动到输出目录：%1（%2）").arg(QDir::toNativeSeparators(m_param->to), error);
}
