// SPDX-License-Identifier: MIT
#include "cli/recordcommand.h"

#include "cli/output.h"
#include "platform/screensize.h"
#include "platform/screensource.h"
#include "platform/terminationwatcher.h"
#include "screencap/screencap.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QRect>

#include <optional>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("RecordCommand", text);
}

QRect rectOf(const CropBox &box)
{
    return {box.x, box.y, box.width, box.height};
}

// What makes the recording impossible; empty for nothing.
QString problemOf(const RecordWish &wish)
{
    if (screenAccess() != ScreenAccess::Open)
        return Screencap::instance().startWarning();
    if (wish.area && !QRect(QPoint(0, 0), screenSizeInPixels()).contains(rectOf(*wish.area)))
        return tr("区域超出了屏幕");
    if (wish.window && !windowSize(*wish.window))
        return tr("没有这个窗口：%1").arg(*wish.window);
    return {};
}

void setUp(Screencap &screencap, const CommandLine &line)
{
    const RecordWish &wish = line.record;
    screencap.setOutputDir(line.outputDir);
    screencap.setFilePrefix(QStringLiteral("rec_"));
    screencap.setFileSuffix(QStringLiteral(".mp4"));
    screencap.setAudioFlags(wish.sound);
    screencap.setDefinition(Screencap::SourceDefinition, {-1, -1});
    if (wish.area)
        screencap.setCapture(Screencap::AreaMode, rectOf(*wish.area));
    else if (wish.window)
        screencap.setCapture(Screencap::WindowMode, *wish.window);
    else
        screencap.setCapture(Screencap::FullMode, {});
}

void printWarnings(Screencap &screencap)
{
    screencap.setWarner([](const QString &warning) { printMessage(warning); });
    QObject::connect(&screencap, &Screencap::spaceLow, &screencap,
                     [] { printMessage(tr("磁盘空间即将不足")); });
    QObject::connect(&screencap, &Screencap::recordingsRepaired, &screencap,
                     [](const QStringList &files) {
                         for (const QString &file : files)
                             printMessage(tr("已恢复上次中断的录像：%1").arg(file));
                     });
}

void report(const Screencap &screencap, bool isFinished, bool json)
{
    const QString reason = screencap.failureReason();
    const QStringList files = isFinished ? screencap.outputPaths() : QStringList();
    if (json) {
        printJsonLine(
            {{QStringLiteral("output"), isFinished ? QJsonValue(files.first()) : QJsonValue()},
             {QStringLiteral("outputs"), QJsonArray::fromStringList(files)},
             {QStringLiteral("message"), reason}});
    } else {
        for (const QString &file : files)
            printLine(file);
    }
    if (!reason.isEmpty())
        printMessage(reason);
}

void exitWhenRepaired(int exitCode)
{
    constexpr int lookMs = 50;
    if (Screencap::instance().isRepairing())
        QTimer::singleShot(lookMs, qApp, [exitCode] { exitWhenRepaired(exitCode); });
    else
        QCoreApplication::exit(exitCode);
}

} // namespace

int recordScreen(const CommandLine &line)
{
    Screencap &screencap = Screencap::instance();
    setUp(screencap, line);
    const QString problem = problemOf(line.record);
    if (!problem.isEmpty()) {
        printMessage(problem);
        return 1;
    }
    const int seconds = line.record.seconds;
    TerminationWatcher watcher;
    // Behind the recording only a repair is at work, which can go on at the next start.
    std::optional<int> exitCode;
    QObject::connect(&watcher, &TerminationWatcher::requested, &screencap, [&] {
        if (exitCode)
            QCoreApplication::exit(*exitCode);
        else
            screencap.stop();
    });
    QObject::connect(&screencap, &Screencap::elapse, &screencap, [&screencap, seconds](uint now) {
        if (seconds > 0 && now == uint(seconds))
            screencap.stop();
    });
    printWarnings(screencap);
    QObject::connect(&screencap, &Screencap::stateChanged, &screencap,
                     [&](Screencap::CapStateEnum state) {
                         const bool isFinished = state == Screencap::CapFinished;
                         if (!isFinished && state != Screencap::CapFailed)
                             return;
                         report(screencap, isFinished, line.json);
                         exitCode = isFinished ? 0 : 1;
                         exitWhenRepaired(*exitCode);
                     });
    QTimer::singleShot(0, &screencap, [&screencap] {
        screencap.repairLeftRecordings();
        screencap.start();
    });
    return QCoreApplication::exec();
}
