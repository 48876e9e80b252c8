// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/reporttail.h"

#include <QTest>

class TstFfmpegReport : public QObject
{
    Q_OBJECT

private slots:
    void lowersDuration();
    void readsPositionsFromChunks();
    void tailIsBounded();
    void tailShowsLastLines();
};

void TstFfmpegReport::lowersDuration()
{
    constexpr quint32 expectedMs = 5400000;
    struct Case
    {
        const char *report;
        quint32 loweredMs;
        bool seen;
    };
    const Case cases[] = {
        {"Input #0, avi:\r\n  Duration: 01:02:03.04, bitrate: 1 kb/s\n  x", 3723040, true},
        {"  Duration: N/A\n  Duration: 00:00:10.50, x\n  Duration: 01:00:00.00\n", 10500, true},
        {"  Duration: 02:00:00.00\n", expectedMs, true},
        // No time of day, so nothing can be learnt, but the line was there.
        {"  Duration: 24:00:00.00\n  Duration: 00:00:00.00\n", expectedMs, true},
        {"x  Duration: 00:00:01.00\n Duration: 00:00:01.00\n", expectedMs, false},
    };
    for (const Case &each : cases) {
        quint32 durationMs = expectedMs;
        const bool seen = lowerDurationFromReport(QString::fromLatin1(each.report), durationMs);
        QVERIFY2(seen == each.seen && durationMs == each.loweredMs, each.report);
    }
}

void TstFfmpegReport::readsPositionsFromChunks()
{
    // Two hours are more than 32 bits hold.
    const QString report = QStringLiteral("out_time_us=9\nout_time_ms=1500000\n\n out_time_ms=7\n"
                                          "out_time_ms=N/A\nout_time_ms=7200000000\n"
                                          "out_time_ms=8");
    for (int chunk = 1; chunk < report.size(); ++chunk) {
        LineSplitter splitter;
        QVector<qint64> positions;
        for (int at = 0; at < report.size(); at += chunk)
            positions += progressPositionsUs(splitter.feed(report.mid(at, chunk)));
        QCOMPARE(positions, (QVector<qint64>{1500000, 0, 7200000000LL}));
    }
}

void TstFfmpegReport::tailIsBounded()
{
    ReportTail tail;
    for (int i = 0; i < 1000; ++i) {
        tail.append(QByteArray(1000, 'x') + QByteArray::number(i) + '\n');
        QVERIFY(tail.text().size() <= 2 * ReportTail::keptBytes);
    }
    QVERIFY(tail.text().size() >= ReportTail::keptBytes);
    QVERIFY(tail.lastLines(1).constFirst().endsWith(QLatin1String("x999")));
}

void TstFfmpegReport::tailShowsLastLines()
{
    const QByteArray status = "frame=   12 fps=0.0 size=  1kB time=00:00:01.00 bitrate= 9kbits/s\r";
    const QByteArray report = "banner\n片.mkv: No such file\n" + status + status + "\n \n" +
                              status + "Conversion failed!\r\n";
    const QStringList lines = {QStringLiteral("片.mkv: No such file"),
                               QStringLiteral("Conversion failed!")};
    ReportTail tail;
    // Cut inside a character: the bytes have to be joined before they are read as text.
    tail.append(report.left(8));
    tail.append(report.mid(8));
    QCOMPARE(tail.lastLines(2), lines);
    QCOMPARE(tail.lastLines(5), QStringList{QStringLiteral("banner")} + lines);
}

QTEST_GUILESS_MAIN(TstFfmpegReport)
#include "tst_ffmpegreport.moc"
