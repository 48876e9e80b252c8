// SPDX-License-Identifier: MIT
#include "cli/cataloguecommands.h"
#include "cli/commandline.h"
#include "cli/convertcommand.h"
#include "cli/helptext.h"
#include "cli/output.h"
#include "cli/probecommand.h"
#include "cli/recordcommand.h"
#include "cli/shotscommand.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/Logger/logger.h"
#include "platform/terminationwatcher.h"
#include "platform/utf8locale.h"

#include <QGuiApplication>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace {

constexpr int usageExitCode = 2;

int runJobs(std::vector<CliJob> jobs, const CommandLine &line)
{
    JobRunner runner(std::move(jobs), {line.jobs, line.json, line.strict});
    TerminationWatcher watcher;
    QObject::connect(&watcher, &TerminationWatcher::requested, &runner, &JobRunner::interrupt);
    QObject::connect(&runner, &JobRunner::allDone, &QCoreApplication::exit);
    QTimer::singleShot(0, &runner, &JobRunner::start);
    return QCoreApplication::exec();
}

int runDry(const CommandLine &line)
{
    QObject owner;
    QTimer::singleShot(0, &owner, [&] { printDryRun(line, &owner, &QCoreApplication::exit); });
    return QCoreApplication::exec();
}

int run(const CommandLine &line)
{
    QObject owner;
    switch (line.command) {
    case Command::Help:
        break;
    case Command::Categories:
        return listCategories(line);
    case Command::Presets:
        return listPresets(line);
    case Command::Probe:
        return probeFiles(line);
    case Command::Convert:
    case Command::Gif:
        return line.dryRun ? runDry(line) : runJobs(convertJobs(line, &owner), line);
    case Command::Shots:
        return runJobs(shotJobs(line, &owner), line);
    case Command::Merge:
        return runJobs(mergeJobs(line, &owner), line);
    case Command::Record:
        return recordScreen(line);
    }
    printLine(helpText().trimmed());
    return 0;
}

// Texts on pictures are painted, which takes an application with a GUI, though no display.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char *argv[])
{
    const bool paints = std::any_of(argv, argv + argc, [](const char *word) {
        return QByteArray(word).contains("-watermark");
    });
    if (!paints)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const auto application = makeApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("morvane-cli"));

    QString error;
    const auto line = parseCommandLine(QCoreApplication::arguments().mid(1), error);
    if (!line) {
        printMessage(error);
        return usageExitCode;
    }
    Logger::init(appDir() + QLatin1String("/log.conf"), logDir());
    sweepStaleMarkers();
    for (const QString &folder : refusedDirs())
        printMessage(QStringLiteral("拒绝使用他人的文件夹或链接：%1").arg(folder));
    const int exitCode = run(*line);
    if (allPrinted())
        return exitCode;
    printMessage(QStringLiteral("结果无法写到标准输出"));
    return exitCode == 0 ? 1 : exitCode;
}
