// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "resources/look.h"
#include "support/processload.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

namespace {

constexpr int preset = 1003005;  // MP4 640x480
constexpr int settlingMs = 1500; // until players, readers and pictures of rows have gone
constexpr int rounds = 5;

void spin(int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

void tell(const QString &when)
{
    spin(settlingMs);
    const ProcessLoad load = ProcessLoad::now();
    QTextStream(stdout) << when.leftJustified(28)
                        << QStringLiteral("%1 MB  %2 descriptors  %3 threads  %4 children  %5 "
                                          "zombies\n")
                               .arg(double(load.memoryKb) / 1024, 7, 'f', 1)
                               .arg(load.descriptors, 4)
                               .arg(load.threads, 3)
                               .arg(load.children, 2)
                               .arg(load.zombies, 2);
}

// Results that are in place; a failure leaves none, so that a round in which one fails never ends.
int convertAll(MediaConvertFunctionPage &page, const QDir &out, int wanted)
{
    page.on_btnConvertAll_clicked();
    const auto *button = page.findChild<QPushButton *>(QStringLiteral("btnConvertAll"));
    const QString busy = button->text();
    while (button->text() == busy)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 100);
    const QStringList made = out.entryList(QDir::Files);
    for (const QString &name : made)
        QFile::remove(out.filePath(name));
    return std::min(wanted, int(made.size()));
}

} // namespace

// Converts the files that are named behind a count, in rounds that take as many of them as make the
// count together, then shows all of them as rows, and tells what the process holds in between.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Look::apply();
    const QStringList words = QApplication::arguments();
    const int conversions = words.value(1).toInt();
    const QStringList files = words.mid(2);
    const QTemporaryDir folder;
    FunctionSettings::instance().setValue(FunctionSection::converter, FunctionKey::encParamID,
                                          preset);
    FunctionSettings::instance().setValue(FunctionSection::converter, FunctionKey::outPath,
                                          folder.path());
    MediaConvertFunctionPage page;
    page.resize(1000, 640);
    page.show();
    tell(QStringLiteral("empty page"));
    const QStringList part = files.mid(0, conversions / rounds);
    int converted = 0;
    for (int round = 1; round <= rounds; ++round) {
        page.addFiles(part);
        converted += convertAll(page, QDir(folder.path()), part.size());
        tell(QStringLiteral("%1 converted").arg(converted));
        page.clear();
        tell(QStringLiteral("rows cleared"));
    }
    for (int round = 1; round <= 2; ++round) {
        page.addFiles(files);
        tell(QStringLiteral("%1 rows").arg(files.size()));
        page.clear();
        tell(QStringLiteral("rows cleared"));
    }
    return converted == part.size() * rounds ? 0 : 1;
}
