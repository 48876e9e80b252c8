// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/convertgraph.h"
#include "MediaKits/MediaTasksManager/stepmapping.h"
#include "support/utf8.h"

#include <QFont>
#include <QtTest>

namespace {

// A film of 640x360 pixels with sound, to be converted to an mp4.
struct Wanted : ConvertTaskParam
{
    explicit Wanted(double rotate = 0.0)
    {
        format = "mp4"_s;
        durationMs = 10000;
        sourceInfo.reset(new MediaInfoData);
        sourceInfo->video.reset(new VEncParam{QString(), 640, 360, 0, 0.0, rotate});
        sourceInfo->audios.append(QSharedPointer<AEncParam>::create());
        beauty.reset(new VideoBeautyParam);
    }
    Wanted &size(int width, int height)
    {
        encParam.reset(new EncParam);
        encParam->video.reset(new VEncParam{"H264"_s, width, height, 0, 0.0, 0.0});
        return *this;
    }
    Wanted &crop(const CropBox &box)
    {
        cropRect.reset(new CropBox(box));
        return *this;
    }
    Wanted &turn(int turns)
    {
        beauty->rotate = turns;
        return *this;
    }
    Wanted &mark(const char *filter, const QRectF &rect, int start = 0, int end = 0)
    {
        QFont font("DejaVu Sans"_s);
        font.setPixelSize(40);
        videoFilters += QVariantMap{{"filter"_s, QLatin1String(filter)},
                                    {"rect"_s, rect},
                                    {"font"_s, font},
                                    {"startTime"_s, start},
                                    {"endTime"_s, end}};
        return *this;
    }
};

} // namespace

// Records of convert steps, by their values.
class TestStepMapping : public QObject
{
    Q_OBJECT

private slots:
    void leavesPlainRecords()
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

    void cropsWithoutASize()
    {
        const QString crop = "[0:v]crop=w=300:h=200:x=10:y=20[vrt0]"_s;
        const CropBox box{10, 20, 301, 200};
        QCOMPARE(videoGraphText(mappedStep(Wanted().crop(box))), crop);
        QCOMPARE(videoGraphText(mappedStep(Wanted().crop(box).size(0, 0))), crop);
        QCOMPARE(videoGraphText(mappedStep(Wanted().crop({0, 0, 1, 1}))),
                 "[0:v]crop=w=2:h=2:x=0:y=0[vrt0]"_s);
        const QString sized = videoGraphText(mappedStep(Wanted().crop(box).size(128, 96)));
        QVERIFY2(sized.startsWith("[0:v]crop=w=301:h=200:x=10:y=20,scale="_s), qPrintable(sized));
        // What a page holds stays as it is.
        const Wanted wanted = Wanted().crop(box);
        mappedStep(wanted);
        QVERIFY(*wanted.cropRect == box);
    }

    // Of a picture that is shown upright, the removal keeps its margin to the shown edges.
    void keepsRemovalsFromShownEdges()
    {
        QCOMPARE(videoGraphText(mappedStep(Wanted(90).mark("delogo", {300, 500, 60, 140}))),
                 "[0:v]delogo=x=300:y=500:w=59:h=139[vrt0]"_s);
    }

    void dropsWhatIsNotSeen()
    {
        Wanted wanted;
        wanted.crop({320, 180, 320, 180});
        for (const char *filter : {"delogo", "watermark"}) {
            wanted.mark(filter, {0, 0, 100, 100});
            wanted.mark(filter, {300, 170, 40, 30});
        }
        QVERIFY(mappedStep(Wanted().mark("delogo", {640, 10, 50, 50})).videoFilters.isEmpty());
        const QVariantList seen = mappedStep(wanted).videoFilters;
        QCOMPARE(seen.size(), 2);
        QCOMPARE(seen.at(0).toMap().value("rect"_s).toRectF(), QRectF(0, 0, 20, 20));
        QCOMPARE(seen.at(1).toMap().value("rect"_s).toRectF(), QRectF(-20, -10, 40, 30));
        // Removals at the very edge have to leave a pixel around them.
        const QString graph =
            videoGraphText(mappedStep(Wanted().size(320, 180).mark("delogo", {638, 358, 2, 2})));
        QVERIFY2(graph.contains("delogo=x=317:y=177:w=2:h=2"_s), qPrintable(graph));
    }

    void timesMarks()
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
            return QPair<int, int>(mark.value("startTime"_s).toInt(),
                                   mark.value("endTime"_s).toInt());
        };
        QCOMPARE(times(0), qMakePair(1000, 2000));
        // To the end of the second, since the filter knows whole ones only.
        QCOMPARE(times(1), qMakePair(0, 1000));
        QCOMPARE(times(2), qMakePair(5000, 0));
    }

    // Music's times are the film's: what a part begins in the middle of is begun there, what isn't
    // heard in it is left out.
    void mapsMusic()
    {
        Wanted wanted;
        wanted.timeRange.reset(new TimeSpan{4000, 8000});
        wanted.beauty->speed = 2.0F;
        const auto piece = [](const char *file, int start, int duration) {
            return QVariantMap{{"filePath"_s, QLatin1String(file)},
                               {"startTime"_s, start},
                               {"duration"_s, duration},
                               {"volume"_s, 1.0F}};
        };
        wanted.audioFilters += QVariantMap{
            {"filter"_s, "dubbing"_s},
            {"musics"_s, QVariantList{piece("over", 1000, 1000), piece("begun", 1000, 3000),
                                      piece("long", 6000, 0), piece("after", 8000, 5000)}}};
        const QVariantList heard =
            mappedStep(wanted).audioFilters.value(0).toMap().value("musics"_s).toList();
        QCOMPARE(heard.size(), 2);
        const auto value = [&heard](int i, const char *key) {
            return heard[i].toMap().value(QLatin1String(key));
        };
        QCOMPARE(value(0, "filePath").toString(), "begun"_s);
        QCOMPARE(value(0, "skip").toInt(), 1500);
        QCOMPARE(value(0, "startTime").toInt(), 0);
        QVERIFY(!value(0, "fadeAt").isValid());
        QCOMPARE(value(1, "skip").toInt(), 0);
        QCOMPARE(value(1, "startTime").toInt(), 1000);
        QCOMPARE(value(1, "fadeAt").toInt(), 1950);
        QCOMPARE(value(1, "fade").toInt(), 50);
    }

    void keepsPicturesOutOfSounds()
    {
        Wanted wanted;
        wanted.format = "wav"_s;
        wanted.size(64, 48).turn(1).mark("delogo", {1, 1, 9, 9});
        wanted.beauty->volume = 0.5F;
        wanted.beauty->speed = 2.0F;
        const ConvertTaskParam step = mappedStep(wanted);
        QCOMPARE(videoGraphText(step), QString());
        QCOMPARE(audioGraphText(step, 0), "[0:a]atempo=2.00,volume=0.50[art0]"_s);
        // A suffix that films have as well.
        wanted.format = "mka"_s;
        wanted.encParam.reset(new EncParam);
        wanted.encParam->audio.reset(new AEncParam);
        QCOMPARE(videoGraphText(mappedStep(wanted)), QString());

        // With a picture, the sound's graph wants one beside it.
        Wanted film;
        film.beauty->volume = 0.5F;
        QCOMPARE(videoGraphText(mappedStep(film)), "[0:v]null=[vrt0]"_s);
        film.sourceInfo->video.clear();
        QCOMPARE(videoGraphText(mappedStep(film)), QString());
    }
};

QTEST_GUILESS_MAIN(TestStepMapping)
#include "tst_stepmapping.moc"
