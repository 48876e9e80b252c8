// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaInfo/headersreading.h"
#include "MediaKits/MediaTasksManager/paramtask.h"
#include "MediaKits/MediaTasksManager/resultcheck.h"
#include "MediaKits/MediaTasksManager/synchronoustask.h"

#include <functional>
#include <memory>

struct MediaMoveTaskParam : MediaTaskParam
{
    static constexpr int paramType = 12;
    MediaMoveTaskParam(const QString &source, const QString &target)
        : MediaTaskParam(paramType), from(source), to(target)
    {
    }

    QString from;
    QString to; ///< wanted path; the file gets a free name beside it when it is taken
};

/// Moves a finished file into place under a free name and tells the name by a custom message of
/// type `OutputMoved`. It never replaces a file. A check, and the copy on a thread where a file
/// system can't rename, let the task end after its start. A file that can't be moved stays where it
/// is, in a folder that is kept, and the failure says where.
class MediaMoveTask : public ParamTask<MediaMoveTaskParam, SynchronousTask>
{
    Q_OBJECT

public:
    /// Judges by what was found in the file that is to be moved and, behind it, in its parts.
    using Check = std::function<ResultVerdict(const QVector<QSharedPointer<MediaInfoData>> &read)>;

    using ParamTask::ParamTask;

    void stop() override;

    /// With a check, a file that fails it isn't moved, and what it remarks the task remarks.
    /// @param parts further files that it has to know
    void setCheck(const Check &check, const QStringList &parts)
    {
        m_check = check;
        m_parts = parts;
    }

protected:
    std::optional<TaskFailure> perform() override;

private:
    class Copy;

    void followWorkFolder();
    std::optional<TaskFailure> judge(const QVector<QSharedPointer<MediaInfoData>> &read);
    std::optional<TaskFailure> move();
    TaskFailure moved(const QString &target);
    TaskFailure cannotMove(const QString &error) const;
    void onCopied();

    Check m_check;
    QStringList m_parts;
    QPointer<HeadersReading> m_reading;
    std::shared_ptr<Copy> m_copy; ///< null while nothing is copied
};
