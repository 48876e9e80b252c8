// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/beautypreview.h"
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "MediaKits/MediaTasksManager/readylook.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "MediaKits/Player/MPVPlayer/mpvplayer.h"
#include "player/mpvpeer.h"
#include "support/factsof.h"
#include "support/guisupport.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QLabel>
#include <QPainter>
#include <QtTest>

namespace {

constexpr double mostDifference = 0.02;
// Without the edges, which two programs scale in two ways.
constexpr QSize comparedSize(40, 30);
constexpr QSize surface(640, 480);

using Setting = float VideoBeautyParam::*;

VideoBeautyParam turned(int quarters, bool hflip, bool vflip)
{
    VideoBeautyParam look;
    look.rotate = quarters;
    look.hflip = hflip;
    look.vflip = vflip;
    return look;
}

VideoBeautyParam with(Setting setting, float value)
{
    VideoBeautyParam look;
    look.*setting = value;
    return look;
}

// As a player shows it on a black surface.
QImage fitted(const QImage &picture)
{
    QImage shown(surface, QImage::Format_RGB32);
    shown.fill(Qt::black);
    QRect place(QPoint(), picture.size().scaled(surface, Qt::KeepAspectRatio));
    place.moveCenter(shown.rect().center());
    QPainter(&shown).drawImage(place, picture);
    return shown;
}

QImage coarse(const QImage &picture)
{
    return picture.scaled(comparedSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

// The mean over pixels and channels, of the whole range.
double difference(const QImage &one, const QImage &other)
{
    const QImage a = coarse(one);
    const QImage b = coarse(other);
    double sum = 0.0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb left = a.pixel(x, y);
            const QRgb right = b.pixel(x, y);
            sum += std::abs(qRed(left) - qRed(right)) + std::abs(qGreen(left) - qGreen(right)) +
                   std::abs(qBlue(left) - qBlue(right));
        }
    }
    return sum / (3.0 * 255.0 * a.width() * a.height());
}

// In seconds, of what stands out; -1 when nothing does.
template<class StandsOut>
double middle(const QByteArray &levels, int rate, StandsOut standsOut)
{
    const auto last = std::find_if(levels.rbegin(), levels.rend(), standsOut);
    if (last == levels.rend())
        return -1.0;
    const auto first = std::find_if(levels.begin(), levels.end(), standsOut);
    const auto sum = (first - levels.begin()) + (levels.rend() - last);
    return double(sum) / 2.0 / rate;
}

} // namespace

Q_DECLARE_METATYPE(VideoBeautyParam)

