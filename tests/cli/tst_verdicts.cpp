// SPDX-License-Identifier: MIT
// Broken sources never end in a finished file without a word about what it lacks, and whole ones
// of every kind end without a word, however odd they are.
#include "clirun.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int mp4Preset = 1003005;
constexpr int mp3Preset = 1200000;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList warnings(const QJsonObject &record)
{
    QStringList texts;
    for (const QJsonValue &text : record[QLatin1String("warnings")].toArray())
        texts += text.toString();
    return texts;
}

} // namespace

class TestVerdicts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void brokenSources_data();
    void brokenSources();
    void wholeSources_data();
    void wholeSources();
    void mergeNamesThePart();
    void tellsOnStandardError();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    void make(const QString &name, const char *options) const;
    void makeCut(const QString &from, const QString &name, double share = 0.5) const;
    void makeDamaged(const QString &from, const QString &name, double begin, int places) const;
    void makeWholeFiles() const;
    void makeBrokenFiles() const;

    QTemporaryDir m_dir;
};

// A file made by ffmpeg in one folder; an option "|" writes it through a pipe.
void TestVerdicts::make(const QString &name, const char *options) const
{
    QStringList arguments = words("-v error -y") + words(options);
    for (QString &argument : arguments) {
        if (argument.startsWith(QLatin1String("@")))
            argument = path(argument.mid(1));
    }
    const bool piped = arguments.last() == QLatin1String("|");
    if (piped)
        arguments.last() = QStringLiteral("-");
    else
        arguments += path(name);
    const ToolRun run = runTool(QStringLiteral("ffmpeg"), arguments);
    QVERIFY2(run.exitCode == 0, run.err.constData());
    if (piped)
        writeTestFile(path(name), run.out);
}

void TestVerdicts::makeCut(const QString &from, const QString &name, double share) const
{
    const QByteArray whole = contentOf(path(from));
    writeTestFile(path(name), whole.left(int(whole.size() * share)));
}

// Overwrites pieces of 24 bytes behind a share of the file with noise.
void TestVerdicts::makeDamaged(const QString &from, const QString &name, double begin,
                               int places) const
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

void TestVerdicts::makeWholeFiles() const
{
    make(QStringLiteral("base.mkv"), "-f lavfi -i testsrc2=s=160x120:r=25:d=6 -f lavfi -i sine=d=6 "
                                     "-c:v libx264 -pix_fmt yuv420p -bf 2 -g 50 -c:a aac");
    const struct
    {
        const char *name;
        const char *options;
    } files[] = {
        {"film.mp4", "-i @base.mkv -c copy -movflags +faststart"},
        {"film.webm", "-i @base.mkv -c:v libvpx -deadline realtime -c:a libopus"},
        {"film.avi", "-i @base.mkv -c:v mpeg4 -c:a mp3"},
        {"film.wmv", "-i @base.mkv -c:v wmv2 -c:a wmav2"},
        {"film.flv", "-i @base.mkv -c copy"},
        {"film.mpg", "-i @base.mkv -c:v mpeg2video -c:a mp2"},
        {"film.ts", "-i @base.mkv -c copy"},
        {"film.ogv", "-i @base.mkv -c:v libtheora -c:a libvorbis"},
        {"film.mov", "-i @base.mkv -c copy"},
        {"picture.gif", "-i @base.mkv -vf fps=5"},
        {"silent.mp4", "-i @base.mkv -an -c copy"},
        {"fragments.mp4", "-i @base.mkv -c copy -movflags frag_keyframe+empty_moov"},
        {"offset.mp4", "-i @base.mkv -c copy -movflags frag_keyframe+empty_moov "
                       "-output_ts_offset 3600"},
        {"late.mkv", "-i @base.mkv -c copy -output_ts_offset 900"},
        {"piped.webm", "-i @base.mkv -c:v libvpx -deadline realtime -c:a libvorbis -f webm |"},
        {"piped.mkv", "-i @base.mkv -c copy -f matroska |"},
        {"piped.avi", "-i @base.mkv -c:v mpeg4 -c:a mp3 -f avi |"},
        {"piped.wav", "-i @base.mkv -vn -f wav |"},
        {"piped.flac", "-i @base.mkv -vn -f flac |"},
        {"piped.flv", "-i @base.mkv -c copy -f flv |"},
        {"longsound.mkv", "-f lavfi -i testsrc2=s=160x120:d=2 -i @base.mkv -map 0:v -map 1:a "
                          "-c:v libx264 -c:a copy"},
        {"delayed.mkv", "-i @base.mkv -itsoffset 3 -i @base.mkv -map 0:v -map 1:a -c copy"},
        {"sound.wav", "-i @base.mkv -vn"},
        {"sound.aac", "-i @base.mkv -vn -c copy"},
        {"sound.m4a", "-i @base.mkv -vn -c copy -movflags +faststart"},
        {"sound.mp3", "-i @base.mkv -vn"},
        {"noise.mp3", "-f lavfi -i anoisesrc=d=6 -q:a 4"},
        {"noindex.mp3", "-f lavfi -i anoisesrc=d=6 -q:a 4 -write_xing 0"},
        {"sound.flac", "-i @base.mkv -vn"},
        {"sound.ogg", "-i @base.mkv -vn"},
        {"sound.opus", "-i @base.mkv -vn"},
        {"sound.ac3", "-i @base.mkv -vn"},
        {"sound.aiff", "-i @base.mkv -vn"},
        {"sound.au", "-i @base.mkv -vn -c:a pcm_s16be"},
        {"sound.wma", "-i @base.mkv -vn"},
        {"sound.mka", "-i @base.mkv -vn"},
    };
    for (const auto &file : files)
        make(QString::fromLatin1(file.name), file.options);
    // A recording that begins within a picture, two that were joined byte by byte, and the tags
    // that some programs leave behind the last frame.
    const QByteArray stream = contentOf(path(QStringLiteral("film.mpg")));
    constexpr int packSize = 2048;
    writeTestFile(path(QStringLiteral("midway.mpg")),
                  stream.mid(stream.size() / 3 / packSize * packSize));
    const QByteArray ts = contentOf(path(QStringLiteral("film.ts")));
    writeTestFile(path(QStringLiteral("joined.ts")), ts + ts);
    writeTestFile(path(QStringLiteral("tagged.mp3")),
                  contentOf(path(QStringLiteral("sound.mp3"))) + "LYRICSBEGIN" +
                      QByteArray(600, 'x') + "000611LYRICS200" + QByteArray(5000, '\0'));
}

