// SPDX-License-Identifier: MIT
// File names and texts of all characters on their way to a tool.
#include "fuzz/fuzz.h"
#include "MediaKits/MediaFormats/toolquoting.h"
#include "MediaKits/MediaTasksManager/filealiases.h"
#include "MediaKits/MediaTasksManager/filterescape.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QProcess>
#include <QtTest>

namespace {

const QString characters = "ab 0-~:;=,'\"\\[]{}()<>%*?!@#|&$^`.\n\t\r视頻é😀\u200f\u00a0"_s;

ToolRun runCommand(const QString &text)
{
    return runTool("ffmpeg"_s, QProcess::splitCommand(text));
}

} // namespace

class FuzzNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("XDG_CACHE_HOME", QFile::encodeName(m_dir.path()));
        makePicture(m_dir.filePath("p.png"_s), "red"_s, 32, 32);
    }

    void quotedPaths()
    {
        Fuzz fuzz("quotedpaths");
        while (fuzz.goesOn()) {
            const QString path = fuzz.textOf(characters + u'/', 40);
            const QString other = u'/' + fuzz.textOf(characters, 9);
            fuzz.take(path.toUtf8());
            const QStringList words = QProcess::splitCommand(
                "-i %1 -x=1 %2"_s.arg(quoteToolPath(path), quoteToolPath(other)));
            FUZZ_VERIFY(words.size() == 4 && (words[1] == path || words[1] == "./"_s + path) &&
                        words[3] == other && !words[1].startsWith(u'-'));
        }
    }

    // As a source and as a picture in a filter.
    void namesInFfmpeg()
    {
        Fuzz fuzz("namesinffmpeg", 3.0);
        while (fuzz.goesOn()) {
            const QString path = m_dir.path() + u'/' + fuzz.textOf(characters, 30) + ".png"_s;
            fuzz.take(path.toUtf8());
            if (!QFile::copy(m_dir.filePath("p.png"_s), path))
                continue;
            FileAliases aliases;
            const QString picture = quoteFilterPath(aliases.forFilter(path));
            const ToolRun run = runCommand(
                "-v error -i %1 -filter_complex \"movie=%2,hflip[a];[0:v][a]overlay\" -f null -"_s
                    .arg(quoteToolPath(aliases.forInput(path)), picture));
            FUZZ_VERIFY(run.exitCode == 0 && run.err.isEmpty());
            QFile::remove(path);
        }
    }

    // A text that is drawn by name is that which is drawn from a file.
    void textsInFfmpeg()
    {
        const QString file = m_dir.filePath("text"_s);
        Fuzz fuzz("textsinffmpeg", 3.0);
        while (fuzz.goesOn()) {
            const QString text = fuzz.textOf("abWM 0-:;=,'\"\\[]{}()<>%*?!@#|&$^`.视é"_s, 12);
            writeTestFile(file, fuzz.take(text.toUtf8()));
            const auto picture = [](const QString &from) {
                return runCommand(
                    "-v error -f lavfi -i color=s=200x40:d=0.04 -filter_complex "
                    "\"[0:v]drawtext=fontsize=16:fontcolor=white:%1\" -f framemd5 -"_s.arg(from));
            };
            const ToolRun named = picture("text="_s + escapeLiteralText(text));
            const ToolRun read = picture("expansion=none:textfile="_s + file);
            FUZZ_VERIFY(read.exitCode == 0 && named.out == read.out);
        }
    }

private:
    const QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(FuzzNames)
#include "tst_fuzznames.moc"
