// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/concattask.h"

#include "MediaKits/MediaTasksManager/concatfiletask.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/fileconcattask.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"
#include "MediaKits/MediaTasksManager/mergecheck.h"
#include "MediaKits/MediaTasksManager/mergepreset.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"

#include <QDir>
#include <QFileInfo>

namespace {

// Weights only compare the steps with each other: a part weighs its length in ms by this number,
// and the join a tenth of all before it.
constexpr double msPerWeight = 600.0;
constexpr float folderWeight = 0.00001F;
constexpr double listWeight = 0.1;
constexpr float joinShare = 0.1F;

double partWeight(const InputFileMediaParam &input)
{
    const int lengthMs =
        input.timeRange ? input.timeRange->end - input.timeRange->start : input.durationMs;
    return lengthMs / msPerWeight;
}

} // namespace

QString ConcatTask::finalPath() const
{
    return outputPath(m_param->outputDir, m_param->outputName, m_param->format);
}

QString ConcatTask::subject() const
{
    const QString result = m_param->outputName + QLatin1Char('.') + m_param->format;
    return m_failedInput.isEmpty()
               ? result
               : tr("%1：%2").arg(result, QDir::toNativeSeparators(m_failedInput));
}

QString ConcatTask::problem() const
{
    for (const auto &input : m_param->files) {
        const QString cause = inputProblem(input->file);
        if (!cause.isEmpty())
            return tr("%1：%2").arg(QDir::toNativeSeparators(input->file), cause);
    }
    return outputProblem(finalPath());
}

ConvertTaskParam ConcatTask::partStep(const InputFileMediaParam &input, ConvertTaskParam step)
{
    step.sourceInfo = input.sourceInfo;
    step.inputFile = m_aliases.forInput(input.file);
    step.durationMs = input.durationMs;
    step.inputFormat = input.format;
    step.cropRect = input.cropRect;
    step.timeRange = input.timeRange;
    const bool isBlind =
        input.sourceInfo && !input.sourceInfo->video && !input.sourceInfo->hasCover;
    if (isBlind && mergeHasPicture(*m_param))
        step.picture = ResultPicture::Black;
    return mappedStep(step);
}

GroupMediaTask *ConcatTask::buildGroup()
{
    m_aliases.clear();
    m_failedInput.clear();
    const QString workDir = newWorkDir(m_param->outputDir);
    const QDir dir(workDir);
    QVector<TaskItem> items;

    items.append({createStep(workDir), double(folderWeight)});

    ConvertTaskParam step;
    step.encParam = mergePreset(*m_param);
    step.silentTrack = mergeHasSound(*m_param);
    step.outputDir = workDir;
    step.format = m_param->format;
    float sum = folderWeight;
    QStringList parts;
    QVector<MergePart> made;
    for (int i = 0; i < m_param->files.size(); ++i) {
        const double weight = partWeight(*m_param->files[i]);
        step.outputName = QString::number(i);
        const ConvertTaskParam mapped = partStep(*m_param->files[i], step);
        auto *part = new ConvertTask(QStringLiteral("ConvertTask"), QString());
        part->setParam(new ConvertTaskParam(mapped));
        connect(part, &MediaTask::taskStateChanged, this,
                [this, file = m_param->files[i]->file](State partState) {
                    if (partState == ERROR)
                        m_failedInput = file;
                });
        items.append({part, weight});
        sum += float(weight);
        parts += dir.absoluteFilePath(QString::number(i) + QLatin1Char('.') + m_param->format);
        made.append({QFileInfo(m_param->files[i]->file).fileName(), parts.last(),
                     expectedResult(mapped), part});
    }

    const QString listFile = dir.absoluteFilePath(QStringLiteral("c.txt"));
    auto *list = new ConcatFileTask(QStringLiteral("ConcatFileTask"), QString());
    list->setParam(new ConcatFileTaskParam(parts, listFile));
    items.append({list, listWeight});

    const QString joined = dir.absoluteFilePath(QLatin1String("concattemp.") + m_param->format);
    auto *join = new FileConcatTask(QStringLiteral("FileConcatTask"), QString());
    join->setParam(new FileConcatTaskParam(listFile, joined));
    items.append({join, double(sum * joinShare)});

    const auto check = [made, join](const QString &path) { return checkMerge(path, made, *join); };
    items.append({moveStep(joined, finalPath(), check), double(folderWeight)});
    items.append({deleteStep(workDir), double(folderWeight)});
    return new GroupMediaTask(items, true);
}
