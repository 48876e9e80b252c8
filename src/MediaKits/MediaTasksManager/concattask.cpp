// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/concattask.h"

#include "MediaKits/MediaTasksManager/concatfiletask.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/fileconcattask.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"
#include "MediaKits/MediaTasksManager/mactask.h"
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

bool isFormat(const QString &format, const char *name)
{
    return format.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

// What the parts are made in, where the result's own form can't be joined by copy: the header of
// FLAC tells the length of the first part, APE is made by another tool, and no muxer goes by the
// suffix of a ring tone.
QString partFormat(const QString &format)
{
    if (isFormat(format, "flac") || isFormat(format, "ape"))
        return QStringLiteral("wav");
    return isFormat(format, "m4r") ? QStringLiteral("m4a") : format;
}

// An encoder named for the result would also be taken for another container of the parts.
QSharedPointer<EncParam> partPreset(const ConcatTaskParam &param)
{
    const auto preset = mergePreset(param);
    if (!isFormat(param.format, "flac") || !preset || !preset->audio)
        return preset;
    const auto own = QSharedPointer<EncParam>::create(*preset);
    own->audio = QSharedPointer<AEncParam>::create(*preset->audio);
    own->audio->fourCC.clear();
    return own;
}

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
    return m_failedInput.isEmpty() || isOutputGone()
               ? result
               : tr("%1：%2").arg(result, QDir::toNativeSeparators(m_failedInput));
}

QString ConcatTask::problem() const
{
    for (const auto &input : m_param->files) {
        QString cause = inputProblem(input->file);
        if (cause.isEmpty() && mergeHasPicture(*m_param))
            cause = cropProblem(input->sourceInfo, input->cropRect);
        if (!cause.isEmpty())
            return tr("%1：%2").arg(QDir::toNativeSeparators(input->file), cause);
    }
    return outputProblem(finalPath());
}

ConvertTaskParam ConcatTask::partStep(const InputFileMediaParam &input, ConvertTaskParam step)
{
    step.sourceInfo = input.sourceInfo;
    step.inputFile = aliases().forInput(input.file);
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

QStringList ConcatTask::addParts(QVector<TaskItem> &items, const QString &workDir,
                                 QVector<MergePart> &made)
{
    ConvertTaskParam step;
    step.encParam = partPreset(*m_param);
    step.silentTrack = mergeHasSound(*m_param);
    step.outputDir = workDir;
    step.format = partFormat(m_param->format);
    QStringList parts;
    for (int i = 0; i < m_param->files.size(); ++i) {
        step.outputName = QString::number(i);
        const ConvertTaskParam mapped = partStep(*m_param->files[i], step);
        auto *part = new ConvertTask(QStringLiteral("ConvertTask"), QString());
        part->setParam(new ConvertTaskParam(mapped));
        connect(part, &MediaTask::taskStateChanged, this,
                [this, file = m_param->files[i]->file](State partState) {
                    if (partState == ERROR)
                        m_failedInput = file;
                });
        items.append({part, partWeight(*m_param->files[i])});
        parts += QDir(workDir).absoluteFilePath(step.outputName + QLatin1Char('.') + step.format);
        made.append({QFileInfo(m_param->files[i]->file).fileName(), parts.last(),
                     expectedResult(mapped), part});
    }
    return parts;
}

// Makes the result's own form of what was joined in another.
QString ConcatTask::addClosingStep(QVector<TaskItem> &items, const QString &joined, double weight)
{
    const QDir dir = QFileInfo(joined).dir();
    if (isFormat(m_param->format, "ape")) {
        const QString result = dir.absoluteFilePath(QStringLiteral("m.ape"));
        auto *mac = new MacTask(QStringLiteral("MacTask"), QString());
        mac->setParam(new MacTaskParam(joined, result));
        items.append({mac, weight});
        return result;
    }
    if (!isFormat(m_param->format, "flac"))
        return joined;
    auto *step = new ConvertTaskParam;
    step->inputFile = joined;
    step->inputFormat = QStringLiteral("wav");
    step->encParam = m_param->encParam;
    step->outputDir = dir.absolutePath();
    step->outputName = QStringLiteral("whole");
    step->format = m_param->format;
    auto *convert = new ConvertTask(QStringLiteral("ConvertTask"), QString());
    convert->setParam(step);
    items.append({convert, weight});
    return dir.absoluteFilePath(step->outputName + QLatin1Char('.') + step->format);
}

GroupMediaTask *ConcatTask::buildGroup()
{
    m_failedInput.clear();
    const QString workDir = newWorkDir(m_param->outputDir);
    const QDir dir(workDir);
    QVector<TaskItem> items;

    items.append({createStep(workDir), double(folderWeight)});

    QVector<MergePart> made;
    const QStringList parts = addParts(items, workDir, made);
    float sum = folderWeight;
    for (const auto &input : m_param->files)
        sum += float(partWeight(*input));

    const QString listFile = dir.absoluteFilePath(QStringLiteral("c.txt"));
    auto *list = new ConcatFileTask(QStringLiteral("ConcatFileTask"), QString());
    list->setParam(new ConcatFileTaskParam(parts, listFile));
    items.append({list, listWeight});

    const double joinWeight = sum * joinShare;
    const QString joined =
        dir.absoluteFilePath(QLatin1String("concattemp.") + partFormat(m_param->format));
    auto *join = new FileConcatTask(QStringLiteral("FileConcatTask"), QString());
    join->setParam(new FileConcatTaskParam(listFile, joined));
    items.append({join, joinWeight});

    const QString result = addClosingStep(items, joined, joinWeight);
    const auto check = [made, join](const auto &read) { return checkMerge(read, made, *join); };
    items.append({moveStep(result, finalPath(), check, parts), double(folderWeight)});
    items.append({deleteStep(workDir), double(folderWeight)});
    return new GroupMediaTask(items, true);
}
