// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mediamovetask.h"

#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "platform/movefile.h"
#include "platform/openfolder.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <atomic>

// Uses nothing but what it holds itself, since it may outlive its task.
class MediaMoveTask::Copy : public QThread
{
public:
    Copy(const OpenFolder &folder, const QString &name, const QString &to)
        : target(to), m_folder(folder), m_name(name)
    {
    }

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
    void run() override
    {
        result = copyWithoutReplacing(m_folder.filePath(m_name), target, isCancelled, error);
    }

private:
    const OpenFolder m_folder;
    const QString m_name;
};

void MediaMoveTask::stop()
{
    if (m_copy) {
        if (enter(STOPING))
            m_copy->isCancelled = true;
        return;
    }
    if (m_reading) {
        m_reading->disconnect(this);
        m_reading->deleteLater();
    }
    SynchronousTask::stop();
}

std::optional<TaskFailure> MediaMoveTask::perform()
{
    followWorkFolder();
    if (!m_check)
        return move();
    m_reading = new HeadersReading(QStringList(m_param->from) + m_parts, this);
    connect(m_reading, &HeadersReading::finished, this, [this](const auto &read) {
        m_reading->deleteLater();
        m_reading.clear();
        endAfter([&] { return judge(read); });
    });
    m_reading->start();
    return std::nullopt;
}

// The output folder may have been moved meanwhile, and the work folder in it: the result goes where
// it would have been with it. A work folder that was moved alone isn't followed: somebody else may
// have done that.
void MediaMoveTask::followWorkFolder()
{
    const QFileInfo file(m_param->from);
    const QDir folder(presentWorkFolder(file.path()));
    if (QFileInfo(m_param->to).dir().exists() || folder.path() == file.path())
        return;
    const QString fromFolder = QDir(file.path()).relativeFilePath(m_param->to);
    m_param->from = folder.filePath(file.fileName());
    m_param->to = QDir::cleanPath(folder.filePath(fromFolder));
}

std::optional<TaskFailure> MediaMoveTask::judge(const QVector<QSharedPointer<MediaInfoData>> &read)
{
    const ResultVerdict verdict = m_check(read);
    if (!verdict.failure.isEmpty())
        return TaskFailure{verdict.failure, verdict.report};
    if (!verdict.remarks.isEmpty())
        addRemarks({verdict.remarks, verdict.report});
    return move();
}

std::optional<TaskFailure> MediaMoveTask::move()
{
    // Held open: if others may rename what is in the output folder, something else may be at the
    // path.
    const QFileInfo source(m_param->from);
    const OpenFolder folder = OpenFolder::at(source.path());
    if (!folder.isOpen())
        return TaskFailure{
            tr("工作文件夹已被移走或替换：%1").arg(QDir::toNativeSeparators(source.path())), {}};
    // Another process may take the free name between the look and the move; the next is tried.
    while (true) {
        const QString target = uniqueOutputPath(m_param->to);
        QString error = tr("文件名过长");
        const MoveResult result =
            fileNameFits(target)
                ? moveWithoutReplacing(folder.filePath(source.fileName()), target, error)
                : MoveResult::Failed;
        switch (result) {
        case MoveResult::Moved:
            return moved(target);
        case MoveResult::NameTaken:
            break;
        case MoveResult::NeedsCopy:
            m_copy =
                std::shared_ptr<Copy>(new Copy(folder, source.fileName(), target), &Copy::letGo);
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
    endAfter([&]() -> std::optional<TaskFailure> {
        if (copy->result == MoveResult::Moved)
            return moved(copy->target);
        if (copy->isCancelled)
            return TaskFailure();
        return copy->result == MoveResult::NameTaken ? move() : cannotMove(copy->error);
    });
}
