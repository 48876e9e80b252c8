// SPDX-License-Identifier: MIT
#include "controls/elidedlabel.h"
#include "controls/interceptslider.h"
#include "cut/cutfields.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/FunctionPage/VideoGif/mutigifcutdialog.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "support/casename.h"
#include "support/mediatest.h"
#include "support/pagetest.h"

#include <QComboBox>
#include <QtTest>

namespace {

constexpr int clipMs = 4000;
constexpr int estimateLimitMs = 60000;

MediaInfoData infoOf(const QSize &size, int ms = clipMs, double pixelAspect = 1.0)
{
    MediaInfoData info;
    info.format = QSharedPointer<MediaFormatInfo>::create();
    info.format->duration = ms;
    info.video = QSharedPointer<VEncParam>::create();
    info.video->width = size.width();
    info.video->height = size.height();
    info.video->frameRate = 25;
    info.video->pixelAspect = pixelAspect;
    return info;
}

QSize boxes(const QWidget &dialog)
{
    return {spinBox(dialog, "sbW")->value(), spinBox(dialog, "sbH")->value()};
}

QString shown(const QWidget &dialog, const char *label)
{
    return child<QLabel>(dialog, label)->text();
}

QString hint(const QWidget &dialog)
{
    return child<ElidedLabel>(dialog, "lblHint")->fullText();
}

// Work folders of estimates, whose names are plain ids.
QString sampleRoot()
{
    return tempDir() + "/~~MRVN_Temp~~"_s;
}

QStringList sampleFolders()
{
    return entriesOf(sampleRoot());
}

} // namespace

