// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"
#include "controls/interceptslider.h"
#include "cut/cutfields.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "support/casename.h"
#include "support/factsof.h"
#include "support/pagetest.h"

#include <QLineEdit>
#include <QtTest>

namespace {

constexpr quint32 mp4AsSource = 1003001;
constexpr int clipMs = 10000;
constexpr QSize pictureSize(320, 240);
constexpr int playerLimitMs = 60000;

// As the probe of the test clip would tell it.
MediaInfoData clipInfo()
{
    MediaInfoData info;
    info.format = QSharedPointer<MediaFormatInfo>::create();
    info.format->duration = clipMs;
    info.video = QSharedPointer<VEncParam>::create();
    info.video->width = pictureSize.width();
    info.video->height = pictureSize.height();
    info.video->frameRate = 25;
    return info;
}

// The frame over the preview, in a window of its own.
QWidget *frameOver()
{
    QWidget *overlay = visibleWindow("VideoMask");
    return overlay ? child(*overlay, "chopWidget") : nullptr;
}

} // namespace

class TestCutDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeClip(m_film, {clipMs / 1000.0});
    }

    void wholeOrPart()
    {
        const auto check = [&](const char *caseName, int start, int end, const QRect &box,
                               bool isCut, bool isFragmentCut) {
            const CaseName inCase(caseName);
            const auto holds = [&](const QSharedPointer<TimeSpan> &span,
                                   const QSharedPointer<CropBox> &crop, bool cuts) {
                QCOMPARE(!span.isNull(), cuts);
                QVERIFY(!cuts || *span == (TimeSpan{start, end}));
                QCOMPARE(crop.isNull(), box.isNull());
                QVERIFY(!crop || QRect(crop->x, crop->y, crop->width, crop->height) == box);
            };
            VideoCutDialog single;
            single.showMedium(m_film, clipInfo());
            mark(single, start, end, box);
            press(single, "btnSave");
            QCOMPARE(single.result(), int(QDialog::Accepted));
            holds(single.settings().timeRange, single.settings().cropRect, isCut);

            // Opened again, it shows what was saved, and saves the same.
            VideoCutDialog again;
            again.showMedium(m_film, clipInfo());
            again.setSettings(single.settings());
            QCOMPARE(boxOf(again), box.isNull() ? QRect(QPoint(0, 0), pictureSize) : box);
            press(again, "btnSave");
            holds(again.settings().timeRange, again.settings().cropRect, isCut);

            MutiVideoCutDialog several;
            several.showMedium(m_film, clipInfo());
            mark(several, start, end, box);
            press(several, "btnFragmentAdd");
            press(several, "btnOk");
            QCOMPARE(several.fragments().size(), 1);
            holds(several.fragments()[0]->timeRange, several.fragments()[0]->cropRect,
                  isFragmentCut);
        };
        check("untouched", 0, clipMs, QRect(), false, false);
        check("499 ms before the end", 0, clipMs - 499, QRect(), false, true);
        check("500 ms before the end", 0, clipMs - 500, QRect(), true, true);
        check("from the first ms on", 1, clipMs, QRect(), true, true);
        check("a box", 0, clipMs, QRect(10, 20, 101, 201), false, false);
        check("both", 2000, 4500, QRect(0, 0, 320, 239), true, true);
    }

    void soundAlone()
    {
        MediaInfoData info = clipInfo();
        info.video.reset();
        VideoCutDialog dialog;
        dialog.showMedium(m_film, info);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QVERIFY(!child(dialog, "wdtChop")->isEnabled());
        QVERIFY(child(dialog, "tedtStart")->isEnabled());
        QVERIFY(!visibleWindow("VideoMask"));
        press(dialog, "btnSave");
        QVERIFY(!dialog.settings().cropRect);
    }

    // Of pixels that aren't square, the numbers count those of the film, and the frame covers what
    // is seen there.
    void widePixels()
    {
        const QString wide = m_media.filePath("wide.mp4"_s);
        makeMedia("-i @ -c copy -aspect 16:9 @"_s, {m_film, wide});
        VideoCutDialog dialog;
        dialog.showMedium(wide, *factsOf(wide));
        QCOMPARE(boxOf(dialog).size(), pictureSize);
        dialog.show();
        QTRY_VERIFY(frameOver());
        const QWidget *picture = frameOver()->parentWidget();
        QTRY_VERIFY(qAbs(picture->width() / double(picture->height()) - 16.0 / 9.0) < 0.02);
        // The right half, the lower quarter.
        mark(dialog, 0, clipMs, {160, 180, 160, 60});
        const QRect half(picture->width() / 2, picture->height() * 3 / 4, picture->width() / 2,
                         picture->height() / 4);
        QVERIFY((frameOver()->geometry().topLeft() - half.topLeft()).manhattanLength() <= 3);
        QVERIFY((frameOver()->geometry().bottomRight() - half.bottomRight()).manhattanLength() <=
                3);
        const QPoint middle = frameOver()->geometry().center();
        dragWidget(frameOver(), middle, {middle - QPoint(picture->width() / 4, 0)});
        QVERIFY(qAbs(boxOf(dialog).x() - 80) <= 1);
        QCOMPARE(boxOf(dialog).size(), QSize(160, 60));
    }

    void fieldsMoveTheFrame()
    {
        VideoCutDialog dialog;
        dialog.showMedium(m_film, clipInfo());
        dialog.show();
        QTRY_VERIFY(frameOver());
        const auto scale = [] { return frameOver()->parentWidget()->width() / 320.0; };
        QTRY_COMPARE(frameOver()->width(), qRound(320 * scale()));
        auto *x = spinBox(dialog, "sbX");
        QSignalSpy changes(x, qOverload<int>(&QSpinBox::valueChanged));
        x->setFocus();
        x->selectAll();
        QTest::keyClicks(x, "57"_s);
        QCOMPARE(changes.count(), 2);
        QCOMPARE(x->value(), 57);
        QVERIFY(qAbs(frameOver()->x() - 57 * scale()) <= 1);
        spinBox(dialog, "sbY")->setValue(31);
        spinBox(dialog, "sbW")->setValue(101);
        spinBox(dialog, "sbH")->setValue(63);
        // Another scale moves the frame, not the numbers.
        const QRect before = frameOver()->geometry();
        dialog.resize(dialog.size() + QSize(150, 151));
        QTRY_VERIFY(frameOver()->width() > before.width());
        QCOMPARE(boxOf(dialog), QRect(57, 31, 101, 63));
        press(dialog, "btnSave");
        QVERIFY(!visibleWindow("VideoMask"));
    }

    void fragmentList()
    {
        MutiVideoCutDialog dialog;
        dialog.showMedium(m_film, clipInfo());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        press(dialog, "btnFragmentAdd");
        mark(dialog, 1000, 3000, {0, 0, 100, 50});
        press(dialog, "btnFragmentAdd");
        press(dialog, "btnFragmentAdd");
        mark(dialog, 4000, 5000, {});
        press(dialog, "btnFragmentAdd");
        auto *list = child<QListWidget>(dialog, "listWidget");
        QCOMPARE(list->count(), 4);
        const auto row = [list](int index) { return list->itemWidget(list->item(index)); };
        QCOMPARE(child<QLabel>(*row(0), "lblFromTo")->text(), QString());
        QCOMPARE(child<QLabel>(*row(1), "lblFromTo")->text(), "00:00:01-00:00:03"_s);
        QCOMPARE(child<QLabel>(*row(1), "lblCrop")->text(), "100x50"_s);
        QCOMPARE(child<ComplexEdit>(*row(1), "ceFileName")->text(), "film.v1(000001-000003)"_s);
        // A name counts also while its edit is still open; the delete button keeps to its corner.
        press(*row(2), "btnEdit");
        child<QLineEdit>(*row(2), "edtText")->setText("a/b"_s);
        QCOMPARE(row(3)->width() - child(*row(3), "btnDel")->geometry().right() - 1, 8);
        press(*row(3), "btnDel");
        press(dialog, "btnOk");
        QStringList names;
        for (const auto &fragment : dialog.fragments())
            names += fragment->name;
        QCOMPARE(names.join(u'|'), "film.v1|film.v1(000001-000003)|a_b"_s);

        for (int i = 0; i < 3; ++i)
            press(*row(0), "btnDel");
        press(dialog, "btnOk");
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(dialog.fragments().isEmpty());
    }

    void keys()
    {
        VideoCutDialog dialog;
        dialog.showMedium(m_film, clipInfo());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto *bar = dialog.findChild<InterceptSlider *>();
        QTRY_VERIFY_WITH_TIMEOUT(bar->value() > 0, playerLimitMs);
        const auto key = [](int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key(code), modifiers);
        };
        key(Qt::Key_Space);
        QVERIFY(!child<QPushButton>(dialog, "btnPlay")->isChecked());
        setTime(dialog, "tedtStart", 3000);
        key(Qt::Key_Right);
        key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(bar->value(), 4040);
        // Frames stay told apart although the player tells seconds only.
        CSVideoPlayer *player = dialog.findChild<CSVideoPlayer *>();
        emit player->progressChanged(4000, clipMs, 40);
        key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(bar->value(), 4080);
        spinBox(dialog, "sbX")->setFocus();
        key(Qt::Key_I);
        QCOMPARE(timeOf(dialog, "tedtStart"), 4080);
        spinBox(dialog, "sbX")->clearFocus();
        key(Qt::Key_Left);
        timeEdit(dialog, "tedtEnd")->setFocus();
        key(Qt::Key_Left);
        QCOMPARE(bar->value(), 4080 - 1000);
        key(Qt::Key_O);
        QCOMPARE(timeOf(dialog, "tedtEnd"), 3080);
        QCOMPARE(timeOf(dialog, "tedtStart"), 0);
        key(Qt::Key_Space);
        QVERIFY(child<QPushButton>(dialog, "btnPlay")->isChecked());
    }

    void escapeAsksBeforeALoss()
    {
        const auto info = clipInfo();
        const CutSettings settings{QSharedPointer<TimeSpan>::create(TimeSpan{1000, 2000}), {}};
        whenModal("VideoCutDialog",
                  [](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QVERIFY(!VideoCutDialog::edit(m_film, info, settings, nullptr));
        QVERIFY(!visibleWindow("MediaMessageBox"));

        int questions = 0;
        whenModal("VideoCutDialog", [&questions](QWidget &dialog) {
            spinBox(dialog, "sbH")->setValue(100);
            for (const char *answer : {"btnCancel", "btnOK"}) {
                const auto escape = [&] { QTest::keyClick(&dialog, Qt::Key_Escape); };
                questions += askedBy(escape, answer).isEmpty() ? 0 : 1;
                QCOMPARE(dialog.isVisible(), questions == 1);
            }
        });
        QVERIFY(!VideoCutDialog::edit(m_film, info, settings, nullptr));
        QCOMPARE(questions, 2);
    }

    void convertRow()
    {
        PageTest<MediaConvertFunctionPage> test(FunctionSection::converter, mp4AsSource);
        test.addRows({m_film}, "btnCut");
        const ConvertTaskParam &param = test.param(0);
        whenModal("VideoCutDialog", [](QWidget &dialog) {
            mark(dialog, 2000, 5500, {160, 120, 160, 120});
            press(dialog, "btnSave");
        });
        press(*test.row(0), "btnCut");
        QVERIFY(*param.timeRange == (TimeSpan{2000, 5500}));
        QCOMPARE(test.text(0, "lblOutDuration"), "00:00:03"_s);
        // Opened again, it shows the cut; cancelled, nothing changes.
        QRect shown;
        whenModal("VideoCutDialog", [&shown](QWidget &dialog) {
            shown = boxOf(dialog);
            setTime(dialog, "tedtEnd", 9000);
            press(dialog, "btnCancel");
        });
        press(*test.row(0), "btnCut");
        QCOMPARE(shown, QRect(160, 120, 160, 120));
        QCOMPARE(param.timeRange->end, 5500);
    }

    void mergeRow()
    {
        PageTest<MediaMergeFunctionPage> test(FunctionSection::merger, mp4AsSource);
        test.addRows({m_film});
        QWidget *row = test.rowWidget(0);
        QTRY_VERIFY(child(*row, "btnCutSettting")->isEnabled());
        whenModal("VideoCutDialog", [](QWidget &dialog) {
            mark(dialog, 1000, 3000, {0, 0, 100, 50});
            press(dialog, "btnSave");
        });
        press(*row, "btnCutSettting");
        QCOMPARE(test.text(0, "lblOutFromTo"), "00:00:01-00:00:03"_s);
        QCOMPARE(test.text(0, "lblOutSize"), "100x50"_s);
    }

private:
    QTemporaryDir m_media;
    QString m_film = m_media.filePath("film.v1.mp4"_s);
};

QTEST_MAIN(TestCutDialogs)
#include "tst_cutdialogs.moc"
