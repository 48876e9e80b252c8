// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/camerapreviewwnd.h"
#include "MediaKits/FunctionPage/ScreenRecord/countdownwnd.h"
#include "MediaKits/FunctionPage/ScreenRecord/windowcapwidget.h"
#include "platform/screensize.h"
#include "resources/look.h"
#include "support/casename.h"
#include "support/desktop.h"
#include "support/guisupport.h"

#include <QSignalSpy>
#include <QtTest>

// What is picked on the overlay by a real mouse, in native pixels, also on an enlarged desktop
// (QT_SCALE_FACTOR) and without a compositor.
class TestWindowCap : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void areaIsDragged();
    void clickTakesTheWindow();
    void slipOfTheHandTakesNothing();
    void escapeAndRightButtonEnd();
    void frameLiesOutside();
    void whatIsBelowStaysVisible();
    void countdown();
    void cameraWindow();

private:
    void pickArea();
    static QImage screen() { return Desktop::seen({QPoint(), screenSizeInPixels()}); }
    static QColor colourAt(const QImage &picture, const QPoint &native)
    {
        return picture.pixelColor(native);
    }

    std::unique_ptr<QWidget> m_window; // of another program, for the overlay
    QRect m_windowArea;                // native pixels
    std::unique_ptr<WindowCapWidget> m_overlay;
    std::unique_ptr<QSignalSpy> m_picked;
    std::unique_ptr<QSignalSpy> m_canceled;
};

void TestWindowCap::initTestCase()
{
    QVERIFY(Look::apply());
}

void TestWindowCap::init()
{
    m_window = std::make_unique<QWidget>();
    m_window->setStyleSheet("background: #00C060"_s);
    const double scale = m_window->devicePixelRatioF();
    m_window->setGeometry(QRect((QPointF(600, 400) / scale).toPoint(), QSize(300, 200) / scale));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    const QPoint middle = m_window->geometry().center() * scale;
    QTRY_VERIFY(Desktop::isLike(Desktop::seenAt(middle), "#00C060"));
    m_windowArea = {m_window->mapToGlobal(QPoint()) * scale, m_window->size() * scale};
    m_overlay = std::make_unique<WindowCapWidget>();
    m_overlay->setAttribute(Qt::WA_DeleteOnClose, false);
    m_picked = std::make_unique<QSignalSpy>(m_overlay.get(), &WindowCapWidget::editFinish);
    m_canceled = std::make_unique<QSignalSpy>(m_overlay.get(), &WindowCapWidget::canceled);
    Desktop::pointTo({5, 5});
}

void TestWindowCap::cleanup()
{
    m_overlay.reset();
    m_window.reset();
}

void TestWindowCap::pickArea()
{
    m_overlay->pickArea();
    QVERIFY(QTest::qWaitForWindowExposed(m_overlay.get()));
    // The whole desktop is darker: its lower right corner, too.
    QTRY_COMPARE(m_overlay->size() * m_overlay->devicePixelRatioF(), screenSizeInPixels());
}

void TestWindowCap::areaIsDragged()
{
    pickArea();
    Desktop::drag({100, 120}, {400, 320});
    QTRY_COMPARE(m_picked->size(), 1);
    const QRect picked = m_overlay->selectedRect();
    const int pixel = qCeil(m_overlay->devicePixelRatioF());
    QCOMPARE(picked.topLeft(), QPoint(100, 120));
    QVERIFY(qAbs(picked.width() - 300) <= pixel && qAbs(picked.height() - 200) <= pixel);

    // Backwards, and over the whole desktop.
    pickArea();
    Desktop::drag(QPoint(-1, -1) +
                      QPoint(screenSizeInPixels().width(), screenSizeInPixels().height()),
                  {0, 0});
    QTRY_COMPARE(m_picked->size(), 2);
    QCOMPARE(m_overlay->selectedRect(), QRect(QPoint(), screenSizeInPixels()));
}

void TestWindowCap::clickTakesTheWindow()
{
    pickArea();
    Desktop::click(m_windowArea.center());
    QTRY_COMPARE(m_picked->size(), 1);
    QCOMPARE(m_overlay->selectedRect(), m_windowArea);

    m_overlay->pickWindow();
    QVERIFY(QTest::qWaitForWindowExposed(m_overlay.get()));
    Desktop::pointTo({950, 700});
    Desktop::click(m_windowArea.topLeft() + QPoint(3, 3));
    QTRY_COMPARE(m_picked->size(), 2);
    QCOMPARE(m_overlay->selectedWindow(), m_window->winId());
    QCOMPARE(m_overlay->cursor().shape(), Qt::ArrowCursor);
    m_overlay->setOverlayState(WindowCapWidget::WindowHeld);
    QVERIFY(!m_overlay->isVisible());
}

void TestWindowCap::slipOfTheHandTakesNothing()
{
    pickArea();
    Desktop::drag({100, 100}, {160, 102});
    Desktop::drag({300, 300}, {340, 340});
    QTRY_COMPARE(m_picked->size(), 1);
    QCOMPARE(m_overlay->selectedRect().topLeft(), QPoint(300, 300));
}

void TestWindowCap::escapeAndRightButtonEnd()
{
    pickArea();
    Desktop::key("Escape");
    QTRY_COMPARE(m_canceled->size(), 1);
    QVERIFY(!m_overlay->isVisible());
    // The key is everybody's again.
    Desktop::key("Escape");
    m_overlay->pickWindow();
    QVERIFY(QTest::qWaitForWindowExposed(m_overlay.get()));
    QCOMPARE(QProcess::execute("xdotool"_s, {"mousemove"_s, "700"_s, "500"_s, "click"_s, "3"_s}),
             0);
    QTRY_COMPARE(m_canceled->size(), 2);
    QVERIFY(m_picked->isEmpty());
}

