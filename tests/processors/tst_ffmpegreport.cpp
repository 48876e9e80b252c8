// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/ffmpegaccount.h"
#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/reporttail.h"
#include "support/utf8.h"

#include <QtTest>

namespace {

FFmpegAccount accountOf(const QByteArray &report)
{
    FFmpegAccountReader reader;
    reader.feedReport(report);
    return reader.account();
}

} // namespace

class TstFfmpegReport : public QObject
{
    Q_OBJECT

private slots:
    void lowersDuration()
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

    void readsPositionsFromChunks()
    {
        // Two hours are more than 32 bits hold.
        const QString report = "out_time_us=9\nout_time_ms=1500000\n\n out_time_ms=7\n"
                               "out_time_ms=N/A\nout_time_ms=7200000000\n"
                               "out_time_ms=-40000\nout_time_ms=8"_s;
        for (int chunk = 1; chunk < report.size(); ++chunk) {
            LineSplitter splitter;
            QVector<qint64> positions;
            for (int at = 0; at < report.size(); at += chunk)
                positions += progressPositionsUs(splitter.feed(report.mid(at, chunk)));
            QCOMPARE(positions, (QVector<qint64>{1500000, 0, 7200000000LL, 0}));
        }
    }

    void givesAnAccount()
    {
        const QByteArray report =
            "Input #0, mov,mp4,m4a,3gp,3g2,mj2, from 'a: corrupt decoded frame in stream 0':\n"
            "  Metadata:\n    title           : Error while decoding stream #0:0\n"
            "  Duration: 01:00:10.03, start: 0.000000, bitrate: 348 kb/s\n"
            // Before the first frame of each stream, errors are those of the way in.
            "Error while decoding stream #0:1: Invalid data found when processing input\n"
            "Output #0, mp4, to 'b.mp4':\n"
            "frame=    1 time=00:00:00.04 bitrate=N/A\r"
            "frame=   22 time=00:00:00.96 bitrate= 100.3kbits/s\r"
            "[h264 @ 0x55e0] error while decoding MB 9 1, bytestream 1257\n"
            "[h264 @ 0x55e0] concealing 300 DC, 300 AC, 300 MV errors in P frame\n"
            "a.mp4: corrupt decoded frame in stream 0\n"
            "Error while decoding stream #0:1: Invalid data found when processing input\n"
            "    Last message repeated 3 times\n"
            "[mov,mp4,m4a,3gp,3g2,mj2 @ 0x55aa] stream 1, offset 0x36263: partial file\n"
            "    Last message repeated 8 times\n"
            "video:12kB audio:3kB subtitle:0kB other streams:0kB global headers:0kB muxing\n";
        for (int chunk = 1; chunk < report.size(); chunk += 7) {
            FFmpegAccountReader reader;
            for (int at = 0; at < report.size(); at += chunk)
                reader.feedReport(report.mid(at, chunk));
            reader.feedPosition(5000000);
            reader.feedPosition(4000000);
            const FFmpegAccount account = reader.account();
            QCOMPARE(account.inputMs, 3610030);
            QCOMPARE(account.damagedPlaces, 5);
            QVERIFY(account.inputCutOff);
            QCOMPARE(account.pictureKb, 12);
            QCOMPARE(account.soundKb, 3);
            QCOMPARE(account.writtenMs, qint64(5000));
            QVERIFY(!account.isEmpty());
        }
    }

    void accountBearsAnyNumber()
    {
        const QByteArray error = "Error while decoding stream #0:0: x\n";
        const QByteArray repeated = error + "    Last message repeated 2147483647 times\n";
        const QByteArray begun = "Input #0, avi, from 'x':\nOutput #0, mp4, to 'y':\n";
        QVERIFY(accountOf(begun + repeated + repeated + repeated).damagedPlaces > 0);
        QCOMPARE(accountOf(begun + error + "    Last message repeated -9 times\n").damagedPlaces,
                 1);
    }

