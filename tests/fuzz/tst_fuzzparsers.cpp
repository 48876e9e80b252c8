// SPDX-License-Identifier: MIT
// What other programs say, damaged: nothing may break on it, and what is read of it stays within
// what the rest of the program reckons with.
#include "fuzz/fuzz.h"
#include "MediaKits/AppUpdater/Package/updatekey.h"
#include "MediaKits/AppUpdater/Package/updatepackage.h"
#include "MediaKits/MediaInfo/Facts/factsstream.h"
#include "MediaKits/MediaInfo/FFMediaInfo/ffprobejson.h"
#include "MediaKits/MediaInfo/shownpicture.h"
#include "MediaKits/MediaProcessor/ffmpegaccount.h"
#include "MediaKits/MediaProcessor/ffmpegreport.h"
#include "MediaKits/MediaProcessor/reporttail.h"
#include "MediaKits/Player/playerstatus.h"
#include "updater/updatefixture.h"

#include <QJsonDocument>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

const QByteArray probeText = R"({"streams":[{"index":0,"codec_name":"h264","codec_type":"video",
"width":1920,"height":1080,"pix_fmt":"yuv420p","sample_aspect_ratio":"4:3","color_space":"bt709",
"color_transfer":"bt709","r_frame_rate":"30000/1001","bit_rate":"4000000","tags":{"rotate":"90"},
"disposition":{"attached_pic":0},"side_data_list":[{"rotation":-90}]},{"index":1,"codec_name":"aac",
"codec_type":"audio","sample_rate":"48000","channels":6,"bit_rate":"128000"},{"index":2,
"codec_name":"mjpeg","codec_type":"video","disposition":{"attached_pic":1}},{"index":3,"codec_type":
"subtitle"}],"format":{"nb_streams":4,"format_name":"mov,mp4","start_time":"0.000000","duration":
"12.345000","size":"1234567","bit_rate":"800000"}})";

const QByteArray reportText =
    "Input #0, mov,mp4, from 'a: b.mp4':\r\n  Metadata:\n    title : x\n"
    "  Duration: 00:01:02.03, start: 0.000000, bitrate: 4000 kb/s\n"
    "  Stream #0:0[0x1](und): Video: h264, yuv420p(tv), 1920x1080 (attached pic)\n"
    "  Duration: 00:00:09.50, start: 0.500000, bitrate: 4 kb/s\n"
    "Output #0, avi, to 'b.avi':\n[aac @ 0x55] CRC mismatch!\n"
    "Error while decoding stream #0:0: Invalid data found\n    Last message repeated 7 times\n"
    "b.mov: corrupt decoded frame in stream 0\n[matroska @ 0x5] File ended prematurely\n"
    "a.mp4: Input/output error\nframe=  12 fps=0.0 q=2.0 size= 1kB time=00:00:01.00 bitrate= 1\r"
    "video:12kB audio:34kB subtitle:0kB other streams:0kB\n";

const QByteArray progressText = "frame=25\nfps=0.00\nout_time_us=1000000\nout_time_ms=1000000\n"
                                "out_time=00:00:01.0\nprogress=continue\nout_time_ms=N/A\n"
                                "out_time_ms=7200000000\nprogress=end\n";

const QByteArray statusText = "A: 00:00:01.250 / 00:00:10 (12%)\r(Paused) AV: 00:01:02 / 01:02:03 "
                              "(5%) A-V: 0.000\x1b[K\rV: -00:00:01 / 99:99:99 (100%)\r\n";

// What int arithmetic on the fields takes for granted.
bool isSensible(const MediaInfoData &info)
{
    const auto isCount = [](qint64 number) {
        return number >= 0 && number <= std::numeric_limits<int>::max();
    };
    bool good = isCount(info.content.toldMs) && isCount(info.content.pictureEndMs) &&
                isCount(info.content.soundEndMs);
    if (info.format)
        good = good && isCount(info.format->duration) && info.format->fileSize >= 0 &&
               isCount(info.format->bitrate) && isCount(info.format->streamCount);
    if (info.video) {
        const VEncParam &video = *info.video;
        const QSize shown = shownSize(video);
        good = good && isCount(video.bitrate) && isCount(qint64(video.width) * video.height) &&
               isCount(qint64(shown.width()) * shown.height()) && video.width >= 0 &&
               std::isfinite(video.frameRate) && video.frameRate >= 0 &&
               std::isfinite(video.rotate) && std::isfinite(video.pixelAspect) &&
               video.pixelAspect > 0;
    }
    for (const auto &audio : info.audios)
        good = good && isCount(audio->bitrate) && isCount(audio->channel) &&
               isCount(audio->sampleRate);
    return good;
}

QSharedPointer<MediaInfoData> probed(const QByteArray &json)
{
    auto info = QSharedPointer<MediaInfoData>::create();
    info->format = newFormatInfo("a.mp4"_s);
    readProbeJson(QJsonDocument::fromJson(json).object(), *info);
    return info;
}

