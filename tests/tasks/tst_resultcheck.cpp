// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/failurecause.h"
#include "MediaKits/MediaTasksManager/resultcheck.h"
#include "support/utf8.h"

#include <QtTest>

#include <functional>

namespace {

// A film of ten seconds whose header tells everything.
QSharedPointer<MediaInfoData> film()
{
    auto info = QSharedPointer<MediaInfoData>::create();
    info->format = QSharedPointer<MediaFormatInfo>::create();
    info->format->duration = 10000;
    info->video.reset(new VEncParam{"AVC"_s, 640, 360, 0, 25.0, 0.0});
    info->audios = {QSharedPointer<AEncParam>(new AEncParam{"AAC"_s, 2, 44100, 128})};
    info->content.hasPicture = info->content.hasSound = true;
    info->content.pictureSize = {640, 360};
    info->content.pictureEndMs = info->content.soundEndMs = info->content.toldMs = 10000;
    return info;
}

// A conversion, what came of it and what ffmpeg told: by itself, one in which all is right.
struct Case
{
    Case()
    {
        param.format = "mp4"_s;
        param.sourceInfo = film();
        param.encParam.reset(new EncParam);
        param.encParam->video.reset(new VEncParam{"H264"_s, 641, 361, 0, 0.0, 0.0});
        param.encParam->audio.reset(new AEncParam{"AAC"_s, 2, 44100, 128});
        account.inputMs = 10000;
        account.writtenMs = 10000;
        account.pictureKb = account.soundKb = 100;
    }

    void endAt(qint64 ms)
    {
        account.writtenMs = result->format->duration = ms;
        result->content.pictureEndMs = result->content.soundEndMs = ms;
    }

    ResultVerdict verdict() const
    {
        return checkResult(confirmed(expectedResult(param), account), result.data(), account);
    }

    ConvertTaskParam param;
    QSharedPointer<MediaInfoData> result = film();
    FFmpegAccount account;
};

struct Row
{
    const char *name;
    std::function<void(Case &)> change;
    QStringList remarks;
};

void leaveNothing(Case &c)
{
    c.result->content.hasPicture = c.result->content.hasSound = false;
    c.account.pictureKb = c.account.soundKb = 0;
}

} // namespace

class TestResultCheck : public QObject
{
    Q_OBJECT

private slots:
    void remarks()
    {
        const Row rows[] = {
            {"short", [](Case &c) { c.endAt(4000); }, {"比源文件短 6 秒"_s}},
            {"by minutes",
             [](Case &c) {
                 c.param.sourceInfo->content.toldMs = c.account.inputMs = 200000;
                 c.param.sourceInfo->content.pictureEndMs = 200000;
             },
             {"比源文件短 3 分 10 秒"_s}},
            {"short of a range",
             [](Case &c) {
                 c.param.timeRange.reset(new TimeSpan{2000, 8000});
                 c.endAt(3000);
             },
             {"比所选片段短 3 秒"_s}},
            {"short at half the speed",
             [](Case &c) {
                 c.param.beauty.reset(new VideoBeautyParam);
                 c.param.beauty->speed = 0.5F;
             },
             {"比预期短 10 秒"_s}},
            {"sound that ends early",
             [](Case &c) { c.result->content.soundEndMs = 8100; },
             {"声音比源文件短 2 秒"_s}},
            {"picture that ends early",
             [](Case &c) { c.result->content.pictureEndMs = 2000; },
             {"画面比源文件短 8 秒"_s}},
            {"picture of a long film that ends early",
             [](Case &c) {
                 c.account.inputMs = 7200000;
                 c.param.sourceInfo->content.toldMs = 7200000;
                 c.param.sourceInfo->content.pictureEndMs = 7200000;
                 c.param.sourceInfo->content.soundEndMs = 7200000;
                 c.endAt(7200000);
                 c.result->content.pictureEndMs = 7185000;
             },
             {"画面比源文件短 15 秒"_s}},
            // The readers of the header don't agree, but the file is known to be cut.
            {"cut off",
             [](Case &c) {
                 c.account.inputMs = 0;
                 c.param.sourceInfo->content.isCutOff = true;
                 c.endAt(5000);
             },
             {"比源文件短 5 秒"_s}},
            {"cut off, nobody knows by how much",
             [](Case &c) {
                 c.param.sourceInfo->content = {};
                 c.account.inputCutOff = true;
             },
             {"源文件不完整"_s}},
            {"no sound",
             [](Case &c) {
                 c.result->content.hasSound = false;
                 c.account.soundKb = 0;
             },
             {"没有声音"_s}},
            {"no music",
             [](Case &c) {
                 c.param.sourceInfo->audios.clear();
                 c.param.audioFilters = {QVariantMap{{"filter"_s, "dubbing"_s},
                                                     {"musics"_s, QVariantList{QVariantMap()}}}};
                 c.result->content.hasSound = false;
                 c.account.soundKb = 0;
             },
             {"没有声音"_s}},
            {"no picture",
             [](Case &c) {
                 c.result->content.hasPicture = false;
                 c.account.pictureKb = 0;
             },
             {"没有画面"_s}},
            {"shape",
             [](Case &c) {
                 c.result->content.pictureSize = {320, 240};
                 c.result->audios.first()->sampleRate = 8000;
                 c.result->audios.first()->channel = 1;
             },
             {"画面尺寸为 320×240，而不是 640×360"_s, "采样率为 8000 Hz，而不是 44100 Hz"_s,
              "声道数为 1，而不是 2"_s}},
            {"damage", [](Case &c) { c.account.damagedPlaces = 12; }, {"源文件有 12 处损坏"_s}},
        };
        for (const Row &row : rows) {
            Case tried;
            row.change(tried);
            const ResultVerdict verdict = tried.verdict();
            QVERIFY2(verdict.failure.isEmpty(), row.name);
            QVERIFY2(verdict.remarks == row.remarks,
                     qPrintable(QLatin1String(row.name) + ": "_s + verdict.remarks.join(", "_s)));
        }
    }

