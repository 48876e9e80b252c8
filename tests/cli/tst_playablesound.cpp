// SPDX-License-Identifier: MIT
#include "playabletest.h"
#include "support/testmedia.h"

#include <QRegularExpression>

namespace {

const QStringList songs{"song.mp3"_s, "song.flac"_s, "song.m4a"_s};

} // namespace

/// The sound of films plays in every format, and songs do with their cover.
class TestPlayableSound : public PlayableTest
{
    Q_OBJECT

private slots:
    void soundsInEveryFormat_data();
    void soundsInEveryFormat();
    void showsCoverWithSong_data();
    void showsCoverWithSong();
    void leavesCoverOutOfSound();
};

void TestPlayableSound::soundsInEveryFormat_data()
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
        makeMedia("-f lavfi -i testsrc=s=64x48:d=0.5 -f lavfi -i anoisesrc=r=%1:d=0.5:a=0.1,"
                  "aformat=channel_layouts=%2 -c:v mpeg4 -c:a flac @"_s.arg(QLatin1String(rate),
                                                                            QLatin1String(layout)),
                  {path(QLatin1String(name))});
    };
    make("side.mkv", "5.1(side)", "48000");
    make("many.mkv", "7.1", "96000");
}

void TestPlayableSound::soundsInEveryFormat()
{
    QFETCH(int, preset);
    QFETCH(QStringList, sounds);
    for (const char *name : {"side.mkv", "many.mkv"}) {
        const QJsonObject audio = converted(QString::fromLatin1(name), preset).audio;
        QCOMPARE("%1 %2 %3"_s.arg(audio["channels"_s].toInt())
                     .arg(audio["channel_layout"_s].toString(), audio["sample_rate"_s].toString()),
                 sounds.takeFirst());
    }
}

void TestPlayableSound::showsCoverWithSong_data()
{
    QTest::addColumn<int>("preset");
    for (const int preset :
         {Mp4, Mov, M4v, Gp3, F4v, Swf, Flv, Mkv, Avi, Wmv, Mpeg, Vob, Webm, Ogv, Mov480, Mpeg720})
        QTest::addRow("%d", preset) << preset;
    film("cover.png"_s, "401:301"_s, "null -frames:v 1 -update 1"_s);
    for (const QString &song : songs)
        makeMedia("-f lavfi -i sine=d=3,aformat=channel_layouts=stereo -i @ -map 0 -map 1 "
                  "-c:v copy -disposition:v attached_pic @"_s,
                  {path("cover.png"_s), path(song)});
}

void TestPlayableSound::showsCoverWithSong()
{
    QFETCH(int, preset);
    const ProbedFile probed = converted(songs[preset % songs.size()], preset);
    QCOMPARE(probed.audio["channels"_s].toInt(), preset == Gp3 ? 1 : 2);
    if (preset == Mp4)
        QCOMPARE(probed.audio["sample_rate"_s].toString(), "44100"_s);
    verifyAreas(probed.video);
    // Picture and sound as long as the song: decoded, since not all containers tell. Theora leaves
    // out frames that are like the one before, which then stands to the end.
    for (const char *kind : {"v", "a"}) {
        if (preset == Ogv && *kind == 'v')
            continue;
        const QByteArray report =
            runFfmpeg("-v info -i @ -map 0:%1 -f null -"_s.arg(QLatin1String(kind)), {result()})
                .err;
        static const QRegularExpression position(".*time=00:00:([0-9.]+)"_s,
                                                 QRegularExpression::DotMatchesEverythingOption);
        const double seconds = position.match(QString::fromUtf8(report)).captured(1).toDouble();
        QVERIFY2(qAbs(seconds - 3) < 0.3, report.constData());
    }
}

void TestPlayableSound::leavesCoverOutOfSound()
{
    for (const int preset : {1200001, 1205001, 1201001, 1204004, 1203001, 1211001, 1202001, 1213001,
                             1206001, 1212001}) {
        const ProbedFile probed = converted("song.m4a"_s, preset);
        QVERIFY2(!probed.audio.isEmpty() && probed.video.isEmpty(), qPrintable(result()));
    }
}

QTEST_GUILESS_MAIN(TestPlayableSound)
#include "tst_playablesound.moc"
