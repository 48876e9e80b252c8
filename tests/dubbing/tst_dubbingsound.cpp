// SPDX-License-Identifier: MIT
#include "dubbing/heardsound.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/dubbingmix.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QtTest>

namespace {

using Convert = Watched<ComplexConvertTask>;

constexpr int filmTone = 400;
constexpr int shortTone = 1000;
constexpr int longTone = 2500;
constexpr double startSlack = 0.02;
constexpr double lengthSlack = 0.05;
constexpr double levelSlack = 0.04; // of the level

QSharedPointer<MediaInfoData> probed(const QString &path)
{
    QObject owner;
    MediaInfoBase *reader = createMediaInfo(QFileInfo(path).suffix().toUpper(), path, &owner);
    QSignalSpy got(reader, &MediaInfoBase::got);
    QSignalSpy error(reader, &MediaInfoBase::error);
    reader->start();
    const bool ended =
        QTest::qWaitFor([&] { return !got.isEmpty() || !error.isEmpty(); }, endLimitMs);
    return ended ? reader->mediaInfo() : nullptr;
}

// Of the wave between the samples as well, 1.0 for the loudest that can be put out.
double truePeak(const QString &path)
{
    const QByteArray told = runFfmpeg("-i @ -af ebur128=peak=true:metadata=1,"
                                      "ametadata=print:key=lavfi.r128.true_peak:file=- -f null -"_s,
                                      {path})
                                .out;
    return told.mid(told.lastIndexOf('=') + 1).trimmed().toDouble();
}

bool isNear(double level, double wanted)
{
    return std::abs(level - wanted) < levelSlack * wanted;
}

} // namespace

