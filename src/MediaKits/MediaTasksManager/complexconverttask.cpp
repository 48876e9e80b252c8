// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"

#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaFormats/toolquoting.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/dubbingmix.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"
#include "MediaKits/MediaTasksManager/kuxtask.h"
#include "MediaKits/MediaTasksManager/mactask.h"
#include "MediaKits/MediaTasksManager/overlaypictures.h"
#include "MediaKits/MediaTasksManager/qlvtask.h"
#include "MediaKits/MediaTasksManager/qsvtask.h"
#include "MediaKits/MediaTasksManager/resultcheck.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString tr(const char *text)
{
    return ComplexConvertTask::tr(text);
}

// What makes a conversion impossible, told before it begins; empty for nothing.

QString gifProblem(const ConvertTaskParam &param)
{
    const MediaInfoData *source = param.sourceInfo.data();
    const bool hasPicture = !source || source->video || source->hasCover;
    return isGifFormat(param.format) && !hasPicture ? tr("文件中没有画面，无法转成 GIF")
                                                    : QString();
}

QString musicProblem(const ConvertTaskParam &param)
{
    for (const QString &music : musicFiles(param)) {
        const QString cause = inputProblem(music);
        if (!cause.isEmpty())
            return tr("配乐%1：%2").arg(QFileInfo(music).fileName(), cause);
    }
    return {};
}

QString marksProblem(const ConvertTaskParam &param)
{
    return overlayProblem(param.videoFilters);
}

QString timeProblem(const ConvertTaskParam &param)
{
    const bool pastEnd =
        param.timeRange && param.durationMs > 0 && param.timeRange->start >= param.durationMs;
    return pastEnd ? tr("截取的开始时间超出了片长") : QString();
}

QString boxProblem(const ConvertTaskParam &param)
{
    return isAudioFormat(param.format) ? QString() : cropProblem(param.sourceInfo, param.cropRect);
}

constexpr double folderWeight = 0.0001;
constexpr double convertWeight = 1.0;
constexpr double kuxWeight = 0.2;
constexpr double rewrapWeight = 0.1;
constexpr int qsvMode = 1;

bool isApe(const QString &format)
{
    return format.compare(QLatin1String("APE"), Qt::CaseInsensitive) == 0;
}

} // namespace

QString ComplexConvertTask::finalPath() const
{
    return outputPath(m_param->outputDir, m_param->outputName, m_param->format);
}

QString ComplexConvertTask::subject() const
{
    return QDir::toNativeSeparators(m_param->inputFile);
}

QString ComplexConvertTask::problem() const
{
    QString cause = inputProblem(m_param->inputFile);
    for (const auto &check :
         {&gifProblem, &musicProblem, &marksProblem, &timeProblem, &boxProblem}) {
        if (cause.isEmpty())
            cause = check(*m_param);
    }
    return cause.isEmpty() ? outputProblem(finalPath()) : cause;
}

ConvertTaskParam ComplexConvertTask::convertStep(const ConvertTaskParam &param,
                                                 const QString &source, const QString &workDir)
{
    ConvertTaskParam step = param;
    step.inputFile = source;
    step.outputDir = workDir;
    step.outputName = QStringLiteral("convert");
    if (isApe(param.format))
        step.format = QStringLiteral("wav");
    return mappedStep(step);
}

void ComplexConvertTask::replaceOddNames(ConvertTaskParam &step)
{
    step.inputFile = aliases().forInput(step.inputFile);
    if (!step.paletteFile.isEmpty()) {
        const QFileInfo palette(step.paletteFile);
        step.paletteFile = QDir(aliases().forFilter(palette.path())).filePath(palette.fileName());
    }
    step.videoFilters = overlayPictures(step.videoFilters, aliases());
    const QString musicsKey = QStringLiteral("musics");
    const QString pathKey = QStringLiteral("filePath");
    for (QVariant &entry : step.audioFilters) {
        QVariantMap dubbing = entry.toMap();
        QVariantList musics = dubbing.value(musicsKey).toList();
        for (QVariant &musicEntry : musics) {
            QVariantMap music = musicEntry.toMap();
            music[pathKey] = aliases().forFilter(music.value(pathKey).toString());
            musicEntry = music;
        }
        dubbing[musicsKey] = musics;
        entry = dubbing;
    }
}