// What the dialog shows and what the file holds, side by side: the real player, the real ffmpeg.
class TestBeautyPreview : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Eight areas of unlike colours, no two turns of which look alike.
        makeMedia("-f lavfi -i color=0x808080:s=320x240:r=10:d=2,"
                  "drawbox=0:0:80:120:0xC03020:fill,drawbox=80:0:80:120:0x30A050:fill,"
                  "drawbox=160:0:80:120:0x3050B0:fill,drawbox=240:0:80:120:0xE0D0B0:fill,"
                  "drawbox=0:120:80:120:0x202830:fill,drawbox=80:120:80:120:0xC09070:fill,"
                  "drawbox=160:120:80:120:0x8060A0:fill -f lavfi -i sine=d=2 "
                  "-pix_fmt yuv420p -crf 4 @"_s,
                  {m_film});
        m_player = std::make_unique<CSVideoPlayer>();
        m_player->resize(surface);
        m_player->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_player.get()));
        m_preview = std::make_unique<BeautyPreview>(m_player.get(), nullptr);
        startPlayer(m_film);
    }

    void looksAsTheFile_data()
    {
        QTest::addColumn<VideoBeautyParam>("look");
        for (int i = 0; i < readyLooks().size(); ++i) {
            VideoBeautyParam look;
            applyReadyLook(i, look);
            QTest::newRow(readyLooks()[i].name) << look;
        }
        for (const int quarters : {-3, -1, 0, 1, 2, 3}) {
            for (const int flips : {0, 1, 2, 3}) {
                QTest::addRow("turned %d, flips %d", quarters, flips)
                    << turned(quarters, flips & 1, flips & 2);
            }
        }
        const struct
        {
            const char *name;
            Setting setting;
            float end; // of the control, on both sides
        } controls[] = {{"contrast", &VideoBeautyParam::contrast, 2.0F},
                        {"brightness", &VideoBeautyParam::brightness, 2.0F},
                        {"saturation", &VideoBeautyParam::saturation, 2.0F},
                        {"red", &VideoBeautyParam::red, 1.0F},
                        {"green", &VideoBeautyParam::green, 1.0F},
                        {"blue", &VideoBeautyParam::blue, 1.0F}};
        for (const auto &control : controls) {
            QTest::addRow("least %s", control.name) << with(control.setting, -control.end);
            QTest::addRow("no %s", control.name) << with(control.setting, 0.0F);
            QTest::addRow("most %s", control.name) << with(control.setting, control.end);
        }
    }

    void looksAsTheFile()
    {
        QFETCH(VideoBeautyParam, look);
        compare(m_film, look);
    }

    void looksAsTheFileOfATurnedFilm_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<VideoBeautyParam>("look");
        for (const int tag : {90, 180, 270}) {
            for (const int quarters : {0, 1}) {
                for (const int flips : {1, 2}) {
                    QTest::addRow("%d, turned %d, flips %d", tag, quarters, flips)
                        << tag << turned(quarters, flips & 1, flips & 2);
                }
            }
        }
    }

    void looksAsTheFileOfATurnedFilm()
    {
        QFETCH(int, tag);
        QFETCH(VideoBeautyParam, look);
        const QString film = m_folder.filePath("tag%1.mp4"_s.arg(tag));
        m_preview->setUpright(tag != 180);
        if (!QFile::exists(film)) {
            makeMedia("-i @ -c copy -metadata:s:v rotate=%1 @"_s.arg(tag), {m_film, film});
            startPlayer(film);
        }
        compare(film, look);
        m_preview->setUpright(false);
    }

    void plainForAWhile()
    {
        startPlayer(m_film);
        const QImage source = decoded(m_film);
        const VideoBeautyParam look = turned(1, false, false);
        const QImage made = converted(m_film, look);
        const auto shows = [&](const QImage &picture) {
            return difference(screenPart(*m_player->videoLabel()), fitted(picture)) <
                   mostDifference;
        };
        m_player->play(false);
        m_preview->show(look);
        QTRY_VERIFY(shows(made));
        m_preview->setPlain(true);
        QTRY_VERIFY(shows(source));
        m_preview->setPlain(false);
        QTRY_VERIFY(shows(made));
        m_player->play(true);
    }

    // While a slider is dragged nothing is seen but the look.
    void dragsWithoutFlicker()
    {
        startPlayer(m_film);
        VideoBeautyParam look = turned(1, false, false);
        m_preview->show(look);
        // Of a picture on its side the surface has black bars.
        const auto hasBars = [this] {
            const QImage shown = screenPart(*m_player->videoLabel());
            return qGray(shown.pixel(20, 120)) < 16 && qGray(shown.pixel(620, 120)) < 16;
        };
        QTRY_VERIFY(hasBars());
        for (int i = 0; i < 300; ++i) {
            look.contrast = 0.8F + float(i % 100) / 200.0F;
            m_preview->show(look);
            QCoreApplication::processEvents();
            QVERIFY2(hasBars(), qPrintable(QString::number(i)));
        }
    }

    // What the player is told is told at a rate that it can follow.
    void dragsAtARate()
    {
        constexpr int pauseMs = 60;
        startPlayer(m_film);
        MpvPeer &observer = peer();
        observer.observe("vf");
        VideoBeautyParam look;
        QElapsedTimer drag;
        drag.start();
        for (int i = 0; drag.elapsed() < 20 * pauseMs; ++i) {
            look.contrast = 0.8F + float(i % 100) / 200.0F;
            m_preview->show(look);
            QCoreApplication::processEvents();
        }
        const int mostChanges = int(drag.elapsed() / pauseMs) + 2;
        int changes = 0;
        QTRY_VERIFY((changes += observer.changes()) > 3);
        changes += observer.changes();
        QVERIFY2(changes <= mostChanges, qPrintable(QString::number(changes)));
    }

    // Of many changes in a row the last one counts, also for a player that starts again.
    void theLastOneArrives()
    {
        const auto speed = [this] { return peer().property("speed").toDouble(); };
        const auto sounds = [this] { return peer().property("af").toArray().size(); };
        VideoBeautyParam look;
        for (int i = 0; i <= 100; ++i) {
            look.speed = 0.5F + float(i) / 100.0F;
            look.volume = look.speed;
            m_preview->show(look);
        }
        QTRY_COMPARE(speed(), 1.5);
        QTRY_COMPARE(sounds(), 1);
        QVERIFY(QJsonDocument(peer().property("af").toArray()).toJson().contains("volume=1.5"));
        startPlayer(m_film);
        QTRY_COMPARE(speed(), 1.5);
        QTRY_COMPARE(sounds(), 1);
        m_preview->show(VideoBeautyParam());
        QTRY_COMPARE(speed(), 1.0);
        QTRY_COMPARE(sounds(), 0);
        QCOMPARE(peer().property("vf").toArray().size(), 0);
    }

    // A flash and a click at the same moment.
    void speedsKeepSoundInStep_data()
    {
        QTest::addColumn<float>("speed");
        for (const float speed : {0.5F, 1.25F, 2.0F})
            QTest::addRow("%g", double(speed)) << speed;
    }

    void speedsKeepSoundInStep()
    {
        QFETCH(float, speed);
        constexpr int frames = 25;
        constexpr int samples = 8000;
        const QString film = m_folder.filePath("flash.mp4"_s);
        makeMedia("-f lavfi -i color=black:s=64x64:r=25:d=4,"
                  "drawbox=c=white:t=fill:enable='between(n\\,50\\,51)' -f lavfi -i "
                  "aevalsrc='if(between(t\\,2\\,2.08)\\,sin(6000*t)\\,0)':d=4 @"_s,
                  {film});
        const TestFolder folder;
        ConvertTaskParam *param = folder.convertParam(film, "mp4"_s);
        param->beauty =
            QSharedPointer<VideoBeautyParam>::create(with(&VideoBeautyParam::speed, speed));
        param->sourceInfo = factsOf(film);
        Watched<ComplexConvertTask> conversion(param);
        QCOMPARE(conversion.run(), MediaTask::FINISHED);
        const QString made = folder.result("mp4"_s);
        QVERIFY(std::abs(probeMedia(made).seconds - 4.0 / double(speed)) < 0.1);

        const QByteArray light = decodedMedia(made, "-vf scale=1:1 -f rawvideo -pix_fmt gray"_s);
        const QByteArray sound = decodedMedia(made, "-vn -ac 1 -ar %1 -f u8"_s.arg(samples));
        const double flash = middle(light, frames, [](quint8 level) { return level > 128; });
        const double click =
            middle(sound, samples, [](quint8 level) { return std::abs(int(level) - 128) > 40; });
        QVERIFY2(std::abs(flash - click) < 0.04, qPrintable("%1 and %2"_s.arg(flash).arg(click)));
        QVERIFY(std::abs(flash - 2.04 / double(speed)) < 0.04);
    }

    void cleanupTestCase() { m_player.reset(); }

