// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/convertgraph.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"

#include <QFont>
#include <QRectF>
#include <QtTest>

namespace {

// A film of 640x360 pixels with sound, to be converted to an mp4.
struct Wanted : ConvertTaskParam
{
    explicit Wanted(double rotate = 0.0, double pixelAspect = 1.0)
    {
        format = QStringLiteral("mp4");
        durationMs = 10000;
        sourceInfo.reset(new MediaInfoData);
        sourceInfo->video.reset(new VEncParam{QString(), 640, 360, 0, 0.0, rotate, pixelAspect});
        sourceInfo->audios.append(QSharedPointer<AEncParam>::create());
        beauty.reset(new VideoBeautyParam);
    }
    Wanted &size(int width, int height)
    {
        encParam.reset(new EncParam);
        encParam->video.reset(new VEncParam{QStringLiteral("H264"), width, height, 0, 0.0, 0.0});
        return *this;
    }
    Wanted &crop(const CropBox &box)
    {
        cropRect.reset(new CropBox(box));
        return *this;
    }
    Wanted &turn(int turns, bool hflip = false, bool vflip = false)
    {
        beauty->rotate = turns;
        beauty->hflip = hflip;
        beauty->vflip = vflip;
        return *this;
    }
    Wanted &mark(const char *filter, const QRectF &rect, int start = 0, int end = 0)
    {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(40);
        videoFilters += QVariantMap{{QStringLiteral("filter"), QLatin1String(filter)},
                                    {QStringLiteral("rect"), rect},
                                    {QStringLiteral("font"), font},
                                    {QStringLiteral("startTime"), start},
                                    {QStringLiteral("endTime"), end}};
        return *this;
    }
};

} // namespace

// Records of convert steps, by their values.
class TestStepMapping : public QObject
{
    Q_OBJECT

private slots:
    void leavesPlainRecords();
    void cropsWithoutASize();
    void swallowedLooks();
    void flipsAfterTurns();
    void placesMarks();
    void dropsWhatIsNotSeen();
    void timesMarks();
    void keepsPicturesOutOfSounds();
};

void TestStepMapping::leavesPlainRecords()
{
    Wanted wanted;
    wanted.size(640, 360).turn(2).mark("drawtext", {10.4, 20.6, 100, 30}, 1000, 2000);
    wanted.beauty->rotate = 0;
    const ConvertTaskParam step = mappedStep(wanted);
    QCOMPARE(step.videoFilters, wanted.videoFilters);
    QCOMPARE(step.encParam, wanted.encParam);
    QVERIFY(!step.turnsFrame);
    QVERIFY(step.picture == ResultPicture::AsSource);
}

void TestStepMapping::cropsWithoutASize()
{
    const QString crop = QStringLiteral("[0:v]crop=w=300:h=200:x=10:y=20[vrt0]");
    const CropBox box{10, 20, 301, 200};
    QCOMPARE(videoGraphText(mappedStep(Wanted().crop(box))), crop);
    QCOMPARE(videoGraphText(mappedStep(Wanted().crop(box).size(0, 0))), crop);
    QCOMPARE(videoGraphText(mappedStep(Wanted().crop({0, 0, 1, 1}))),
             QStringLiteral("[0:v]crop=w=2:h=2:x=0:y=0[vrt0]"));
    const QString sized = videoGraphText(mappedStep(Wanted().crop(box).size(128, 96)));
    QVERIFY2(sized.startsWith(QStringLiteral("[0:v]crop=w=301:h=200:x=10:y=20,scale=")),
             qPrintable(sized));
    // What a page holds stays as it is.
    const Wanted wanted = Wanted().crop(box);
    mappedStep(wanted);
    QVERIFY(*wanted.cropRect == box);
}