    void saysNothing()
    {
        const Row rows[] = {
            {"all is right", [](Case &) {}, {}},
            {"a last frame", [](Case &c) { c.endAt(9100); }, {}},
            {"a header that ffmpeg reads differently",
             [](Case &c) {
                 c.account.inputMs = 3000000;
                 c.endAt(4000);
             },
             {}},
            {"a stream without a header",
             [](Case &c) {
                 c.param.sourceInfo->content.toldMs = 0;
                 c.endAt(4000);
             },
             {}},
            {"the sound of a film whose picture is longer",
             [](Case &c) {
                 c.param.format = "mp3"_s;
                 c.param.sourceInfo->content.soundEndMs = 4000;
                 c.endAt(4000);
                 c.result->content.hasPicture = false;
             },
             {}},
            {"a range behind the end of the source",
             [](Case &c) {
                 c.param.timeRange.reset(new TimeSpan{9000, 60000});
                 c.endAt(1000);
             },
             {}},
            {"the beginning of a source that is cut off",
             [](Case &c) {
                 c.param.timeRange.reset(new TimeSpan{0, 2000});
                 c.param.sourceInfo->content.isCutOff = true;
                 c.endAt(2000);
             },
             {}},
            {"music instead of the film's sound",
             [](Case &c) {
                 c.param.audioFilters = {QVariantMap()};
                 c.result->content.soundEndMs = 3000;
             },
             {}},
            {"a dubbing of a silent film without music",
             [](Case &c) {
                 c.param.sourceInfo->audios.clear();
                 c.param.audioFilters = {QVariantMap{{"filter"_s, "dubbing"_s}}};
                 c.result->content.hasSound = false;
                 c.account.soundKb = 0;
             },
             {}},
            {"a silent film whose subtitles go on",
             [](Case &c) {
                 c.param.sourceInfo->audios.clear();
                 c.param.sourceInfo->content.soundEndMs = 0;
                 c.param.sourceInfo->content.toldMs = c.account.inputMs = 30000;
             },
             {}},
            {"a last frame that stands for long",
             [](Case &c) { c.result->content.pictureEndMs = 7500; },
             {}},
            {"a container that takes few rates",
             [](Case &c) {
                 c.param.format = "flv"_s;
                 c.result->audios.first()->sampleRate = 22050;
             },
             {}},
            {"a silent source", [](Case &c) { c.param.sourceInfo->audios.clear(); }, {}},
            {"nothing known of the source",
             [](Case &c) {
                 c.param.sourceInfo.clear();
                 c.endAt(100);
             },
             {}},
            // A kilobyte is more than a second of silence.
            {"what the reader can't see, ffmpeg told",
             [](Case &c) { c.result->content.hasSound = c.result->content.hasPicture = false; },
             {}},
        };
        for (const Row &row : rows) {
            Case tried;
            row.change(tried);
            const ResultVerdict verdict = tried.verdict();
            QVERIFY2(verdict.failure.isEmpty() && verdict.remarks.isEmpty(),
                     qPrintable(QLatin1String(row.name) + ": "_s + verdict.failure +
                                verdict.remarks.join(", "_s)));
        }
    }