// What is heard of dubbed films: real ones, through the real ffmpeg.
class TestDubbingSound : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        makeMedia("-f lavfi -i testsrc2=s=64x48:r=25:d=10 -f lavfi -i sine=%1:d=10 -ac 2 @"_s.arg(
                      filmTone),
                  {media("film.mp4")});
        makeMedia("-f lavfi -i sine=%1:d=3 -ac 1 @"_s.arg(shortTone), {media("short.mp3")});
        makeMedia("-f lavfi -i sine=%1:r=48000:d=60 -ac 2 @"_s.arg(longTone), {media("long.ogg")});
        makeMedia("-f lavfi -i testsrc2=s=64x48:r=25:d=10 -c:v libx264 -pix_fmt yuv420p @"_s,
                  {media("silent.mp4")});
        makeMedia("-f lavfi -i testsrc2=s=64x48:r=25:d=40 -f lavfi -i sine=%1:d=40 -ac 2 @"_s.arg(
                      filmTone),
                  {media("longer.mp4")});
    }

    // A factor is a factor, whatever else is heard: before, while and after another sound.
    void everySoundKeepsItsLevel()
    {
        const HeardSound film(media("film.mp4"));
        const double own = film.level(filmTone, 1, 9);
        const HeardSound heard(dubbed("film.mp4", {music("short.mp3", 3500, 0.8F)}, 0.5F));
        QVERIFY(std::abs(heard.seconds() - 10.0) < lengthSlack);
        for (const double at : {1.0, 4.5, 7.0, 9.0})
            QVERIFY2(isNear(heard.level(filmTone, at, at + 0.5), own / 2),
                     qPrintable(QString::number(at)));
        // One channel of music that had one comes out as loud as players make it: 3 dB lower.
        const double music = HeardSound(media("short.mp3")).level(shortTone, 1, 2) * M_SQRT1_2;
        QVERIFY(isNear(heard.level(shortTone, 4, 6), music * 0.8));
        QVERIFY(heard.level(shortTone, 7, 9) < 0.001);
        QVERIFY(std::abs(heard.onset(shortTone) - 3.5) < startSlack);
    }

    void theFilmIsSilenced()
    {
        const HeardSound heard(dubbed("film.mp4", {music("long.ogg", 2000)}, 1.0F, false));
        QVERIFY(heard.level(filmTone, 1, 9) < 0.001);
        QVERIFY(std::abs(heard.onset(longTone) - 2.0) < startSlack);
        QVERIFY(std::abs(heard.seconds() - 10.0) < lengthSlack);
    }

    // The mixer makes all sounds quieter when they are many, which takes nothing from their mix.
    void soundsAsTheSameMixByHand_data()
    {
        QTest::addColumn<bool>("isMixed");
        QTest::newRow("with the film's sound") << true;
        QTest::newRow("without it") << false;
    }

    void soundsAsTheSameMixByHand()
    {
        QFETCH(bool, isMixed);
        for (const int seed : {1, 2}) {
            makeMedia("-f lavfi -i anoisesrc=c=brown:a=0.2:seed=%1:d=30 -ac 2 @"_s.arg(seed),
                      {media(seed == 1 ? "one.wav" : "two.wav")});
        }
        const QString result = dubbed(
            "film.mp4", {music("one.wav", 1300, 0.7F), music("two.wav", 0, 1.2F)}, 0.6F, isMixed);
        const QString own = media("own.wav");
        makeMedia("-i @ -i @ -i @ -filter_complex [0:a]volume=%1[f];[1:a]volume=0.7,"
                  "adelay=1300|1300[a];[2:a]volume=1.2[b];"
                  "[f][a][b]amix=inputs=3:duration=first[m] -map [m] @"_s.arg(isMixed ? 0.6 : 0.0),
                  {media("film.mp4"), media("one.wav"), media("two.wav"), own});
        const double alike = correlation(HeardSound(result), HeardSound(own));
        QVERIFY2(alike > 0.99, qPrintable(QString::number(alike)));
        QVERIFY(std::abs(HeardSound(result).seconds() - 10.0) < lengthSlack);
    }

    // The film's sound may begin late, end early, and have other channels than the music.
    void oddFilms()
    {
        makeMedia("-f lavfi -i testsrc2=s=64x48:r=25:d=10 -itsoffset 1.5 -f lavfi -i "
                  "sine=%1:d=3 -ac 2 @"_s.arg(filmTone),
                  {media("late.mkv")});
        const HeardSound late(dubbed("late.mkv", {music("short.mp3", 6000)}));
        QVERIFY(std::abs(late.onset(filmTone) - 1.5) < startSlack);
        QVERIFY(std::abs(late.onset(shortTone) - 6.0) < startSlack);
        QVERIFY(late.level(shortTone, 8, 8.9) > 0.05);

        makeMedia("-f lavfi -i testsrc2=s=64x48:r=25:d=4 -f lavfi -i sine=%1:d=4 -f lavfi -i "
                  "anullsrc=cl=mono:d=4 -filter_complex [1:a][2:a]amerge,pan=stereo|c0=c0|c1=c1[a] "
                  "-map 0:v "
                  "-map [a] @"_s.arg(filmTone),
                  {media("left.mp4")});
        const QString wide = dubbed("left.mp4", {music("short.mp3", 0)});
        QVERIFY(HeardSound(wide, 0).level(filmTone, 1, 3) > 0.1);
        QVERIFY(HeardSound(wide, 1).level(filmTone, 1, 3) < 0.01);
    }

    // Music beyond the end fades out there; what ends before stays as it is.
    void fadesAtTheEnd()
    {
        const HeardSound heard(
            dubbed("film.mp4", {music("long.ogg", 0), music("short.mp3", 6900)}));
        const double full = heard.level(longTone, 8, 9);
        QVERIFY(isNear(heard.level(longTone, 9.6, 9.7), full));
        QVERIFY(isNear(heard.level(longTone, 9.87, 9.88), full / 2));
        QVERIFY(heard.level(longTone, 9.97, 9.99) < full / 5);
        QVERIFY(isNear(heard.level(shortTone, 9.8, 9.88), heard.level(shortTone, 8, 9)));
    }

    // Times are the film's, also in a part of it that begins in the middle of the music.
    void aPartOfTheFilm()
    {
        ConvertTaskParam *param =
            record("film.mp4", {music("short.mp3", 1000), music("long.ogg", 6000)});
        param->timeRange.reset(new TimeSpan{2000, 8000});
        const HeardSound heard(converted(param));
        QVERIFY(std::abs(heard.seconds() - 6.0) < lengthSlack);
        QVERIFY(heard.level(shortTone, 0.1, 1.9) > 0.05);
        QVERIFY(heard.level(shortTone, 2.1, 3) < 0.001);
        QVERIFY(std::abs(heard.onset(longTone) - 4.0) < startSlack);
    }

    void filmsWithoutMuch_data()
    {
        QTest::addColumn<QString>("options");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<bool>("isSized");
        QTest::newRow("silent") << "-f lavfi -i testsrc2=s=64x48:r=25:d=10 -pix_fmt yuv420p @"_s
                                << 10.0 << false;
        for (const bool isSized : {false, true})
            QTest::newRow(isSized ? "silent, of unknown length, another size"
                                  : "silent, of unknown length")
                << "-f lavfi -i testsrc2=s=64x48:r=25:d=4 -c:v libvpx -live 1 -f webm pipe:1"_s
                << 4.0 << isSized;
        QTest::newRow("a fifth of a second")
            << "-f lavfi -i testsrc2=s=64x48:r=25:d=0.2 -f lavfi -i sine=400:d=0.2 -pix_fmt yuv420p @"_s
            << 0.2 << false;
    }

    void filmsWithoutMuch()
    {
        QFETCH(QString, options);
        QFETCH(double, seconds);
        QFETCH(bool, isSized);
        const bool isPiped = !options.contains(u'@');
        const QString film = media(isPiped ? "odd.webm" : "odd.mp4");
        if (isPiped)
            writeTestFile(film, runFfmpeg(options, {}).out);
        else
            makeMedia(options, {film});
        ConvertTaskParam *param = record(isPiped ? "odd.webm" : "odd.mp4", {music("long.ogg", 0)});
        if (isSized) {
            param->encParam.reset(new EncParam);
            param->encParam->video.reset(new VEncParam{"H264"_s, 160, 90, 0, 25.0, 0.0});
        }
        const QString result = converted(param);
        const ProbedFile file = probeMedia(result);
        QVERIFY2(std::abs(file.seconds - seconds) < lengthSlack,
                 qPrintable(QString::number(file.seconds)));
        QVERIFY(HeardSound(result).level(longTone, 0, seconds / 2) > 0.05);
    }

    void manyPieces()
    {
        QVariantList pieces;
        for (int i = 0; i < 50; ++i)
            pieces += music("short.mp3", i * 190, 0.05F);
        const HeardSound heard(dubbed("film.mp4", pieces));
        QVERIFY(std::abs(heard.seconds() - 10.0) < lengthSlack);
        QVERIFY(isNear(heard.level(filmTone, 1, 9),
                       HeardSound(media("film.mp4")).level(filmTone, 1, 9)));
    }

    // Sounds that are too loud together are held back: neither cut off nor, between the samples or
    // once they have been coded, beyond what players can put out.
    void loudTogether_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("format");
        const QString tone =
            "aevalsrc=0.95*sin(2*PI*%1*t)|0.95*sin(2*PI*%1*t):d=10"_s.arg(shortTone);
        const QString noise = "anoisesrc=c=pink:a=0.95:seed=1:r=48000:d=10"_s;
        QTest::newRow("tone, as mixed") << tone << "wav"_s;
        QTest::newRow("tone, coded") << tone << "mp4"_s;
        QTest::newRow("noise, as mixed") << noise << "wav"_s;
    }

    void loudTogether()
    {
        QFETCH(QString, source);
        QFETCH(QString, format);
        makeMedia("-f lavfi -i "_s + source + " -ac 2 @"_s, {media("loud.wav")});
        makeMedia("-y -i @ -i @ -map 0:v -map 1:a -c:v copy -c:a flac -strict -2 @"_s,
                  {media("silent.mp4"), media("loud.wav"), media("loud.mkv")});
        ConvertTaskParam *param = record("loud.mkv", {music("loud.wav", 0)});
        param->format = format;
        const QString result = converted(param);
        const double peak = truePeak(result);
        QVERIFY2(peak > 0.85 && peak < 1.0, qPrintable(QString::number(peak)));
        if (source.startsWith("anoise"_s))
            return;
        // A wave that is cut off has overtones.
        const HeardSound heard(result);
        QVERIFY(heard.level(shortTone, 2, 8) > 0.8);
        QVERIFY(heard.level(3 * shortTone, 2, 8) < 0.02);
    }

    void namesWhatCantBeUsed()
    {
        writeTestFile(media("text.mp3"), "no music");
        const auto cause = [this](const char *file) {
            Convert convert(record("film.mp4", {music(file, 0)}));
            return convert.run() == MediaTask::ERROR ? convert.cause() : "finished"_s;
        };
        QVERIFY2(cause("text.mp3").contains("text.mp3"_s), qPrintable(cause("text.mp3")));
        QVERIFY2(cause("silent.mp4").contains("silent.mp4"_s), qPrintable(cause("silent.mp4")));
        QVERIFY2(cause("gone.mp3").contains("gone.mp3"_s), qPrintable(cause("gone.mp3")));
    }

    // What is heard ahead is the result's sound, also where that fades.
    void theExcerptIsThatPart()
    {
        const QVariantList pieces{music("short.mp3", 1000, 0.8F), music("long.ogg", 4300, 0.5F)};
        const HeardSound whole(dubbed("longer.mp4", pieces));
        for (const int fromMs : {0, 2600, 39000}) {
            ConvertTaskParam *param = record("longer.mp4", pieces);
            auto *excerpt = new ConvertTaskParam(dubbingExcerpt(*param, fromMs, 10000));
            delete param;
            const TimeSpan span = *excerpt->timeRange;
            QVERIFY(span.start <= fromMs && span.end - span.start >= 10000);
            const HeardSound heard(converted(excerpt));
            QVERIFY2(correlation(heard, whole, span.start / 1000.0) > 0.99,
                     qPrintable(QString::number(fromMs)));
            QVERIFY(isNear(heard.level(filmTone, 1, 8), whole.level(filmTone, 1, 8)));
        }
    }

    // Music that the excerpt ends in the middle of fades only where the whole does.
    void theExcerptFadesAsTheWhole()
    {
        const QScopedPointer<ConvertTaskParam> param(
            record("longer.mp4", {music("short.mp3", 11500)}));
        auto *excerpt = new ConvertTaskParam(dubbingExcerpt(*param, 2000, 10000));
        const double end = (excerpt->timeRange->end - excerpt->timeRange->start) / 1000.0;
        const HeardSound heard(converted(excerpt));
        QVERIFY(isNear(heard.level(shortTone, end - 0.05, end - 0.01),
                       heard.level(shortTone, end - 0.9, end - 0.5)));
    }

    void otherFiltersStayAsTheyAre()
    {
        const QScopedPointer<ConvertTaskParam> param(record("film.mp4", {music("short.mp3", 0)}));
        const QVariant other = QVariantMap{{"filter"_s, "volume"_s}, {"volume"_s, 2.0}};
        param->audioFilters += other;
        mapDubbing(*param);
        QCOMPARE(param->audioFilters.last(), other);
    }

