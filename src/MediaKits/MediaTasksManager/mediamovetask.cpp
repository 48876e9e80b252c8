// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mediamovetask.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "platform/movefile.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <atomic>

// Uses nothing but what it holds itself, since it may outlive its task.
class MediaMoveTask::Copy : public QThread
{
public:
    Copy(const QString &from, const QString &to) : target(to), m_from(from) {}

    // Ends the copy. One that waits for a share which no longer answers goes when it has ended.
    static void letGo(Copy *copy)
    {
        constexpr unsigned long endWaitMs = 500;
        copy->isCancelled = true;
        if (copy->wait(endWaitMs)) {
            delete copy;
            return;
        }
        connect(copy, &QThread::finished, copy, &QObject::deleteLater);
        if (copy->isFinished()) // in the meantime
            copy->deleteLater();
    }

    const QString target;
    std::atomic<bool> isCancelled{false};
    MoveResult result = MoveResult::Failed;
    QString error;

protected:
    void run() override { result = copyWithoutReplacing(m_from, target, isCancelled, error); }

private:
    const QString m_from;
};

void MediaMoveTask::stop()
{
    if (!m_copy)
        SynchronousTask::stop();
    else if (enter(STOPING))
        m_copy->isCancelled = true;
}

std::optional<TaskFailure> MediaMoveTask::perform()
{
    if (m_check) {
        const ResultVerdict verdict = m_check(m_param->from);
        if (!verdict.failure.isEmpty())
            return TaskFailure{verdict.failure, verdict.report};
        if (!verdict.remarks.isEmpty())
            addRemarks({verdict.remarks, verdict.report});
    }
    return move();
}

std::optional<TaskFailure> MediaMoveTask::move()
{
    // Another process may take the free name between the look and the move; the next is tried.
    while (true) {
        const QString target = uniqueOutputPath(m_param->to);
        QString error = tr("文件名过长");
        const MoveResult result = fileNameFits(target)
                                      ? moveWithoutReplacing(m_param->from, target, error)
                                      : MoveResult::Failed;
        switch (result) {
        case MoveResult::Moved:
            return moved(target);
        case MoveResult::NameTaken:
            break;
        case MoveResult::NeedsCopy:
            m_copy = std::shared_ptr<Copy>(new Copy(m_param->from, target), &Copy::letGo);
            connect(m_copy.get(), &QThread::finished, this, &MediaMoveTask::onCopied);
            m_copy->start();
            return std::nullopt;
        case MoveResult::Failed:
            return cannotMove(error);
        }
    }
}

TaskFailure MediaMoveTask::moved(const QString &target)
{
    emit taskCustomeMsgCome(OutputMoved, this, QVariant(target));
    return {};
}

TaskFailure MediaMoveTask::cannotMove(const QString &error) const
{
    const QFileInfo file(m_param->from);
    const QString target = QDir::toNativeSeparators(m_param->to);
    if (!file.exists())
        return {tr("无法移动到输出目录：%1（%2）").arg(target, error), {}};
    const QDir kept(keepWorkFolder(file.path()));
    return {tr("无法移动到输出目录：%1（%2），成品保留在：%3")
                .arg(target, error, QDir::toNativeSeparators(kept.filePath(file.fileName()))),
            {}};
}

void MediaMoveTask::onCopied()
{
    const std::shared_ptr<Copy> copy = std::move(m_copy);
    copy->wait();
    const QPointer<MediaMoveTask> alive(this);
    std::optional<TaskFailure> failure = TaskFailure();
    if (copy->result == MoveResult::Moved)
        failure = moved(copy->target);
    else if (copy->isCancelled)
        failure = TaskFailure();
    else if (copy->result == MoveResult::NameTaken)
        failure = move();
    else
        failure = cannotMove(copy->error);
    if (alive && failure)
        conclude(*failure);
}
