// SPDX-License-Identifier: MIT
#include "dubbing/dubbingpage.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/Player/MPVPlayer/mpvplayer.h"
#include "player/mpvpeer.h"
#include "support/casename.h"

#include <QtTest>

#include <csignal>

namespace {

constexpr int endLimitMs = 60000;

// The number of the sound that is heard, and of how many there are.
QString heardTrack(MpvPeer &peer)
{
    int heard = 0;
    int count = 0;
    for (const QJsonValue &track : peer.property("track-list").toArray()) {
        if (track["type"_s].toString() != "audio"_s)
            continue;
        ++count;
        if (track["selected"_s].toBool())
            heard = track["id"_s].toInt();
    }
    return "%1 of %2"_s.arg(heard).arg(count);
}

} // namespace

// What goes on behind the dialog: the mix that is heard ahead, and measurements.
class TestDubbingMix : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia("-f lavfi -i testsrc2=s=320x240:r=10:d=12 -f lavfi -i sine=400:d=12 -ac 2 @"_s,
                  {m_film});
        makeMedia("-i @ -map 0 -map 0:a -c copy -disposition:a:0 0 -disposition:a:1 default @"_s,
                  {m_film, m_twoSounds});
        makeMedia("-f lavfi -i sine=2500:d=30 -ac 2 @"_s, {m_long});
    }

    // The player is given the very sound of the result, at its place; then it gets its own back.
    void hearsTheMix()
    {
        DubbingPage test({m_twoSounds});
        test.edit(0, [&](QWidget &dialog) {
            MpvPeer peer(dialog.findChild<MPVPlayer *>()->ipcServerName());
            const auto *mix = child<QPushButton>(dialog, "btnMix");
            const auto seconds = [&peer] { return peer.property("time-pos").toDouble(); };
            // Without a sound device no track is heard, whichever was the film's usual one.
            auto *player = dialog.findChild<MPVPlayer *>();
            player->sendCommand("set ao null"_s);
            player->sendCommand("set aid 2"_s);
            QTRY_COMPARE(heardTrack(peer), "2 of 2"_s);
            addMusic(dialog, m_long);
            setStart(dialog, 1500);
            QTRY_VERIFY(seconds() > 2.5);
            const double from = seconds();
            press(dialog, "btnMix");
            QCOMPARE(mix->text(), "正在准备…"_s);
            QTRY_COMPARE_WITH_TIMEOUT(mix->text(), "停止试听"_s, endLimitMs);
            QTRY_COMPARE_WITH_TIMEOUT(heardTrack(peer), "3 of 3"_s, endLimitMs);
            QVERIFY(peer.property("audio-delay").toDouble() <= from);
            const double begun = seconds();
            QVERIFY2(begun >= from - 0.15 && begun < from + 4.0,
                     qPrintable(QString::number(begun)));
            press(dialog, "btnMix");
            QTRY_COMPARE_WITH_TIMEOUT(heardTrack(peer), "2 of 2"_s, endLimitMs);
            QTRY_COMPARE(peer.property("audio-delay").toDouble(), 0.0);

            press(dialog, "btnMix");
            QTRY_COMPARE_WITH_TIMEOUT(mix->text(), "停止试听"_s, endLimitMs);
            // What is heard wouldn't be the result's any more.
            box(dialog, "sbAudioVolume")->setValue(20);
            QCOMPARE(mix->text(), "试听混音"_s);
            QTRY_COMPARE_WITH_TIMEOUT(heardTrack(peer), "2 of 2"_s, endLimitMs);
            press(dialog, "btnMix");
            QTRY_COMPARE_WITH_TIMEOUT(mix->text(), "停止试听"_s, endLimitMs);
            // It ends by itself, and the preview stands still.
            QTRY_COMPARE_WITH_TIMEOUT(mix->text(), "试听混音"_s, endLimitMs);
            QVERIFY(!child<QPushButton>(dialog, "btnPlay")->isChecked());
        });
    }

    // A film that is heard as a whole begins anew at its end, where the mix ends.
    void theMixOfAShortFilmEnds()
    {
        for (const char *length : {"0.6", "3.4"}) {
            const CaseName inCase(length);
            const QString film = m_folder.filePath("kurz%1.mp4"_s.arg(QLatin1String(length)));
            makeMedia("-i @ -t %1 @"_s.arg(QLatin1String(length)), {m_film, film});
            DubbingPage test({film});
            test.edit(0, [&](QWidget &dialog) {
                const auto *mix = child<QPushButton>(dialog, "btnMix");
                addMusic(dialog, m_long);
                press(dialog, "btnMix");
                QTRY_COMPARE_WITH_TIMEOUT(mix->text(), "停止试听"_s, endLimitMs);
                QTRY_COMPARE_WITH_TIMEOUT(mix->text(), "试听混音"_s, 15000);
            });
        }
    }

    // A player that is started again gets the mix again; one that is gone has none.
    void thePlayerEndsWhileTheMixIsHeard()
    {
        DubbingPage test({m_film});
        test.edit(0, [&](QWidget &dialog) {
            auto *player = dialog.findChild<MPVPlayer *>();
            const auto *mix = child<QPushButton>(dialog, "btnMix");
            const auto hasTwoSounds = [player] {
                MpvPeer peer(player->ipcServerName());
                return QTest::qWaitFor([&] { return heardTrack(peer).endsWith("of 2"_s); },
                                       endLimitMs);
            };
            addMusic(dialog, m_long);
            press(dialog, "btnMix");
            QTRY_COMPARE_WITH_TIMEOUT(mix->text(), "停止试听"_s, endLimitMs);
            QVERIFY(hasTwoSounds());
            ::kill(pid_t(player->processId()), SIGKILL);
            QSignalSpy progress(player, &MPVPlayer::progressChanged);
            QTRY_VERIFY_WITH_TIMEOUT(!progress.isEmpty(), endLimitMs);
            QCOMPARE(mix->text(), "停止试听"_s);
            QVERIFY(hasTwoSounds());
            ::kill(pid_t(player->processId()), SIGKILL);
            QTRY_COMPARE(mix->text(), "试听混音"_s);
        });
    }

    // A dialog may go while it measures, probes and mixes.
    void leavesAtAnyTime()
    {
        DubbingPage test({m_film});
        test.edit(0, [&](QWidget &dialog) {
            addMusic(dialog, m_long);
            press(dialog, "btnMix");
            press(dialog, "btnOk");
        });
        QTRY_VERIFY(processesWith(m_folder.path()).isEmpty());
        QCOMPARE(entriesOf(tempDir() + u'/' + tempMarkerName()), QStringList());
        QCOMPARE(test.dubbing(0).value("musics"_s).toList().size(), 1);
        QVERIFY(!test.convert(0).isEmpty());
    }

private:
    QTemporaryDir m_folder;
    const QString m_film = m_folder.filePath("片 a.mp4"_s);
    const QString m_twoSounds = m_folder.filePath("两条声音.mp4"_s);
    const QString m_long = m_folder.filePath("长.wav"_s);
};

QTEST_MAIN(TestDubbingMix)
#include "tst_dubbingmix.moc"