void TestWindowCap::frameLiesOutside()
{
    pickArea();
    Desktop::drag({200, 200}, {440, 380});
    QTRY_COMPARE(m_picked->size(), 1);
    const QRect area = m_overlay->selectedRect();
    const int scale = int(m_overlay->devicePixelRatioF());
    const std::pair<int, const char *> states[] = {{WindowCapWidget::AreaRecorded, "#0064CC"},
                                                   {WindowCapWidget::AreaHeld, "#F53F31"}};
    for (const auto &[state, name] : states) {
        const CaseName inCase(name);
        const QColor colour{QLatin1String(name)};
        m_overlay->setOverlayState(state);
        const QPoint left(area.left() - 2 * scale, area.center().y());
        QTRY_VERIFY(Desktop::isLike(colourAt(screen(), left), colour));
        const QImage seen = screen();
        const QColor plain = seen.pixelColor(950, 700);
        for (const QPoint &point : {QPoint(area.right() + 2 * scale + 1, area.center().y()),
                                    QPoint(area.center().x(), area.top() - 2 * scale),
                                    QPoint(area.center().x(), area.bottom() + 2 * scale + 1)})
            QVERIFY(Desktop::isLike(seen.pixelColor(point), colour));
        for (const QPoint &point : {area.topLeft(), area.bottomRight(), area.center()})
            QCOMPARE(seen.pixelColor(point), plain);
    }
    // The mouse reaches what lies below.
    Desktop::click(m_windowArea.center());
    QTRY_VERIFY(m_window->isActiveWindow());
    QCOMPARE(m_picked->size(), 1);
}

void TestWindowCap::whatIsBelowStaysVisible()
{
    pickArea();
    const QColor green("#00C060");
    const QPoint inside = m_windowArea.topLeft() + QPoint(20, 20);
    Desktop::pointTo({950, 700});
    // Under the pointer lies the desktop, which is selected as a whole.
    QTRY_VERIFY(Desktop::isLike(colourAt(screen(), inside), green));
    Desktop::pointTo(m_windowArea.center());
    const int scale = int(m_overlay->devicePixelRatioF());
    QTRY_VERIFY(Desktop::isLike(colourAt(screen(), m_windowArea.topLeft() + QPoint(-2 * scale, 20)),
                                "#0088FF"));
    QVERIFY(Desktop::isLike(colourAt(screen(), inside), green));
    // From elsewhere the window is seen through the shade.
    QCOMPARE(QProcess::execute("xdotool"_s, {"mousemove"_s, "100"_s, "800"_s, "mousedown"_s, "1"_s,
                                             "mousemove"_s, "200"_s, "900"_s}),
             0);
    QTRY_VERIFY(Desktop::isLike(colourAt(screen(), inside), QColor(0, 120, 60)));
    QCOMPARE(QProcess::execute("xdotool"_s, {"mouseup"_s, "1"_s}), 0);
}

void TestWindowCap::countdown()
{
    CountdownWnd counted;
    QStringList numbers;
    const auto *label = child<QLabel>(counted, "lblCountdown");
    QTimer looks;
    connect(&looks, &QTimer::timeout, &counted, [&] {
        if (numbers.isEmpty() || numbers.last() != label->text())
            numbers += label->text();
    });
    looks.start(20);
    counted.moveToMiddle(*QGuiApplication::primaryScreen());
    counted.start();
    QCOMPARE(counted.exec(), int(QDialog::Accepted));
    QCOMPARE(numbers, QStringList({"3"_s, "2"_s, "1"_s}));

    for (const bool isKey : {true, false}) {
        CountdownWnd ended;
        ended.moveToMiddle(*QGuiApplication::primaryScreen());
        ended.start();
        QTimer::singleShot(300, &ended, [&] {
            if (isKey)
                Desktop::key("Escape");
            else
                Desktop::click(ended.geometry().center() * ended.devicePixelRatioF());
        });
        QCOMPARE(ended.exec(), int(QDialog::Rejected));
    }
}

void TestWindowCap::cameraWindow()
{
    CameraPreviewWnd camera;
    QCOMPARE(camera.size(), QSize(320, 180));
    camera.fitPicture({});
    QCOMPARE(camera.size(), QSize(320, 180));
    camera.fitPicture({{1280, 960}, {640, 360}});
    QCOMPARE(camera.size(), QSize(240, 180));
    camera.move(100, 100);
    camera.show();
    QVERIFY(QTest::qWaitForWindowExposed(&camera));
    const auto *close = child<QPushButton>(camera, "btnClose");
    QVERIFY(!close->isVisible());
    const double scale = camera.devicePixelRatioF();
    Desktop::pointTo(camera.geometry().center() * scale);
    QTRY_VERIFY(close->isVisible());
    QCOMPARE(close->geometry(), QRect(camera.width() - 24, 0, 24, 24));
    const QPoint before = camera.pos();
    Desktop::drag(camera.geometry().center() * scale,
                  camera.geometry().center() * scale + QPoint(80, 40));
    QTRY_VERIFY(camera.pos() != before);
    Desktop::click(close->mapToGlobal(close->rect().center()) * scale);
    QTRY_VERIFY(!camera.isVisible());
}

QTEST_MAIN(TestWindowCap)
#include "tst_windowcap.moc"
