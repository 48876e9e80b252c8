// SPDX-License-Identifier: MIT
// Results play everywhere and look like their source, whatever that is: pixel formats, colours,
// proportions, quality, channels and covers of real conversions.
#include "clirun.h"
#include "support/mediaprobe.h"
#include "support/testmedia.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

// Presets that keep the source, by the suffix of the result, and some with a size.
enum Preset {
    Mp4 = 1003001,
    Avi = 1006001,
    Wmv = 1004004,
    Vob = 1011002,
    Webm = 1012001,
    Ogv = 1021001,
    Flv = 2400005,
    Swf = 2402005,
    Mov = 1001001,
    Mkv = 1005001,
    F4v = 2401005,
    M4v = 1002004,
    Gp3 = 1015002,
    Mpeg = 1009001,
    Mov720 = 1001003,
    Mov480 = 1001004,
    Wmv480 = 1004001,
    Mpeg720 = 1009003,
};

constexpr double areaLimit = 0.03;

// Red, green and blue of eight areas, four a row.
const QByteArray areas = QByteArray::fromHex("a02828"
                                             "288228"
                                             "3232a0"
                                             "8c821e"
                                             "1e8282"
                                             "5a5a5a"
                                             "e6e6e6"
                                             "502882");

// From the areas, which are RGB, to light, and from there to numbers.
const char toLight[] = "zscale=tin=bt709:pin=bt709:min=gbr:rin=full:t=linear:npl=203:p=bt2020,"
                       "format=gbrpf32le,zscale=tin=linear:pin=bt2020:min=gbr:rin=full:npl=203:";
const char hevc[] = " -c:v libx265 -preset ultrafast -x265-params log-level=none:crf=8";
const char avc[] = " -c:v libx264 -crf 8";

QStringList split(const QString &words)
{
    return words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

ToolRun ffmpeg(const QStringList &arguments)
{
    return runTool(QStringLiteral("ffmpeg"),
                   split(QStringLiteral("-nostdin -hide_banner -y")) + arguments);
}

// The eight areas as a player shows them: by what the stream tells of its colours, else by its
// size, and without black bars left and right.
QByteArray shownAreas(const QString &path, const QJsonObject &video)
{
    const auto fact = [&video](const char *key) { return video[QLatin1String(key)].toString(); };
    const bool isLarge = video[QLatin1String("width")].toInt() >= 1280 ||
                         video[QLatin1String("height")].toInt() > 576;
    QString matrix = fact("color_space");
    if (matrix.isEmpty() || matrix == QLatin1String("unknown"))
        matrix = isLarge ? QStringLiteral("bt709") : QStringLiteral("smpte170m");
    const QString range =
        fact("color_range") == QLatin1String("pc") ? QStringLiteral("pc") : QStringLiteral("tv");
    // Scaling mixes neighbours' colours: only what is far from their borders counts.
    constexpr int side = 16;
    const QString filters =
        QStringLiteral("crop=trunc(min(iw\\,ih*4/3)),"
                       "scale=%1:%2:flags=neighbor:in_color_matrix=%3:in_range=%4,format=rgb24");
    const QByteArray pixels =
        ffmpeg({QStringLiteral("-i"), path, QStringLiteral("-frames:v"), QStringLiteral("1"),
                QStringLiteral("-vf"), filters.arg(4 * side).arg(2 * side).arg(matrix, range),
                QStringLiteral("-f"), QStringLiteral("rawvideo"), QStringLiteral("-")})
            .out;
    QByteArray centres;
    for (int area = 0; area < 8; ++area) {
        const int row = area / 4 * side + side / 2;
        const int column = area % 4 * side + side / 2;
        centres += pixels.mid(3 * (row * 4 * side + column), 3);
    }
    return centres;
}

bool areAlike(const QByteArray &one, const QByteArray &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](char a, char b) {
        return qAbs(int(uchar(a)) - int(uchar(b))) <= areaLimit * 255;
    });
}

double shownAspect(const QJsonObject &video)
{
    const QStringList pixel =
        video[QLatin1String("sample_aspect_ratio")].toString().split(QLatin1Char(':'));
    const double aspect = pixel.size() == 2 && pixel[0] != QLatin1String("0")
                              ? pixel[0].toDouble() / pixel[1].toDouble()
                              : 1.0;
    return aspect * video[QLatin1String("width")].toInt() / video[QLatin1String("height")].toInt();
}

} // namespace

