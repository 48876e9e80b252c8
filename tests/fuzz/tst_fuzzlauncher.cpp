// SPDX-License-Identifier: MIT
// Command lines through the launcher of ffmpeg: words that it has no business with stay, and a
// graph means the same to it as to ffmpeg.
#include "ffmpeg/adaptcommand.h"
#include "ffmpeg/filterlabels.h"
#include "fuzz/fuzz.h"
#include "support/toolrun.h"

#include <QtTest>

#include <algorithm>

namespace {

using Words = std::vector<std::string>;

const QString anyCharacters = "ab 0-:;=,'\"\\[]{}()%@#|&$.\n\t视é"_s;

// Nothing is added to an output that says all this.
const QStringList fullySaid{"-c:v"_s, "libx264"_s, "-pix_fmt"_s, "yuv420p"_s, "-crf"_s, "20"_s,
                            "-r"_s,   "25"_s,      "-vf"_s,      "hflip"_s,   "-c:a"_s, "aac"_s,
                            "-ac"_s,  "2"_s,       "-ar"_s,      "44100"_s,   "-af"_s,  "anull"_s};

const QStringList options[] = {
    {"-t"_s, "1.5"_s},
    {"-an"_s},
    {"-vn"_s},
    {"-sn"_s},
    {"-c:v"_s, "libx264"_s},
    {"-c:v"_s, "copy"_s},
    {"-c:a"_s, "aac"_s},
    {"-b:v"_s, "500k"_s},
    {"-crf"_s, "23"_s},
    {"-r"_s, "25"_s},
    {"-ar"_s, "44100"_s},
    {"-s"_s, "320x240"_s},
    {"-map"_s, "0"_s},
    {"-map"_s, "[o]"_s},
    {"-shortest"_s},
    {"-vf"_s, "null"_s},
    {"-metadata"_s, "title=-y -i [x]"_s},
    {"-pix_fmt"_s, "yuv420p"_s},
    {"-movflags"_s, "+faststart"_s},
    {"-acodec"_s, "libmp3lame"_s},
};

const QString suffixes[] = {"mp4"_s, "mkv"_s, "webm"_s, "avi"_s, "mp3"_s, "gif"_s, "flac"_s,
                            "wmv"_s, "ogv"_s, "mpg"_s,  "m4b"_s, "MP4"_s, "xyz"_s, ""_s};

const QString filters[] = {
    "hflip"_s,           "vflip"_s,           "crop=w=32:h=32"_s,
    "eq=contrast=1.2"_s, "scale=w=40:h=40"_s, "null"_s,
    "setsar=1"_s,        "negate"_s,          "drawbox=x=1:y=2:w='min(8\\,iw)':h=4"_s};

Words words(const QStringList &list)
{
    Words all;
    for (const QString &word : list)
        all.push_back(word.toStdString());
    return all;
}

Words adapted(const Words &line, const QByteArray &facts)
{
    ffmpeglauncher::InstalledFfmpeg ffmpeg;
    ffmpeg.zscale = true;
    return ffmpeglauncher::adaptCommand(line, ffmpeg,
                                        ffmpeglauncher::parseSourceFacts(facts.toStdString()))
        .arguments;
}

// A name that is no option.
QString fileName(Fuzz &fuzz)
{
    return "/"_s + fuzz.textOf(anyCharacters, 12);
}

QString blanks(Fuzz &fuzz)
{
    return QString(fuzz.below(4) == 0 ? 1 : 0, u' ');
}

// A graph from one picture to one.
QString graph(Fuzz &fuzz, const QString &source)
{
    QString text = blanks(fuzz) + source;
    const int count = 1 + fuzz.below(4);
    for (int i = 0; i < count; ++i) {
        const QString label = "[%1%2]"_s.arg(fuzz.textOf("ab:= é"_s, 4).trimmed() + u'x').arg(i);
        text += blanks(fuzz) + fuzz.oneOf(filters) + blanks(fuzz);
        if (i + 1 < count)
            text += fuzz.below(2) == 0 ? ","_s : label + ";"_s + label;
    }
    return text;
}

QStringList line(Fuzz &fuzz, bool withGraph)
{
    QStringList all{"-y"_s};
    for (int left = 1 + fuzz.below(3); left > 0; --left) {
        if (fuzz.below(3) == 0)
            all += {"-ss"_s, "0.5"_s};
        all += {"-i"_s, fileName(fuzz)};
    }
    if (withGraph)
        all += {"-filter_complex"_s, graph(fuzz, "[0:v]"_s) + "[vrt9]"_s};
    for (int left = 1 + fuzz.below(2); left > 0; --left) {
        for (int option = fuzz.below(6); option > 0; --option)
            all += fuzz.oneOf(options);
        all += fileName(fuzz) + u'.' + fuzz.oneOf(suffixes);
    }
    return all;
}

// The words in their order among others.
bool isKeptIn(const Words &words, const Words &all)
{
    auto at = all.begin();
    return std::all_of(words.begin(), words.end(), [&](const std::string &word) {
        at = std::find(at, all.end(), word);
        return at != all.end() && at++ != all.end();
    });
}

} // namespace

