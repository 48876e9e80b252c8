// SPDX-License-Identifier: MIT
#include "playabletest.h"
#include "support/testmedia.h"

#include <QRegularExpression>

namespace {

// From the areas, which are RGB, to light, and from there to numbers.
const QString light = "zscale=tin=bt709:pin=bt709:min=gbr:rin=full:t=linear:npl=203:p=bt2020,"
                      "format=gbrpf32le,zscale=tin=linear:pin=bt2020:min=gbr:rin=full:npl=203:"_s;
const QString hevc = " -c:v libx265 -preset ultrafast -x265-params log-level=none:crf=8"_s;
const QString avc = " -c:v libx264 -crf 8"_s;

double shownAspect(const QJsonObject &video)
{
    const QStringList pixel = video["sample_aspect_ratio"_s].toString().split(u':');
    const double aspect =
        pixel.size() == 2 && pixel[0] != "0"_s ? pixel[0].toDouble() / pixel[1].toDouble() : 1.0;
    return aspect * video["width"_s].toInt() / video["height"_s].toInt();
}

} // namespace

/// Results play everywhere and look like their source, whatever that is: pixel formats, colours,
/// proportions and quality.
class TestPlayable : public PlayableTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void looksLikeItsSource_data();
    void looksLikeItsSource();
    void keepsProportions_data();
    void keepsProportions();
    void keepsItsRate();
    void reachesQuality_data();
    void reachesQuality();

private:
    double similarity(int preset);

    double m_mp4Similarity = 0.0;
};

void TestPlayable::initTestCase()
{
    const QString large = "960:720"_s;
    film("pq.mp4"_s, large, light + "t=smpte2084:m=bt2020nc:r=limited,format=yuv420p10"_s + hevc);
    film("hlg.mkv"_s, large,
         light + "t=arib-std-b67:m=bt2020nc:r=limited,format=yuv420p10"_s + hevc);
    film("wide.mp4"_s, large,
         "zscale=tin=bt709:pin=bt709:min=gbr:t=bt2020-10:p=bt2020:m=bt2020nc:r=limited,"
         "format=yuv420p10"_s +
             hevc);
    film("full.mp4"_s, large, "zscale=m=bt709:r=full,format=yuv420p10"_s + hevc);
    film("pal.mp4"_s, large, "zscale=m=bt470bg:r=limited,format=yuv422p"_s + avc);
    film("silent.mov"_s, large,
         "zscale=m=bt709:r=limited,setparams=colorspace=unknown,format=yuv422p10 "
         "-c:v prores_ks"_s);
    film("small.mp4"_s, "320:240"_s,
         "zscale=m=smpte170m:r=limited,setparams=colorspace=unknown,format=yuv444p"_s + avc);
    film("rgb.mp4"_s, large, "format=gbrp -c:v libx264rgb -crf 4"_s);
    film("rgb.avi"_s, large, "format=bgr24 -c:v rawvideo -t 0.1"_s);
    // Times to the millisecond, which ffmpeg takes for 1000 frames a second.
    film("uneven.asf"_s, "320:240"_s,
         "format=yuv420p,settb=1/1000,setpts=N*40+mod(N*N*7919\\,37) -vsync passthrough "
         "-enc_time_base 1/1000 -c:v msmpeg4 -q:v 2"_s);
    film("photo.avi"_s, large, "zscale=m=bt470bg:r=full,format=yuvj422p -c:v mjpeg -q:v 2"_s);
}

void TestPlayable::looksLikeItsSource_data()
{
    QTest::addColumn<int>("preset");
    const struct
    {
        const char *source;
        int preset;
    } rows[] = {
        {"pq.mp4", Mp4},       {"pq.mp4", Avi},        {"pq.mp4", Wmv480},   {"hlg.mkv", Mov720},
        {"hlg.mkv", Mov480},   {"wide.mp4", Mp4},      {"wide.mp4", Wmv480}, {"full.mp4", Mp4},
        {"full.mp4", Mov720},  {"pal.mp4", Avi},       {"pal.mp4", Mov480},  {"silent.mov", Mp4},
        {"silent.mov", Flv},   {"silent.mov", Mov480}, {"small.mp4", Vob},   {"small.mp4", Mpeg720},
        {"rgb.mp4", Mp4},      {"rgb.mp4", Wmv480},    {"rgb.avi", Webm},    {"photo.avi", Mp4},
        {"photo.avi", Mov480}, {"photo.avi", Ogv},     {"uneven.asf", Swf},
    };
    for (const auto &row : rows)
        QTest::addRow("%s %d", row.source, row.preset) << row.preset;
}