void TestVerdicts::makeBrokenFiles() const
{
    for (const char *name :
         {"film.mp4", "film.mov", "film.webm", "film.avi", "film.wmv", "film.flv", "sound.wav",
          "sound.m4a", "sound.mp3", "noise.mp3", "sound.flac", "sound.aiff", "sound.au",
          "sound.wma", "sound.mka", "fragments.mp4", "base.mkv"}) {
        const QString whole = QString::fromLatin1(name);
        makeCut(whole, QStringLiteral("cut-") + whole);
    }
    make(QStringLiteral("nothing.wav"), "-f lavfi -i sine -t 0");
    make(QStringLiteral("nothing.flac"), "-f lavfi -i sine -t 0");
    make(QStringLiteral("nothing.mka"), "-f lavfi -i sine -t 0");
    // Of the sound only the frames' heads are left.
    QByteArray bytes = contentOf(path(QStringLiteral("sound.m4a")));
    const int samples = bytes.indexOf("mdat") + 4;
    bytes.replace(samples, bytes.size() - samples, QByteArray(bytes.size() - samples, '\xA5'));
    writeTestFile(path(QStringLiteral("nothing.m4a")), bytes);
    makeDamaged(QStringLiteral("film.mp4"), QStringLiteral("damaged.mp4"), 0.3, 6);
    makeDamaged(QStringLiteral("film.avi"), QStringLiteral("damaged.avi"), 0.3, 6);
    makeDamaged(QStringLiteral("film.mpg"), QStringLiteral("damaged.mpg"), 0.3, 6);
    makeDamaged(QStringLiteral("sound.aac"), QStringLiteral("damaged.aac"), 0.3, 8);
    makeDamaged(QStringLiteral("sound.ogg"), QStringLiteral("damaged.ogg"), 0.5, 2);
}

void TestVerdicts::initTestCase()
{
    makeWholeFiles();
    makeBrokenFiles();
}

void TestVerdicts::brokenSources_data()
{
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<bool>("alsoForItsSound");
    const QString shorter = QStringLiteral("比源文件短 [2-5] 秒");
    const QString damaged = QStringLiteral("源文件有 \\d+ 处损坏");
    const QString failed = QStringLiteral("^ERROR");
    for (const char *name :
         {"cut-film.mp4", "cut-fragments.mp4", "cut-base.mkv", "cut-film.webm", "cut-film.avi",
          "cut-sound.wav", "cut-sound.m4a", "cut-sound.mp3", "cut-noise.mp3", "cut-sound.flac",
          "cut-sound.aiff", "cut-sound.au", "cut-sound.mka", "cut-sound.wma"})
        QTest::newRow(name) << shorter << true;
    // Their headers tell one length for all, which the sound alone may not have.
    for (const char *name : {"cut-film.wmv", "cut-film.flv"})
        QTest::newRow(name) << shorter + QStringLiteral("|源文件不完整") << true;
    for (const char *name : {"damaged.aac", "damaged.ogg"})
        QTest::newRow(name) << damaged << true;
    for (const char *name : {"damaged.mp4", "damaged.avi", "damaged.mpg"})
        QTest::newRow(name) << damaged << false;
    for (const char *name :
         {"cut-film.mov", "nothing.wav", "nothing.flac", "nothing.mka", "nothing.m4a"})
        QTest::newRow(name) << failed << true;
}

