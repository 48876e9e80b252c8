// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "controls/complexedit.h"
#include "cut/cutfields.h"
#include "gif/giffile.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiffunctionpage.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiftreewidget.h"
#include "support/casename.h"
#include "support/mediatest.h"
#include "support/treepagetest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QtTest>

namespace {

constexpr int endLimitMs = 60000;

struct Part
{
    int start;
    int end;
    int width = 0; ///< 0 leaves the size
    int speed = 1; ///< place in the choice
};

class GifPage : public TreePageTest<MediaGifFunctionPage>
{
public:
    GifPage() : TreePageTest(FunctionSection::gif, 0) {}

    void mark(int index, const QVector<Part> &parts, bool accept = true)
    {
        edit(index, "MutiGifCutDialog", [&](QWidget &dialog) {
            for (const Part &part : parts) {
                ::mark(dialog, part.start, part.end);
                if (part.width > 0)
                    spinBox(dialog, "sbW")->setValue(part.width);
                child<QComboBox>(dialog, "cbSpeed")->setCurrentIndex(part.speed);
                press(dialog, "btnFragmentAdd");
            }
            press(dialog, accept ? "btnOk" : "btnCancel");
        });
    }
    MediaGifTreeWidget *gifTree() const { return page->findChild<MediaGifTreeWidget *>(); }
    QCheckBox *quality() const { return child<QCheckBox>(*page, "chkHighQuality"); }
};

} // namespace