private:
    void compare(const QString &film, const VideoBeautyParam &look)
    {
        const QImage made = converted(film, look);
        QVERIFY(!made.isNull());
        m_preview->show(look);
        double apart = 1.0;
        const bool isAlike = QTest::qWaitFor([&] {
            apart = difference(screenPart(*m_player->videoLabel()), fitted(made));
            return apart < mostDifference;
        });
        QVERIFY2(isAlike, qPrintable(QString::number(apart)));
    }

    void startPlayer(const QString &film)
    {
        QSignalSpy progress(m_player.get(), &CSVideoPlayer::progressChanged);
        m_player->start(film, standardPlayerArguments() +
                                  QStringList{"--ao=null"_s, "--video-rotate=0"_s});
        QVERIFY(progress.wait(15000));
    }

    MpvPeer &peer()
    {
        const QString server = m_player->findChild<MPVPlayer *>()->ipcServerName();
        m_peer = std::make_unique<MpvPeer>(server);
        return *m_peer;
    }

    static QImage decoded(const QString &path)
    {
        return QImage::fromData(decodedMedia(path, "-ss 1 -frames:v 1 -c:v bmp -f image2pipe"_s));
    }

    // The same moment of a file that a conversion makes with the look.
    QImage converted(const QString &film, const VideoBeautyParam &look) const
    {
        const TestFolder folder;
        ConvertTaskParam *param = folder.convertParam(film, "mp4"_s);
        param->beauty = QSharedPointer<VideoBeautyParam>::create(look);
        Watched<ComplexConvertTask> conversion(param);
        return conversion.run() == MediaTask::FINISHED ? decoded(folder.result("mp4"_s)) : QImage();
    }

    QTemporaryDir m_folder;
    const QString m_film = m_folder.filePath("areas.mp4"_s);
    std::unique_ptr<CSVideoPlayer> m_player;
    std::unique_ptr<BeautyPreview> m_preview;
    std::unique_ptr<MpvPeer> m_peer;
};

QTEST_MAIN(TestBeautyPreview)
#include "tst_beautypreview.moc"
