// SPDX-License-Identifier: MIT
#include "cli/commandline.h"
#include "cli/consoleprogress.h"
#include "cli/textvalues.h"
#include "MediaKits/MediaTasksManager/converttask.h"

#include <QTest>

class TestCliValues : public QObject
{
    Q_OBJECT

private slots:
    void times_data();
    void times();
    void boxes();
    void beauty_data();
    void beauty();
    void noVolumeMutes();
    void wrongWords_data();
    void wrongWords();
    void rightWords();
    void progressLine();
};

void TestCliValues::times_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("ms"); // -1 where the text is no time
    QTest::newRow("seconds") << QStringLiteral("12") << 12000;
    QTest::newRow("decimals") << QStringLiteral("12.5") << 12500;
    QTest::newRow("rounded") << QStringLiteral("0.0006") << 1;
    QTest::newRow("clock") << QStringLiteral("01:02:03") << 3723000;
    QTest::newRow("clock with ms") << QStringLiteral("00:00:01.25") << 1250;
    QTest::newRow("long recording") << QStringLiteral("100:00:00") << 360000000;
    QTest::newRow("minute 60") << QStringLiteral("00:60:00") << -1;
    QTest::newRow("negative") << QStringLiteral("-1") << -1;
    QTest::newRow("two fields") << QStringLiteral("1:30") << -1;
    QTest::newRow("too long for ms") << QStringLiteral("9999999") << -1;
    QTest::newRow("word") << QStringLiteral("nan") << -1;
    QTest::newRow("nothing") << QString() << -1;
}

void TestCliValues::times()
{
    QFETCH(QString, text);
    QFETCH(int, ms);
    QCOMPARE(parseTimeMs(text).value_or(-1), ms);
}

void TestCliValues::boxes()
{
    const auto box = parseCropBox(QStringLiteral("2,4,100,50"));
    QVERIFY(box);
    QCOMPARE(box->x, 2);
    QCOMPARE(box->y, 4);
    QCOMPARE(box->width, 100);
    QCOMPARE(box->height, 50);
    for (const char *wrong : {"2,4,100", "2,4,0,50", "2,4,100,50,6", "-2,4,100,50", "a,b,c,d", ""})
        QVERIFY2(!parseCropBox(QString::fromLatin1(wrong)), wrong);
}

void TestCliValues::beauty_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("one") << QStringLiteral("contrast=1.2") << true;
    QTest::newRow("all kinds") << QStringLiteral("red=-0.5,rotate=-3,reverse=1,speed=2") << true;
    QTest::newRow("unknown key") << QStringLiteral("glow=1") << false;
    QTest::newRow("no value") << QStringLiteral("contrast=") << false;
    QTest::newRow("not a number") << QStringLiteral("contrast=1,0[x]") << false;
    QTest::newRow("out of range") << QStringLiteral("brightness=2") << false;
    QTest::newRow("speed too slow") << QStringLiteral("speed=0.1") << false;
    QTest::newRow("half a turn") << QStringLiteral("rotate=1.5") << false;
    QTest::newRow("flag of two") << QStringLiteral("vflip=2") << false;
    QTest::newRow("empty") << QString() << false;
}

void TestCliValues::beauty()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(bool(parseBeauty(text)), valid);
    if (text.startsWith(QLatin1String("red"))) {
        const VideoBeautyParam record = *parseBeauty(text);
        QCOMPARE(record.red, -0.5F);
        QCOMPARE(record.rotate, -3);
        QVERIFY(record.reverse && !record.vflip);
        QCOMPARE(record.contrast, 1.0F);
    }
}

// A factor of 0 isn't taken for one that was never set.
void TestCliValues::noVolumeMutes()
{
    ConvertTaskParam param;
    param.format = QStringLiteral("mp3");
    param.beauty =
        QSharedPointer<VideoBeautyParam>::create(*parseBeauty(QStringLiteral("volume=0")));
    QVERIFY2(ConvertTask::buildFilterText(param).contains(QLatin1String("volume=0.00")),
             qPrintable(ConvertTask::buildFilterText(param)));
}

void TestCliValues::wrongWords_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("named"); // what the message has to name
    const auto row = [](const char *words, const char *named) {
        QTest::newRow(words) << QString::fromUtf8(words) << QString::fromUtf8(named);
    };
    row("fly", "fly");
    row("convert --preset 1003002", "文件");
    row("convert a.mp4", "--preset");
    row("convert a.mp4 --preset 12", "12");
    row("convert a.mp4 --preset abc", "abc");
    row("convert a.mp4 --preset 1003002 --jobs 0", "--jobs");
    row("convert a.mp4 --preset 1003002 --speed 10", "--speed");
    row("convert a.mp4 --preset 1003002 --from 5 --to 3", "--to");
    row("convert a.mp4 --preset 1003002 --from x", "--from");
    row("convert a.mp4 --preset 1003002 --crop 1,2,3", "--crop");
    row("convert a.mp4 --preset 1003002 --beauty glow=1", "--beauty");
    row("convert a.mp4 --preset 1003002 --name a/b", "--name");
    row("convert a.mp4 --preset 1003002 --reader auto", "reader");
    row("convert a.mp4 --preset", "preset");
    row("merge a.mp4 --preset 1003002", "--name");
    row("merge --preset 1003002 --name x", "文件");
    row("probe a.mp4 --reader eyes", "eyes");
    row("presets --category MP5", "MP5");
    row("categories a.mp4", "a.mp4");
}

void TestCliValues::wrongWords()
{
    QFETCH(QString, words);
    QFETCH(QString, named);
    QString error;
    QVERIFY(!parseCommandLine(words.split(QLatin1Char(' ')), error));
    QVERIFY2(error.contains(named), qPrintable(error));
    QVERIFY2(!error.contains(QLatin1Char('\n')), qPrintable(error));
}

void TestCliValues::rightWords()
{
    QString error;
    const auto line = parseCommandLine(
        {QStringLiteral("convert"), QStringLiteral("--preset=1003002"), QStringLiteral("--jobs"),
         QStringLiteral("2"), QStringLiteral("--from"), QStringLiteral("1"), QStringLiteral("--"),
         QStringLiteral("-dash.mp4"), QStringLiteral("--preset")},
        error);
    QVERIFY2(line, qPrintable(error));
    QCOMPARE(line->files.size(), 2);
    QVERIFY(line->files[0].startsWith(QLatin1Char('/')));
    QVERIFY(line->files[0].endsWith(QLatin1String("/-dash.mp4")));
    QCOMPARE(line->jobs, 2);
    QCOMPARE(line->fromMs.value(), 1000);
    QVERIFY(!line->toMs);
    QVERIFY(line->outputDir.endsWith(QStringLiteral("/墨泉影音工坊/视频转换")));
}

void TestCliValues::progressLine()
{
    const QString half = ConsoleProgress::line(0.5, 10000, QStringLiteral("1/2"));
    QVERIFY2(half.contains(QLatin1String(" 50.0%  00:00:10  1/2")), qPrintable(half));
    const QString none = ConsoleProgress::line(0.0, 10000, QStringLiteral("0/2"));
    QVERIFY2(none.contains(QLatin1String("0.0%  --:--:--")), qPrintable(none));
}

QTEST_GUILESS_MAIN(TestCliValues)

#include "tst_clivalues.moc"