class TestGifPage : public MediaTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia("-f lavfi -i testsrc2=s=320x240:r=25:d=6 -f lavfi -i sine=d=6 "
                  "-pix_fmt yuv420p @"_s,
                  {m_film});
        for (const int turn : {90, 270})
            makeMedia("-i @ -c copy -metadata:s:v rotate=%1 @"_s.arg(turn),
                      {m_film, media("turned%1.mp4"_s.arg(360 - turn))});
        makeMedia("-f lavfi -i testsrc2=s=321x241:r=25:d=4 -pix_fmt yuv444p @"_s,
                  {media("odd.mkv"_s)});
        makeMedia("-f lavfi -i testsrc2=s=320x240:r=25 -frames:v 1 -pix_fmt yuv420p @"_s,
                  {media("frame.mp4"_s)});
        makeClip(media("song.mp4"_s), {4, 0});
    }

    void cleanup()
    {
        FunctionSettings::instance().setValue(FunctionSection::gif, FunctionKey::highQuality,
                                              false);
        QTRY_VERIFY(!isAnyToolAtWork());
    }

    void twoGifsOfOneFile()
    {
        HistoryRecord::instance().clear();
        GifPage test;
        QVERIFY(test.shown);
        test.addSources({m_film});
        test.mark(0, {{500, 2500, 401, 0}, {0, 6000, 320, 1}});
        QCOMPARE(test.source(0)->childCount(), 2);
        QVERIFY(test.source(0)->isExpanded());
        QCOMPARE(test.text(0, 0, "lblInRes"), "320x240"_s);
        QCOMPARE(test.text(0, 0, "lblOutFormat"), "GIF"_s);
        QCOMPARE(test.text(0, 0, "lblOutRes"), "401x300"_s);
        QCOMPARE(test.text(0, 0, "lblOutDuration"), "00:00:02"_s);
        QCOMPARE(child<ComplexEdit>(*test.fragment(0, 0), "cedtOutputName")->suffix(), ".gif"_s);
        // Of a size that was left alone, the preset's is told before the run.
        QCOMPARE(test.text(0, 1, "lblOutRes"), "240x160"_s);
        QCOMPARE(test.text(0, 1, "lblOutDuration"), "00:00:06"_s);
        QVERIFY(!child(*test.fragment(0, 0), "btnFormatSet"));
        QVERIFY(child(*test.fragment(0, 0), "btnSwitchRapid")->isVisible());
        shoot(*test.page, "gif_idle");

        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0, 1), MediaTask::FINISHED, endLimitMs);
        QTRY_COMPARE(test.startAllText(), "全部转换"_s);
        const QDir out(test.out());
        const QString first = out.filePath("假期 100% 'y'(000000-000002).GIF"_s);
        const QString second = out.filePath("假期 100% 'y'.GIF"_s);
        QCOMPARE(test.fragment(0, 0)->outputPath(), first);
        QCOMPARE(HistoryRecord::instance().records().value(0).outputfile, second);
        const GifFile one = probeGif(first);
        const GifFile two = probeGif(second);
        QCOMPARE(one.size, QSize(400, 300));
        QCOMPARE(two.size, QSize(240, 160));
        QVERIFY(one.loops && two.loops);
        QVERIFY2(std::abs(one.frames - 30) <= 2, qPrintable(QString::number(one.frames)));
        QVERIFY2(std::abs(two.frames - 60) <= 2, qPrintable(QString::number(two.frames)));
        // The finished row tells what the file has.
        QTRY_COMPARE(test.text(0, 0, "lblOutRes"), "400x300"_s);
        QTRY_COMPARE(test.text(0, 1, "lblOutDuration"), "00:00:06"_s);
        shoot(*test.page, "gif_done");
    }

    // Each has a preset of its own, which nothing replaces.
    void clones()
    {
        GifPage test;
        test.addSources({m_film});
        QCOMPARE(test.gifTree()->encParamInfoID(), EncParamCatalog::defaultGifId);
        test.mark(0, {{0, 6000, 400, 0}, {0, 6000, 0, 2}, {0, 1000, 320}});
        const auto preset = [&test](int part) { return test.param(0, part).encParam; };
        const auto *kept = preset(0).data();
        test.gifTree()->setEncParamInfoID(1003001);
        QCOMPARE(preset(0).data(), kept);
        for (int part = 0; part < 3; ++part) {
            QCOMPARE(preset(part)->id, EncParamCatalog::customId);
            QCOMPARE(preset(part)->video->bitrate, 128);
            QCOMPARE(test.param(0, part).format, "GIF"_s);
        }
        QCOMPARE(preset(0)->video->frameRate, 15.0);
        QCOMPARE(preset(1)->video->width, 400);
        QCOMPARE(preset(1)->video->frameRate, 5.0);
        QCOMPARE(preset(2)->video->width, 240);
        preset(0)->video->width = 999;
        QCOMPARE(preset(1)->video->width, 400);
        const auto shared = EncParamCatalog::instance().encParam(EncParamCatalog::defaultGifId);
        QCOMPARE(shared->video->width, 240);
        QCOMPARE(shared->video->frameRate, 6.0);
    }

    // By the plain editor, which leaves size and frame rate alone.
    void cutAgain()
    {
        GifPage test;
        test.addSources({m_film});
        test.mark(0, {{0, 6000, 400, 0}});
        whenModal("VideoCutDialog", [](QWidget &dialog) {
            ::mark(dialog, 1000, 2000, {0, 0, 160, 120});
            press(dialog, "btnSave");
        });
        press(*test.fragment(0, 0), "btnCut");
        QCOMPARE(test.text(0, 0, "lblOutRes"), "400x300"_s);
        QCOMPARE(test.text(0, 0, "lblOutDuration"), "00:00:01"_s);
        const GifFile gif = probeGif(test.convert(0, 0));
        QCOMPARE(gif.size, QSize(400, 300));
        QVERIFY2(std::abs(gif.frames - 15) <= 2, qPrintable(QString::number(gif.frames)));
    }

    void highQuality()
    {
        GifPage test;
        test.addSources({m_film});
        QVERIFY(!test.quality()->isChecked());
        test.mark(0, {{1000, 3000, 160}});
        QVERIFY(!test.convert(0, 0).isEmpty());
        test.mark(0, {{1000, 3000, 160}});
        const auto own = [&test](int part) {
            return test.param(0, part).palette == GifPalette::Own;
        };
        QVERIFY(!own(1));
        QTest::mouseClick(test.quality(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(8, test.quality()->height() / 2));
        // What has ended stays as it was told.
        QVERIFY(!own(0));
        QVERIFY(own(1));
        test.mark(0, {{1000, 2000, 160}});
        QVERIFY(own(2));
        QVERIFY(!test.convert(0, 1).isEmpty());
        const auto error = [&](int part) {
            return colourError(test.fragment(0, part)->outputPath(), m_film, "-ss 1 -t 2"_s, 10);
        };
        QVERIFY2(error(1) < error(0) / 2, qPrintable("%1 and %2"_s.arg(error(1)).arg(error(0))));
        QCOMPARE(test.results().size(), 2);
        QVERIFY(GifPage().quality()->isChecked());
    }

    // Also of a picture of which little moves, and so little is in all GIFs' pictures but the
    // first.
    void estimateComesTrue()
    {
        const QString still = media("still.mp4"_s);
        makeMedia("-f lavfi -i mandelbrot=s=320x240 -vf "
                  "trim=end_frame=1,loop=-1:1,fps=25,drawbox=mod(t*40\\,300):20:20:20:red:fill "
                  "-t 6 -pix_fmt yuv420p @"_s,
                  {still});
        for (const QString &film : {m_film, still}) {
            GifPage test;
            test.addSources({film});
            QString told;
            test.edit(0, "MutiGifCutDialog", [&told](QWidget &dialog) {
                ::mark(dialog, 500, 5500);
                spinBox(dialog, "sbW")->setValue(240);
                QTRY_VERIFY_WITH_TIMEOUT(
                    child<QLabel>(dialog, "lblGifBytes")->text().startsWith("约"_s), endLimitMs);
                told = child<QLabel>(dialog, "lblGifBytes")->text();
                press(dialog, "btnFragmentAdd");
                press(dialog, "btnOk");
            });
            const double made = double(QFileInfo(test.convert(0, 0)).size());
            const double estimated =
                told.section(u' ', 1, 1).toDouble() * (told.endsWith("MB"_s) ? 1024 * 1024 : 1024);
            QVERIFY2(made > estimated / 1.5 && made < estimated * 1.5,
                     qPrintable("%1 of %2"_s.arg(made).arg(estimated)));
        }
    }

    void otherSources()
    {
        const auto check = [&](const char *caseName, const QString &file, const QSize &size,
                               int frames) {
            const CaseName inCase(caseName);
            for (const bool quality : {false, true}) {
                FunctionSettings::instance().setValue(FunctionSection::gif,
                                                      FunctionKey::highQuality, quality);
                GifPage test;
                test.addSources({media(file)});
                test.edit(0, "MutiGifCutDialog", [](QWidget &dialog) {
                    spinBox(dialog, "sbSZScale")->setValue(50);
                    press(dialog, "btnFragmentAdd");
                    press(dialog, "btnOk");
                });
                QVERIFY(!test.convert(0, 0).isEmpty());
                QVERIFY(test.fragment(0, 0)->content().remark.isEmpty());
                const GifFile gif = probeGif(test.fragment(0, 0)->outputPath());
                QCOMPARE(gif.size, size);
                QVERIFY2(std::abs(gif.frames - frames) <= 2,
                         qPrintable(QString::number(gif.frames)));
            }
        };
        check("turned by 90", "turned90.mp4"_s, {120, 160}, 60);
        check("turned by 270", "turned270.mp4"_s, {120, 160}, 60);
        check("odd sides and no sound", "odd.mkv"_s, {160, 120}, 40);
        check("one frame", "frame.mp4"_s, {160, 120}, 1);
    }

    void fourHours()
    {
        const QString film = media("four hours.avi"_s);
        makeMedia("-f lavfi -i testsrc2=s=64x48:r=2 -t 14400 -c:v mpeg4 -g 20 @"_s, {film});
        GifPage test;
        test.addSources({film});
        test.mark(0, {{14390000, 14394000, 160, 2}});
        QCOMPARE(test.text(0, 0, "lblInDuration"), "04:00:00"_s);
        QCOMPARE(test.text(0, 0, "lblOutDuration"), "00:00:04"_s);
        const GifFile gif = probeGif(test.convert(0, 0));
        QCOMPARE(gif.size, QSize(160, 120));
        QVERIFY2(std::abs(gif.seconds - 4.0) <= 1.0, qPrintable(QString::number(gif.seconds)));
    }

    void byKeyboardAlone()
    {
        GifPage test;
        test.addSources({m_film});
        const auto key = [](int code) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key(code));
        };
        const auto tabTo = [&key](const QWidget &window, const char *name) {
            QTRY_VERIFY(window.isActiveWindow() && QApplication::focusWidget());
            for (int i = 0; i < 40 && QApplication::focusWidget() != child(window, name); ++i)
                key(Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), child(window, name));
        };
        whenModal("MutiGifCutDialog", [&](QWidget &dialog) {
            QTRY_VERIFY(QApplication::focusWidget());
            key(Qt::Key_Space); // stands still
            key(Qt::Key_Right);
            key(Qt::Key_I);
            key(Qt::Key_Right);
            key(Qt::Key_Right);
            key(Qt::Key_O);
            tabTo(dialog, "sbW");
            spinBox(dialog, "sbW")->selectAll();
            QTest::keyClicks(QApplication::focusWidget(), "200"_s);
            tabTo(dialog, "cbSpeed");
            key(Qt::Key_Down);
            tabTo(dialog, "btnFragmentAdd");
            key(Qt::Key_Space);
            tabTo(dialog, "btnOk");
            key(Qt::Key_Space);
        });
        test.sourceRow(0)->setFocus();
        tabTo(*test.page, "btnAddItem");
        key(Qt::Key_Space);
        QCOMPARE(test.source(0)->childCount(), 1);
        QVERIFY(*test.param(0, 0).timeRange == (TimeSpan{1000, 3000}));
        QCOMPARE(test.param(0, 0).encParam->video->width, 200);
        QCOMPARE(test.param(0, 0).encParam->video->frameRate, 5.0);
        tabTo(*test.page, "chkHighQuality");
        key(Qt::Key_Space);
        QVERIFY(test.quality()->isChecked());
    }

    void noPicture()
    {
        GifPage test;
        test.add({media("song.mp4"_s)});
        QTRY_COMPARE(test.hint(0), "文件中没有画面"_s);
        QVERIFY(!child(*test.sourceRow(0), "btnAddItem")->isEnabled());
    }

private:
    QString m_film = media("假期 100% 'y'.mp4"_s);
};

QTEST_MAIN(TestGifPage)
#include "tst_gifpage.moc"
