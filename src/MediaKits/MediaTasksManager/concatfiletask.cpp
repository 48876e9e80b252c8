// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/concatfiletask.h"

#include "platform/openfolder.h"

#include <QFile>
#include <QFileInfo>

QString ConcatFileTask::createConcatFile() const
{
    const QFileInfo wanted(m_param->listFile);
    const OpenFolder folder = OpenFolder::at(wanted.path());
    QFile list(folder.filePath(wanted.fileName()));
    if (!list.open(QIODevice::WriteOnly | QIODevice::Text))
        return tr("无法创建合并输入文件");
    for (const QString &part : m_param->files) {
        const QString line = QStringLiteral("file '%1' \r\n").arg(QFileInfo(part).fileName());
        list.write(line.toUtf8());
    }
    return list.flush() ? QString() : tr("无法创建合并输入文件");
}