void TestStepMapping::swallowedLooks()
{
    const auto graphOf = [](float contrast, float brightness, float saturation) {
        Wanted wanted;
        wanted.beauty->contrast = contrast;
        wanted.beauty->brightness = brightness;
        wanted.beauty->saturation = saturation;
        return videoGraphText(mappedStep(wanted));
    };
    QCOMPARE(graphOf(1, 0, 1), QString());
    QCOMPARE(graphOf(1, 0, 0),
             QStringLiteral("[0:v]eq=contrast=1:brightness=0:saturation=0.0001[vrt0]"));
    QCOMPARE(graphOf(0, 0, 1),
             QStringLiteral("[0:v]eq=contrast=0.0001:brightness=0:saturation=1[vrt0]"));
    QCOMPARE(graphOf(1, 1, 1),
             QStringLiteral("[0:v]eq=contrast=1:brightness=0.9999:saturation=1[vrt0]"));
    QCOMPARE(graphOf(0.5F, 0, 0),
             QStringLiteral("[0:v]eq=contrast=0.5:brightness=0:saturation=0[vrt0]"));
}

void TestStepMapping::flipsAfterTurns()
{
    QCOMPARE(videoGraphText(mappedStep(Wanted().turn(1, true))),
             QStringLiteral("[0:v]vflip=,transpose=1[vrt0]"));
    QCOMPARE(videoGraphText(mappedStep(Wanted().turn(-3, false, true))),
             QStringLiteral("[0:v]hflip=,transpose=2,transpose=2,transpose=2[vrt0]"));
    QCOMPARE(videoGraphText(mappedStep(Wanted().turn(2, true))),
             QStringLiteral("[0:v]hflip=,transpose=1,transpose=1[vrt0]"));
}

void TestStepMapping::placesMarks()
{
    const QRectF rect(100, 60, 80, 40);
    const struct
    {
        Wanted wanted;
        QRectF removal;
        QRectF upright;
        int fontSize;
    } rows[] = {
        {Wanted().size(320, 180), {50, 30, 40, 20}, {50, 30, 40, 20}, 20},
        // 640x360 becomes 160x90, with bars of 35 above and below.
        {Wanted().size(160, 160), {25, 50, 20, 10}, {25, 50, 20, 10}, 10},
        {Wanted().size(320, 180).crop({100, 60, 320, 180}), {0, 0, 80, 40}, {0, 0, 80, 40}, 40},
        {Wanted().crop({100, 60, 320, 180}), {0, 0, 80, 40}, {0, 0, 80, 40}, 40},
        {Wanted().turn(0, true), {460, 60, 80, 40}, {460, 60, 80, 40}, 40},
        {Wanted().turn(2), {460, 260, 80, 40}, {460, 260, 80, 40}, 40},
        {Wanted().turn(1), {260, 100, 40, 80}, {240, 120, 80, 40}, 40},
        {Wanted().turn(-1), {60, 460, 40, 80}, {40, 480, 80, 40}, 40},
        // Turned, then flipped: its place in the turned picture mirrored.
        {Wanted().turn(1, true), {60, 100, 40, 80}, {40, 120, 80, 40}, 40},
        // The frame is 160 wide and 320 high, the turned picture 160x284 in it.
        {Wanted().size(160, 320).turn(1), {115, 62, 18, 36}, {107, 71, 36, 18}, 18},
        // Twice as wide as its pixels tell.
        {Wanted(0, 2.0).size(640, 180), {100, 30, 80, 20}, {100, 30, 80, 20}, 20},
        {Wanted(90).size(180, 320), {50, 30, 40, 20}, {50, 30, 40, 20}, 20},
    };
    for (const auto &row : rows) {
        Wanted wanted = row.wanted;
        wanted.mark("delogo", rect).mark("drawtext", rect);
        const ConvertTaskParam step = mappedStep(wanted);
        const auto rectOf = [&step](int index) {
            return step.videoFilters.at(index).toMap().value(QStringLiteral("rect")).toRectF();
        };
        QCOMPARE(step.videoFilters.size(), 2);
        const QRect upright = rectOf(1).toRect();
        QVERIFY2(
            (rectOf(0).toRect().topLeft() - row.removal.toRect().topLeft()).manhattanLength() <=
                    2 &&
                std::abs(rectOf(0).width() - row.removal.width()) <= 2 &&
                std::abs(rectOf(0).height() - row.removal.height()) <= 2,
            qPrintable(QStringLiteral("row %1").arg(&row - rows)));
        QVERIFY2(
            (upright.topLeft() - row.upright.toRect().topLeft()).manhattanLength() <= 2 &&
                (upright.bottomRight() - row.upright.toRect().bottomRight()).manhattanLength() <= 2,
            qPrintable(QStringLiteral("row %1").arg(&row - rows)));
        QCOMPARE(step.videoFilters.at(1)
                     .toMap()
                     .value(QStringLiteral("font"))
                     .value<QFont>()
                     .pixelSize(),
                 row.fontSize);
    }
    // Of a picture that is shown upright, the removal keeps its margin to the shown edges.
    QCOMPARE(videoGraphText(mappedStep(Wanted(90).mark("delogo", {300, 500, 60, 140}))),
             QStringLiteral("[0:v]delogo=x=300:y=500:w=59:h=139[vrt0]"));
}

