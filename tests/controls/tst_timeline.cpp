// SPDX-License-Identifier: MIT
#include "controls/aslider.h"
#include "controls/interceptslider.h"
#include "controls/progresswidget.h"
#include "controls/ruler.h"
#include "pointer.h"
#include "resources/look.h"
#include "support/casename.h"

#include <QLabel>
#include <QSignalSpy>

namespace {

// The groove is 200 pixels wide and begins at 6: a pixel is 100 units.
struct TimeLine
{
    TimeLine()
    {
        slider.setOrientation(Qt::Horizontal);
        slider.setObjectName("scrubBar"_s);
        slider.setParent(&window);
        slider.setGeometry(20, 20, 212, 24);
        slider.setRange(0, 20000);
        slider.setLeftValue(5000);
        slider.setRightValue(15000);
        window.resize(300, 100);
        window.show();
    }
    QLabel *handle(const char *name) const
    {
        return slider.findChild<QLabel *>(QLatin1String(name));
    }
    QLabel *left() const { return handle("leftslider"); }
    QLabel *right() const { return handle("rightslider"); }

    QWidget window;
    InterceptSlider slider;
};

QColor pixel(QWidget &widget, int x, int y)
{
    return widget.grab().toImage().pixelColor(x, y);
}

} // namespace

