// SPDX-License-Identifier: MIT
#include "ffmpeg/adaptcommand.h"
#include "ffmpeg/filterlabels.h"
#include "ffmpeg/realffmpeg.h"
#include "support/testfile.h"

#include <QFile>
#include <QtTest>

using ffmpeglauncher::AdaptedCommand;
using ffmpeglauncher::EncoderSupport;

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

} // namespace

class TestFfmpegLauncher : public QObject
{
    Q_OBJECT

private slots:
    void dropsUnusedLabels();
    void keepsMappedLabels();
    void adaptsCommands();
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

void TestFfmpegLauncher::adaptsCommands()
{
    const auto row = [](const char *command, const char *expected, int notes,
                        const EncoderSupport &support = {}) {
        const AdaptedCommand adapted =
            ffmpeglauncher::adaptCommand(words(QLatin1String(command)), support);
        QCOMPARE(text(adapted.arguments), QLatin1String(expected));
        QCOMPARE(int(adapted.notes.size()), notes);
    };
    const auto same = [&row](const char *command) { row(command, command, 0); };
    row("-y -i a -filter_complex [0:v]null[o] b.mkv -progress pipe:1",
        "-y -i a -filter_complex [0:v]null b.mkv -progress pipe:1", 0);
    row("-lavfi color[a] -filter_complex sine[b] -map [b] x.mkv",
        "-lavfi color -filter_complex sine[b] -map [b] x.mkv", 0);
    same("-i a -filter_complex [0:v]null[o] -map [o] b.mkv");
    same("-i a -vf null[o] -metadata -filter_complex color[o]");
    same("-i a b.mkv -filter_complex");

    row("-i a -acodec libopencore_amrnb b.3GP -codec:a:0 libopencore_amrnb c.3gp",
        "-i a -acodec aac b.3GP -codec:a:0 aac c.3gp", 2);
    row("-i a -an b.3gp c.3gp -c:a aac d.3gp", "-i a -an b.3gp -c:a aac c.3gp -c:a aac d.3gp", 1);
    row("-i a -- -b.3gp", "-i a -c:a aac -- -b.3gp", 1);
    row("-i a -f 3gp b", "-i a -f 3gp -c:a aac b", 1);
    same("-i a -c copy b.3gp");
    same("-i a -codec:1 aac b.3gp");
    same("-i a -f mp4 b.3gp");
    same("-i a b.3gp/c x/3gp");
    same("-i a -c:a libopencore_amrnb b.amr");
    row("-re -noautorotate -nostdin -i a -shortest -bitexact:a b.3gp",
        "-re -noautorotate -nostdin -i a -shortest -bitexact:a -c:a aac b.3gp", 1);
    same("-i a -metadata b.3gp b.mp4");

    row("-i a -nostats b.swf -y", "-i a -nostats -ar 44100 b.swf -y", 1);
    row("-ar 48000 -i a -vcodec libx264 b.swf", "-ar 48000 -i a -vcodec flv -ar 44100 b.swf", 2);
    row("-f concat -i c.txt -c copy -map 0 b.swf",
        "-f concat -i c.txt -c copy -map 0 -copyinkf b.swf", 0);
    same("-i a.swf -c:v libx264 b.mp4");
    EncoderSupport amr;
    amr.amr = true;
    const char *const command = "-i a -c:a libopencore_amrnb b.3gp c.3gp";
    row(command, command, 0, amr);
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
        return QString::fromStdString(ffmpeglauncher::findRealFfmpeg(
            builtIn.toStdString(), searchPath.toStdString(), self.toStdString()));
    };
    const QString searchPath = QStringLiteral("%1/none:%1/self:%1/plain:%1/other").arg(root.path());
    QCOMPARE(find(other, QString()), other);
    QCOMPARE(find(link, searchPath), other);
    QCOMPARE(find(QStringLiteral("/nowhere/ffmpeg"), searchPath), other);
    QCOMPARE(find(root.path(), root.filePath(QStringLiteral("self"))), QString());
}

QTEST_GUILESS_MAIN(TestFfmpegLauncher)
#include "tst_ffmpeglauncher.moc"
