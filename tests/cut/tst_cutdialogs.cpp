// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"
#include "controls/interceptslider.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"
#include "MediaKits/MediaInfo/mediainfodata.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "resources/look.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QLineEdit>
#include <QSpinBox>
#include <QTimeEdit>
#include <QtTest>

namespace {

constexpr quint32 mp4AsSource = 1003001;
constexpr int clipMs = 10000;
constexpr QSize pictureSize(320, 240);
constexpr int playerLimitMs = 60000;

QTime at(int ms)
{
    return QTime(0, 0).addMSecs(ms);
}

QTimeEdit *timeEdit(const QWidget &dialog, const char *name)
{
    return child<QTimeEdit>(dialog, name);
}

QSpinBox *spinBox(const QWidget &dialog, const char *name)
{
    return child<QSpinBox>(dialog, name);
}

QRect boxOf(const QWidget &dialog)
{
    return {spinBox(dialog, "sbX")->value(), spinBox(dialog, "sbY")->value(),
            spinBox(dialog, "sbW")->value(), spinBox(dialog, "sbH")->value()};
}

// As the probe of the test clip would tell it.
MediaInfoData clipInfo(double rotate = 0)
{
    MediaInfoData info;
    info.format = QSharedPointer<MediaFormatInfo>::create();
    info.format->duration = clipMs;
    info.video = QSharedPointer<VEncParam>::create();
    info.video->width = pictureSize.width();
    info.video->height = pictureSize.height();
    info.video->frameRate = 25;
    info.video->rotate = rotate;
    return info;
}

// Marks with the fields; an empty box leaves the picture whole.
void mark(const QWidget &dialog, int start, int end, const QRect &box)
{
    timeEdit(dialog, "tedtEnd")->setTime(at(end));
    timeEdit(dialog, "tedtStart")->setTime(at(start));
    if (box.isEmpty())
        return;
    spinBox(dialog, "sbX")->setValue(box.x());
    spinBox(dialog, "sbY")->setValue(box.y());
    spinBox(dialog, "sbW")->setValue(box.width());
    spinBox(dialog, "sbH")->setValue(box.height());
}

// The frame over the preview, in a window of its own.
QWidget *frameOver()
{
    QWidget *overlay = visibleWindow("VideoMask");
    return overlay ? child(*overlay, "chopWidget") : nullptr;
}

// A drag by the left button.
void drag(QWidget *widget, const QPoint &from, const QPoint &distance)
{
    QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, from + distance, widget->mapToGlobal(from + distance),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, from);
}

} // namespace

class TestCutDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void wholeOrPart_data();
    void wholeOrPart();
    void limitsHold();
    void soundAlone();
    void turnedPicture_data();
    void turnedPicture();
    void widePixels();
    void fieldsMoveTheFrame();
    void frameFillsTheFields();
    void fragmentList();
    void keys();
    void escapeAsksBeforeALoss();
    void convertRow();
    void mergeRow();

private:
    QTemporaryDir m_media;
    QString m_film = m_media.filePath(QStringLiteral("film.v1.mp4"));
};

void TestCutDialogs::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    ClipPlan plan;
    plan.seconds = clipMs / 1000.0;
    makeClip(m_film, plan);
}

void TestCutDialogs::wholeOrPart_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<QRect>("box");
    QTest::addColumn<bool>("isCut");
    QTest::addColumn<bool>("isFragmentCut");
    QTest::newRow("untouched") << 0 << clipMs << QRect() << false << false;
    QTest::newRow("499 ms before the end") << 0 << clipMs - 499 << QRect() << false << true;
    QTest::newRow("500 ms before the end") << 0 << clipMs - 500 << QRect() << true << true;
    QTest::newRow("from the first ms on") << 1 << clipMs << QRect() << true << true;
    QTest::newRow("a box") << 0 << clipMs << QRect(10, 20, 101, 201) << false << false;
    QTest::newRow("both") << 2000 << 4500 << QRect(0, 0, 320, 239) << true << true;
}

void TestCutDialogs::wholeOrPart()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(QRect, box);
    QFETCH(bool, isCut);
    QFETCH(bool, isFragmentCut);
    const auto check = [&](const QSharedPointer<TimeSpan> &span,
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
    check(single.settings().timeRange, single.settings().cropRect, isCut);

    // Opened again, it shows what was saved, and saves the same.
    VideoCutDialog again;
    again.showMedium(m_film, clipInfo());
    again.setSettings(single.settings());
    QCOMPARE(boxOf(again), box.isNull() ? QRect(QPoint(0, 0), pictureSize) : box);
    press(again, "btnSave");
    check(again.settings().timeRange, again.settings().cropRect, isCut);

    MutiVideoCutDialog several;
    several.showMedium(m_film, clipInfo());
    mark(several, start, end, box);
    press(several, "btnFragmentAdd");
    press(several, "btnOk");
    QCOMPARE(several.fragments().size(), 1);
    check(several.fragments()[0]->timeRange, several.fragments()[0]->cropRect, isFragmentCut);
}

