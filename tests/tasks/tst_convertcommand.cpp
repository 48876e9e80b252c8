// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/converttask.h"
#include "support/utf8.h"

#include <QColor>
#include <QFont>
#include <QtTest>

#include <functional>

namespace {

// A conversion of /in/a.mp4 to /out/b.mkv; the methods add to it.
struct Wanted : ConvertTaskParam
{
    Wanted()
    {
        inputFile = "/in/a.mp4"_s;
        outputName = "b"_s;
        outputDir = "/out"_s;
        format = "mkv"_s;
        encParam.reset(new EncParam);
    }
    Wanted &as(const char *suffix, int speedIndex = 0)
    {
        format = QLatin1String(suffix);
        speed = speedIndex;
        return *this;
    }
    Wanted &video(const char *fourCC, int width, int height, int bitrate = 0, double rate = 0)
    {
        encParam->video.reset(
            new VEncParam{QLatin1String(fourCC), width, height, bitrate, rate, 0.0});
        return *this;
    }
    Wanted &audio(const char *fourCC, int channel, int sampleRate, int bitrate)
    {
        encParam->audio.reset(new AEncParam{QLatin1String(fourCC), channel, sampleRate, bitrate});
        return *this;
    }
    Wanted &range(int start, int end)
    {
        timeRange.reset(new TimeSpan{start, end});
        return *this;
    }
    Wanted &crop()
    {
        cropRect.reset(new CropBox{2, 4, 100, 50});
        return *this;
    }
    Wanted &source(int width, int height, int sounds)
    {
        sourceInfo.reset(new MediaInfoData);
        if (width > 0)
            sourceInfo->video.reset(new VEncParam{QString(), width, height, 0, 0.0, 0.0});
        sourceInfo->audios.fill(QSharedPointer<AEncParam>::create(), sounds);
        return *this;
    }
    Wanted &look(const std::function<void(VideoBeautyParam &)> &set)
    {
        beauty.reset(new VideoBeautyParam);
        set(*beauty);
        return *this;
    }
    Wanted &overlay(const QVariantMap &map)
    {
        videoFilters += map;
        return *this;
    }
    Wanted &dub(const QVariantMap &map)
    {
        audioFilters += map;
        return *this;
    }
};

struct GraphRow
{
    Wanted wanted;
    const char *graph;
};

QVariantMap entry(const char *filter, const QRectF &rect, QVariantMap keys = {})
{
    keys.insert("filter"_s, QLatin1String(filter));
    keys.insert("rect"_s, rect);
    return keys;
}

QVariantMap during(QVariantMap overlay, int startMs, int endMs)
{
    overlay.insert("startTime"_s, startMs);
    overlay.insert("endTime"_s, endMs);
    return overlay;
}

QVariantMap watermark(const char *image, const QRectF &rect)
{
    return entry("watermark", rect, {{"imagefile"_s, utf8(image)}});
}

QVariantMap drawtext(const char *text)
{
    QFont font("Noto Sans CJK SC"_s);
    font.setPixelSize(24);
    return entry("drawtext", {10.4, 20.6, 100, 30},
                 {{"font"_s, font},
                  {"fontcolor"_s, QColor(255, 0, 0)},
                  {"opacity"_s, 0.8F},
                  {"text"_s, utf8(text)}});
}

QVariantMap dubbing(const QStringList &files, bool isMax)
{
    QVariantList musics;
    for (const QString &file : files)
        musics += QVariantMap{{"filePath"_s, file}, {"volume"_s, 0.7F}, {"startTime"_s, 1500}};
    return {{"filter"_s, "dubbing"_s},
            {"musics"_s, musics},
            {"videoVolume"_s, 0.3F},
            {"isMax"_s, isMax}};
}

} // namespace

// The command lines and filter graphs of conversions, letter for letter.
class TestConvertCommand : public QObject
{
    Q_OBJECT

private slots:
    void commands();
    void pictureGraphs();
    void overlayGraphs();
    void soundGraphs();

private:
    void compare(const QVector<GraphRow> &rows);
};

