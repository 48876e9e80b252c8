// SPDX-License-Identifier: MIT
// Times the check that each result goes through, one after the other, as a chain does it, with the
// start of the process that reads them. Prints nanoseconds for all files together.
// usage: bench_check FILE...
#include "MediaKits/MediaTasksManager/ffmpegtask.h"
#include "MediaKits/MediaTasksManager/resultcheck.h"
#include "support/factsof.h"

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
        const ResultVerdict verdict =
            checkMade(expected, factsOf(path, ReadDepth::Headers).data(), maker);
        if (!verdict.failure.isEmpty()) {
            std::fprintf(stderr, "%s: no result\n", qPrintable(path));
            return 1;
        }
    }
    std::printf("%lld\n", static_cast<long long>(clock.nsecsElapsed()));
    return 0;
}
