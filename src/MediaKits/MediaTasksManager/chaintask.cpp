// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/chaintask.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "MediaKits/MediaTasksManager/tempdircreatetask.h"
#include "MediaKits/MediaTasksManager/tempdirdeletetask.h"

#include <QDir>

#include <memory>

namespace {

QDir outputFolder(const QString &dir)
{
    return QDir(dir.isEmpty() ? QStringLiteral(".") : dir);
}

} // namespace

ChainTask::~ChainTask()
{
    ChainTask::stop();
    if (m_group)
        m_group->deleteLater();
}

void ChainTask::run()
{
    if (m_group) {
        // Without an end of its own, the old chain would leave its work folder.
        m_group->disconnect(this);
        m_group->stop();
        m_group->deleteLater();
        m_group = nullptr;
    }
    QString cause = problem();
    std::unique_ptr<GroupMediaTask> group;
    if (cause.isEmpty()) {
        m_aliases.clear();
        group.reset(buildGroup());
        cause = m_aliases.problem();
    }
    if (!cause.isEmpty()) {
        if (enter(START))
            failAbout({cause, {}});
        return;
    }
    m_group = group.release();
    connect(m_group, &MediaTask::taskStateChanged, this, &ChainTask::onGroupState,
            Qt::DirectConnection);
    connect(m_group, &MediaTask::taskOperateChanged, this, &ChainTask::setOperate);
    connect(m_group, &MediaTask::taskProgress, this, &MediaTask::taskProgress);
    connect(m_group, &MediaTask::taskCustomeMsgCome, this, &MediaTask::taskCustomeMsgCome);
    if (enter(START))
        m_group->start();
}

void ChainTask::pause()
{
    if (m_group && !isFinal(state()))
        m_group->pause();
}

void ChainTask::resume()
{
    if (m_group && !isFinal(state()))
        m_group->resume();
}

void ChainTask::stop()
{
    if (state() == STOPED)
        return;
    if (enter(STOPING) && m_group)
        m_group->stop();
}

void ChainTask::onGroupState(State groupState)
{
    if (groupState == FINISHED)
        addRemarks(m_group->remarks());
    if (groupState == ERROR)
        failAbout(groupFailure());
    else if (groupState != DESTORIED)
        setState(groupState);
}

bool ChainTask::isOutputGone() const
{
    return m_hasWorkDir && !QFileInfo(m_marker).dir().exists();
}

// Where somebody has taken the marker away, or the folder around it, tools only say that they find
// nothing or may not write.
TaskFailure ChainTask::groupFailure() const
{
    const QStringList report = m_group->failure().report;
    if (isOutputGone())
        return {tr("输出目录已被移走或删除：%1")
                    .arg(QDir::toNativeSeparators(QFileInfo(m_marker).path())),
                report};
    if (!m_marker.isEmpty() && isMarkerTaken(m_marker))
        return {tr("输出目录中的文件夹被他人占用：%1").arg(QDir::toNativeSeparators(m_marker)),
                report};
    return m_group->failure();
}

void ChainTask::failAbout(const TaskFailure &failure)
{
    fail({tr("%1：%2").arg(subject(), failure.cause), failure.report});
}

QString ChainTask::newWorkDir(const QString &outputDir)
{
    const QString workDir = newWorkFolderPath(outputFolder(outputDir).absolutePath());
    m_marker = QFileInfo(workDir).path();
    m_hasWorkDir = false;
    return workDir;
}

QString ChainTask::outputPath(const QString &dir, const QString &name, const QString &format)
{
    return outputFolder(dir).absoluteFilePath(name + QLatin1Char('.') + format);
}

MediaTask *ChainTask::createStep(const QString &workDir)
{
    auto *step = new TempDirCreateTask(QStringLiteral("TempDirCreateTask"), QString());
    step->setParam(new TempDirCreateParam(workDir));
    connect(
        step, &MediaTask::taskStateChanged, this,
        [this](State stepState) { m_hasWorkDir = m_hasWorkDir || stepState == FINISHED; },
        Qt::DirectConnection);
    return step;
}

MediaTask *ChainTask::moveStep(const QString &from, const QString &to,
                               const MediaMoveTask::Check &check, const QStringList &parts)
{
    auto *step = new MediaMoveTask(QStringLiteral("MediaMoveTask"), QString());
    step->setParam(new MediaMoveTaskParam(from, to));
    step->setCheck(check, parts);
    return step;
}

MediaTask *ChainTask::deleteStep(const QString &workDir)
{
    auto *step = new TempDirDeleteTask(QStringLiteral("TempDirDeleteTask"), QString());
    step->setParam(new TempDirDeleteTaskParam(workDir));
    return step;
}

QString ChainTask::outputProblem(const QString &path)
{
    // A taken name gets a number, which makes it longer.
    if (!fileNameFits(uniqueOutputPath(path)))
        return tr("输出文件名过长");
    const QFileInfo dir(QFileInfo(path).path());
    if (dir.exists() && !dir.isDir())
        return tr("输出目录不是文件夹：%1").arg(QDir::toNativeSeparators(dir.filePath()));
    if (dir.exists() && !dir.isWritable())
        return tr("输出目录无法写入：%1").arg(QDir::toNativeSeparators(dir.filePath()));
    return {};
}
