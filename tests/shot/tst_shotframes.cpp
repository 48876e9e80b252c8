// SPDX-License-Identifier: MIT
#include "controls/interceptslider.h"
#include "MediaKits/FunctionPage/VideoShot/frameshotdialog.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "support/factsof.h"
#include "support/guisupport.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr int bits = 9;
constexpr int positions = 20;
constexpr int allWhite = (1 << bits) - 1;
constexpr int filmMs = 8000;
constexpr int shownLimitMs = 30000; // of a player on a busy machine

// The number of a frame, which stands in it as columns of black and white; -1 for another picture.
int numberIn(const QImage &picture)
{
    int number = 0;
    for (int bit = 0; bit < bits; ++bit) {
        const int grey = qGray(
            picture.pixel((2 * bit + 1) * picture.width() / (2 * bits), picture.height() / 2));
        if (grey > 80 && grey < 175)
            return -1;
        number |= int(grey > 128) << bit;
    }
    return number;
}

} // namespace

// What the dialog shows at a position and what the shot there holds, by the numbers of the frames.
class TestShotFrames : public QObject
{
    Q_OBJECT

private slots:
    void isTheFrameThatIsSeen_data()
    {
        QTest::addColumn<QString>("rate");
        QTest::addColumn<QString>("options");
        QTest::newRow("23.976") << "24000/1001"_s << QString();
        QTest::newRow("25") << "25"_s << QString();
        QTest::newRow("29.97") << "30000/1001"_s << QString();
        QTest::newRow("50") << "50"_s << QString();
        QTest::newRow("variable") << "50"_s
                                  << "-vf select='not(eq(mod(n,7),3))*not(eq(mod(n,5),2))' "
                                     "-fps_mode vfr"_s;
    }

    void isTheFrameThatIsSeen()
    {
        QFETCH(QString, rate);
        QFETCH(QString, options);
        const TestFolder folder;
        const QString film = folder.path("film.mp4"_s);
        makeMedia("-f lavfi -i nullsrc=s=288x96:r=%1:d=8,geq=lum="
                  "'if(bitand(N,pow(2,floor(X*9/W))),235,16)':cb=128:cr=128 "
                  "-f lavfi -i sine=d=8 %2 -pix_fmt yuv420p @"_s.arg(rate, options),
                  {film});
        const auto info = factsOf(film);
        QVERIFY(info && info->video);
        FrameShotDialog dialog;
        dialog.showSource(film, info);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        const auto *player = child<CSVideoPlayer>(dialog, "csPlayer");
        const auto seen = [player] { return numberIn(screenPart(*player->videoLabel())); };
        QTRY_VERIFY(player->toldPosition() > 500 && seen() > 0 && seen() < allWhite);

        // Stopped wherever it happens to be, and taken before the player has told where.
        QTest::keyClick(&dialog, Qt::Key_Space);
        QTest::keyClick(&dialog, Qt::Key_Return);
        const auto added = [&dialog] { return dialog.options().value("images"_s).toList(); };
        QTRY_COMPARE(added().size(), 1);

        QRandomGenerator random(1);
        QVariantList images = added();
        for (int i = 0; i < positions; ++i)
            images += QVariantMap{{"pos"_s, int(random.bounded(filmMs - 500))}, {"scale"_s, 1.0F}};
        MutiImageTaskParam *wanted = new MutiImageTaskParam({{"inputUrl"_s, film},
                                                             {"outputDir"_s, folder.out},
                                                             {"baseName"_s, "a"_s},
                                                             {"format"_s, "bmp"_s},
                                                             {"images"_s, images}});
        Watched<MutiImageTask> shots(wanted);
        QVERIFY2(shots.run() == MediaTask::FINISHED, qPrintable(shots.cause()));
        const auto taken = [&](int index) {
            return numberIn(QImage("%1/a_%2.bmp"_s.arg(folder.out).arg(index + 1)));
        };
        QVERIFY(taken(0) > 0);
        QTRY_COMPARE(seen(), taken(0));
        for (int i = 1; i < images.size(); ++i) {
            const int pos = images[i].toMap().value("pos"_s).toInt();
            child<InterceptSlider>(dialog, "scrubBar")->sliderMoved(pos);
            QVERIFY(taken(i) >= 0);
            QTRY_VERIFY2_WITH_TIMEOUT(
                seen() == taken(i),
                qPrintable("at %1 ms: seen %2, taken %3"_s.arg(pos).arg(seen()).arg(taken(i))),
                shownLimitMs);
        }
        dialog.done(QDialog::Rejected);
    }
};

QTEST_MAIN(TestShotFrames)
#include "tst_shotframes.moc"