    void emptyResultsFail()
    {
        const Row rows[] = {
            {"no media at all",
             [](Case &c) {
                 c.result.clear();
                 c.account.pictureKb = c.account.soundKb = 0;
             },
             {"结果中没有画面和声音"_s}},
            {"streams without a frame", leaveNothing, {"结果中没有画面和声音"_s}},
            {"sound without a sample",
             [](Case &c) {
                 c.param.sourceInfo->video.clear();
                 leaveNothing(c);
             },
             {"结果中没有声音"_s}},
            // MP3 files begin with a frame that only tells about the others.
            {"a header that looks like sound",
             [](Case &c) {
                 c.param.format = "mp3"_s;
                 c.account.pictureKb = c.account.soundKb = 0;
                 c.account.writtenMs = 0;
             },
             {"结果中没有声音"_s}},
            {"a source that nobody could read",
             [](Case &c) {
                 c.param.sourceInfo.clear();
                 leaveNothing(c);
             },
             {"结果中没有画面和声音"_s}},
        };
        for (const Row &row : rows) {
            Case tried;
            row.change(tried);
            QVERIFY2(tried.verdict().failure == row.remarks.first(),
                     qPrintable(QLatin1String(row.name) + tried.verdict().failure));
        }
    }

    // Reports as ffmpeg ended them, with the line that a user should be shown.
    void causeNamesTheFault()
    {
        const QStringList reports[] = {
            {"[aac @ 0x55e0] Unsupported channel layout \"1 channels\""_s,
             "[aac @ 0x55e0] Qavg: nan"_s,
             "Error initializing output stream 0:0 -- Error while opening encoder"_s,
             "Conversion failed!"_s, "Unsupported channel layout \"1 channels\""_s},
            {"Error submitting audio frame to the encoder"_s, "[aac @ 0x5580] Qavg: 109.521"_s,
             "[aac @ 0x5580] 3 frames left in the queue on closing"_s, "Conversion failed!"_s,
             "Error submitting audio frame to the encoder"_s},
            {"Cannot determine format of input stream 0:0 after EOF"_s,
             "Error marking filters as finished"_s,
             "[aac @ 0x55a3] 2 frames left in the queue on closing"_s, "Conversion failed!"_s,
             "Cannot determine format of input stream 0:0 after EOF"_s},
            {"[out#0 @ 0x55a3] Something odd"_s, "Conversion failed!"_s, "Something odd"_s},
            {"Conversion failed!"_s, "Conversion failed!"_s},
        };
        for (const QStringList &report : reports)
            QCOMPARE(tellingLine(report.mid(0, report.size() - 1)), report.last());
        QVERIFY(!failureCause({}).isEmpty());
    }

    // What is counted by a service tells nothing of the user's files.
    void causesWithoutNames()
    {
        const QString film = "/home/我：的/假期"_s; // a name may look like a cause
        const auto told = [&](const QString &cause) { return causeWithoutNames(cause, {film}); };
        QCOMPARE(told(film + "：磁盘空间不足"_s), "磁盘空间不足"_s);
        QCOMPARE(told(film + "：配乐歌.mp3：文件不存在"_s), "文件不存在"_s);
        QCOMPARE(told("无法移动到输出目录：/out/a（没有访问权限），成品保留在：/out/b"_s),
                 "无法移动到输出目录：没有访问权限：成品保留在"_s);
    }
};

QTEST_GUILESS_MAIN(TestResultCheck)
#include "tst_resultcheck.moc"
