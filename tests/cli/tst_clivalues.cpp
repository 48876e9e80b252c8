// SPDX-License-Identifier: MIT
#include "cli/commandline.h"
#include "cli/consoleprogress.h"
#include "cli/dubvalue.h"
#include "cli/markvalue.h"
#include "cli/textvalues.h"
#include "MediaKits/MediaTasksManager/converttask.h"
#include "support/casename.h"
#include "support/utf8.h"

#include <QFont>
#include <QRectF>
#include <QtTest>

class TestCliValues : public QObject
{
    Q_OBJECT

private slots:
    void dubs()
    {
        const auto music = parseDub(R"({"file":"/a/b.mp3","start":3.5,"volume":0.8})"_s);
        QVERIFY(music);
        QCOMPARE(music->value("filePath"_s).toString(), "/a/b.mp3"_s);
        QCOMPARE(music->value("startTime"_s).toInt(), 3500);
        QCOMPARE(music->value("volume"_s).toFloat(), 0.8F);
        QCOMPARE(parseDub(R"({"file":"/a"})"_s)->value("volume"_s).toFloat(), 1.0F);
        for (const char *wrong : {"{", "[]", "{}", R"({"file":""})", R"({"file":"/a","end":1})",
                                  R"({"file":"/a","start":-1})", R"({"file":"/a","start":"1"})",
                                  R"({"file":"/a","volume":2.1})", R"({"file":"/a","start":1e99})"})
            QVERIFY2(!parseDub(QLatin1String(wrong) + QString()), wrong);
        QCOMPARE(parseFactor("0.5"_s).value_or(-1.0F), 0.5F);
        QVERIFY(!parseFactor("2.5"_s) && !parseFactor("nan"_s) && !parseFactor("x"_s));
    }

    void marks()
    {
        const auto image = parseWatermark(
            R"({"image":"/a.png","rect":[-8,4.5,80,40],"opacity":0.5,"from":1.5,"to":3})"_s);
        QVERIFY(image);
        QCOMPARE(image->value("filter"_s).toString(), "watermark"_s);
        QCOMPARE(image->value("rect"_s).toRectF(), QRectF(-8, 4.5, 80, 40));
        QCOMPARE(image->value("startTime"_s).toInt(), 1500);
        QCOMPARE(image->value("endTime"_s).toInt(), 3000);
        const auto text = parseWatermark(R"({"text":" % ","rect":[1,2],"from":2,"size":20})"_s);
        QVERIFY(text);
        QCOMPARE(text->value("text"_s).toString(), " % "_s);
        QCOMPARE(text->value("font"_s).value<QFont>().pixelSize(), 20);
        QVERIFY(text->value("endTime"_s).toInt() > 360'000'000);
        QCOMPARE(parseDelogo(R"({"rect":[0,0,9,9]})"_s)->value("endTime"_s).toInt(), 0);
        for (const char *wrong :
             {"{", "[]", "{}", R"({"rect":[0,0,9,9]})", R"({"image":"a","rect":[0,0,9]})",
              R"({"image":"a","rect":[0,0,0,9]})", R"({"image":"a","rect":[0,0]})",
              R"({"image":"","rect":[0,0,9,9]})", R"({"image":"a","text":"b","rect":[0,0,9,9]})",
              R"({"text":"b","rect":[0,0],"color":"x"})", R"({"text":"b","rect":[0,0],"size":5})",
              R"({"text":"b","rect":[0,0],"from":2,"to":2})", R"({"text":"","rect":[0,0]})",
              R"({"image":"a","rect":[0,0,9,9],"opacity":2})",
              R"({"image":"a","rect":[0,0,9,"9"]})", R"({"text":"b","rect":[0,0],"x":1})"})
            QVERIFY2(!parseWatermark(QLatin1String(wrong) + QString()), wrong);
        QVERIFY(!parseDelogo(R"({"rect":[0,0,9,9],"text":"a"})"_s) && !parseDelogo("{}"_s));
    }

    void times()
    {
        const auto check = [&](const char *caseName, const QString &text, int ms) {
            const CaseName inCase(caseName);
            QCOMPARE(parseTimeMs(text).value_or(-1), ms);
        };
        check("seconds", "12"_s, 12000);
        check("decimals", "12.5"_s, 12500);
        check("rounded", "0.0006"_s, 1);
        check("clock", "01:02:03"_s, 3723000);
        check("clock with ms", "00:00:01.25"_s, 1250);
        check("long recording", "100:00:00"_s, 360000000);
        check("minute 60", "00:60:00"_s, -1);
        check("negative", "-1"_s, -1);
        check("two fields", "1:30"_s, -1);
        check("too long for ms", "9999999"_s, -1);
        check("word", "nan"_s, -1);
        check("nothing", QString(), -1);
    }

