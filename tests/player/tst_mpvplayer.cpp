// SPDX-License-Identifier: MIT
#include "MediaKits/Player/csvideoplayer.h"
#include "MediaKits/Player/MPlayer/mplayer.h"
#include "MediaKits/Player/MPVPlayer/mpvplayer.h"
#include "platform/runtimeroot.h"
#include "player/mpvpeer.h"
#include "support/casename.h"
#include "support/guisupport.h"
#include "support/testmedia.h"
#include "support/toolrun.h"
#include "support/utf8.h"

#include <QLabel>
#include <QtTest>

#include <csignal>

namespace {

constexpr int startLimitMs = 15000;

// Windows that the window manager shows.
QByteArray managedWindows()
{
    return runTool("xprop"_s, {"-root"_s, "_NET_CLIENT_LIST"_s}).out;
}

} // namespace

// The real mpv in a window of ours.
class TestMpvPlayer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ClipPlan plan;
        plan.seconds = 20;
        makeClip(m_clip, plan);
    }

    void drawsIntoTheLabel()
    {
        CSVideoPlayer player;
        player.resize(640, 480);
        player.show();
        QVERIFY(QTest::qWaitForWindowExposed(&player));
        const QByteArray windows = managedWindows();
        const QImage before = screenPart(*player.videoLabel());
        QVERIFY(!start(player).isEmpty());
        QTRY_VERIFY(screenPart(*player.videoLabel()) != before);
        const QImage first = screenPart(*player.videoLabel());
        QTRY_VERIFY(screenPart(*player.videoLabel()) != first);
        QCOMPARE(managedWindows(), windows);
    }

    void commandsReachThePlayer()
    {
        CSVideoPlayer player;
        const QString server = start(player);
        // Where nobody else can reach it.
        QCOMPARE(QFileInfo(server).path(), runtimeRoot());
        MpvPeer peer(server);
        const auto number = [&peer](const char *name) { return peer.property(name).toDouble(); };

        player.play(false);
        QTRY_COMPARE(peer.property("pause"), QJsonValue(true));
        player.seek(12500);
        QTRY_COMPARE(number("time-pos"), 12.5);
        player.setVolume(150);
        QTRY_COMPARE(number("volume"), 150.0);
        QCOMPARE(player.volume(), 150);
        player.setSpeed(1.25);
        QTRY_COMPARE(number("speed"), 1.25);
        player.setContrast(11);
        player.setBrightness(-12);
        player.setHue(13);
        player.setSaturation(14);
        player.setGamma(-15);
        QTRY_COMPARE(number("gamma"), -15.0);
        QCOMPARE(number("contrast"), 11.0);
        QCOMPARE(number("brightness"), -12.0);
        QCOMPARE(number("hue"), 13.0);
        QCOMPARE(number("saturation"), 14.0);

        player.videoFilter(FilterOperation::Add, "mirror"_s, {});
        player.videoFilter(FilterOperation::Add, "eq"_s, "contrast=1.2"_s);
        QTRY_COMPARE(peer.property("vf").toArray().size(), 2);
        player.videoFilter(FilterOperation::Delete, QString(), 0);
        QTRY_COMPARE(peer.property("vf").toArray().size(), 1);
        // What ends brackets and quotes; the player takes a graph only when it understands it.
        player.videoFilter(FilterOperation::Add, QString(),
                           "split[a\"墨][b];[a\"墨]hflip[c];[b][c]vstack"_s);
        QTRY_COMPARE(peer.property("vf").toArray().size(), 2);
        player.clearVideoFilters();
        QTRY_COMPARE(peer.property("vf").toArray().size(), 0);
        player.audioFilter(FilterOperation::Set, "volnorm"_s, QString());
        QTRY_COMPARE(peer.property("af").toArray().size(), 1);
        player.clearAudioFilters();
        QTRY_COMPARE(peer.property("af").toArray().size(), 0);
        player.play(true);
        QTRY_COMPARE(peer.property("pause"), QJsonValue(false));
    }

    void earlyCommandsKeepTheirOrder()
    {
        CSVideoPlayer player;
        player.setVolume(30);
        connect(&player, &CSVideoPlayer::started, &player, [&player] {
            // The process runs, its socket isn't there yet.
            QElapsedTimer clock;
            clock.start();
            player.play(false);
            player.seek(15000);
            player.seek(12500);
            for (int i = 1; i <= 50; ++i)
                player.setSpeed(i / 10.0);
            QVERIFY(clock.elapsed() < 200);
        });
        QSignalSpy progress(&player, &CSVideoPlayer::progressChanged);
        const QString server = start(player);
        QVERIFY(!server.isEmpty());
        MpvPeer peer(server);
        QTRY_COMPARE(peer.property("time-pos").toDouble(), 12.5);
        QTRY_VERIFY(!progress.isEmpty());
        QCOMPARE(progress.first().at(0).value<long>(), 12000L);
        QTRY_COMPARE(peer.property("speed").toDouble(), 5.0);
        QCOMPARE(peer.property("pause"), QJsonValue(true));
        QCOMPARE(peer.property("volume").toDouble(), 30.0);
    }

    void reportsPositions()
    {
        CSVideoPlayer player;
        QVERIFY(!start(player).isEmpty());
        QSignalSpy progress(&player, &CSVideoPlayer::progressChanged);
        player.play(false);
        player.seek(10000);
        QTRY_VERIFY(!progress.isEmpty() && progress.last().at(0).value<long>() == 10000);
        QCOMPARE(progress.last().at(1).value<long>(), 20000L);
        QCOMPARE(qRound(progress.last().at(2).toFloat()), 50);
    }

    void restartsAndEnds()
    {
        auto player = std::make_unique<CSVideoPlayer>();
        player->stop(); // nothing runs: nothing happens
        const QString server = start(*player);
        QVERIFY(!server.isEmpty());
        QVERIFY(player->isRunning());
        auto *back = player->findChild<MPVPlayer *>();
        const qint64 firstProcess = back->processId();
        QCOMPARE(start(*player), server);
        QVERIFY(back->processId() != firstProcess);
        QCOMPARE(processState(firstProcess), char(0));

        QSignalSpy finished(player.get(), &CSVideoPlayer::finished);
        player->stop();
        QVERIFY(finished.wait(startLimitMs));
        QCOMPARE(finished.at(0).at(0).toInt(), 0);
        QVERIFY(!player->isRunning());
        player->seek(1000); // dropped

        QVERIFY(!start(*player).isEmpty());
        const qint64 lastProcess = back->processId();
        player.reset();
        QCOMPARE(processState(lastProcess), char(0));
        QVERIFY(!QFile::exists(server));
    }

    void survivesTheLoss()
    {
        const auto check = [&](const char *caseName, bool kill) {
            const CaseName inCase(caseName);
            CSVideoPlayer player;
            const QString server = start(player);
            QVERIFY(!server.isEmpty());
            QSignalSpy finished(&player, &CSVideoPlayer::finished);
            if (kill) {
                ::kill(pid_t(player.findChild<MPVPlayer *>()->processId()), SIGKILL);
                QVERIFY(finished.wait(startLimitMs));
            } else {
                QFile::remove(server);
            }
            player.play(false);
            player.seek(1000);
            QVERIFY(!start(player).isEmpty());
            QVERIFY(player.isRunning());
        };
        check("killed", true);
        check("socket gone", false);
    }

    // Grey of a usual film, told as high range; the output without a graphics card takes it for
    // nearly white. An editor's filters lie in the film's own pixels, before and after a clearing.
    void highRangeIsShownAsUsual()
    {
        const QString film = m_media.filePath("hlg.mkv"_s);
        makeMedia("-f lavfi -i color=c=gray:s=1920x1080:r=10:d=20 -vf format=gbrpf32le,"
                  "zscale=tin=bt709:pin=bt709:min=gbr:rin=full:t=linear:npl=203:p=bt2020,"
                  "format=gbrpf32le,zscale=tin=linear:pin=bt2020:min=gbr:rin=full:npl=203:"
                  "t=arib-std-b67:m=bt2020nc:r=limited,format=yuv420p10 -color_trc arib-std-b67 "
                  "-color_primaries bt2020 -colorspace bt2020nc -c:v libx264 -preset ultrafast @"_s,
                  {film});
        CSVideoPlayer player;
        const QString server = start(player, {}, film);
        QVERIFY(!server.isEmpty());
        MpvPeer peer(server);
        QTRY_COMPARE(peer.property("vf").toArray().size(), 1);
        const auto levelAt = [&player](double across, double down) {
            const QImage image = screenPart(*player.videoLabel());
            return qGray(image.pixel(int(across * image.width()), int(down * image.height())));
        };
        // Pressed by the tone curve a little; 190 and more without the conversion.
        const auto isUsual = [&] { return qAbs(levelAt(0.3, 0.5) - 138) < 15; };
        QTRY_VERIFY(isUsual());

        const auto showsBox = [&] { return levelAt(0.92, 0.58) < 20 && isUsual(); };
        // A removal outside a smaller picture would be an error, and the filter gone for good.
        const QString box = "delogo=x=1500:y=800:w=100:h=80,"
                            "drawbox=x=1680:y=540:w=192:h=200:t=fill:color=black"_s;
        QVERIFY(!showsBox());
        player.videoFilter(FilterOperation::Add, QString(), box);
        QTRY_VERIFY(showsBox());
        player.clearVideoFilters();
        player.videoFilter(FilterOperation::Add, QString(), box);
        QTRY_COMPARE(peer.property("vf").toArray().size(), 2);
        QTRY_VERIFY(showsBox());
    }

    void surfaceKeepsTheShape()
    {
        CSVideoPlayer player;
        player.resize(600, 300);
        player.show();
        QVERIFY(QTest::qWaitForWindowExposed(&player));
        QCOMPARE(player.videoLabel()->size(), QSize(600, 300));
        player.setVideoSize(QSize(400, 300));
        player.resize(800, 300);
        QTRY_COMPARE(player.videoLabel()->size(), QSize(400, 300));
        player.setScale(0.5);
        QCOMPARE(player.videoLabel()->size(), QSize(400, 150));
        // Enlarged, it shows its middle, and the widget keeps its size.
        player.setScale(2.0);
        QCOMPARE(player.videoLabel()->geometry(), QRect(-400, -150, 1600, 600));
        player.setScale(1000.0);
        QVERIFY(player.videoLabel()->width() < 5000);
        QApplication::processEvents();
        QCOMPARE(player.size(), QSize(800, 300));
    }

    void slaveModePlayer()
    {
        QWidget window;
        window.resize(320, 240);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        MPlayer player;
        QSignalSpy progress(&player, &MPlayer::progressChanged);
        player.start(uint(window.winId()), m_clip);
        QVERIFY(progress.wait(startLimitMs));
        QCOMPARE(qRound(progress.last().at(1).toFloat()), 20);
        player.seek(10);
        QTRY_VERIFY(progress.last().at(0).toFloat() >= 9.0F);
        player.setPause(true);
        progress.clear();
        // Each second another one tells its place meanwhile.
        MPlayer other;
        QSignalSpy otherProgress(&other, &MPlayer::progressChanged);
        other.start(uint(window.winId()), m_clip);
        QTRY_VERIFY_WITH_TIMEOUT(otherProgress.size() >= 2, startLimitMs);
        QVERIFY(progress.size() <= 1);
        player.setPause(false);
        QVERIFY(progress.wait(startLimitMs));
    }

private:
    // Starts in a shown window and waits for the first position; gives the socket's name.
    QString start(CSVideoPlayer &player, const QStringList &extra = {}, const QString &film = {})
    {
        player.resize(640, 480);
        player.show();
        if (!QTest::qWaitForWindowExposed(&player))
            return {};
        QSignalSpy progress(&player, &CSVideoPlayer::progressChanged);
        player.start(film.isEmpty() ? m_clip : film,
                     standardPlayerArguments() + QStringList{"--ao=null"_s} + extra);
        if (!progress.wait(startLimitMs))
            return {};
        return player.findChild<MPVPlayer *>()->ipcServerName();
    }

    QTemporaryDir m_media;
    QString m_clip = m_media.filePath("片 -a%d \"b\".mp4"_s);
};

QTEST_MAIN(TestMpvPlayer)
#include "tst_mpvplayer.moc"