void TestPlayable::looksLikeItsSource()
{
    QFETCH(int, preset);
    const QString name = QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0);
    const QJsonObject video = converted(name, preset).video;
    QCOMPARE(video["pix_fmt"_s].toString(), "yuv420p"_s);
    const bool isHigh = name.startsWith("pq"_s) || name.startsWith("hlg"_s);
    if (isHigh && video["codec_name"_s].toString() == "h264"_s) {
        for (const char *key : {"color_transfer", "color_primaries"})
            QCOMPARE(video[QLatin1String(key)].toString(), "bt709"_s);
    }
    verifyAreas(video);
}

void TestPlayable::keepsProportions_data()
{
    QTest::addColumn<int>("preset");
    for (const int preset : {Mp4, Avi, Wmv, Vob, Webm, Ogv, Flv, Swf, Mpeg, Gp3})
        QTest::addRow("%d", preset) << preset;
    const QString plain = "format=yuv420p"_s;
    film("broad.mkv"_s, "720:576"_s, plain + ",setsar=64/45 -c:v ffv1"_s);
    film("narrow.mkv"_s, "353:240"_s, plain + ",setsar=10/11 -c:v ffv1"_s);
    film("odd.mkv"_s, "161:121"_s, plain + " -c:v ffv1"_s);
}

void TestPlayable::keepsProportions()
{
    QFETCH(int, preset);
    const std::pair<const char *, double> sources[] = {
        {"broad.mkv", 16.0 / 9}, {"narrow.mkv", 353.0 / 240 * 10 / 11}, {"odd.mkv", 4.0 / 3}};
    for (const auto &[name, aspect] : sources) {
        const QJsonObject video = converted(QString::fromLatin1(name), preset).video;
        QVERIFY2(qAbs(shownAspect(video) / aspect - 1) < 0.01, name);
        QCOMPARE(video["width"_s].toInt() % 2, 0);
        QCOMPARE(video["height"_s].toInt() % 2, 0);
    }
}

// Made faster, a film has the frames a second that it had: those of its faster part where they
// change.
void TestPlayable::keepsItsRate()
{
    film("slows.mp4"_s, "320:240"_s,
         "format=yuv420p,loop=-1:1,trim=end_frame=250,setpts=N/25/TB,"
         "select=lt(t\\,4)+not(mod(n\\,5)) -vsync vfr"_s +
             avc);
    const ProbedFile faster = converted("slows.mp4"_s, Mp4, {"--beauty"_s, "speed=2"_s});
    const double rate = faster.video["nb_frames"_s].toString().toDouble() / faster.seconds;
    QVERIFY2(qAbs(rate - 25) < 1, qPrintable(QString::number(rate)));
}

// By eye, as it were: 1 for the same picture.
double TestPlayable::similarity(int preset)
{
    const QString name = "detail.mkv"_s;
    converted(name, preset);
    const ToolRun run = runFfmpeg("-v info -i @ -i @ -lavfi [0:v]settb=1/25,setpts=N[a];"
                                  "[1:v]settb=1/25,setpts=N[b];[a][b]ssim -f null -"_s,
                                  {result(), path(name)});
    static const QRegularExpression all("SSIM .*All:([0-9.]+)"_s);
    return all.match(QString::fromUtf8(run.err)).captured(1).toDouble();
}

void TestPlayable::reachesQuality_data()
{
    QTest::addColumn<int>("preset");
    for (const int preset : {Avi, Wmv, Vob, Webm, Ogv, Flv, Swf})
        QTest::addRow("%d", preset) << preset;
    makeMedia("-f lavfi -i mandelbrot=s=480x270:r=25:start_scale=2:end_scale=0.3:end_pts=100,"
              "noise=alls=4:allf=t,format=yuv420p -t 1 -c:v ffv1 @"_s,
              {path("detail.mkv"_s)});
    m_mp4Similarity = similarity(Mp4);
}

void TestPlayable::reachesQuality()
{
    QFETCH(int, preset);
    const double reached = similarity(preset);
    QVERIFY2(reached > 0.5 && reached >= m_mp4Similarity - 0.01,
             qPrintable("%1 against %2"_s.arg(reached).arg(m_mp4Similarity)));
}

QTEST_GUILESS_MAIN(TestPlayable)
#include "tst_playable.moc"
