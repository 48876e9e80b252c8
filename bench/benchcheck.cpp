// SPDX-License-Identifier: MIT
// Times the check that each result goes through, in process and one after the other, as a chain
// does it. Prints nanoseconds for all files together.
// usage: bench_check FILE...
#include "MediaKits/MediaTasksManager/ffmpegtask.h"
#include "MediaKits/MediaTasksManager/resultcheck.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const FFmpegTask maker{QString(), QString()};
    ExpectedResult expected;
    expected.hasPicture = expected.hasSound = true;
    QElapsedTimer clock;
    clock.start();
    for (const QString &path : QCoreApplication::arguments().mid(1)) {
        const ResultVerdict verdict = checkFile(expected, path, maker);
        if (!verdict.failure.isEmpty()) {
            std::fprintf(stderr, "%s: no result\n", qPrintable(path));
            return 1;
        }
    }
    std::printf("%lld\n", static_cast<long long>(clock.nsecsElapsed()));
    return 0;
}