QString ComplexConvertTask::addRewrapSteps(QVector<TaskItem> &items, MediaTask *rewrap,
                                           const QString &command, const QString &from,
                                           const QString &to) const
{
    items.append({rewrap, rewrapWeight});
    auto *convert = new FFmpegTask(QStringLiteral("TsConvertTask"), QString());
    convert->setParam(new FFmpegTaskParam(command.arg(quoteToolPath(from), quoteToolPath(to)),
                                          m_param->durationMs));
    items.append({convert, rewrapWeight});
    return to;
}

QString ComplexConvertTask::addSourceSteps(QVector<TaskItem> &items, const QString &workDir)
{
    const QString format = m_param->inputFormat.toUpper();
    if (format == QLatin1String("KUX")) {
        const QString result = QDir(workDir).absoluteFilePath(QStringLiteral("kux.mp4"));
        auto *kux = new KuxTask(QStringLiteral("ConvertTask"), QString());
        kux->setParam(new KuxParam(m_param->inputFile, result));
        items.append({kux, kuxWeight});
        return result;
    }
    if (format != QLatin1String("QLV") && format != QLatin1String("QSV"))
        return m_param->inputFile;
    const QDir dir(aliases().forFields(workDir));
    const QString source = aliases().forFields(m_param->inputFile);
    if (format == QLatin1String("QLV")) {
        const QString rewrapped = dir.absoluteFilePath(QStringLiteral("qlv.mp4"));
        auto *qlv = new QlvTask(QStringLiteral("QlvTask"), QString());
        qlv->setParam(new QlvTaskParam(source, rewrapped));
        return addRewrapSteps(items, qlv, QStringLiteral("-y -i %1 -c copy -map 0  %2"), rewrapped,
                              dir.absoluteFilePath(QStringLiteral("ts.ts")));
    }
    const QString rewrapped = dir.absoluteFilePath(QStringLiteral("qsv.t"));
    auto *qsv = new QsvTask(QStringLiteral("QsvTask"), QString());
    qsv->setParam(new QsvTaskParam(source, rewrapped, qsvMode));
    return addRewrapSteps(items, qsv, QStringLiteral("-y -i %1 -c copy %2"), rewrapped,
                          dir.absoluteFilePath(QStringLiteral("flv.ts")));
}

ConvertTask *ComplexConvertTask::addConversion(QVector<TaskItem> &items, const QString &name,
                                               const ConvertTaskParam &step)
{
    auto *convert = new ConvertTask(name, QString());
    convert->setParam(new ConvertTaskParam(step));
    items.append({convert, convertWeight});
    return convert;
}

GroupMediaTask *ComplexConvertTask::buildGroup()
{
    const QString workDir = newWorkDir(m_param->outputDir);
    const QDir dir(workDir);
    QVector<TaskItem> items;

    items.append({createStep(workDir), folderWeight});

    const QString source = addSourceSteps(items, workDir);
    ConvertTaskParam step = convertStep(*m_param, source, workDir);
    replaceOddNames(step);
    if (step.palette == GifPalette::Used)
        addConversion(items, QStringLiteral("PaletteTask"), paletteStep(step));
    const ConvertTask *convert = addConversion(items, QStringLiteral("ConvertTask"), step);

    QString result = dir.absoluteFilePath(step.outputName + QLatin1Char('.') + step.format);
    if (isApe(m_param->format)) {
        const QString ape = workDir + QLatin1String("/m.ape");
        auto *mac = new MacTask(QStringLiteral("MacTask"), QString());
        mac->setParam(new MacTaskParam(result, ape));
        items.append({mac, convertWeight});
        result = ape;
    }
    const ExpectedResult expected = expectedResult(step);
    const auto check = [expected, convert](const auto &read) {
        return checkMade(expected, read.first().data(), *convert);
    };
    items.append({moveStep(result, finalPath(), check), folderWeight});
    items.append({deleteStep(workDir), folderWeight});
    return new GroupMediaTask(items, true);
}
