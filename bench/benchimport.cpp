// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "resources/look.h"
#include "stallmeter.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QListWidget>
#include <QScrollBar>
#include <QTextStream>

#include <algorithm>

namespace {

constexpr int tickMs = 5;
constexpr int scrollSteps = 200;
constexpr int settlingMs = 500; // until the empty page is painted

// Memory of this process alone, in KB.
qint64 ownMemory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("Pss:"))
            return line.mid(4).simplified().split(' ').first().toLongLong();
    }
    return 0;
}

qint64 scrollThrough(QListWidget &list)
{
    QScrollBar *bar = list.verticalScrollBar();
    qint64 longest = 0;
    QElapsedTimer clock;
    for (int step = 0; step <= scrollSteps; ++step) {
        clock.start();
        bar->setValue(bar->maximum() * step / scrollSteps);
        list.viewport()->repaint();
        longest = std::max(longest, clock.elapsed());
        QCoreApplication::processEvents();
    }
    return longest;
}

} // namespace

// Imports the files that are named on the command line into the convert page.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Look::apply();
    const QStringList files = QApplication::arguments().mid(1);
    FunctionSettings::instance().setValue(FunctionSection::converter, FunctionKey::encParamID,
                                          1003003);
    MediaConvertFunctionPage page;
    page.resize(1000, 640);
    page.show();
    QElapsedTimer settling;
    settling.start();
    while (settling.elapsed() < settlingMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, tickMs);

    const qint64 memoryBefore = ownMemory();
    QElapsedTimer total;
    total.start();
    const StallMeter meter;
    page.addFiles(files);
    const qint64 importMs = total.elapsed();
    const qint64 stallMs = meter.longestMs();
    const qint64 memory = ownMemory() - memoryBefore;
    auto *list = page.findChild<QListWidget *>(QStringLiteral("convertList"));
    const qint64 scrollMs = scrollThrough(*list);
    QElapsedTimer clearing;
    clearing.start();
    page.clear();
    QCoreApplication::processEvents();

    QTextStream(stdout) << "rows " << files.size() << "\nimport ms " << importMs
                        << "\nlongest stall ms " << stallMs << "\nlongest scroll step ms "
                        << scrollMs << "\nmemory a row KB "
                        << double(memory) / std::max(1, files.size()) << "\nclear ms "
                        << clearing.elapsed() << '\n';
    return 0;
}