void TestConvertCommand::commands()
{
    const struct
    {
        Wanted wanted;
        const char *input;
        const char *output;
    } rows[] = {
        {Wanted(), "", ""},
        {Wanted().video("H264", 0, 720, 800, 29.97).audio("AAC", 2, 44100, 128), "",
         "-c:v libx264 -b:v 800k -r 29.97 -c:a aac -ac 2 -ar 44100 -b:a 128k "},
        {Wanted().video("????", 0, 0, 0, 24000 / 1001.0).audio("????", 0, 0, 0), "", "-r 23.976 "},
        {Wanted().as("mkv", -1).range(0, 10000), "-t 10.001 ", ""},
        {Wanted().as("mkv", 10).range(1234, 4321), "-ss 1.234 -t 3.088 ", ""},
        {Wanted().as("mkv", 5).range(5000, 0), "", "-preset fast "},
        {Wanted().as("M4R").video("", 0, 0).audio("AAC", 2, 44100, 64), "",
         "-f mp4 -ar 44100 -b:a 64k -vn "},
        {Wanted().as("mp3", 9).audio("MP3 ", 1, 0, 0), "",
         "-c:a libmp3lame -ac 1 -preset veryslow -vn "},
    };
    for (const auto &row : rows) {
        const QString expected =
            "-hide_banner -y %1-i \"/in/a.mp4\" %2-max_muxing_queue_size 34500 "
            "\"/out/b.%3\""_s.arg(utf8(row.input), utf8(row.output), row.wanted.format);
        QCOMPARE(FFmpegExTask::commandText(ConvertTask::buildOptionTree(row.wanted)), expected);
    }
}

void TestConvertCommand::pictureGraphs()
{
    const auto look = [](const std::function<void(VideoBeautyParam &)> &set) {
        return Wanted().source(640, 360, 0).look(set);
    };
    compare({
        {Wanted().video("H264", 0, 720).crop(), ""},
        {Wanted().video("H264", 1280, 1), ""},
        {Wanted().video("H264", 1280, 720).source(0, 0, 1), ""},
        {Wanted().video("H264", 64, 48).crop(),
         "[0:v]crop=w=100:h=50:x=2:y=4,scale='trunc(min(64,48*dar)/2)*2':"
         "'trunc(min(64/dar,48)/2)*2',setsar=1:1,"
         "pad=64:48:trunc((64-iw)/2):trunc((48-ih)/2):black[vrt0]"},
        {look([](VideoBeautyParam &b) {
             b.vflip = true;
             b.hflip = true;
             b.rotate = 1;
         }),
         "[0:v]vflip=,hflip=,transpose=1[vrt0]"},
        {look([](VideoBeautyParam &b) { b.rotate = -3; }),
         "[0:v]transpose=2,transpose=2,transpose=2[vrt0]"},
        // One counts as neutral for the brightness too.
        {look([](VideoBeautyParam &b) {
             b.brightness = 1.0F;
             b.contrast = 0.00001F;
             b.saturation = 1.000005F;
         }),
         ""},
        {look([](VideoBeautyParam &b) { b.brightness = -0.0001F; }),
         "[0:v]eq=contrast=1:brightness=-0.0001:saturation=1[vrt0]"},
        {look([](VideoBeautyParam &b) {
             b.saturation = 0.5F;
             b.red = 0.3F;
             b.blue = -0.25F;
             b.speed = 3.0F;
             b.reverse = true;
         }),
         "[0:v]eq=contrast=1:brightness=0:saturation=0.5,"
         "colorbalance=bh=-0.25:bm=-0.25:bs=-0.25:rh=0.3:rm=0.3:rs=0.3,"
         "setpts=0.333333*PTS,reverse=[vrt0]"},
    });
}