class TestGifDialog : public MediaTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia("-f lavfi -i testsrc2=s=320x240:r=25:d=4 -pix_fmt yuv420p @"_s, {m_film});
        // Slow to convert, with a picture that is hard to code.
        makeMedia(
            "-f lavfi -i mandelbrot=s=480x270:r=25 -vf scale=1920:1080 -t 4 -c:v mpeg4 -q:v 2 @"_s,
            {m_large});
    }

    void cleanup()
    {
        QTRY_VERIFY(!isAnyToolAtWork());
        QTRY_COMPARE(sampleFolders(), QStringList());
    }

    void sizesFollowEachOther()
    {
        MutiGifCutDialog dialog;
        dialog.showMedium(m_film, infoOf({320, 240}));
        QCOMPARE(boxes(dialog), QSize(320, 240));
        const auto *player = dialog.findChild<CSVideoPlayer *>();
        const auto set = [&](const char *box, int value, const QSize &size, int percent) {
            const CaseName inCase(box);
            spinBox(dialog, box)->setValue(value);
            QCOMPARE(boxes(dialog), size);
            QCOMPARE(spinBox(dialog, "sbSZScale")->value(), percent);
        };
        set("sbW", 401, {401, 300}, 125);
        QCOMPARE(player->scale(), 401 / 320.0);
        set("sbH", 100, {133, 100}, 41);
        set("sbSZScale", 33, {105, 79}, 33);
        QCOMPARE(player->scale(), 0.33);
        set("sbSZScale", 100, {320, 240}, 100);
        // Beyond a box's range it holds the other end; the picture's proportions are gone then.
        QVERIFY(hint(dialog).isEmpty());
        set("sbSZScale", 500, {1600, 1200}, 500);
        set("sbW", 4000, {4000, 3000}, 500);
        set("sbW", 10, {10, 10}, 10);
        QVERIFY(hint(dialog).contains("10"_s));
        set("sbW", 320, {320, 240}, 100);
        QVERIFY(hint(dialog).isEmpty());
        // Only the surface has changed.
        QCOMPARE(dialog.findChild<InterceptSlider *>()->value(), 0);
    }

    void tallPictures()
    {
        MutiGifCutDialog dialog;
        dialog.showMedium(m_film, infoOf({1000, 2000}));
        spinBox(dialog, "sbW")->setValue(4000);
        QCOMPARE(boxes(dialog), QSize(4000, 4000));
        QVERIFY(hint(dialog).contains("4000"_s));
        // More than the boxes can show is no size that was chosen.
        dialog.showMedium(m_film, infoOf({7680, 4320}));
        QCOMPARE(shown(dialog, "lblGifSize"), "240x160（预设大小，留黑边）"_s);
        spinBox(dialog, "sbSZScale")->setValue(50);
        QCOMPARE(shown(dialog, "lblGifSize"), "3840x2160"_s);
        // Wide pixels become square ones.
        dialog.showMedium(m_film, infoOf({720, 576}, clipMs, 16.0 / 15.0));
        QCOMPARE(boxes(dialog), QSize(768, 576));
        MediaInfoData turned = infoOf({1920, 1080});
        turned.video->rotate = 270;
        dialog.showMedium(m_film, turned);
        QCOMPARE(boxes(dialog), QSize(1080, 1920));
    }

    // What stands there is what the file will have.
    void tellsTheSize()
    {
        MutiGifCutDialog dialog;
        dialog.showMedium(m_film, infoOf({320, 240}));
        QCOMPARE(shown(dialog, "lblGifSize"), "240x160（预设大小，留黑边）"_s);
        spinBox(dialog, "sbW")->setValue(401);
        QCOMPARE(shown(dialog, "lblGifSize"), "400x300"_s);
        dialog.showMedium(m_film, infoOf({720, 480}));
        QCOMPARE(shown(dialog, "lblGifSize"), "240x160（预设大小）"_s);
    }

    void fragmentsKeepWhatTheyWereAddedWith()
    {
        MutiGifCutDialog dialog;
        dialog.showMedium(m_film, infoOf({320, 240}));
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto *speed = child<QComboBox>(dialog, "cbSpeed");
        QCOMPARE(speed->currentText(), "中"_s);
        press(dialog, "btnClr");
        press(dialog, "btnFragmentAdd");
        mark(dialog, 1000, 3000);
        spinBox(dialog, "sbW")->setValue(400);
        speed->setCurrentIndex(0);
        press(dialog, "btnFragmentAdd");
        spinBox(dialog, "sbSZScale")->setValue(100);
        speed->setCurrentIndex(2);
        press(dialog, "btnFragmentAdd");
        spinBox(dialog, "sbSZScale")->setValue(50);
        auto *list = child<QListWidget>(dialog, "listWidget");
        const auto row = [list](int index) { return list->itemWidget(list->item(index)); };
        QCOMPARE(shown(*row(0), "lblFromTo") + shown(*row(0), "lblCrop"), QString());
        QCOMPARE(shown(*row(1), "lblFromTo"), "00:00:01-00:00:03"_s);
        QCOMPARE(shown(*row(1), "lblCrop"), "400x300"_s);
        QCOMPARE(shown(*row(2), "lblCrop"), QString());
        press(dialog, "btnOk");
        const auto fragments = dialog.fragments();
        QCOMPARE(fragments.size(), 3);
        QCOMPARE(fragments[0]->name, "film.v1"_s);
        QVERIFY(!fragments[0]->timeRange && !fragments[0]->size);
        QCOMPARE(fragments[0]->frameRate, 10);
        QCOMPARE(fragments[1]->name, "film.v1(000001-000003)"_s);
        QVERIFY(*fragments[1]->timeRange == (TimeSpan{1000, 3000}));
        QCOMPARE(*fragments[1]->size, QSize(400, 300));
        QCOMPARE(fragments[1]->frameRate, 15);
        QVERIFY(fragments[2]->timeRange && !fragments[2]->size);
        QCOMPARE(fragments[2]->frameRate, 5);
        press(dialog, "btnClr");
        press(dialog, "btnOk");
        QVERIFY(dialog.fragments().isEmpty());
    }

    void changesAreNotLostUnasked()
    {
        const auto check = [this](const char *caseName, const auto &change, bool asks) {
            const CaseName inCase(caseName);
            MutiGifCutDialog dialog;
            dialog.showMedium(m_film, infoOf({320, 240}));
            dialog.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            change(dialog);
            const auto escape = [&dialog] { QTest::keyClick(&dialog, Qt::Key_Escape); };
            if (asks)
                QVERIFY(!askedBy(escape, "btnOK").isEmpty());
            else
                escape();
            QVERIFY(!dialog.isVisible());
        };
        check(
            "nothing", [](QWidget &) {}, false);
        check(
            "size", [](QWidget &dialog) { spinBox(dialog, "sbH")->setValue(100); }, true);
        check(
            "speed",
            [](QWidget &dialog) { child<QComboBox>(dialog, "cbSpeed")->setCurrentIndex(2); }, true);
    }

    // Of a film that ends long before its header says, there is nothing to convert.
    void noEstimate()
    {
        MutiGifCutDialog dialog;
        dialog.showMedium(m_film, infoOf({320, 240}, 3600 * clipMs));
        QTRY_COMPARE_WITH_TIMEOUT(shown(dialog, "lblGifBytes"), "无法估算"_s, estimateLimitMs);
    }

    // A second tells nothing of a whole whose length isn't known; nothing is converted in vain.
    void noLength()
    {
        MutiGifCutDialog dialog;
        dialog.showMedium(m_film, infoOf({320, 240}, 0));
        QTRY_COMPARE_WITH_TIMEOUT(shown(dialog, "lblGifBytes"), "无法估算"_s, estimateLimitMs);
        QCOMPARE(sampleFolders(), QStringList());
    }

    void warnsOfLargeFiles()
    {
        MutiGifCutDialog dialog;
        dialog.showMedium(m_large, infoOf({1920, 1080}));
        spinBox(dialog, "sbW")->setValue(1900);
        child<QComboBox>(dialog, "cbSpeed")->setCurrentIndex(0);
        QTRY_VERIFY_WITH_TIMEOUT(shown(dialog, "lblGifBytes").contains("超过 20 MB"_s),
                                 estimateLimitMs);
    }

    // Whatever the way out, neither a conversion nor a folder stays.
    void leavesNothingBehind()
    {
        for (const char *way : {"btnCancel", "btnOk", "change"}) {
            const CaseName inCase(way);
            auto dialog = std::make_unique<MutiGifCutDialog>();
            dialog->showMedium(m_large, infoOf({1920, 1080}));
            dialog->show();
            const auto conversions = [] { return processesWith(sampleRoot()); };
            QTRY_VERIFY_WITH_TIMEOUT(!conversions().isEmpty(), estimateLimitMs);
            if (QLatin1String(way) == "change"_s) {
                spinBox(*dialog, "sbW")->setValue(3000);
                QTRY_VERIFY(conversions().isEmpty());
                QTRY_VERIFY_WITH_TIMEOUT(!conversions().isEmpty(), estimateLimitMs);
            } else {
                press(*dialog, way);
            }
            dialog.reset();
            QTRY_VERIFY(conversions().isEmpty());
            QTRY_COMPARE(sampleFolders(), QStringList());
        }
    }

    void noPicture()
    {
        MediaInfoData info = infoOf({0, 0});
        info.video.reset();
        MutiGifCutDialog dialog;
        dialog.showMedium(m_film, info);
        QVERIFY(!spinBox(dialog, "sbW")->isEnabled());
        press(dialog, "btnFragmentAdd");
        press(dialog, "btnOk");
        QVERIFY(!dialog.fragments().value(0)->size);
    }

private:
    QString m_film = media("film.v1.mp4"_s);
    QString m_large = media("large.avi"_s);
};

QTEST_MAIN(TestGifDialog)
#include "tst_gifdialog.moc"
