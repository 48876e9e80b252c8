// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/shottask.h"
#include "MediaKits/MediaTasksManager/videoimagepicktask.h"
#include "support/factsof.h"
#include "support/testfile.h"
#include "tasks/chainrun.h"

#include <QImage>
#include <QtTest>

// Pictures of films that don't make it easy.
class TestShotSearch : public QObject
{
    Q_OBJECT

private slots:
    // Far behind the end only the last frames are looked at, also where nobody tells the length or
    // the sound goes on for long.
    void findsTheLastFrameSoon_data()
    {
        QTest::addColumn<QString>("options");
        QTest::newRow("known") << "-f lavfi -i testsrc2=s=64x48:r=25:d=60 -pix_fmt yuv420p @.mp4"_s;
        QTest::newRow("unknown")
            << "-f lavfi -i testsrc2=s=64x48:r=25:d=60 -c:v libvpx -g 50 -live 1 -f webm pipe:1"_s;
        QTest::newRow("long sound") << "-f lavfi -i testsrc2=s=64x48:r=25:d=60 -f lavfi -i "
                                       "sine=d=600 -pix_fmt yuv420p @.mkv"_s;
    }

    void findsTheLastFrameSoon()
    {
        const TestFolder folder;
        QFETCH(QString, options);
        const bool isPiped = !options.contains(u'@');
        const QString film = folder.path("film."_s + (isPiped ? "webm"_s : options.right(3)));
        if (isPiped)
            writeTestFile(film, runFfmpeg(options, {}).out);
        else
            makeMedia(options.left(options.size() - 4), {film});
        const QString picture = folder.path("last.png"_s);
        ShotTask task({{"inputUrl"_s, film}, {"outputUrl"_s, picture}, {"pos"_s, 36'000'000}},
                      factsOf(film));
        task.start();
        QVERIFY(waitForEnd(task));
        QVERIFY2(task.state() == MediaTask::FINISHED, qPrintable(task.failure().cause));
        makeMedia("-i @ -update 1 @"_s, {film, folder.path("own.png"_s)});
        QCOMPARE(QImage(picture), QImage(folder.path("own.png"_s)));
        // Each frame takes some 4 kB.
        const int written = task.account().pictureKb;
        QVERIFY2(written > 0 && written < 100, qPrintable(QString::number(written)));
    }

    // A source that keeps its reader waiting doesn't keep the window waiting: it is read by a tool.
    void picksFromASlowDisk()
    {
        const TestFolder folder;
        const QString source = folder.path("slow.mp4"_s);
        QCOMPARE(runTool("mkfifo"_s, {source}).exitCode, 0);
        Watched<VideoImagePickTask> pick(
            new VideoImagePickTaskParam(source, folder.path("t.png"_s)));
        pick.task->start();
        QTRY_COMPARE(processesWith(source).size(), 1);
        const QString name = "/proc/%1/comm"_s.arg(processesWith(source).first());
        QTRY_COMPARE(contentOf(name).trimmed(), QByteArray("ffprobe"));
        pick.task->stop();
        QCOMPARE(pick.task->state(), MediaTask::STOPED);
        QTRY_VERIFY(processesWith(source).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestShotSearch)
#include "tst_shotsearch.moc"
