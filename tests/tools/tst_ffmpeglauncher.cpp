// SPDX-License-Identifier: MIT
#include "cage/installedtool.h"
#include "ffmpeg/adaptcommand.h"
#include "ffmpeg/capture.h"
#include "ffmpeg/filterlabels.h"
#include "support/testfile.h"

#include <QFile>
#include <QtTest>

using ffmpeglauncher::AdaptedCommand;
using ffmpeglauncher::InstalledFfmpeg;

namespace {

// Test commands have no blank inside a word.
std::vector<std::string> words(const QString &command)
{
    std::vector<std::string> result;
    for (const QString &word : command.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        result.push_back(word.toStdString());
    return result;
}

QString text(const std::vector<std::string> &arguments)
{
    QStringList result;
    for (const std::string &argument : arguments)
        result.append(QString::fromStdString(argument));
    return result.join(QLatin1Char(' '));
}

// The adapted command, with short names for what is added everywhere.
QString adapted(const QByteArray &command, const char *facts = "")
{
    InstalledFfmpeg ffmpeg;
    ffmpeg.zscale = true;
    QString result = text(ffmpeglauncher::adaptCommand(words(QLatin1String(command)), ffmpeg,
                                                       ffmpeglauncher::parseSourceFacts(facts))
                              .arguments);
    const std::pair<const char *, const char *> names[] = {
        {"{420}", "-pix_fmt yuv420p"},
        {"{even}", "crop=trunc(iw/2)*2:trunc(ih/2)*2:0:0"},
        {"{square}", "scale=trunc(iw*sar/2+0.5)*2:ih,setsar=1"},
        {"{aac}", "aformat=channel_layouts=mono|stereo|3.0|4.0|5.0|5.1:sample_rates=8000|11025|"
                  "12000|16000|22050|24000|32000|44100|48000"},
    };
    for (const auto &[name, words] : names)
        result.replace(QLatin1String(words), QLatin1String(name));
    return result;
}

} // namespace

class TestFfmpegLauncher : public QObject
{
    Q_OBJECT

private slots:
    void dropsUnusedLabels();
    void keepsMappedLabels();
    void recordsWhatTheSettingsTell();
    void adaptsCommands();
    void addsWhatPlayersNeed();
    void keepsColours();
    void showsCovers();
    void findsRealFfmpeg();
};

void TestFfmpegLauncher::dropsUnusedLabels()
{
    const std::pair<const char *, const char *> rows[] = {
        {"[0:v]vflip=[vrt0];[0:a]atempo=2.00[art0]", "[0:v]vflip=;[0:a]atempo=2.00"},
        {"movie='/a\\,b\\:c[x].png',scale=w=2:h=2[vrt0];[0:v]crop=w=8[vrt1];"
         "[vrt1][vrt0]overlay=x=1:y=2[vrt2]",
         "movie='/a\\,b\\:c[x].png',scale=w=2:h=2[vrt0];[0:v]crop=w=8[vrt1];"
         "[vrt1][vrt0]overlay=x=1:y=2"},
        {"movie=a.png[m];[0:v]hflip=,[m]overlay=x=1[o]",
         "movie=a.png[m];[0:v]hflip=,[m]overlay=x=1"},
        {"[0:v]drawtext=text='[o];[视]'[o]", "[0:v]drawtext=text='[o];[视]'"},
        {"[0:v]drawtext=text=a\\[o\\]\\;b\\'[o]", "[0:v]drawtext=text=a\\[o\\]\\;b\\'"},
        {"[0:v]drawtext=text='it'\\''s [x]'[o];[o]null[p]",
         "[0:v]drawtext=text='it'\\''s [x]'[o];[o]null"},
        {"[0:v]drawtext=text='a\\'[o]", "[0:v]drawtext=text='a\\'"},
        {"[0:v]null['o'];[ o ]null[q]", "[0:v]null['o'];[ o ]null"},
        {" [0:v] null [a] ;\n [a] hflip [b] \n", " [0:v] null [a] ;\n [a] hflip  \n"},
        {"[0:v]split[a][b];[a]hflip[c]", "[0:v]split[a];[a]hflip"},
        {"[0:a]channelsplit[l][r];[r]volume=2[o]", "[0:a]channelsplit[l][r];[r]volume=2"},
        {"[0:v]split[a],null[b]", "[0:v]split[a],null"},
        {"sws_flags=bilinear;[0:v]scale=2:2[o]", "sws_flags=bilinear;[0:v]scale=2:2"},
    };
    for (const auto &[graph, expected] : rows)
        QCOMPARE(ffmpeglauncher::dropUnusedOutputLabels(graph, {}), std::string(expected));
    // What is no graph stays as it is.
    for (const char *text :
         {"", "[0:v]", "[0:v]null[o", "[0:v]null[]", "[0:v]null[o]x", "[0:v]null=]x[o]",
          "[0:v]null[o];", "[0:v]null[o],", ";[0:v]null[o]", "[0:v]null,,hflip[o]", "[0:v]=1[o]",
          "sws_flags=bilinear", "[0:v]null[o]\\", "[0:v]drawtext=text='a[o]"})
        QCOMPARE(ffmpeglauncher::dropUnusedOutputLabels(text, {}), std::string(text));
}

void TestFfmpegLauncher::keepsMappedLabels()
{
    QCOMPARE(ffmpeglauncher::labelOfMap("[v o]"), std::string("v o"));
    QCOMPARE(ffmpeglauncher::labelOfMap("-[a]"), std::string("a"));
    QCOMPARE(ffmpeglauncher::labelOfMap("0:a?"), std::string());
    QCOMPARE(ffmpeglauncher::dropUnusedOutputLabels("[0:v]null[o];[0:a]anull[p]", {"p"}),
             std::string("[0:v]null;[0:a]anull[p]"));
}

void TestFfmpegLauncher::recordsWhatTheSettingsTell()
{
    QVERIFY(!ffmpeglauncher::isCapture(words("-i video=MorvaneScreenRecorder -f dshow b.mp4"_s)));
    const auto command = words("-f dshow -i video=MorvaneScreenRecorder -f dshow -i audio=mic "
                               "-vcodec libx264 -s 1280x720 -y b.mp4"_s);
    QVERIFY(ffmpeglauncher::isCapture(command));
    ffmpeglauncher::CaptureFacts facts;
    facts.settings = ffmpeglauncher::parseCaptureSettings(
        "[General]\ncapture_height=200\ncapture_width=300\nstart_x=7\nstart_y=x\n");
    facts.display = ":5";
    const QString area = text(ffmpeglauncher::adaptCapture(command, facts));
    QVERIFY(area.contains("-video_size 300x200 -grab_x 7 -grab_y 0 -i :5 "_s));
    QVERIFY(area.contains("-i mic -map 0:v "_s));
    QVERIFY(area.contains("scale=1280:720:force_original_aspect_ratio=decrease"_s));
    QVERIFY(!area.contains("-s 1280x720"_s));
    QVERIFY(area.endsWith("-shortest -vcodec libx264 -y b.mp4"_s));
    facts.settings["hwnd_to_track"] = 0x80000001;
    facts.piece = "/a b.mkv";
    const QString window = text(ffmpeglauncher::adaptCapture(command, facts));
    QVERIFY(window.contains("-window_id 2147483649 -i :5 "_s));
    QVERIFY(window.endsWith("/a b.mkv"_s) && !window.contains("b.mp4"_s));
}

void TestFfmpegLauncher::adaptsCommands()
{
    const auto row = [](const char *command, const char *expected, int notes,
                        const InstalledFfmpeg &ffmpeg = {}) {
        const AdaptedCommand adapted =
            ffmpeglauncher::adaptCommand(words(QLatin1String(command)), ffmpeg);
        QCOMPARE(text(adapted.arguments), QLatin1String(expected));
        QCOMPARE(int(adapted.notes.size()), notes);
    };
    const auto same = [&row](const char *command) { row(command, command, 0); };
    row("-y -i a -filter_complex [0:v]null[o] b.nut -progress pipe:1",
        "-y -i a -filter_complex [0:v]null b.nut -progress pipe:1", 0);
    row("-lavfi color[a] -filter_complex sine[b] -map [b] x.nut",
        "-lavfi color -filter_complex sine[b] -map [b] x.nut", 0);
    same("-i a -filter_complex [0:v]null[o] -map [o] b.nut");
    same("-i a -vf null[o] -metadata -filter_complex color[o]");
    same("-i a b.nut -filter_complex");

    row("-i a -vn -af x -acodec libopencore_amrnb b.3GP -vn -af x -codec:a:0 libopencore_amrnb "
        "c.3gp",
        "-i a -vn -af x -acodec aac b.3GP -vn -af x -codec:a:0 aac c.3gp", 2);
    row("-i a -vn -an b.3gp -vn -af x c.3gp -vn -af x -c:a aac d.3gp",
        "-i a -vn -an b.3gp -vn -af x -c:a aac c.3gp -vn -af x -c:a aac d.3gp", 1);
    row("-i a -vn -af x -- -b.3gp", "-i a -vn -af x -c:a aac -- -b.3gp", 1);
    row("-i a -vn -af x -f 3gp b", "-i a -vn -af x -f 3gp -c:a aac b", 1);
    same("-i a -c copy b.3gp");
    same("-i a -vn -af x -codec:1 aac b.3gp");
    same("-i a -vn -af x -f mp4 b.3gp");
    same("-i a b.3gp/c x/3gp");
    same("-i a -c:a libopencore_amrnb b.amr");
    row("-re -noautorotate -nostdin -i a -vn -af x -shortest -bitexact:a b.3gp",
        "-re -noautorotate -nostdin -i a -vn -af x -shortest -bitexact:a -c:a aac b.3gp", 1);
    same("-i a -metadata b.3gp b.nut");
    row("-i a -af x b.m4b", "-i a -af x -vn b.m4b", 0);

    row("-i a -vn -af x -nostats b.swf -y", "-i a -vn -af x -nostats -ar 44100 b.swf -y", 1);
    row("-i a -vn -af x -ar 48000 b.flv -vn -af x -ar 22050 c.flv -vn -af x -ar 48000 -c:a aac "
        "d.flv",
        "-i a -vn -af x -ar 44100 b.flv -vn -af x -ar 22050 c.flv -vn -af x -ar 48000 -c:a aac "
        "d.flv",
        1);
    row("-f concat -i c.txt -c copy -map 0 b.swf",
        "-f concat -i c.txt -c copy -map 0 -copyinkf b.swf", 0);
    same("-i a.swf -vcodec copy -acodec copy b.mp4");
    InstalledFfmpeg amr;
    amr.amr = true;
    const char *const command = "-i a -vn -af x -c:a libopencore_amrnb b.3gp -vn -af x c.3gp";
    row(command, command, 0, amr);
}

void TestFfmpegLauncher::addsWhatPlayersNeed()
{
    // Without rate and size, and with both; what the command names is left alone.
    QCOMPARE(adapted("-i a b.mp4 -y"), QStringLiteral("-i a {420} -fpsmax 60 -vf {even} -af "
                                                      "{aac} b.mp4 -y"));
    QCOMPARE(adapted("-i a -an b.avi", "rate=1000"),
             QStringLiteral("-i a -an {420} -q:v 5 -fpsmax 60 -vf {even},{square} b.avi"));
    QCOMPARE(adapted("-i a -c:v wmv2 -s 64x48 -b:v 9k -ac 2 -ar 8000 -b:a 9k b.wmv", "rate=24"),
             QStringLiteral("-i a -c:v wmv2 -s 64x48 -b:v 9k -ac 2 -ar 8000 -b:a 9k {420} "
                            "-fpsmax 60 b.wmv"));
    QCOMPARE(adapted("-i a -an -b:a 9k -pix_fmt gray -vf null -r 5 b.ogv"),
             QStringLiteral("-i a -an -b:a 9k -pix_fmt gray -vf null -r 5 -q:v 7 b.ogv"));
    QCOMPARE(adapted("-i a -an -map 0 b.3g2"),
             QStringLiteral("-i a -an -map 0 -c:v libx264 {420} -fpsmax 60 b.3g2"));
    // A graph takes what it feeds, and only that.
    QCOMPARE(
        adapted("-i a -r 5 -filter_complex [0:a]volume=2[art0] b.mp4"),
        QStringLiteral("-i a -r 5 -filter_complex [0:a]volume=2,{aac} {420} -vf {even} b.mp4"));
    QCOMPARE(
        adapted("-i a -r 5 -filter_complex [0:v]hflip=[vrt0];[vrt0]vflip=[vrt1] b.mp4"),
        QStringLiteral("-i a -r 5 -filter_complex [0:v]{even}[prepared];[prepared]hflip=[vrt0];"
                       "[vrt0]vflip= {420} -af {aac} b.mp4"));
    // Black frames and silence that the program makes itself; both come out of one filter.
    QCOMPARE(adapted("-i a -r 5 -s 2x2 -filter_complex "
                     "[0:a]showwaves=[vrt0];[vrt0]concat=v=1:a=1[vrt1][vrt2] b.mp4"),
             QStringLiteral("-i a -r 5 -s 2x2 -filter_complex "
                            "[0:a]showwaves=[vrt0];[vrt0]concat=v=1:a=1 {420} b.mp4"));
}

void TestFfmpegLauncher::keepsColours()
{
    const auto filters = [](const char *facts, const char *size) {
        const QString text =
            adapted(QByteArray("-i a -an -r 5 -s ") + size + " -filter_complex " +
                        "[0:v]crop=w=8:h=8:x=0:y=0,pad=2:2,eq=contrast=2[vrt0] b.mp4",
                    facts);
        const QString front = QStringLiteral("pad=2:2,");
        const int begin = text.indexOf(front) + front.size();
        return text.mid(begin, text.indexOf(QLatin1String("eq=")) - begin);
    };
    const QString large = QStringLiteral(":m=bt709:r=limited,format=yuv420p,");
    const QString small = QStringLiteral(":m=smpte170m:r=limited,format=yuv420p,");
    // A picture that doesn't tell its matrix has that of its size, as the result will have.
    QCOMPARE(filters("", "1280x720"), QString());
    QCOMPARE(filters("size=1280x720", "1920x1080"), QString());
    QCOMPARE(filters("size=640x480", "1280x720"), QLatin1String("zscale=min=smpte170m") + large);
    QCOMPARE(filters("size=1280x720", "640x480"), QLatin1String("zscale=min=bt709") + small);
    QCOMPARE(filters("size=720x576;matrix=bt470bg", "720x480"), QString());
    QCOMPARE(filters("size=640x480;matrix=gbr", "640x480"),
             QLatin1String("format=gbrp,zscale=min=gbr:rin=full") + small);
    QCOMPARE(filters("size=9x9;matrix=bt2020nc;transfer=reserved", "1280x720"),
             QLatin1String("zscale=tin=bt709:pin=bt2020:min=bt2020nc:t=bt709:p=bt709") + large);
    // High range keeps its chain in front of the look; a name that is no name stays out of it.
    const QString high = filters("size=9x9;transfer=arib-std-b67;matrix=x,movie=y", "640x480");
    QVERIFY2(
        high.startsWith(QLatin1String("zscale=tin=arib-std-b67:pin=bt2020:min=bt2020nc:t=linear"
                                      ":p=bt709:npl=203,")),
        qPrintable(high));
    QVERIFY2(high.endsWith(QLatin1String("zscale=t=bt709") + small), qPrintable(high));
}

void TestFfmpegLauncher::showsCovers()
{
    const QString still = adapted("-i a b.wmv", "cover=1");
    QVERIFY2(still.contains(QLatin1String("r=10:colors=black")), qPrintable(still));
    QVERIFY2(still.contains(QLatin1String(";[0:a]anull,asplit[tick],aformat=")), qPrintable(still));
    QVERIFY2(!still.contains(QLatin1String(" -vf ")) && !still.contains(QLatin1String(" -af ")),
             qPrintable(still));
    // As long as what is made of the sound, in the command's own frame and rate.
    const QString sped =
        adapted("-i a -s 64x48 -r 30 -filter_complex [0:a]atempo=2[art0] b.mpeg", "cover=1");
    QVERIFY2(sped.contains(QLatin1String("r=30:colors=black")), qPrintable(sped));
    QVERIFY2(sped.contains(QLatin1String("pad=64:48:")), qPrintable(sped));
    QVERIFY2(sped.contains(QLatin1String(";[0:a]atempo=2,asplit[tick] ")), qPrintable(sped));
    for (const char *without : {"-i a -vn b.m4a", "-i a -c copy b.mp4",
                                "-i a -s 2x2 -filter_complex [0:a]showwaves=[vrt0] b.mp4"})
        QVERIFY(!adapted(without, "cover=1").contains(QLatin1String("[tick]")));
}

void TestFfmpegLauncher::findsRealFfmpeg()
{
    const QTemporaryDir root;
    const QString self = root.filePath(QStringLiteral("self/ffmpeg"));
    const QString other = root.filePath(QStringLiteral("other/ffmpeg"));
    const QString link = root.filePath(QStringLiteral("link"));
    writeTestProgram(self, QByteArray());
    writeTestProgram(other, QByteArray());
    writeTestFile(root.filePath(QStringLiteral("plain/ffmpeg")));
    QVERIFY(QFile::link(self, link));
    const auto find = [&](const QString &builtIn, const QString &searchPath) {
        return QString::fromStdString(cage::findTool(builtIn.toStdString(), "ffmpeg",
                                                     searchPath.toStdString(), self.toStdString()));
    };
    const QString searchPath = QStringLiteral("%1/none:%1/self:%1/plain:%1/other").arg(root.path());
    QCOMPARE(find(other, QString()), other);
    QCOMPARE(find(link, searchPath), other);
    QCOMPARE(find(QStringLiteral("/nowhere/ffmpeg"), searchPath), other);
    QCOMPARE(find(root.path(), root.filePath(QStringLiteral("self"))), QString());
}

QTEST_GUILESS_MAIN(TestFfmpegLauncher)
#include "tst_ffmpeglauncher.moc"