void TestCutDialogs::limitsHold()
{
    VideoCutDialog dialog;
    dialog.showMedium(m_film, clipInfo());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    mark(dialog, 2000, 6000, {});
    auto *start = timeEdit(dialog, "tedtStart");
    start->setTime(at(8000));
    QCOMPARE(start->time(), at(6000));
    // Nor does a handle pass the other.
    mark(dialog, 2000, 6000, {});
    auto *bar = dialog.findChild<InterceptSlider *>();
    auto *right = child(dialog, "rightslider");
    drag(bar, right->geometry().center(), {-bar->width(), 0});
    QVERIFY(timeEdit(dialog, "tedtEnd")->time() > start->time());
    drag(bar, right->geometry().center(), {-20, 0});
    QVERIFY(timeEdit(dialog, "tedtEnd")->time() < at(6000));
    // No box leaves the picture, and none is empty.
    spinBox(dialog, "sbX")->setValue(100);
    QCOMPARE(spinBox(dialog, "sbW")->value(), pictureSize.width() - 100);
    spinBox(dialog, "sbX")->setValue(5000);
    spinBox(dialog, "sbW")->setValue(0);
    QVERIFY(QRect(QPoint(0, 0), pictureSize).contains(boxOf(dialog)));
    QVERIFY(!boxOf(dialog).isEmpty());
}

void TestCutDialogs::soundAlone()
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

void TestCutDialogs::turnedPicture_data()
{
    QTest::addColumn<double>("rotate");
    QTest::addColumn<QSize>("size");
    QTest::newRow("90") << 90.0 << pictureSize.transposed();
    QTest::newRow("180") << 180.0 << pictureSize;
    QTest::newRow("270") << 270.0 << pictureSize.transposed();
}

void TestCutDialogs::turnedPicture()
{
    QFETCH(double, rotate);
    QFETCH(QSize, size);
    VideoCutDialog dialog;
    dialog.showMedium(m_film, clipInfo(rotate));
    QCOMPARE(boxOf(dialog).size(), size);
    QCOMPARE(dialog.findChild<CSVideoPlayer *>()->videoSize(), size);
}

// Of pixels that aren't square, the numbers count those of the film, and the frame covers what is
// seen there.
void TestCutDialogs::widePixels()
{
    const QString wide = m_media.filePath(QStringLiteral("wide.mp4"));
    QCOMPARE(runTool(QStringLiteral("ffmpeg"),
                     {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), m_film,
                      QStringLiteral("-c"), QStringLiteral("copy"), QStringLiteral("-aspect"),
                      QStringLiteral("16:9"), wide})
                 .exitCode,
             0);
    MAMediaInfo reader(wide, nullptr);
    reader.start();
    VideoCutDialog dialog;
    dialog.showMedium(wide, *reader.mediaInfo());
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
    QVERIFY((frameOver()->geometry().bottomRight() - half.bottomRight()).manhattanLength() <= 3);
    drag(frameOver(), frameOver()->rect().center(), {-picture->width() / 4, 0});
    QVERIFY(qAbs(boxOf(dialog).x() - 80) <= 1);
    QCOMPARE(boxOf(dialog).size(), QSize(160, 60));
}

void TestCutDialogs::fieldsMoveTheFrame()
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
    QTest::keyClicks(x, QStringLiteral("57"));
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
}

void TestCutDialogs::frameFillsTheFields()
{
    VideoCutDialog dialog;
    dialog.showMedium(m_film, clipInfo());
    dialog.setSettings({{}, QSharedPointer<CropBox>::create(CropBox{40, 40, 160, 120})});
    dialog.show();
    QTRY_VERIFY(frameOver());
    QTRY_VERIFY(frameOver()->x() > 0);
    const QPoint place = boxOf(dialog).topLeft();
    drag(frameOver(), frameOver()->rect().center(), {30, 20});
    QVERIFY(boxOf(dialog).x() > place.x() && boxOf(dialog).y() > place.y());
    QCOMPARE(boxOf(dialog).size(), QSize(160, 120));
    drag(frameOver(), frameOver()->rect().bottomRight(), {-50, -30});
    QVERIFY(boxOf(dialog).width() < 160 && boxOf(dialog).height() < 120);
    QCOMPARE(spinBox(dialog, "sbX")->maximum(), boxOf(dialog).right());
    QCOMPARE(spinBox(dialog, "sbW")->maximum(), pictureSize.width() - boxOf(dialog).left());
    const QRect shown = boxOf(dialog);
    press(dialog, "btnSave");
    QVERIFY(*dialog.settings().cropRect ==
            (CropBox{shown.x(), shown.y(), shown.width(), shown.height()}));
    QVERIFY(!visibleWindow("VideoMask"));
}

