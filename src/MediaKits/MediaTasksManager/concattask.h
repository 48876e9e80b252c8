// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/chaintask.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/paramtask.h"

/// One input of a merge.
struct InputFileMediaParam
{
    QString file;
    QString format; ///< upper-cased suffix
    int durationMs = 0;
    QSharedPointer<TimeSpan> timeRange;
    QSharedPointer<CropBox> cropRect;
    QSharedPointer<MediaInfoData> sourceInfo;
};

Q_DECLARE_METATYPE(QSharedPointer<InputFileMediaParam>)

struct MergePart;

struct ConcatTaskParam : MediaTaskParam
{
    static constexpr int paramType = 5;
    ConcatTaskParam() : MediaTaskParam(paramType)
    {
        qRegisterMetaType<QSharedPointer<InputFileMediaParam>>(
            "QSharedPointer<InputFileMediaParam>");
    }

    QList<QSharedPointer<InputFileMediaParam>> files;
    QString outputName; ///< base name without suffix
    QString outputDir;  ///< empty stands for "."
    QString format;     ///< output suffix
    QSharedPointer<EncParam> encParam;
};

/// The merge: converts every input into one common form in a work folder, joins the parts by
/// stream copy and moves the result into place.
class ConcatTask : public ParamTask<ConcatTaskParam, ChainTask>
{
    Q_OBJECT

public:
    using ParamTask::ParamTask;

protected:
    QString problem() const override;
    GroupMediaTask *buildGroup() override;
    QString subject() const override;

private:
    // What one input's conversion is told.
    // @param step what all inputs have in common
    ConvertTaskParam partStep(const InputFileMediaParam &input, ConvertTaskParam step);
    QString finalPath() const;
    QStringList addParts(QVector<TaskItem> &items, const QString &workDir,
                         QVector<MergePart> &made);
    QString addClosingStep(QVector<TaskItem> &items, const QString &joined, double weight);

    QString m_failedInput; ///< the input that ended the last run; empty for none
};