class FuzzLauncher : public QObject
{
    Q_OBJECT

private slots:
    void keepsWords()
    {
        const QByteArray facts = "size=1920x1080;turned=1;rate=29.97;transfer=smpte2084;"
                                 "primaries=bt2020;matrix=bt2020nc;cover=1";
        Fuzz fuzz("launcher", 2.0);
        while (fuzz.goesOn()) {
            const bool withGraph = fuzz.below(2) == 0;
            const QStringList list = line(fuzz, withGraph);
            const QByteArray told = fuzz.below(2) == 0 ? QByteArray() : fuzz.mutated(facts);
            fuzz.take(list.join(QChar(u'\0')).toUtf8() + '\0' + told);
            Words given = words(list);
            const Words result = adapted(given, told);
            const auto isGraph = [](const std::string &word) { return word == "-filter_complex"; };
            const auto place = std::find_if(given.begin(), given.end(), isGraph);
            if (place != given.end())
                given.erase(place, place + 2);
            FUZZ_VERIFY(isKeptIn(given, result));
            const Words full =
                words(QStringList{"-i"_s, list.last()} + fullySaid + QStringList{"/b.mp4"_s});
            FUZZ_VERIFY(adapted(full, {}) == full);
        }
    }

    // Texts that are no graph, too.
    void keepsGraphs()
    {
        Fuzz fuzz("graphs");
        while (fuzz.goesOn()) {
            const QString good = graph(fuzz, "[0:v]"_s);
            fuzz.take(good.toUtf8());
            const std::string labelled =
                ffmpeglauncher::dropUnusedOutputLabels((good + "[vrt9]"_s).toStdString(), {});
            FUZZ_VERIFY(labelled == good.toStdString());
            const std::string any = fuzz.take(fuzz.mutated(good.toUtf8() + "[vrt9]")).toStdString();
            const std::string once = ffmpeglauncher::dropUnusedOutputLabels(any, {});
            FUZZ_VERIFY(once == ffmpeglauncher::dropUnusedOutputLabels(once, {}));
        }
    }

    void meansTheSame()
    {
        Fuzz fuzz("graphsinffmpeg", 3.0);
        while (fuzz.goesOn()) {
            const QString text = graph(fuzz, ""_s);
            fuzz.take(text.toUtf8());
            const auto frames = [](const QString &program, const QString &graphText) {
                return runTool(program, {"-v"_s, "error"_s, "-f"_s, "lavfi"_s, "-i"_s,
                                         "testsrc2=d=0.08:s=64x48"_s, "-filter_complex"_s,
                                         graphText, "-f"_s, "framemd5"_s, "-"_s});
            };
            const ToolRun plain = frames("ffmpeg"_s, text);
            const ToolRun launched =
                frames(builtProgram("module/ffmpeg/ffmpeg"_s), text + "[vrt9]"_s);
            FUZZ_VERIFY(plain.exitCode == 0 && plain.out == launched.out);
        }
    }
};

QTEST_GUILESS_MAIN(FuzzLauncher)
#include "tst_fuzzlauncher.moc"