void TestConvertCommand::overlayGraphs()
{
    const auto on = [](const QVariantMap &overlay) {
        return Wanted().source(640, 360, 0).overlay(overlay);
    };
    const QVariantMap logo = entry("delogo", {9, 9, 9, 9});
    QVariantMap translucent = watermark("/p/a,b.png", {7, 8, 31, 21});
    translucent.insert("opacity"_s, 0.25F);
    compare({
        {on(entry("delogo", {10.5, 20.4, 99.6, 50})), "[0:v]delogo=x=11:y=20:w=100:h=50[vrt0]"},
        {on(entry("delogo", {600, 20, 40, 50})), "[0:v]delogo=x=600:y=20:w=39:h=50[vrt0]"},
        {on(entry("delogo", {600, 20, 39, 50})), "[0:v]delogo=x=600:y=20:w=39:h=50[vrt0]"},
        {on(entry("delogo", {-5, 0, 700, 400})), "[0:v]delogo=x=1:y=1:w=638:h=358[vrt0]"},
        {on(during(logo, 1999, 5000)), "[0:v]delogo=x=9:y=9:w=9:h=9:enable='between(t,1,5)'[vrt0]"},
        {on(during(logo, 1000, 0)), "[0:v]delogo=x=9:y=9:w=9:h=9[vrt0]"},
        {on(during(drawtext("12:30, [墨]"), 0, 2500)),
         "[0:v]drawtext=font=Noto Sans CJK "
         "SC:fontsize=24:fontcolor=0xff0000:alpha=0.8:y=21:x=10:"
         R"(text=12\\:30\, \[墨\]:enable='between(t,0,2)'[vrt0])"},
        {on(during(translucent, 1000, 4000)),
         R"(movie='/p/a\,b.png',scale=w=30:h=20,lut=a=val*0.25[vrt0];)"
         "[0:v][vrt0]overlay=x=7:y=8:enable='between(t,1,4)'[vrt1]"},
        {on(watermark("/a.png", {1, 2, 4, 4}))
             .overlay(logo)
             .overlay(watermark("/b.png", {3, 4, 6, 6}))
             .look([](VideoBeautyParam &b) { b.vflip = true; }),
         "movie='/a.png',scale=w=4:h=4[vrt0];[0:v]vflip=[vrt1];"
         "movie='/b.png',scale=w=6:h=6[vrt2];"
         "[vrt1][vrt0]overlay=x=1:y=2,delogo=x=9:y=9:w=9:h=9[vrt3];"
         "[vrt3][vrt2]overlay=x=3:y=4[vrt4]"},
        {on(entry("glow", {1, 1, 1, 1})).dub(entry("echo", {})), ""},
    });
}

void TestConvertCommand::soundGraphs()
{
    const auto fast = [](VideoBeautyParam &look) {
        look.speed = 1.256F;
        look.volume = 0.5F;
    };
    const QStringList one{"/m/a:b.mp3"_s};
    const QStringList two{"/a.mp3"_s, "/b.mp3"_s};
    Wanted cut = Wanted().source(0, 0, 0).range(500, 1500).look(fast).dub(dubbing(one, true));
    cut.beauty->speed = 2.0F;
    compare({
        {Wanted().look(fast), "[0:v]setpts=0.796178*PTS[vrt0];[0:a]atempo=1.26,volume=0.50[art0]"},
        {Wanted().source(64, 48, 0).look(fast), "[0:v]setpts=0.796178*PTS[vrt0]"},
        {Wanted().source(0, 0, 1).look([](VideoBeautyParam &look) { look.volume = 0.0F; }), ""},
        {Wanted().source(0, 0, 1).look(fast).dub(dubbing(one, true)),
         R"(amovie='/m/a\:b.mp3',volume=0.7,adelay=1500|1500[art0];)"
         R"([0:a]atempo=1.26,volume=0.50[art1];[art1]volume=0.3[art2];)"
         R"([art2][art0]amix=inputs=2:duration=first[art3])"},
        {Wanted().source(0, 0, 1).dub(dubbing(two, false)),
         "amovie='/a.mp3',volume=0.7,adelay=1500|1500[art0];"
         "amovie='/b.mp3',volume=0.7,adelay=1500|1500[art1];"
         "[0:a]volume=0[art2];[art2][art0][art1]amix=inputs=3:duration=first[art3]"},
        // Music alone ends with the picture, whose length the span and the speed decide.
        {cut, R"(amovie='/m/a\:b.mp3',volume=0.7,adelay=1500|1500[art0];)"
              "[art0]amix=inputs=1:duration=longest,atrim=end=0.5[art1]"},
        {Wanted().source(0, 0, 0).dub(dubbing({}, true)), ""},
    });
}

void TestConvertCommand::compare(const QVector<GraphRow> &rows)
{
    for (const GraphRow &row : rows)
        QCOMPARE(ConvertTask::buildFilterText(row.wanted), utf8(row.graph));
}

QTEST_GUILESS_MAIN(TestConvertCommand)
#include "tst_convertcommand.moc"