class TestPlayable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void looksLikeItsSource_data();
    void looksLikeItsSource();
    void keepsProportions_data();
    void keepsProportions();
    void reachesQuality_data();
    void reachesQuality();
    void soundsInEveryFormat_data();
    void soundsInEveryFormat();
    void showsCoverWithSong_data();
    void showsCoverWithSong();
    void leavesCoverOutOfSound();

private:
    // Makes a film of the areas in the test's folder.
    // @param coding options of the output
    void film(const char *name, const QString &size, const QString &coding);
    // Converts a file of the test's folder; fails the test when there is no result.
    ProbedFile converted(const QString &name, int preset);
    double similarity(int preset);
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
    QTemporaryDir m_out;
    QString m_result;
    double m_mp4Similarity = 0.0;
};

void TestPlayable::film(const char *name, const QString &size, const QString &coding)
{
    const ToolRun run = ffmpeg(
        split(QStringLiteral("-f rawvideo -pix_fmt rgb24 -s 4x2 -r 25 -stream_loop 9 -i")) +
        QStringList{path(QStringLiteral("areas.rgb"))} +
        split(QStringLiteral("-vf scale=%1:flags=neighbor,format=gbrp,").arg(size) + coding) +
        QStringList{path(QString::fromLatin1(name))});
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

ProbedFile TestPlayable::converted(const QString &name, int preset)
{
    const QJsonObject record = convertOne(path(name), preset, m_out.path());
    m_result = record[QLatin1String("output")].toString();
    [&] {
        QVERIFY2(!m_result.isEmpty(), qPrintable(record[QLatin1String("message")].toString()));
    }();
    return probeMedia(m_result);
}

void TestPlayable::initTestCase()
{
    QFile file(path(QStringLiteral("areas.rgb")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(areas) == areas.size());
    file.close();
    const QString large = QStringLiteral("960:720");
    const QString light = QLatin1String(toLight);
    film("pq.mp4", large,
         light + QLatin1String("t=smpte2084:m=bt2020nc:r=limited,format=yuv420p10") +
             QLatin1String(hevc));
    film("hlg.mkv", large,
         light + QLatin1String("t=arib-std-b67:m=bt2020nc:r=limited,format=yuv420p10") +
             QLatin1String(hevc));
    film("wide.mp4", large,
         QLatin1String("zscale=tin=bt709:pin=bt709:min=gbr:t=bt2020-10:p=bt2020:m=bt2020nc:"
                       "r=limited,format=yuv420p10") +
             QLatin1String(hevc));
    film("full.mp4", large,
         QLatin1String("zscale=m=bt709:r=full,format=yuv420p10") + QLatin1String(hevc));
    film("pal.mp4", large,
         QLatin1String("zscale=m=bt470bg:r=limited,format=yuv422p") + QLatin1String(avc));
    film("silent.mov", large,
         QLatin1String("zscale=m=bt709:r=limited,setparams=colorspace=unknown,format=yuv422p10 "
                       "-c:v prores_ks"));
    film("small.mp4", QStringLiteral("320:240"),
         QLatin1String("zscale=m=smpte170m:r=limited,setparams=colorspace=unknown,format=yuv444p") +
             QLatin1String(avc));
    film("rgb.mp4", large, QLatin1String("format=gbrp -c:v libx264rgb -crf 4"));
    film("rgb.avi", large, QLatin1String("format=bgr24 -c:v rawvideo -t 0.1"));
    // Times to the millisecond, which ffmpeg takes for 1000 frames a second.
    film("uneven.asf", QStringLiteral("320:240"),
         QLatin1String(
             "format=yuv420p,settb=1/1000,setpts=N*40+mod(N*N*7919\\,37) -vsync passthrough "
             "-enc_time_base 1/1000 -c:v msmpeg4 -q:v 2"));
    film("photo.avi", large,
         QLatin1String("zscale=m=bt470bg:r=full,format=yuvj422p -c:v mjpeg -q:v 2"));
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
    const QString name =
        QString::fromLatin1(QTest::currentDataTag()).section(QLatin1Char(' '), 0, 0);
    const QJsonObject video = converted(name, preset).video;
    QCOMPARE(video[QLatin1String("pix_fmt")].toString(), QStringLiteral("yuv420p"));
    const bool isHigh =
        name.startsWith(QLatin1String("pq")) || name.startsWith(QLatin1String("hlg"));
    if (isHigh && video[QLatin1String("codec_name")].toString() == QLatin1String("h264")) {
        for (const char *key : {"color_transfer", "color_primaries"})
            QCOMPARE(video[QLatin1String(key)].toString(), QStringLiteral("bt709"));
    }
    const QByteArray shown = shownAreas(m_result, video);
    QVERIFY2(areAlike(shown, areas), shown.toHex(' ').constData());
}

void TestPlayable::keepsProportions_data()
{
    QTest::addColumn<int>("preset");
    for (const int preset : {Mp4, Avi, Wmv, Vob, Webm, Ogv, Flv, Swf, Mpeg, Gp3})
        QTest::addRow("%d", preset) << preset;
    const QString plain = QStringLiteral("format=yuv420p");
    film("broad.mkv", QStringLiteral("720:576"), plain + QLatin1String(",setsar=64/45 -c:v ffv1"));
    film("narrow.mkv", QStringLiteral("353:240"), plain + QLatin1String(",setsar=10/11 -c:v ffv1"));
    film("odd.mkv", QStringLiteral("161:121"), plain + QLatin1String(" -c:v ffv1"));
}

void TestPlayable::keepsProportions()
{
    QFETCH(int, preset);
    const std::pair<const char *, double> sources[] = {
        {"broad.mkv", 16.0 / 9}, {"narrow.mkv", 353.0 / 240 * 10 / 11}, {"odd.mkv", 4.0 / 3}};
    for (const auto &[name, aspect] : sources) {
        const QJsonObject video = converted(QString::fromLatin1(name), preset).video;
        QVERIFY2(qAbs(shownAspect(video) / aspect - 1) < 0.01, name);
        QCOMPARE(video[QLatin1String("width")].toInt() % 2, 0);
        QCOMPARE(video[QLatin1String("height")].toInt() % 2, 0);
    }
}

// By eye, as it were: 1 for the same picture.
double TestPlayable::similarity(int preset)
{
    const QString name = QStringLiteral("detail.mkv");
    converted(name, preset);
    const ToolRun run =
        ffmpeg(QStringList{QStringLiteral("-i"), m_result, QStringLiteral("-i"), path(name)} +
               split(QStringLiteral(
                   "-lavfi [0:v]settb=1/25,setpts=N[a];[1:v]settb=1/25,setpts=N[b];[a][b]ssim "
                   "-f null -")));
    static const QRegularExpression all(QStringLiteral("SSIM .*All:([0-9.]+)"));
    return all.match(QString::fromUtf8(run.err)).captured(1).toDouble();
}

void TestPlayable::reachesQuality_data()
{
    QTest::addColumn<int>("preset");
    for (const int preset : {Avi, Wmv, Vob, Webm, Ogv, Flv, Swf})
        QTest::addRow("%d", preset) << preset;
    const ToolRun run =
        ffmpeg(split(QStringLiteral("-f lavfi -i mandelbrot=s=480x270:r=25:start_scale=2:end_scale="
                                    "0.3:end_pts=100,noise=alls=4:allf=t,format=yuv420p -t 1 "
                                    "-c:v ffv1")) +
               QStringList{path(QStringLiteral("detail.mkv"))});
    QVERIFY2(run.exitCode == 0, run.err.constData());
    m_mp4Similarity = similarity(Mp4);
}

void TestPlayable::reachesQuality()
{
    QFETCH(int, preset);
    const double reached = similarity(preset);
    QVERIFY2(reached > 0.5 && reached >= m_mp4Similarity - 0.01,
             qPrintable(QStringLiteral("%1 against %2").arg(reached).arg(m_mp4Similarity)));
}

void TestPlayable::soundsInEveryFormat_data()
{
    QTest::addColumn<int>("preset");
    QTest::addColumn<QStringList>("sounds"); // channels and sample rate of each source
    const auto row = [](int preset, const char *side, const char *many) {
        QTest::addRow("%d", preset)
            << preset << QStringList{QString::fromLatin1(side), QString::fromLatin1(many)};
    };
    row(Mp4, "6 5.1 48000", "6 5.1 48000");
    row(Mkv, "6 5.1 48000", "8 7.1 96000");
    row(Webm, "6 5.1 48000", "8 7.1 48000");
    row(Wmv, "2  48000", "2  48000");
    row(Flv, "2 stereo 44100", "2 stereo 44100");
    const auto make = [this](const char *name, const char *layout, const char *rate) {
        const ToolRun run =
            ffmpeg(split(QStringLiteral("-f lavfi -i testsrc=s=64x48:d=0.5 -f lavfi -i "
                                        "anoisesrc=r=%1:d=0.5:a=0.1,aformat=channel_layouts=%2 "
                                        "-c:v mpeg4 -c:a flac")
                             .arg(QLatin1String(rate), QLatin1String(layout))) +
                   QStringList{path(QString::fromLatin1(name))});
        QVERIFY2(run.exitCode == 0, run.err.constData());
    };
    make("side.mkv", "5.1(side)", "48000");
    make("many.mkv", "7.1", "96000");
}

void TestPlayable::soundsInEveryFormat()
{
    QFETCH(int, preset);
    QFETCH(QStringList, sounds);
    for (const char *name : {"side.mkv", "many.mkv"}) {
        const QJsonObject audio = converted(QString::fromLatin1(name), preset).audio;
        QCOMPARE(QStringLiteral("%1 %2 %3")
                     .arg(audio[QLatin1String("channels")].toInt())
                     .arg(audio[QLatin1String("channel_layout")].toString(),
                          audio[QLatin1String("sample_rate")].toString()),
                 sounds.takeFirst());
    }
}

void TestPlayable::showsCoverWithSong_data()
{
    QTest::addColumn<int>("preset");
    for (const int preset :
         {Mp4, Mov, M4v, Gp3, F4v, Swf, Flv, Mkv, Avi, Wmv, Mpeg, Vob, Webm, Ogv, Mov480, Mpeg720})
        QTest::addRow("%d", preset) << preset;
    film("cover.png", QStringLiteral("401:301"), QStringLiteral("null -frames:v 1 -update 1"));
    for (const char *song : {"song.mp3", "song.flac", "song.m4a"}) {
        const ToolRun run =
            ffmpeg(split(QStringLiteral("-f lavfi -i sine=d=3,aformat=channel_layouts=stereo -i")) +
                   QStringList{path(QStringLiteral("cover.png"))} +
                   split(QStringLiteral("-map 0 -map 1 -c:v copy -disposition:v attached_pic")) +
                   QStringList{path(QString::fromLatin1(song))});
        QVERIFY2(run.exitCode == 0, run.err.constData());
    }
}

void TestPlayable::showsCoverWithSong()
{
    QFETCH(int, preset);
    const QStringList songs{QStringLiteral("song.mp3"), QStringLiteral("song.flac"),
                            QStringLiteral("song.m4a")};
    const ProbedFile result = converted(songs[preset % songs.size()], preset);
    QCOMPARE(result.audio[QLatin1String("channels")].toInt(), preset == Gp3 ? 1 : 2);
    if (preset == Mp4)
        QCOMPARE(result.audio[QLatin1String("sample_rate")].toString(), QStringLiteral("44100"));
    QVERIFY(areAlike(shownAreas(m_result, result.video), areas));
    // Picture and sound as long as the song: decoded, since not all containers tell. Theora leaves
    // out frames that are like the one before, which then stands to the end.
    for (const char *kind : {"v", "a"}) {
        if (preset == Ogv && *kind == 'v')
            continue;
        const QByteArray report =
            ffmpeg({QStringLiteral("-i"), m_result, QStringLiteral("-map"),
                    QStringLiteral("0:") + QLatin1String(kind), QStringLiteral("-f"),
                    QStringLiteral("null"), QStringLiteral("-")})
                .err;
        static const QRegularExpression position(QStringLiteral(".*time=00:00:([0-9.]+)"),
                                                 QRegularExpression::DotMatchesEverythingOption);
        const double seconds = position.match(QString::fromUtf8(report)).captured(1).toDouble();
        QVERIFY2(qAbs(seconds - 3) < 0.3, report.constData());
    }
}

void TestPlayable::leavesCoverOutOfSound()
{
    for (const int preset : {1200001, 1205001, 1201001, 1204004, 1203001, 1211001, 1202001, 1213001,
                             1206001, 1212001}) {
        const ProbedFile result = converted(QStringLiteral("song.m4a"), preset);
        QVERIFY2(!result.audio.isEmpty() && result.video.isEmpty(), qPrintable(m_result));
    }
}

QTEST_GUILESS_MAIN(TestPlayable)
#include "tst_playable.moc"
