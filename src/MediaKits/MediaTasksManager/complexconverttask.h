// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/chaintask.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/paramtask.h"

class ConvertTask;

/// One output of a page: makes a private work folder inside the output folder, turns special
/// sources into something that ffmpeg reads, converts, moves the result into place under a free
/// name and removes the work folder whatever happens.
class ComplexConvertTask : public ParamTask<ConvertTaskParam, ChainTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

    /// What the convert step of a chain is told.
    /// @param source the file that the step reads
    /// @param workDir where it writes "convert" with the output's suffix
    static ConvertTaskParam convertStep(const ConvertTaskParam &param, const QString &source,
                                        const QString &workDir);

protected:
    QString problem() const override;
    GroupMediaTask *buildGroup() override;
    QString subject() const override;

private:
    // Steps that turn a special source into one that ffmpeg reads; returns that file.
    QString addSourceSteps(QVector<TaskItem> &items, const QString &workDir);
    QString addRewrapSteps(QVector<TaskItem> &items, MediaTask *rewrap, const QString &command,
                           const QString &from, const QString &to) const;
    static ConvertTask *addConversion(QVector<TaskItem> &items, const QString &name,
                                      const ConvertTaskParam &step);
    void replaceOddNames(ConvertTaskParam &step);
    QString finalPath() const;
};
