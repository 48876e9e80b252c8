// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"
#include "MediaKits/MediaTasksManager/videoimagepicktask.h"
#include "support/testfile.h"
#include "tasks/chainrun.h"

#include <QDir>
#include <QImage>
#include <QtTest>

// Pictures of a clip of 320x240, made by the real ffmpeg.
class TestImages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m_folder = std::make_unique<TestFolder>(); }

    void makesShots_data();
    void makesShots();
    void momentsBehindTheEnd_data();
    void momentsBehindTheEnd();
    void keepsWhatIsThere();
    void picksAThumbnail_data();
    void picksAThumbnail();
    void failsWithoutLeavingHalfAPicture();

private:
    QVariantMap wanted(const QString &outputDir, int count) const;

    QTemporaryDir m_media;
    QString m_clip;
    std::unique_ptr<TestFolder> m_folder;
};

void TestImages::initTestCase()
{
    m_clip = m_media.filePath(utf8("片 %d.clip.mp4"));
    ClipPlan plan;
    plan.seconds = 3;
    makeClip(m_clip, plan);
}

QVariantMap TestImages::wanted(const QString &outputDir, int count) const
{
    QVariantList images;
    for (int i = 0; i < count; ++i)
        images += QVariantMap{{QStringLiteral("pos"), 1000 * i}, {QStringLiteral("scale"), 0.5F}};
    return {{QStringLiteral("inputUrl"), m_clip},
            {QStringLiteral("outputDir"), outputDir},
            {QStringLiteral("baseName"), QStringLiteral("a")},
            {QStringLiteral("format"), QStringLiteral("png")},
            {QStringLiteral("images"), images}};
}

void TestImages::makesShots_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("stitch");
    QTest::addColumn<bool>("watermark");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QSize>("size");
    const QStringList three{QStringLiteral("a_1.png"), QStringLiteral("a_2.png"),
                            QStringLiteral("a_3.png")};
    const QString plain = QStringLiteral("out");
    QTest::newRow("each moment") << plain << 3 << false << false << three << QSize(160, 120);
    QTest::newRow("a folder that looks like a pattern")
        << utf8("夹 50%d") << 3 << false << false << three << QSize(160, 120);
    QTest::newRow("stitched") << QStringLiteral("%d") << 3 << true << false
                              << QStringList{QStringLiteral("a.png")} << QSize(160, 360);
    QTest::newRow("one can't be stitched")
        << plain << 1 << true << false << QStringList(three.mid(0, 1)) << QSize(160, 120);
    QTest::newRow("watermark") << plain << 1 << false << true << QStringList(three.mid(0, 1))
                               << QSize(160, 120);
    QTest::newRow("nothing wanted") << plain << 0 << false << false << QStringList() << QSize();
}

void TestImages::makesShots()
{
    QFETCH(QString, folder);
    QFETCH(int, count);
    QFETCH(bool, stitch);
    QFETCH(bool, watermark);
    QFETCH(QStringList, names);
    QFETCH(QSize, size);
    const QString out = m_folder->path(folder);
    QVariantMap map = wanted(out, count);
    map.insert(QStringLiteral("isPiiic"), stitch);
    if (watermark) {
        const QString mark = m_folder->path(utf8("标 ' , : [a].png"));
        makePicture(mark, QStringLiteral("red"), 40, 40);
        map.insert(QStringLiteral("watermark"), mark);
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
        const QImage picture(out + QLatin1Char('/') + name);
        QCOMPARE(picture.size(), size);
        if (watermark) {
            const QColor middle = picture.pixelColor(80, 60);
            QVERIFY2(middle.red() > 200 && middle.green() < 60, qPrintable(middle.name()));
        }
    }
}

void TestImages::momentsBehindTheEnd_data()
{
    QTest::addColumn<bool>("stitch");
    QTest::newRow("each") << false;
    QTest::newRow("stitched") << true;
}

// Frames begin every 33 ms; the last does so at 2967 ms.
void TestImages::momentsBehindTheEnd()
{
    QFETCH(bool, stitch);
    QVariantMap map = wanted(m_folder->out, 0);
    QVariantList images;
    for (const int pos : {0, 2950, 3000, 600000})
        images += QVariantMap{{QStringLiteral("pos"), pos}, {QStringLiteral("scale"), 0.5F}};
    map.insert(QStringLiteral("images"), images);
    map.insert(QStringLiteral("isPiiic"), stitch);
    Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
    QVERIFY2(shots.run() == MediaTask::FINISHED, qPrintable(shots.cause()));
    QVector<QImage> pictures;
    for (int i = 0; i < images.size(); ++i) {
        const QString name =
            stitch ? QStringLiteral("a.png") : QStringLiteral("a_%1.png").arg(i + 1);
        const QImage picture(m_folder->out + QLatin1Char('/') + name);
        pictures += stitch ? picture.copy(0, 120 * i, 160, 120) : picture;
        QCOMPARE(pictures.last().size(), QSize(160, 120));
    }
    QVERIFY(pictures[0] != pictures[1]);
    QCOMPARE(pictures[2], pictures[1]);
    QCOMPARE(pictures[3], pictures[1]);
}

void TestImages::keepsWhatIsThere()
{
    QDir().mkpath(m_folder->out);
    const QString mine = m_folder->out + QLatin1String("/a_1.png");
    writeTestFile(mine);
    Watched<MutiImageTask> shots(new MutiImageTaskParam(wanted(m_folder->out, 1)));
    QCOMPARE(shots.run(), MediaTask::FINISHED);
    QCOMPARE(QFileInfo(mine).size(), 1);
    QCOMPARE(QFileInfo(shots.messages.at(0).at(2).value<QVariant>().toString()).fileName(),
             QStringLiteral("a_1(2).png"));
}

void TestImages::picksAThumbnail_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("made");
    QTest::newRow("png") << QStringLiteral("t.png") << true;
    QTest::newRow("jpg") << QStringLiteral("t.JPG") << true;
    QTest::newRow("bmp") << QStringLiteral("t.bmp") << false;
}

void TestImages::picksAThumbnail()
{
    QFETCH(QString, target);
    QFETCH(bool, made);
    const QString picture = m_folder->path(target);
    Watched<VideoImagePickTask> pick(new VideoImagePickTaskParam(m_clip, picture));
    QCOMPARE(pick.run(), made ? MediaTask::FINISHED : MediaTask::ERROR);
    QCOMPARE(QImage(picture).width(), made ? 300 : 0);
}

void TestImages::failsWithoutLeavingHalfAPicture()
{
    QVariantMap map = wanted(m_folder->out, 2);
    map.insert(QStringLiteral("format"), QStringLiteral("nonsense"));
    Watched<MutiImageTask> shots(new MutiImageTaskParam(map));
    QCOMPARE(shots.run(), MediaTask::ERROR);
    QVERIFY(!shots.cause().isEmpty());
    QVERIFY(QDir(m_folder->out).entryList(QDir::Files).isEmpty());
}

QTEST_GUILESS_MAIN(TestImages)
#include "tst_images.moc"