    void accountDistinguishes()
    {
        // What was read, what is written, and what only stands in a tag.
        const QByteArray begun("Input #0, mov, from 'x':\nOutput #0, mp4, to 'y':\n");
        QVERIFY(accountOf(begun + "frame= 1 size= 2kB\rx: y: Stale file handle\n").inputUnreadable);
        for (const char *line : {"    title           : Input/output error\n",
                                 "av_interleaved_write_frame(): Input/output error\n",
                                 "[avi @ 0x5] x: Input/output error\n"})
            QVERIFY2(!accountOf(begun + line).inputUnreadable, line);
        // Lengths that aren't told: guessed, none, or counted from another zero.
        QCOMPARE(accountOf("[aac @ 0x5] Estimating duration from bitrate, this may be inaccurate\n"
                           "Input #0, aac, from 'x':\n  Duration: 00:00:09.93, bitrate: 72 kb/s\n")
                     .inputMs,
                 0);
        QCOMPARE(accountOf("Input #0, flac, from 'x':\n  Duration: N/A, start: 0.0\n").inputMs, 0);
        QCOMPARE(accountOf("Input #0, mov, from 'x':\n  Duration: 00:48:10.00, start: 1044.8, x\n")
                     .inputMs,
                 0);
        // A few errors are tags between the frames of a bare stream, and damage anywhere else.
        const QByteArray error = "Error while decoding stream #0:0: Invalid data found\n";
        const QByteArray mp3 = "Input #0, mp3, from 'x':\nOutput #0, mp4, to 'y':\n";
        QCOMPARE(accountOf(mp3 + error + error + error).damagedPlaces, 0);
        QCOMPARE(accountOf(mp3 + error + error + error + error).damagedPlaces, 4);
        QCOMPARE(accountOf("Input #0, ogg, from 'x':\nOutput #0, mp4, to 'y':\n" + error +
                           "[ogg @ 0x5] CRC mismatch!\n")
                     .damagedPlaces,
                 2);
        // A file of an open length, or a seam between two.
        QCOMPARE(accountOf("Input #0, wav, from 'x':\nOutput #0, mp4, to 'y':\n"
                           "x: corrupt input packet in stream 0\n")
                     .damagedPlaces,
                 0);
        QVERIFY(accountOf("video:0kB audio:0kB subtitle:0kB other streams:0kB x\n").isEmpty());
        QVERIFY(!FFmpegAccount().isEmpty());
    }

    void tailIsBounded()
    {
        ReportTail tail;
        for (int i = 0; i < 1000; ++i) {
            tail.append(QByteArray(1000, 'x') + QByteArray::number(i) + '\n');
            QVERIFY(tail.text().size() <= 2 * ReportTail::keptBytes);
        }
        QVERIFY(tail.text().size() >= ReportTail::keptBytes);
        QVERIFY(tail.lastLines(1).constFirst().endsWith("x999"_s));
    }

    void tailShowsLastLines()
    {
        const QByteArray status =
            "frame=   12 fps=0.0 size=  1kB time=00:00:01.00 bitrate= 9kbits/s\r";
        const QByteArray report = "banner\n片.mkv: No such file\n" + status + status + "\n \n" +
                                  status + "Conversion failed!\r\n";
        const QStringList lines = {"片.mkv: No such file"_s, "Conversion failed!"_s};
        ReportTail tail;
        // Cut inside a character: the bytes have to be joined before they are read as text.
        tail.append(report.left(8));
        tail.append(report.mid(8));
        // An encoder's sums at the end aren't what a user wants to know.
        tail.append("[libx264 @ 0x5581] frame I:3     Avg QP:11.11  size:  1030\n"
                    "[libx264 @ 0x5581] i16 v,h,dc,p: 12%  0% 88%  0%\n"
                    "[libx264 @ 0x5581] kb/s:29.17\n");
        QCOMPARE(tail.lastLines(2), lines);
        QCOMPARE(tail.lastLines(5), QStringList{"banner"_s} + lines);
    }
};

QTEST_GUILESS_MAIN(TstFfmpegReport)
#include "tst_ffmpegreport.moc"
