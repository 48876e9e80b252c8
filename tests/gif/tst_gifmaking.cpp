// SPDX-License-Identifier: MIT
#include "cli/clirun.h"
#include "gif/giffile.h"
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "MediaKits/MediaTasksManager/gifpreset.h"
#include "support/casename.h"
#include "support/testmedia.h"

#include <QDir>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int endLimitMs = 60000;

ConvertTaskParam gifParam(const QString &film, const QString &out, const QSize &size, int rate)
{
    ConvertTaskParam param;
    param.inputFile = film;
    param.outputName = "g"_s;
    param.outputDir = out;
    param.format = "GIF"_s;
    param.durationMs = 4000;
    param.encParam = gifPreset(size, rate);
    return param;
}

} // namespace

class TestGifMaking : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        makeMedia("-f lavfi -i testsrc2=s=320x240:r=25:d=4 -pix_fmt yuv420p @"_s, {m_film});
        makeMedia("-i @ -vf format=yuv420p10le -c:v libx265 -x265-params "
                  "log-level=none:colorprim=bt2020:transfer=smpte2084:colormatrix=bt2020nc @"_s,
                  {m_film, m_bright});
        makeClip(m_song, {4, 0});
    }

    void cleanup() { QTRY_VERIFY(processesWith(m_folder.path()).isEmpty()); }

    // The one step's words, whatever else there is to choose.
    void oneStep()
    {
        ConvertTaskParam param = gifParam("/in.mp4"_s, "/out"_s, {401, 300}, 15);
        param.timeRange = QSharedPointer<TimeSpan>::create(TimeSpan{1000, 3000});
        const auto step = ComplexConvertTask::convertStep(param, param.inputFile, "/w"_s);
        QCOMPARE(
            FFmpegExTask::commandText(ConvertTask::buildOptionTree(step)),
            "-hide_banner -y -ss 1 -t 2.001 -i \"/in.mp4\" -c:v gif -s 400x300 -b:v 128k -r 15 "
            "-filter_complex \"[0:v]scale='trunc(min(400,300*dar)/2)*2':"
            "'trunc(min(400/dar,300)/2)*2',setsar=1:1,"
            "pad=400:300:trunc((400-iw)/2):trunc((300-ih)/2):black[vrt0]\" "
            "-max_muxing_queue_size 34500 \"/w/convert.GIF\""_s);
    }

    void ownPalette()
    {
        const auto check = [&](const char *caseName, const QString &out, bool own) {
            const CaseName inCase(caseName);
            auto *param = new ConvertTaskParam(gifParam(m_film, out, {160, 120}, 10));
            param->timeRange = QSharedPointer<TimeSpan>::create(TimeSpan{1000, 3000});
            param->palette = own ? GifPalette::Own : GifPalette::Fixed;
            ComplexConvertTask task;
            task.setParam(param);
            QVector<double> progress;
            connect(&task, &MediaTask::taskProgress, this,
                    [&progress](double value) { progress += value; });
            task.start();
            QTRY_VERIFY_WITH_TIMEOUT(MediaTask::isFinal(task.state()), endLimitMs);
            QVERIFY2(task.state() == MediaTask::FINISHED, qPrintable(task.failure().cause));
            QVERIFY(std::is_sorted(progress.cbegin(), progress.cend()));
            QVERIFY(progress.first() >= 0.0 && progress.last() <= 1.0);
            QCOMPARE(entriesOf(out + "/~~MRVN_Temp~~"_s), QStringList());
            const QString made = out + "/g.GIF"_s;
            const GifFile gif = probeGif(made);
            QCOMPARE(gif.size, QSize(160, 120));
            QVERIFY2(std::abs(gif.frames - 20) <= 2, qPrintable(QString::number(gif.frames)));
            QVERIFY(gif.loops);
            const double error = colourError(made, m_film, "-ss 1 -t 2"_s, 10);
            QVERIFY2(own ? error < 6 : error > 9, qPrintable(QString::number(error)));
        };
        check("fixed", m_folder.filePath("fixed"_s), false);
        check("own", m_folder.filePath("own"_s), true);
        check("a folder's odd name", m_folder.filePath("a=b 'c' 50%d [x];,\\y"_s), true);
    }

    // The choice of the palette takes half of the time, and is told.
    void progressOfAPalette()
    {
        const QString film = m_folder.filePath("long.avi"_s);
        makeMedia("-f lavfi -i testsrc2=s=640x480:r=25:d=120 -c:v mpeg4 -q:v 5 @"_s, {film});
        auto *param = new ConvertTaskParam(gifParam(film, m_folder.filePath("long"_s), {}, 10));
        param->durationMs = 120000;
        param->palette = GifPalette::Own;
        ComplexConvertTask task;
        task.setParam(param);
        QSignalSpy progress(&task, &MediaTask::taskProgress);
        const auto shown = [&] { return progress.isEmpty() ? 0.0 : progress.last()[0].toDouble(); };
        task.start();
        QTRY_VERIFY_WITH_TIMEOUT(shown() > 0.05, endLimitMs);
        QVERIFY2(shown() < 0.5, qPrintable(QString::number(shown())));
        task.stop();
        QTRY_COMPARE(task.state(), MediaTask::STOPED);
        QVERIFY(QDir(param->outputDir).entryList(QDir::Files).isEmpty());
        QCOMPARE(entriesOf(param->outputDir + "/~~MRVN_Temp~~"_s), QStringList());
    }

    // Palette and pictures are mapped alike.
    void paletteOfAHighRange()
    {
        const QString out = m_folder.filePath("bright"_s);
        QVector<double> errors;
        for (const char *quality : {"--json", "--quality"}) {
            const ToolRun run = runCli({"gif"_s, m_bright, QLatin1String(quality), "--to"_s, "1"_s,
                                        "--out"_s, out, "--name"_s, QLatin1String(quality)});
            QVERIFY2(run.exitCode == 0, run.err.constData());
        }
        const double error = colourError(out + "/--quality.gif"_s, out + "/--json.gif"_s, {}, 10);
        // Apart by the dots of the fixed colours alone.
        QVERIFY2(error < 24, qPrintable(QString::number(error)));
    }

    void cli()
    {
        const auto check = [&](const QString &words, const QSize &size, int frames) {
            const CaseName inCase(qPrintable(words));
            const QString out = m_folder.filePath("cli"_s);
            const ToolRun run = runCli(("gif "_s + words).split(u' ') +
                                       QStringList{m_film, "--json"_s, "--out"_s, out});
            QVERIFY2(run.exitCode == 0, run.err.constData());
            const QJsonObject record = jobRecords(run).value(0);
            QCOMPARE(record["state"_s].toString(), "FINISHED"_s);
            QCOMPARE(record["warnings"_s].toArray(), QJsonArray());
            const GifFile gif = probeGif(record["output"_s].toString());
            QCOMPARE(gif.size, size);
            QVERIFY2(std::abs(gif.frames - frames) <= 2, qPrintable(QString::number(gif.frames)));
        };
        check("--to 3"_s, {240, 160}, 30);
        check("--from 1 --to 2.5 --size 401x225 --fps 15"_s, {400, 224}, 22);
        check("--quality --from 00:00:01 --to 2 --size 11x10 --fps 5"_s, {10, 10}, 5);
        check("--from 2.005 --to 2.01"_s, {240, 160}, 1);
        check("--from 3.99 --to 3.999 --quality"_s, {240, 160}, 1);
    }

    void cliRefuses()
    {
        const auto check = [&](const QStringList &words, int exitCode, const QString &named) {
            const ToolRun run =
                runCli(QStringList{"gif"_s} + words + QStringList{"--out"_s, m_folder.path()});
            const CaseName inCase(qPrintable(words.join(u' ')));
            QCOMPARE(run.exitCode, exitCode);
            QVERIFY2(QString::fromUtf8(run.err).contains(named), run.err.constData());
        };
        check({m_song}, 1, "没有画面"_s);
        check({m_song, "--quality"_s}, 1, "没有画面"_s);
        check({}, 2, "没有给出文件"_s);
        for (const char *size : {"9x20", "20x4001", "20", "20x", "x20", "20x20x20"})
            check({m_film, "--size"_s, QLatin1String(size)}, 2, "--size"_s);
        for (const char *rate : {"0", "51", "2.5"})
            check({m_film, "--fps"_s, QLatin1String(rate)}, 2, "--fps"_s);
        check({m_film, "--preset"_s, "1003001"_s}, 2, "preset"_s);
    }

    void dryRun()
    {
        const QString out = m_folder.filePath("dry"_s);
        const ToolRun plain = runCli({"gif"_s, m_film, "--dry-run"_s, "--out"_s, out});
        QCOMPARE(plain.outLines().size(), 1);
        QVERIFY(!plain.out.contains("palette"));
        const ToolRun own = runCli({"gif"_s, m_film, "--dry-run"_s, "--quality"_s, "--out"_s, out});
        QCOMPARE(own.outLines().size(), 2);
        QVERIFY(own.outLines().first().contains("palettegen"_s));
        QVERIFY(own.outLines().last().contains("paletteuse"_s));
        QVERIFY(!QDir(out).exists());
    }

private:
    QTemporaryDir m_folder;
    QString m_film = m_folder.filePath("film.mp4"_s);
    QString m_bright = m_folder.filePath("bright.mp4"_s);
    QString m_song = m_folder.filePath("song.mp4"_s);
};

QTEST_GUILESS_MAIN(TestGifMaking)
#include "tst_gifmaking.moc"