QByteArray accountText(const QList<QByteArray> &pieces)
{
    FFmpegAccountReader reader;
    for (const QByteArray &piece : pieces)
        reader.feedReport(piece);
    const FFmpegAccount account = reader.account();
    QByteArray text;
    for (const int number : {account.inputMs, account.damagedPlaces, int(account.inputCutOff),
                             int(account.inputUnreadable), int(account.coverLost)})
        text += QByteArray::number(number) + ' ';
    return text + QByteArray::number(account.pictureKb) + ' ' + QByteArray::number(account.soundKb);
}

} // namespace

class FuzzParsers : public QObject
{
    Q_OBJECT

private slots:
    void probeJson()
    {
        QVERIFY(isSensible(*probed(probeText)) && probed(probeText)->video);
        Fuzz fuzz("probejson");
        while (fuzz.goesOn()) {
            const QByteArray input = fuzz.take(fuzz.mutated(probeText));
            FUZZ_VERIFY(isSensible(*probed(input)));
        }
    }

    void readersMessages()
    {
        const QByteArray answer = packed(ReadAnswer{ReadOutcome::Read, probed(probeText)});
        const QByteArray request = packed(ReadRequest{"/视频/a.mp4"_s, ReadDepth::Headers});
        QCOMPARE(packed(unpackedAnswer(answer)), answer);
        Fuzz fuzz("readersmessages");
        while (fuzz.goesOn()) {
            const ReadRequest read = unpackedRequest(fuzz.take(fuzz.mutated(request)));
            FUZZ_VERIFY(read.depth <= ReadDepth::Headers);
            const ReadAnswer told = unpackedAnswer(fuzz.take(fuzz.mutated(answer)));
            FUZZ_VERIFY(told.outcome <= ReadOutcome::Failed);
            FUZZ_VERIFY((told.outcome == ReadOutcome::Read) == !told.info.isNull());
            FUZZ_VERIFY(!told.info || (told.info->format && isSensible(*told.info)));
        }
    }

    // The pipe may cut a text anywhere.
    void progressAndReport()
    {
        Fuzz fuzz("report");
        while (fuzz.goesOn()) {
            const QByteArray report = fuzz.take(fuzz.mutated(reportText));
            const QList<QByteArray> pieces = fuzz.pieces(report);
            FUZZ_VERIFY(accountText(pieces) == accountText({report}));
            FUZZ_VERIFY(!accountText({report}).contains("-2"));
            quint32 durationMs = 5000;
            lowerDurationFromReport(toolText(report), durationMs);
            FUZZ_VERIFY(durationMs > 0 && durationMs <= 5000);
            reportsLostOutput(toolText(report));
            ReportTail tail;
            for (const QByteArray &piece : pieces)
                tail.append(piece);
            FUZZ_VERIFY(tail.lastLines(5).size() <= 5);

            const QString progress = QString::fromLatin1(fuzz.take(fuzz.mutated(progressText)));
            LineSplitter splitter;
            QVector<qint64> positions;
            for (const QByteArray &piece : fuzz.pieces(progress.toLatin1()))
                positions += progressPositionsUs(splitter.feed(QString::fromLatin1(piece)));
            FUZZ_VERIFY(positions == progressPositionsUs(LineSplitter().feed(progress)));
            for (const qint64 positionUs : qAsConst(positions))
                FUZZ_VERIFY(positionUs >= 0);
        }
    }

    void playerStatus()
    {
        QCOMPARE(playerStatuses(statusText).size(), 3);
        Fuzz fuzz("playerstatus");
        while (fuzz.goesOn()) {
            const auto statuses = playerStatuses(fuzz.take(fuzz.mutated(statusText)));
            for (const PlayerStatus &status : statuses) {
                FUZZ_VERIFY(status.position >= 0 && status.positionMs >= 0 && status.total >= 0);
                FUZZ_VERIFY(status.percent >= 0 && status.percent <= 100);
            }
        }
    }

    // Whatever is changed of a package, it is refused.
    void updatePackages()
    {
        const QByteArray good = packageOf(archiveOf({{"a"}}), 17);
        QTemporaryFile file;
        QVERIFY(file.open());
        const auto isAccepted = [&file](const QByteArray &bytes) {
            return file.resize(0) && file.seek(0) && file.write(bytes) == bytes.size() &&
                   file.flush() && readUpdatePackage(file, updateKey(), 16).isAccepted();
        };
        QVERIFY(isAccepted(good));
        Fuzz fuzz("updatepackage");
        while (fuzz.goesOn()) {
            const QByteArray input = fuzz.take(fuzz.mutated(good));
            FUZZ_VERIFY(input == good || !isAccepted(input));
        }
    }
};

QTEST_GUILESS_MAIN(FuzzParsers)
#include "tst_fuzzparsers.moc"