    void boxes()
    {
        const auto box = parseCropBox("2,4,100,50"_s);
        QVERIFY(box);
        QCOMPARE(box->x, 2);
        QCOMPARE(box->y, 4);
        QCOMPARE(box->width, 100);
        QCOMPARE(box->height, 50);
        for (const char *wrong :
             {"2,4,100", "2,4,0,50", "2,4,100,50,6", "-2,4,100,50", "a,b,c,d", ""})
            QVERIFY2(!parseCropBox(QString::fromLatin1(wrong)), wrong);
    }

    void beauty()
    {
        const auto check = [&](const char *caseName, const QString &text, bool valid) {
            const CaseName inCase(caseName);
            QCOMPARE(bool(parseBeauty(text)), valid);
            if (text.startsWith("filter=怀旧"_s)) {
                QCOMPARE(parseBeauty(text)->saturation, 0.84F);
                QCOMPARE(parseBeauty(text)->filterIndex, 1);
            }
            if (text.startsWith("red"_s)) {
                const VideoBeautyParam record = *parseBeauty(text);
                QCOMPARE(record.red, -0.5F);
                QCOMPARE(record.rotate, -3);
                QVERIFY(record.reverse && !record.vflip);
                QCOMPARE(record.contrast, 1.0F);
            }
        };
        check("one", "contrast=1.2"_s, true);
        check("ready look", "filter=怀旧,rotate=1"_s, true);
        check("look to come", "filter=敬请期待"_s, false);
        check("all kinds", "red=-0.5,rotate=-3,reverse=1,speed=2"_s, true);
        check("unknown key", "glow=1"_s, false);
        check("no value", "contrast="_s, false);
        check("not a number", "contrast=1,0[x]"_s, false);
        check("out of range", "brightness=2"_s, false);
        check("speed too slow", "speed=0.1"_s, false);
        check("half a turn", "rotate=1.5"_s, false);
        check("flag of two", "vflip=2"_s, false);
        check("empty", QString(), false);
    }

    // A factor of 0 isn't taken for one that was never set.
    void noVolumeMutes()
    {
        ConvertTaskParam param;
        param.format = "mp3"_s;
        param.beauty = QSharedPointer<VideoBeautyParam>::create(*parseBeauty("volume=0"_s));
        QVERIFY2(ConvertTask::buildFilterText(param).contains("volume=0.00"_s),
                 qPrintable(ConvertTask::buildFilterText(param)));
    }

    void wrongWords()
    {
        const auto check = [](const char *words, const char *named) {
            const CaseName inCase(words);
            QString error;
            QVERIFY(!parseCommandLine(QString::fromUtf8(words).split(u' '), error));
            QVERIFY2(error.contains(QString::fromUtf8(named)), qPrintable(error));
            QVERIFY2(!error.contains(u'\n'), qPrintable(error));
        };
        check("fly", "fly");
        check("convert --preset 1003002", "文件");
        check("convert a.mp4", "--preset");
        check("convert a.mp4 --preset 12", "12");
        check("convert a.mp4 --preset abc", "abc");
        check("convert a.mp4 --preset 1003002 --jobs 0", "--jobs");
        check("convert a.mp4 --preset 1003002 --speed 10", "--speed");
        check("convert a.mp4 --preset 1003002 --from 5 --to 3", "--to");
        check("convert a.mp4 --preset 1003002 --from x", "--from");
        check("convert a.mp4 --preset 1003002 --crop 1,2,3", "--crop");
        check("convert a.mp4 --preset 1003002 --beauty glow=1", "--beauty");
        check("convert a.mp4 --preset 1003002 --name a/b", "--name");
        check("convert a.mp4 --preset 1003002 --reader auto", "reader");
        check("convert a.mp4 --preset", "preset");
        check("merge a.mp4 --preset 1003002", "--name");
        check("merge --preset 1003002 --name x", "文件");
        check("probe a.mp4 --reader eyes", "eyes");
        check("presets --category MP5", "MP5");
        check("categories a.mp4", "a.mp4");
    }

    void rightWords()
    {
        QString error;
        const auto line = parseCommandLine({"convert"_s, "--preset=1003002"_s, "--jobs"_s, "2"_s,
                                            "--from"_s, "1"_s, "--"_s, "-dash.mp4"_s, "--preset"_s},
                                           error);
        QVERIFY2(line, qPrintable(error));
        QCOMPARE(line->files.size(), 2);
        QVERIFY(line->files[0].startsWith(u'/'));
        QVERIFY(line->files[0].endsWith("/-dash.mp4"_s));
        QCOMPARE(line->jobs, 2);
        QCOMPARE(line->fromMs.value(), 1000);
        QVERIFY(!line->toMs);
        QVERIFY(line->outputDir.endsWith("/墨泉影音工坊/视频转换"_s));
    }

    void progressLine()
    {
        const QString half = ConsoleProgress::line(0.5, 10000, "1/2"_s);
        QVERIFY2(half.contains(" 50.0%  00:00:10  1/2"_s), qPrintable(half));
        const QString none = ConsoleProgress::line(0.0, 10000, "0/2"_s);
        QVERIFY2(none.contains("0.0%  --:--:--"_s), qPrintable(none));
    }
};

QTEST_GUILESS_MAIN(TestCliValues)

#include "tst_clivalues.moc"
