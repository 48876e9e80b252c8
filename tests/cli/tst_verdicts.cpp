// SPDX-License-Identifier: MIT
// Broken sources never end in a finished file without a word about what it lacks, and whole ones
// of every kind end without a word, however odd they are.
#include "clirun.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QtTest>

namespace {

constexpr int mp4Preset = 1003005;
constexpr int mp3Preset = 1200000;

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

QStringList warnings(const QJsonObject &record)
{
    QStringList texts;
    for (const QJsonValue &text : record["warnings"_s].toArray())
        texts += text.toString();
    return texts;
}

} // namespace

class TestVerdicts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        makeWholeFiles();
        makeBrokenFiles();
    }

    void brokenSources_data()
    {
        QTest::addColumn<QString>("verdict");
        QTest::addColumn<bool>("alsoForItsSound");
        const QString shorter = "比源文件短 [2-5] 秒"_s;
        const QString damaged = "源文件有 \\d+ 处损坏"_s;
        const QString failed = "^ERROR"_s;
        for (const char *name :
             {"cut-film.mp4", "cut-fragments.mp4", "cut-base.mkv", "cut-film.webm", "cut-film.avi",
              "cut-sound.wav", "cut-sound.m4a", "cut-sound.mp3", "cut-noise.mp3", "cut-sound.flac",
              "cut-sound.aiff", "cut-sound.au", "cut-sound.mka", "cut-sound.wma"})
            QTest::newRow(name) << shorter << true;
        // Their headers tell one length for all, which the sound alone may not have.
        for (const char *name : {"cut-film.wmv", "cut-film.flv", "cut-film.rm"})
            QTest::newRow(name) << shorter + "|源文件不完整"_s << true;
        for (const char *name : {"damaged.aac", "damaged.ogg"})
            QTest::newRow(name) << damaged << true;
        for (const char *name : {"damaged.mp4", "damaged.avi", "damaged.mpg"})
            QTest::newRow(name) << damaged << false;
        // A film of it all the same, which is black.
        for (const char *name : {"damaged-cover.mp3", "damaged-cover.m4a", "damaged-cover.flac"})
            QTest::newRow(name) << "^FINISHED 封面图片无法解码"_s << false;
        for (const char *name :
             {"cut-film.mov", "nothing.wav", "nothing.flac", "nothing.mka", "nothing.m4a"})
            QTest::newRow(name) << failed << true;
    }

    void brokenSources()
    {
        QFETCH(QString, verdict);
        QFETCH(bool, alsoForItsSound);
        const QString source = path(QString::fromLatin1(QTest::currentDataTag()));
        QVector<int> presets{mp4Preset};
        if (alsoForItsSound)
            presets += mp3Preset;
        for (const int preset : qAsConst(presets)) {
            const QTemporaryDir out;
            const QJsonObject record = convertOne(source, preset, out.path());
            const QString state = record["state"_s].toString();
            const QString told =
                state + u' ' + record["message"_s].toString() + warnings(record).join(u' ');
            QVERIFY2(told.contains(QRegularExpression(verdict)), qPrintable(told));
            QCOMPARE(entriesOf(out.path()).isEmpty(), state == "ERROR"_s);
            QVERIFY(!record["report"_s].toArray().isEmpty());
        }
    }

    void wholeSources_data()
    {
        QTest::addColumn<int>("preset");
        QTest::addColumn<QStringList>("more");
        QTest::newRow("film of a size") << mp4Preset << QStringList();
        QTest::newRow("sound") << mp3Preset << QStringList();
        QTest::newRow("a part, twice as fast")
            << 1003001 << words("--from 1 --to 4 --beauty speed=2,rotate=1");
        QTest::newRow("a part that ends behind the end") << 1205001 << words("--from 1 --to 90");
    }

    void wholeSources()
    {
        QFETCH(int, preset);
        QFETCH(QStringList, more);
        QStringList sources;
        for (const QString &name : entriesOf(m_dir.path())) {
            const bool isBroken = name.contains(QRegularExpression("cut|noth|damag"_s));
            // A picture alone gives no sound.
            const bool isMute = name == "picture.gif"_s || name.startsWith("silent"_s);
            if (!isBroken && !(isMute && (preset == mp3Preset || preset == 1205001)))
                sources += path(name);
        }
        const QTemporaryDir out;
        const ToolRun run =
            runCli(QStringList{"convert"_s} + sources + more +
                   QStringList{"--preset"_s, QString::number(preset), "--out"_s, out.path(),
                               "--jobs"_s, "2"_s, "--strict"_s, "--json"_s});
        const QList<QJsonObject> records = jobRecords(run);
        QCOMPARE(records.size(), sources.size());
        QVERIFY(sources.size() >= 36);
        for (const QJsonObject &record : records) {
            const QString told = record["input"_s].toString() + u' ' +
                                 record["message"_s].toString() + warnings(record).join(u' ');
            QVERIFY2(record["state"_s].toString() == "FINISHED"_s && warnings(record).isEmpty(),
                     qPrintable(told));
        }
        QCOMPARE(run.exitCode, 0);
    }

    void mergeNamesThePart()
    {
        const QTemporaryDir out;
        const ToolRun run = runCli({"merge"_s, path("film.mp4"_s), path("cut-base.mkv"_s),
                                    "--preset"_s, QString::number(mp4Preset), "--name"_s, "m"_s,
                                    "--out"_s, out.path(), "--json"_s});
        const QList<QJsonObject> records = jobRecords(run);
        QCOMPARE(records.size(), 1);
        const QStringList texts = warnings(records.first());
        QCOMPARE(texts.size(), 1);
        QVERIFY2(texts.first().startsWith("cut-base.mkv：比源文件短"_s), qPrintable(texts.first()));
        QCOMPARE(run.exitCode, 0);
    }

    void tellsOnStandardError()
    {
        const QTemporaryDir out;
        const QStringList arguments{"convert"_s,  path("cut-base.mkv"_s),
                                    "--preset"_s, QString::number(mp3Preset),
                                    "--out"_s,    out.path()};
        const ToolRun plain = runCli(arguments);
        QCOMPARE(plain.exitCode, 0);
        QCOMPARE(plain.outLines(), QStringList(out.filePath("cut-base.mp3"_s)));
        QVERIFY2(QString::fromUtf8(plain.err).contains("比源文件短"_s), plain.err.constData());
        const ToolRun strict = runCli(arguments + QStringList("--strict"_s));
        QCOMPARE(strict.exitCode, 1);
        QCOMPARE(strict.outLines().size(), 1);
    }

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    // A file made by ffmpeg from "base.mkv", which is "@"; an option "|" writes it through a pipe.
    void make(const QString &name, const char *options) const
    {
        QString text = QString::fromLatin1(options);
        const bool piped = text.endsWith(u'|');
        if (piped)
            text.chop(1);
        QStringList paths;
        for (int i = text.count(u'@'); i > 0; --i)
            paths += path("base.mkv"_s);
        if (piped)
            writeTestFile(path(name), runFfmpeg(text + "-"_s, paths).out);
        else
            makeMedia(text + " @"_s, paths + QStringList(path(name)));
    }

    void makeCut(const QString &from, const QString &name, double share = 0.5) const
    {
        const QByteArray whole = contentOf(path(from));
        writeTestFile(path(name), whole.left(int(whole.size() * share)));
    }

    // Overwrites pieces of 24 bytes behind a share of the file with noise.
    void makeDamaged(const QString &from, const QString &name, double begin, int places) const
    {
        QByteArray bytes = contentOf(path(from));
        QRandomGenerator random(7);
        constexpr int pieceSize = 24;
        const int first = int(bytes.size() * begin);
        const int step = (bytes.size() * 9 / 10 - first) / places;
        for (int place = 0; place < places; ++place) {
            for (int i = 0; i < pieceSize; ++i)
                bytes[first + place * step + i] = char(random.generate());
        }
        writeTestFile(path(name), bytes);
    }

    void makeWholeFiles() const
    {
        make("base.mkv"_s, "-f lavfi -i testsrc2=s=160x120:r=25:d=6 -f lavfi -i sine=d=6 "
                           "-c:v libx264 -pix_fmt yuv420p -bf 2 -g 50 -c:a aac");
        const struct
        {
            const char *name;
            const char *options;
        } files[] = {
            {"film.mp4", "-i @ -c copy -movflags +faststart"},
            {"film.webm", "-i @ -c:v libvpx -deadline realtime -c:a libopus"},
            {"film.avi", "-i @ -c:v mpeg4 -c:a mp3"},
            {"film.wmv", "-i @ -c:v wmv2 -c:a wmav2"},
            {"film.flv", "-i @ -c copy"},
            {"film.rm", "-i @ -c:v rv20 -c:a ac3"},
            {"film.mpg", "-i @ -c:v mpeg2video -c:a mp2"},
            {"film.ts", "-i @ -c copy"},
            {"film.ogv", "-i @ -c:v libtheora -c:a libvorbis"},
            {"film.mov", "-i @ -c copy"},
            {"picture.gif", "-i @ -vf fps=5"},
            {"silent.mp4", "-i @ -an -c copy"},
            {"fragments.mp4", "-i @ -c copy -movflags frag_keyframe+empty_moov"},
            {"offset.mp4", "-i @ -c copy -movflags frag_keyframe+empty_moov "
                           "-output_ts_offset 3600"},
            {"late.mkv", "-i @ -c copy -output_ts_offset 900"},
            {"piped.webm", "-i @ -c:v libvpx -deadline realtime -c:a libvorbis -f webm |"},
            {"piped.mkv", "-i @ -c copy -f matroska |"},
            {"piped.avi", "-i @ -c:v mpeg4 -c:a mp3 -f avi |"},
            {"piped.wav", "-i @ -vn -f wav |"},
            {"piped.flac", "-i @ -vn -f flac |"},
            {"piped.flv", "-i @ -c copy -f flv |"},
            {"longsound.mkv", "-f lavfi -i testsrc2=s=160x120:d=2 -i @ -map 0:v -map 1:a "
                              "-c:v libx264 -c:a copy"},
            {"delayed.mkv", "-i @ -itsoffset 3 -i @ -map 0:v -map 1:a -c copy"},
            {"twosounds.mp4", "-i @ -f lavfi -i sine=d=15 -map 0:v -map 0:a -map 1:a"},
            {"sound.wav", "-i @ -vn"},
            {"sound.aac", "-i @ -vn -c copy"},
            {"sound.m4a", "-i @ -vn -c copy -movflags +faststart"},
            {"book.m4b", "-i @ -vn -c copy"},
            {"sound.mp3", "-i @ -vn"},
            {"noise.mp3", "-f lavfi -i anoisesrc=d=6 -q:a 4"},
            {"noindex.mp3", "-f lavfi -i anoisesrc=d=6 -q:a 4 -write_xing 0"},
            {"sound.flac", "-i @ -vn"},
            {"sound.ogg", "-i @ -vn"},
            {"sound.opus", "-i @ -vn"},
            {"sound.ac3", "-i @ -vn"},
            {"sound.aiff", "-i @ -vn"},
            {"sound.au", "-i @ -vn -c:a pcm_s16be"},
            {"sound.wma", "-i @ -vn"},
            {"sound.mka", "-i @ -vn"},
        };
        for (const auto &file : files)
            make(QString::fromLatin1(file.name), file.options);
        makeSubtitled();
        // A recording that begins within a picture, two that were joined byte by byte, and the tags
        // that some programs leave behind the last frame.
        const QByteArray stream = contentOf(path("film.mpg"_s));
        constexpr int packSize = 2048;
        writeTestFile(path("midway.mpg"_s), stream.mid(stream.size() / 3 / packSize * packSize));
        const QByteArray ts = contentOf(path("film.ts"_s));
        // A stopped recording ends anywhere.
        writeTestFile(path("stopped.mpg"_s),
                      stream.mid(int(stream.size() * 0.21), int(stream.size() * 0.62)));
        writeTestFile(path("stopped.ts"_s), ts.mid(int(ts.size() * 0.21), int(ts.size() * 0.62)));
        writeTestFile(path("joined.ts"_s), ts + ts);
        writeTestFile(path("tagged.mp3"_s), contentOf(path("sound.mp3"_s)) + "LYRICSBEGIN" +
                                                QByteArray(600, 'x') + "000611LYRICS200" +
                                                QByteArray(5000, '\0'));
    }

    // Subtitles that go on when the film is over, once in a file that doesn't tell how long each
    // stream is.
    void makeSubtitled() const
    {
        const QTemporaryDir texts;
        const QString text = texts.filePath("text.srt"_s);
        writeTestFile(text, "1\n00:00:01,000 --> 00:00:02,000\na\n\n"
                            "2\n00:00:14,000 --> 00:00:20,000\nb\n");
        const QString base = path("base.mkv"_s);
        makeMedia("-i @ -i @ -c copy @"_s, {base, text, path("texts.mkv"_s)});
        makeMedia("-i @ -i @ -an -c copy @"_s, {base, text, path("silent-texts.mkv"_s)});
        QByteArray bytes = contentOf(path("texts.mkv"_s));
        writeTestFile(path("texts-untold.mkv"_s), bytes.replace("DURATION", "DURATIOX"));
    }

    // Of a song's cover, the beginning or the pixels are lost.
    void makeDamagedCover(const QString &suffix, const QByteArray &lost, int size) const
    {
        const QTemporaryDir covers;
        const QString cover = covers.filePath("cover.png"_s);
        makePicture(cover, "red"_s, 64, 48);
        const QString song = path("damaged-cover."_s + suffix);
        makeMedia("-f lavfi -i sine=d=3 -i @ -map 0 -map 1 -c:v copy -disposition:v attached_pic "
                  "@"_s,
                  {cover, song});
        QByteArray bytes = contentOf(song);
        const int at = bytes.indexOf(lost, bytes.indexOf("\x89PNG"));
        writeTestFile(song, bytes.replace(at, size, QByteArray(size, '\xA5')));
    }

    void makeBrokenFiles() const
    {
        makeDamagedCover("mp3"_s, "\x89PNG", 40);
        makeDamagedCover("m4a"_s, "\x89PNG", 40);
        makeDamagedCover("flac"_s, "IDAT", 20);
        for (const char *name :
             {"film.mp4", "film.mov", "film.webm", "film.avi", "film.wmv", "film.flv", "film.rm",
              "sound.wav", "sound.m4a", "sound.mp3", "noise.mp3", "sound.flac", "sound.aiff",
              "sound.au", "sound.wma", "sound.mka", "fragments.mp4", "base.mkv"}) {
            const QString whole = QString::fromLatin1(name);
            makeCut(whole, "cut-"_s + whole);
        }
        make("nothing.wav"_s, "-f lavfi -i sine -t 0");
        make("nothing.flac"_s, "-f lavfi -i sine -t 0");
        make("nothing.mka"_s, "-f lavfi -i sine -t 0");
        // Of the sound only the frames' heads are left.
        QByteArray bytes = contentOf(path("sound.m4a"_s));
        const int samples = bytes.indexOf("mdat") + 4;
        bytes.replace(samples, bytes.size() - samples, QByteArray(bytes.size() - samples, '\xA5'));
        writeTestFile(path("nothing.m4a"_s), bytes);
        makeDamaged("film.mp4"_s, "damaged.mp4"_s, 0.3, 6);
        makeDamaged("film.avi"_s, "damaged.avi"_s, 0.3, 6);
        makeDamaged("film.mpg"_s, "damaged.mpg"_s, 0.3, 6);
        makeDamaged("sound.aac"_s, "damaged.aac"_s, 0.3, 8);
        makeDamaged("sound.ogg"_s, "damaged.ogg"_s, 0.5, 2);
    }

    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestVerdicts)
#include "tst_verdicts.moc"