void TestStepMapping::dropsWhatIsNotSeen()
{
    Wanted wanted;
    wanted.crop({320, 180, 320, 180});
    for (const char *filter : {"delogo", "watermark"}) {
        wanted.mark(filter, {0, 0, 100, 100});
        wanted.mark(filter, {300, 170, 40, 30});
    }
    const QVariantList seen = mappedStep(wanted).videoFilters;
    QCOMPARE(seen.size(), 2);
    QCOMPARE(seen.at(0).toMap().value(QStringLiteral("rect")).toRectF(), QRectF(0, 0, 20, 20));
    QCOMPARE(seen.at(1).toMap().value(QStringLiteral("rect")).toRectF(), QRectF(-20, -10, 40, 30));
    // Removals at the very edge have to leave a pixel around them.
    const QString graph =
        videoGraphText(mappedStep(Wanted().size(320, 180).mark("delogo", {638, 358, 2, 2})));
    QVERIFY2(graph.contains(QLatin1String("delogo=x=317:y=177:w=2:h=2")), qPrintable(graph));
}

void TestStepMapping::timesMarks()
{
    Wanted wanted;
    wanted.timeRange.reset(new TimeSpan{2000, 8000});
    wanted.beauty->speed = 2.0F;
    wanted.mark("watermark", {0, 0, 10, 10}, 4000, 6000);
    wanted.mark("watermark", {0, 0, 10, 10}, 1000, 3000);
    wanted.mark("watermark", {0, 0, 10, 10}, 1000, 2000);
    wanted.mark("watermark", {0, 0, 10, 10}, 5000, 0);
    const QVariantList seen = mappedStep(wanted).videoFilters;
    QCOMPARE(seen.size(), 3);
    const auto times = [&seen](int index) {
        const QVariantMap mark = seen.at(index).toMap();
        return QPair<int, int>(mark.value(QStringLiteral("startTime")).toInt(),
                               mark.value(QStringLiteral("endTime")).toInt());
    };
    QCOMPARE(times(0), qMakePair(1000, 2000));
    QCOMPARE(times(1), qMakePair(0, 500));
    QCOMPARE(times(2), qMakePair(5000, 0));
}

void TestStepMapping::keepsPicturesOutOfSounds()
{
    Wanted wanted;
    wanted.format = QStringLiteral("wav");
    wanted.size(64, 48).turn(1).mark("delogo", {1, 1, 9, 9});
    wanted.beauty->volume = 0.5F;
    wanted.beauty->speed = 2.0F;
    const ConvertTaskParam step = mappedStep(wanted);
    QCOMPARE(videoGraphText(step), QString());
    QCOMPARE(audioGraphText(step, 0), QStringLiteral("[0:a]atempo=2.00,volume=0.50[art0]"));

    // With a picture, the sound's graph wants one beside it.
    Wanted film;
    film.beauty->volume = 0.5F;
    QCOMPARE(videoGraphText(mappedStep(film)), QStringLiteral("[0:v]null=[vrt0]"));
    film.sourceInfo->video.clear();
    QCOMPARE(videoGraphText(mappedStep(film)), QString());
}

QTEST_GUILESS_MAIN(TestStepMapping)
#include "tst_stepmapping.moc"