class TestTimeLine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(Look::apply()); }

    void handlesStandAtTheirValues()
    {
        TimeLine line;
        QVERIFY(QTest::qWaitForWindowExposed(&line.window));
        // The groove's middle is at 4; half a handle up and the style sheet's shift down.
        QCOMPARE(line.left()->geometry(), QRect(6 + 50 - 6, 7, 6, 14));
        QCOMPARE(line.right()->geometry(), QRect(6 + 150, 7, 6, 14));
        QSignalSpy moved(&line.slider, &InterceptSlider::leftValueChanged);
        line.slider.setLeftValue(99999);
        line.slider.setRightValue(-1);
        QCOMPARE(line.slider.leftValue(), 20000);
        QCOMPARE(line.slider.rightValue(), 0);
        QCOMPARE(moved.count(), 0);
        line.slider.setRange(0, 0);
        line.slider.setLeftValue(7);
        QCOMPARE(line.left()->x() + line.left()->width(), 6);
    }

    void handlesFollowTheTimeLine()
    {
        TimeLine line;
        QVERIFY(QTest::qWaitForWindowExposed(&line.window));
        line.slider.resize(412, 24);
        QCOMPARE(line.left()->geometry().right() + 1, 6 + 100);
        QCOMPARE(line.right()->x(), 6 + 300);
        line.slider.setMaximum(40000);
        QCOMPARE(line.right()->x(), 6 + 150);
        Pointer pointer(&line.slider);
        pointer.press(line.right()->geometry().center());
        pointer.moveBy(10);
        pointer.release();
        QCOMPARE(line.slider.rightValue(), 16000);
    }

    void bandAndPlayHead()
    {
        TimeLine line;
        QVERIFY(QTest::qWaitForWindowExposed(&line.window));
        line.slider.setValue(10000);
        line.slider.setRangeVisible(false, true);
        QVERIFY(!line.left()->isVisible());
        QCOMPARE(pixel(line.slider, 6 + 50, 4), QColor(0x33, 0xBB, 0xFF));
        QCOMPARE(pixel(line.slider, 6 + 49, 4), QColor(0xE0, 0xE0, 0xE0));
        QCOMPARE(pixel(line.slider, 6 + 149, 4), QColor(0x33, 0xBB, 0xFF));
        QCOMPARE(pixel(line.slider, 6 + 150, 4), QColor(0xE0, 0xE0, 0xE0));
        QCOMPARE(pixel(line.slider, 6 + 100, 4), QColor(0x00, 0x88, 0xFF));
        line.slider.setRangeVisible(true, false);
        QCOMPARE(pixel(line.slider, 6 + 50, 4), QColor(0xE0, 0xE0, 0xE0));
    }

    void dragOfAHandle()
    {
        const auto check = [&](const char *caseName, bool isLeft, const QVector<int> &moves,
                               int value) {
            const CaseName inCase(caseName);
            TimeLine line;
            QVERIFY(QTest::qWaitForWindowExposed(&line.window));
            QSignalSpy playHead(&line.slider, &QSlider::sliderMoved);
            QSignalSpy pressed(&line.slider, &QSlider::sliderPressed);
            QSignalSpy left(&line.slider, &InterceptSlider::leftValueChanged);
            QSignalSpy right(&line.slider, &InterceptSlider::rightValueChanged);
            Pointer pointer(&line.slider);
            pointer.press((isLeft ? line.left() : line.right())->geometry().center());
            QCOMPARE(left.count() + right.count(), 0);
            for (const int distance : moves)
                pointer.moveBy(distance, 3);
            pointer.release();
            QCOMPARE(isLeft ? line.slider.leftValue() : line.slider.rightValue(), value);
            QCOMPARE((isLeft ? left : right).last().first().toInt(), value);
            QCOMPARE((isLeft ? right : left).count(), 0);
            QCOMPARE(line.slider.value(), 0);
            QCOMPARE(playHead.count() + pressed.count(), 0);
            pointer.moveBy(isLeft ? -1 : 1);
            QCOMPARE(isLeft ? line.slider.leftValue() : line.slider.rightValue(), value);
        };
        check("left", true, QVector<int>{30, -10}, 7000);
        check("right", false, QVector<int>{-30, 10}, 13000);
        check("left touches", true, QVector<int>{100}, 15000);
        check("left doesn't cross", true, QVector<int>{90, 11}, 14000);
        check("right touches", false, QVector<int>{-100}, 5000);
        check("right doesn't cross", false, QVector<int>{-90, -11}, 6000);
        check("left, no lag", true, QVector<int>{-50, -300, 20}, 2000);
        check("right, no lag", false, QVector<int>{50, 300, -20}, 18000);
    }

    void clickOnTheGrooveMovesThePlayHead()
    {
        TimeLine line;
        QVERIFY(QTest::qWaitForWindowExposed(&line.window));
        QSignalSpy moved(&line.slider, &QSlider::sliderMoved);
        QSignalSpy released(&line.slider, &QSlider::sliderReleased);
        Pointer pointer(&line.slider);
        pointer.press({6 + 20, 4});
        QCOMPARE(line.slider.value(), 2000);
        QCOMPARE(moved.first().first().toInt(), 2000);
        QVERIFY(line.slider.isSliderDown());
        pointer.moveBy(97);
        QVERIFY(line.slider.value() > 10000);
        pointer.release();
        QCOMPARE(released.count(), 1);
        QCOMPARE(line.slider.leftValue(), 5000);
        // Hidden handles are no obstacle.
        line.slider.setRangeVisible(false, true);
        pointer.press({6 + 48, 10});
        pointer.release();
        QCOMPARE(line.slider.value(), 4800);
    }

    void aSliderJumps()
    {
        for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
            const bool isHorizontal = orientation == Qt::Horizontal;
            ASlider slider(orientation);
            slider.setRange(0, 200);
            slider.setFixedSize(isHorizontal ? QSize(200, 24) : QSize(24, 200));
            slider.show();
            QVERIFY(QTest::qWaitForWindowExposed(&slider));
            Pointer pointer(&slider);
            pointer.press(isHorizontal ? QPoint(150, 10) : QPoint(10, 50));
            QVERIFY2(qAbs(slider.value() - 150) <= 2, qPrintable(QString::number(slider.value())));
            pointer.moveBy(isHorizontal ? -20 : 0, isHorizontal ? 0 : 20);
            QVERIFY(slider.value() < 140);
            pointer.release();
        }
    }

    void rowProgress()
    {
        const auto check = [&](const char *caseName, int value, bool flat, int light, int accent) {
            const CaseName inCase(caseName);
            ProgressWidget row;
            row.resize(200, 40);
            row.setValue(value);
            row.setFlat(flat);
            const QImage image = row.grab().toImage();
            int filled = 0;
            int lit = 0;
            for (int x = 0; x < image.width(); ++x) {
                filled += image.pixelColor(x, 10) == QColor(0xF5, 0xFA, 0xFF) ? 1 : 0;
                lit += image.pixelColor(x, 36).saturation() > 200 ? 1 : 0;
            }
            QCOMPARE(filled, light);
            QVERIFY2(qAbs(lit - accent) <= 1, qPrintable(QString::number(lit)));
        };
        check("nothing", -1, false, 0, 0);
        check("zero", 0, false, 0, 2);
        check("half", 2500, false, 100, 101);
        check("all", 5000, false, 200, 200);
        check("flat", 2500, true, 100, 0);
        check("flat, too narrow", 100, true, 0, 0);
    }

    void rulerCentresItsNumbers()
    {
        Ruler ruler;
        ruler.resize(232, 20);
        ruler.setMinimum(10);
        ruler.setMaximum(10);
        const QImage empty = ruler.grab().toImage();
        ruler.setMaximum(90);
        ruler.setStep(40);
        ruler.setSuffix("%"_s);
        const QImage image = ruler.grab().toImage();
        // Marks at 16, 116 and 216: text around each, none between.
        const auto hasText = [&](int from, int to) {
            const QRect part(from, 0, to - from, 20);
            return image.copy(part) != empty.copy(part);
        };
        for (const int mark : {16, 116, 216})
            QVERIFY(hasText(mark - 12, mark) && hasText(mark, mark + 12));
        QVERIFY(!hasText(40, 92) && !hasText(140, 192));
    }
};

QTEST_MAIN(TestTimeLine)
#include "tst_timeline.moc"