void TestCutDialogs::fragmentList()
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
    QCOMPARE(child<QLabel>(*row(1), "lblFromTo")->text(), QStringLiteral("00:00:01-00:00:03"));
    QCOMPARE(child<QLabel>(*row(1), "lblCrop")->text(), QStringLiteral("100x50"));
    QCOMPARE(child<ComplexEdit>(*row(1), "ceFileName")->text(),
             QStringLiteral("film.v1(000001-000003)"));
    // A name counts also while its edit is still open; the delete button keeps to its corner.
    press(*row(2), "btnEdit");
    child<QLineEdit>(*row(2), "edtText")->setText(QStringLiteral("a/b"));
    QCOMPARE(row(3)->width() - child(*row(3), "btnDel")->geometry().right() - 1, 8);
    press(*row(3), "btnDel");
    press(dialog, "btnOk");
    QStringList names;
    for (const auto &fragment : dialog.fragments())
        names += fragment->name;
    QCOMPARE(names.join(QLatin1Char('|')), QStringLiteral("film.v1|film.v1(000001-000003)|a_b"));

    for (int i = 0; i < 3; ++i)
        press(*row(0), "btnDel");
    press(dialog, "btnOk");
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(dialog.fragments().isEmpty());
}

void TestCutDialogs::keys()
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
    timeEdit(dialog, "tedtStart")->setTime(at(3000));
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
    QCOMPARE(timeEdit(dialog, "tedtStart")->time(), at(4080));
    spinBox(dialog, "sbX")->clearFocus();
    key(Qt::Key_Left);
    timeEdit(dialog, "tedtEnd")->setFocus();
    key(Qt::Key_Left);
    QCOMPARE(bar->value(), 4080 - 1000);
    key(Qt::Key_O);
    QCOMPARE(timeEdit(dialog, "tedtEnd")->time(), at(3080));
    QCOMPARE(timeEdit(dialog, "tedtStart")->time(), at(0));
    key(Qt::Key_Space);
    QVERIFY(child<QPushButton>(dialog, "btnPlay")->isChecked());
}

void TestCutDialogs::escapeAsksBeforeALoss()
{
    const auto info = clipInfo();
    const CutSettings settings{QSharedPointer<TimeSpan>::create(TimeSpan{1000, 2000}), {}};
    whenModal("VideoCutDialog", [](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QVERIFY(!VideoCutDialog::edit(m_film, info, settings, nullptr));
    QVERIFY(!visibleWindow("MediaMessageBox"));

    int questions = 0;
    whenModal("VideoCutDialog", [&questions](QWidget &dialog) {
        spinBox(dialog, "sbH")->setValue(100);
        for (const char *answer : {"btnCancel", "btnOK"}) {
            whenModal("MediaMessageBox", [&](QWidget &box) {
                ++questions;
                press(box, answer);
            });
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QCOMPARE(dialog.isVisible(), questions == 1);
        }
    });
    QVERIFY(!VideoCutDialog::edit(m_film, info, settings, nullptr));
    QCOMPARE(questions, 2);
}

void TestCutDialogs::convertRow()
{
    PageTest<MediaConvertFunctionPage> test(FunctionSection::converter, mp4AsSource);
    test.add({m_film});
    QTRY_COMPARE(test.list()->count(), 1);
    QTRY_VERIFY(child(*test.row(0), "btnCut")->isEnabled());
    const auto *param = static_cast<ConvertTaskParam *>(test.row(0)->task()->param());
    whenModal("VideoCutDialog", [](QWidget &dialog) {
        mark(dialog, 2000, 5500, {160, 120, 160, 120});
        press(dialog, "btnSave");
    });
    press(*test.row(0), "btnCut");
    QVERIFY(*param->timeRange == (TimeSpan{2000, 5500}));
    QCOMPARE(test.text(0, "lblOutDuration"), QStringLiteral("00:00:03"));
    // Opened again, it shows the cut; cancelled, nothing changes.
    QRect shown;
    whenModal("VideoCutDialog", [&shown](QWidget &dialog) {
        shown = boxOf(dialog);
        timeEdit(dialog, "tedtEnd")->setTime(at(9000));
        press(dialog, "btnCancel");
    });
    press(*test.row(0), "btnCut");
    QCOMPARE(shown, QRect(160, 120, 160, 120));
    QCOMPARE(param->timeRange->end, 5500);
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, playerLimitMs);
    const ProbedFile result = probeMedia(test.row(0)->outputPath());
    QVERIFY(qAbs(result.seconds - 3.5) < 0.1);
}

void TestCutDialogs::mergeRow()
{
    PageTest<MediaMergeFunctionPage> test(FunctionSection::merger, mp4AsSource);
    test.add({m_film});
    QTRY_COMPARE(test.list()->count(), 1);
    QWidget *row = test.rowWidget(0);
    QTRY_VERIFY(child(*row, "btnCutSettting")->isEnabled());
    whenModal("VideoCutDialog", [](QWidget &dialog) {
        mark(dialog, 1000, 3000, {0, 0, 100, 50});
        press(dialog, "btnSave");
    });
    press(*row, "btnCutSettting");
    QCOMPARE(test.text(0, "lblOutFromTo"), QStringLiteral("00:00:01-00:00:03"));
    QCOMPARE(test.text(0, "lblOutSize"), QStringLiteral("100x50"));
}

QTEST_MAIN(TestCutDialogs)
#include "tst_cutdialogs.moc"
