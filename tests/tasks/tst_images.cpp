// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/shottask.h"
#include "support/casename.h"
#include "support/factsof.h"
#include "support/testfile.h"
#include "tasks/imagetest.h"

#include <QDirIterator>

// Which pictures come, what they are called, and what is left when some can't.
class TestImages : public ImageTest
{
    Q_OBJECT

private slots:
    void makesShots()
    {
        const auto check = [&](const char *caseName, const QString &folder, int count, bool stitch,
                               bool watermark, const QStringList &names, const QSize &size) {
            const CaseName inCase(caseName);
            init();
            const QString out = m_folder->path(folder);
            QVariantMap map = wanted(out, count);
            map.insert("isPiiic"_s, stitch);
            if (watermark) {
                const QString mark = m_folder->path("标 ' , : [a].png"_s);
                makePicture(mark, "red"_s, 40, 40);
                map.insert("watermark"_s, mark);
            }
            const std::unique_ptr<MediaTask> task(createGroupTask(MutiImageKind));
            task->setParam(new MutiImageTaskParam(map));
            QSignalSpy messages(task.get(), &MediaTask::taskCustomeMsgCome);
            task->start();
            QVERIFY(waitForEnd(*task));
            QVERIFY2(task->state() == MediaTask::FINISHED, qPrintable(task->failure().cause));
            QCOMPARE(QDir(out).entryList(QDir::Files), names);
            QCOMPARE(messages.size(), names.size());
            for (const QString &name : names) {
                const QImage picture(out + u'/' + name);
                QCOMPARE(picture.size(), size);
                if (watermark) {
                    const QColor middle = picture.pixelColor(80, 60);
                    QVERIFY2(middle.red() > 200 && middle.green() < 60, qPrintable(middle.name()));
                }
            }
        };
        const QStringList three{"a_1.png"_s, "a_2.png"_s, "a_3.png"_s};
        const QString plain = "out"_s;
        check("each moment", plain, 3, false, false, three, QSize(160, 120));
        check("a folder that looks like a pattern", "夹 50%d"_s, 3, false, false, three,
              QSize(160, 120));
        check("stitched", "%d"_s, 3, true, false, QStringList{"a.png"_s}, QSize(160, 360));
        check("one can't be stitched", plain, 1, true, false, QStringList(three.mid(0, 1)),
              QSize(160, 120));
        check("watermark", plain, 1, false, true, QStringList(three.mid(0, 1)), QSize(160, 120));
        check("nothing wanted", plain, 0, false, false, QStringList(), QSize());
    }

    // Frames begin every 33 ms; the last does so at 2967 ms.
    void momentsBehindTheEnd()
    {
        const auto check = [&](const char *caseName, bool stitch) {
            const CaseName inCase(caseName);
            init();
            QVariantMap map = wanted(m_folder->out, 0);
            QVariantList images;
            for (const int pos : {0, 2950, 3000, 600000})
                images += QVariantMap{{"pos"_s, pos}, {"scale"_s, 0.5F}};
            map.insert("images"_s, images);
            map.insert("isPiiic"_s, stitch);
            Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
            QVERIFY2(shots.run() == MediaTask::FINISHED, qPrintable(shots.cause()));
            QVector<QImage> pictures;
            for (int i = 0; i < images.size(); ++i) {
                const QString name = stitch ? "a.png"_s : "a_%1.png"_s.arg(i + 1);
                const QImage picture(m_folder->out + u'/' + name);
                pictures += stitch ? picture.copy(0, 120 * i, 160, 120) : picture;
                QCOMPARE(pictures.last().size(), QSize(160, 120));
            }
            QVERIFY(pictures[0] != pictures[1]);
            QCOMPARE(pictures[2], pictures[1]);
            QCOMPARE(pictures[3], pictures[1]);
        };
        check("each", false);
        check("stitched", true);
    }

    // Moments of several sizes get the largest; names may hold anything.
    void laysTogether()
    {
        const QString film = m_folder->path("50%d '\"a\":[b];{c}, 很长的名字.mp4"_s);
        QVERIFY(QFile::copy(m_clip, film));
        QVariantMap map = wanted(m_folder->out, 5);
        map.insert("inputUrl"_s, film);
        map.insert("sourceInfo"_s, QVariant::fromValue(factsOf(film)));
        map.insert("format"_s, "jpg"_s);
        QVariantList images = map.value("images"_s).toList();
        images[2] = QVariantMap{{"pos"_s, 1500}, {"scale"_s, 0.75F}};
        map.insert("images"_s, images);
        map.insert("columns"_s, 2);
        Watched<MutiImageTask> sheet(new MutiImageTaskParam(map));
        QVERIFY2(sheet.run() == MediaTask::FINISHED, qPrintable(sheet.cause()));
        const QImage picture(m_folder->out + "/a.jpg"_s);
        const QSize part = QSize(240, 180 + ShotTask::captionHeight(240, 2));
        constexpr int gap = 6;
        QCOMPARE(picture.size(), QSize(2 * part.width() + 3 * gap, 3 * part.height() + 4 * gap));
        // There is writing below each, and none in the free place.
        const auto hasWriting = [&](int column, int line) {
            const QPoint corner(gap + column * (part.width() + gap),
                                gap + line * (part.height() + gap) + 182);
            const QImage caption = picture.copy(QRect(corner, QSize(part.width(), 34)));
            int dark = 0;
            for (int y = 0; y < caption.height(); ++y) {
                for (int x = 0; x < caption.width(); ++x)
                    dark += int(qGray(caption.pixel(x, y)) < 128);
            }
            return dark > 100;
        };
        for (int i = 0; i < 6; ++i)
            QCOMPARE(hasWriting(i % 2, i / 2), i < 5);
        map.insert("columns"_s, 0);
        map.insert("isPiiic"_s, true);
        Watched<MutiImageTask> stitched(new MutiImageTaskParam(map));
        QVERIFY2(stitched.run() == MediaTask::FINISHED, qPrintable(stitched.cause()));
        QCOMPARE(QImage(m_folder->out + "/a(2).jpg"_s).size(), QSize(240, 5 * 180));
    }