void TestVerdicts::brokenSources()
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
        const QString state = record[QLatin1String("state")].toString();
        const QString told = state + QLatin1Char(' ') +
                             record[QLatin1String("message")].toString() +
                             warnings(record).join(QLatin1Char(' '));
        QVERIFY2(told.contains(QRegularExpression(verdict)), qPrintable(told));
        QCOMPARE(entriesOf(out.path()).isEmpty(), state == QLatin1String("ERROR"));
        QVERIFY(!record[QLatin1String("report")].toArray().isEmpty());
    }
}

void TestVerdicts::wholeSources_data()
{
    QTest::addColumn<int>("preset");
    QTest::addColumn<QStringList>("more");
    QTest::newRow("film of a size") << mp4Preset << QStringList();
    QTest::newRow("sound") << mp3Preset << QStringList();
    QTest::newRow("a part, twice as fast")
        << 1003001 << words("--from 1 --to 4 --beauty speed=2,rotate=1");
    QTest::newRow("a part that ends behind the end") << 1205001 << words("--from 1 --to 90");
}

void TestVerdicts::wholeSources()
{
    QFETCH(int, preset);
    QFETCH(QStringList, more);
    QStringList sources;
    for (const QString &name : entriesOf(m_dir.path())) {
        const bool isBroken = name.contains(QRegularExpression(QStringLiteral("cut|noth|damag")));
        // A picture alone gives no sound.
        const bool isMute =
            name == QLatin1String("picture.gif") || name == QLatin1String("silent.mp4");
        if (!isBroken && !(isMute && (preset == mp3Preset || preset == 1205001)))
            sources += path(name);
    }
    const QTemporaryDir out;
    const ToolRun run = runCli(QStringList{QStringLiteral("convert")} + sources + more +
                               QStringList{QStringLiteral("--preset"), QString::number(preset),
                                           QStringLiteral("--out"), out.path(),
                                           QStringLiteral("--jobs"), QStringLiteral("2"),
                                           QStringLiteral("--strict"), QStringLiteral("--json")});
    const QList<QJsonObject> records = jobRecords(run);
    QCOMPARE(records.size(), sources.size());
    QVERIFY(sources.size() >= 36);
    for (const QJsonObject &record : records) {
        const QString told = record[QLatin1String("input")].toString() + QLatin1Char(' ') +
                             record[QLatin1String("message")].toString() +
                             warnings(record).join(QLatin1Char(' '));
        QVERIFY2(record[QLatin1String("state")].toString() == QLatin1String("FINISHED") &&
                     warnings(record).isEmpty(),
                 qPrintable(told));
    }
    QCOMPARE(run.exitCode, 0);
}

void TestVerdicts::mergeNamesThePart()
{
    const QTemporaryDir out;
    const ToolRun run =
        runCli({QStringLiteral("merge"), path(QStringLiteral("film.mp4")),
                path(QStringLiteral("cut-base.mkv")), QStringLiteral("--preset"),
                QString::number(mp4Preset), QStringLiteral("--name"), QStringLiteral("m"),
                QStringLiteral("--out"), out.path(), QStringLiteral("--json")});
    const QList<QJsonObject> records = jobRecords(run);
    QCOMPARE(records.size(), 1);
    const QStringList texts = warnings(records.first());
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(QStringLiteral("cut-base.mkv：比源文件短")),
             qPrintable(texts.first()));
    QCOMPARE(run.exitCode, 0);
}

void TestVerdicts::tellsOnStandardError()
{
    const QTemporaryDir out;
    const QStringList arguments{QStringLiteral("convert"),  path(QStringLiteral("cut-base.mkv")),
                                QStringLiteral("--preset"), QString::number(mp3Preset),
                                QStringLiteral("--out"),    out.path()};
    const ToolRun plain = runCli(arguments);
    QCOMPARE(plain.exitCode, 0);
    QCOMPARE(plain.outLines(), QStringList(out.filePath(QStringLiteral("cut-base.mp3"))));
    QVERIFY2(QString::fromUtf8(plain.err).contains(QStringLiteral("比源文件短")),
             plain.err.constData());
    const ToolRun strict = runCli(arguments + QStringList(QStringLiteral("--strict")));
    QCOMPARE(strict.exitCode, 1);
    QCOMPARE(strict.outLines().size(), 1);
}

QTEST_GUILESS_MAIN(TestVerdicts)
#include "tst_verdicts.moc"