private:
    QString media(const char *name) const { return m_media.filePath(QLatin1String(name)); }

    QVariantMap music(const char *name, int startMs, float volume = 1.0F) const
    {
        const auto info = probed(media(name));
        return {{"filePath"_s, media(name)},
                {"startTime"_s, startMs},
                {"volume"_s, volume},
                {"duration"_s, info && info->format ? int(info->format->duration) : 0}};
    }

    ConvertTaskParam *record(const char *film, const QVariantList &musics, float filmVolume = 1.0F,
                             bool isMixed = true)
    {
        m_folders.push_back(std::make_unique<TestFolder>());
        ConvertTaskParam *param = m_folders.back()->convertParam(media(film), "mp4"_s);
        param->sourceInfo = probed(param->inputFile);
        param->durationMs = int(param->sourceInfo->format->duration);
        param->audioFilters += QVariantMap{{"filter"_s, "dubbing"_s},
                                           {"musics"_s, musics},
                                           {"videoVolume"_s, filmVolume},
                                           {"isMax"_s, isMixed}};
        return param;
    }

    QString converted(ConvertTaskParam *param)
    {
        const QString result =
            QDir(param->outputDir).filePath(param->outputName + u'.' + param->format);
        Convert convert(param);
        return convert.run() == MediaTask::FINISHED ? result : convert.cause();
    }

    QString dubbed(const char *film, const QVariantList &musics, float filmVolume = 1.0F,
                   bool isMixed = true)
    {
        return converted(record(film, musics, filmVolume, isMixed));
    }

    QTemporaryDir m_media;
    std::vector<std::unique_ptr<TestFolder>> m_folders;
};

QTEST_GUILESS_MAIN(TestDubbingSound)
#include "tst_dubbingsound.moc"