    // What a font lacks it writes as the same box.
    void writesChinese()
    {
        QVector<QImage> sheets;
        for (const QString &name : {"山"_s, "海"_s}) {
            const QString film = m_folder->path(name + ".mp4"_s);
            QVERIFY(QFile::copy(m_clip, film));
            QVariantMap map = wanted(m_folder->out, 1);
            map.insert("inputUrl"_s, film);
            map.insert("sourceInfo"_s, QVariant::fromValue(factsOf(film)));
            map.insert("baseName"_s, name);
            map.insert("columns"_s, 1);
            Watched<MutiImageTask> sheet(new MutiImageTaskParam(map));
            QVERIFY2(sheet.run() == MediaTask::FINISHED, qPrintable(sheet.cause()));
            sheets += QImage(m_folder->out + u'/' + name + ".png"_s);
        }
        QVERIFY(!sheets[0].isNull() && sheets[0] != sheets[1]);
    }

    void refusesTooLargeAPicture()
    {
        QVariantMap map = wanted(m_folder->out, 0);
        QVariantList images;
        for (int i = 0; i < 274; ++i)
            images += QVariantMap{{"pos"_s, 10 * i}, {"scale"_s, 1.0F}};
        map.insert("images"_s, images);
        map.insert("format"_s, "jpg"_s);
        map.insert("isPiiic"_s, true);
        map.insert("sourceInfo"_s, QVariant::fromValue(factsOf(m_clip)));
        Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
        QCOMPARE(shots.run(), MediaTask::ERROR);
        QVERIFY2(shots.cause().contains("320x65760"_s), qPrintable(shots.cause()));
    }

    void keepsWhatIsThere()
    {
        QDir().mkpath(m_folder->out);
        const QString mine = m_folder->out + "/a_1.png"_s;
        writeTestFile(mine);
        Watched<MutiImageTask> shots(new MutiImageTaskParam(wanted(m_folder->out, 1)));
        QCOMPARE(shots.run(), MediaTask::FINISHED);
        QCOMPARE(QFileInfo(mine).size(), 1);
        QCOMPARE(QFileInfo(shots.messages.at(0).at(2).value<QVariant>().toString()).fileName(),
                 "a_1(2).png"_s);
    }

    // Thousands of pictures are no more work to begin than a few, nor all of them there at once.
    void thousandsOfMoments()
    {
        QVariantMap map = wanted(m_folder->out, 0);
        QVariantList images;
        for (int i = 0; i < 5000; ++i)
            images += QVariantMap{{"pos"_s, i % 3000}, {"scale"_s, 0.1F}};
        map.insert("images"_s, images);
        Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
        int most = 0;
        QObject::connect(shots.task.get(), &MediaTask::taskCustomeMsgCome, shots.task.get(),
                         [&](int, const MediaTask *step) {
                             most = std::max(most, step->parent()->children().size());
                             if (shots.messages.size() == 20)
                                 shots.task->stop();
                         });
        QCOMPARE(shots.run(), MediaTask::STOPED);
        QVERIFY2(most > 0 && most < 10, qPrintable(QString::number(most)));
        QCOMPARE(QDir(m_folder->out).entryList(QDir::Files).size(), 20);
        QTRY_COMPARE(m_folder->outputs().size(), 20);
    }

    void failsWithoutLeavingHalfAPicture()
    {
        QVariantMap map = wanted(m_folder->out, 2);
        map.insert("format"_s, "nonsense"_s);
        Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
        QCOMPARE(shots.run(), MediaTask::ERROR);
        QVERIFY(!shots.cause().isEmpty());
        const auto files = [this] {
            int count = 0;
            for (QDirIterator all(m_folder->out, QDir::Files | QDir::Hidden,
                                  QDirIterator::Subdirectories);
                 all.hasNext(); all.next())
                ++count;
            return count;
        };
        QCOMPARE(files(), 0);
        // Stopped in the middle, only what has been finished is there.
        Watched<MutiImageTask> stopped(new MutiImageTaskParam(wanted(m_folder->out, 3)));
        QObject::connect(stopped.task.get(), &MediaTask::taskCustomeMsgCome, stopped.task.get(),
                         [&] { stopped.task->stop(); });
        QCOMPARE(stopped.run(), MediaTask::STOPED);
        QCOMPARE(files(), 1);
    }
};

QTEST_GUILESS_MAIN(TestImages)
#include "tst_images.moc"
