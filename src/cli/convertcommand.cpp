// SPDX-License-Identifier: MIT
#include "cli/convertcommand.h"

#include "catalogue/encparamcatalog.h"
#include "cli/output.h"
#include "cli/probecommand.h"
#include "cli/textvalues.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/concattask.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/gifpreset.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"
#include "MediaKits/MediaTasksManager/inputcheck.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QUuid>

namespace {

using Info = QSharedPointer<MediaInfoData>;

QSharedPointer<TimeSpan> timeRange(const CommandLine &line, int sourceMs)
{
    if (!line.fromMs && !line.toMs)
        return {};
    auto span = QSharedPointer<TimeSpan>::create();
    span->start = line.fromMs.value_or(0);
    // Without an end the source's own counts; where that is unknown, ffmpeg stops at it anyway.
    span->end = line.toMs.value_or(sourceMs > 0 ? sourceMs : behindAnyEndMs);
    return span;
}

ConvertTaskParam convertParam(const CommandLine &line, const QString &file, const Info &info)
{
    ConvertTaskParam param;
    const QFileInfo source(file);
    param.inputFile = file;
    param.inputFormat = source.suffix().toLower();
    param.outputName = line.name.isEmpty() ? resultBaseName(source) : line.name;
    param.outputDir = line.outputDir;
    param.encParam = line.command == Command::Gif
                         ? gifPreset(line.gifSize, line.gifRate)
                         : EncParamCatalog::instance().encParam(line.presetId);
    param.format = EncParamCatalog::instance().suffixOf(*param.encParam);
    if (line.gifQuality)
        param.palette = GifPalette::Own;
    param.durationMs = sourceDurationMs(info);
    param.speed = line.speed;
    param.sourceInfo = info;
    param.timeRange = timeRange(line, param.durationMs);
    if (line.crop)
        param.cropRect = QSharedPointer<CropBox>::create(*line.crop);
    if (line.beauty)
        param.beauty = QSharedPointer<VideoBeautyParam>::create(*line.beauty);
    param.videoFilters = line.marks;
    if (!line.dubbing.isEmpty())
        param.audioFilters = {line.dubbing};
    return param;
}

QSharedPointer<InputFileMediaParam> mergeInput(const QString &file, const Info &info)
{
    auto input = QSharedPointer<InputFileMediaParam>::create();
    input->file = file;
    input->format = QFileInfo(file).suffix().toUpper();
    input->durationMs = sourceDurationMs(info);
    input->sourceInfo = info;
    return input;
}

// Probes the files one after the other, from the list's present length on.
void probeAll(const QStringList &files, QObject *owner, const QSharedPointer<QVector<Info>> &infos,
              const std::function<void()> &ready)
{
    if (infos->size() == files.size()) {
        ready();
        return;
    }
    probeSource(files[infos->size()], owner, [=](const Info &info) {
        infos->append(info);
        probeAll(files, owner, infos, ready);
    });
}

// Finds out how long each piece of music is, which decides whether it has to fade out.
void probeMusics(const CommandLine &line, QObject *owner,
                 const std::function<void(const CommandLine &)> &ready)
{
    const QString musicsKey = QStringLiteral("musics");
    const QVariantList musics = line.dubbing.value(musicsKey).toList();
    QStringList files;
    for (const QVariant &music : musics)
        files += music.toMap().value(QStringLiteral("filePath")).toString();
    const auto infos = QSharedPointer<QVector<Info>>::create();
    probeAll(files, owner, infos, [=] {
        QVariantList told;
        for (int i = 0; i < musics.size(); ++i) {
            QVariantMap music = musics[i].toMap();
            music.insert(QStringLiteral("duration"), sourceDurationMs(infos->at(i)));
            told += music;
        }
        CommandLine known = line;
        if (!told.isEmpty())
            known.dubbing[musicsKey] = told;
        ready(known);
    });
}

MediaTask *mergeTask(const CommandLine &line, const QVector<Info> &infos)
{
    auto *param = new ConcatTaskParam;
    for (int i = 0; i < line.files.size(); ++i)
        param->files.append(mergeInput(line.files[i], infos[i]));
    param->outputName = line.name;
    param->outputDir = line.outputDir;
    param->encParam = EncParamCatalog::instance().encParam(line.presetId);
    param->format = EncParamCatalog::instance().suffixOf(*param->encParam);
    MediaTask *task = createGroupTask(ConcatKind);
    task->setParam(param);
    return task;
}

MediaTask *convertTask(const CommandLine &line, const QString &file, const Info &info)
{
    MediaTask *task = createGroupTask(ComplexConvertKind);
    task->setParam(new ConvertTaskParam(convertParam(line, file, info)));
    return task;
}

QString commandOf(const ConvertTaskParam &step)
{
    return FFmpegExTask::commandText(ConvertTask::buildOptionTree(step));
}

// In the order in which they would run.
QStringList dryRunTexts(const ConvertTaskParam &param)
{
    const QString workDir =
        QDir(tempMarkerPath(param.outputDir)).absoluteFilePath(QUuid::createUuid().toString());
    const ConvertTaskParam step = ComplexConvertTask::convertStep(param, param.inputFile, workDir);
    QStringList commands{commandOf(step)};
    if (step.palette == GifPalette::Used)
        commands.prepend(commandOf(paletteStep(step)));
    return commands;
}

void printDryLine(const CommandLine &line, const QString &file, const QString &command)
{
    if (line.json)
        printJsonLine({{QStringLiteral("input"), file}, {QStringLiteral("command"), command}});
    else
        printLine(command);
}

} // namespace

// A hidden file ".mp4" has no base name, and its result shouldn't be hidden as well.
QString resultBaseName(const QFileInfo &source)
{
    const QString name = source.completeBaseName();
    return name.isEmpty() ? source.suffix() : name;
}

std::vector<CliJob> convertJobs(const CommandLine &line, QObject *owner)
{
    std::vector<CliJob> jobs;
    for (const QString &file : line.files) {
        jobs.push_back({file, [=](const CliJob::Ready &ready) {
                            probeSource(file, owner, [=](const Info &info) {
                                probeMusics(line, owner, [=](const CommandLine &known) {
                                    ready(convertTask(known, file, info));
                                });
                            });
                        }});
    }
    return jobs;
}

std::vector<CliJob> mergeJobs(const CommandLine &line, QObject *owner)
{
    CliJob job;
    job.input = QJsonArray::fromStringList(line.files);
    job.prepare = [=](const CliJob::Ready &ready) {
        const auto infos = QSharedPointer<QVector<Info>>::create();
        probeAll(line.files, owner, infos, [=] { ready(mergeTask(line, *infos)); });
    };
    return {job};
}

void printDryRun(const CommandLine &line, QObject *owner, const std::function<void(int)> &done)
{
    const auto infos = QSharedPointer<QVector<Info>>::create();
    const auto print = [=](const CommandLine &known) {
        int exitCode = 0;
        for (int i = 0; i < known.files.size(); ++i) {
            const QString &file = known.files[i];
            const QString problem = inputProblem(file);
            if (problem.isEmpty()) {
                const auto param = convertParam(known, file, infos->at(i));
                for (const QString &command : dryRunTexts(param))
                    printDryLine(known, file, command);
            } else {
                printMessage(file + QStringLiteral("：") + problem);
                exitCode = 1;
            }
        }
        done(exitCode);
    };
    probeAll(line.files, owner, infos, [=] { probeMusics(line, owner, print); });
}
