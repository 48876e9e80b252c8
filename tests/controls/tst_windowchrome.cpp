// SPDX-License-Identifier: MIT
#include "controls/dialogframe.h"
#include "controls/edgeresizer.h"
#include "controls/framelesswidget.h"
#include "controls/popupplacement.h"
#include "controls/titlebar.h"
#include "controls/toast.h"
#include "controls/windowshadow.h"
#include "platform/compositor.h"
#include "pointer.h"
#include "resources/look.h"
#include "support/casename.h"

#include <QLabel>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace {

struct Window : QWidget
{
    explicit Window(QWidget *parent = nullptr) : QWidget(parent)
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(bar);
        layout->addStretch();
        bar->setFixedHeight(40);
        resize(400, 300);
        move(300, 200);
    }
    bool showUp()
    {
        show();
        return QTest::qWaitForWindowActive(this);
    }
    TitleBar *bar = new TitleBar(this);
};

struct RoundWindow : Window
{
    RoundWindow() { setAttribute(Qt::WA_TranslucentBackground); }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setBrush(Qt::white);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(rect(), 12, 12);
    }
};

struct Dialog : DialogFrame
{
    Q_OBJECT

public:
    Dialog()
    {
        Form form;
        setUpForm(form);
        setTitle("title"_s);
    }
    int clicks = 0;

private slots:
    void on_btnAction_clicked() { ++clicks; }

private:
    struct Form
    {
        static void setupUi(QWidget *body)
        {
            auto *button = new QPushButton(body);
            button->setObjectName("btnAction"_s);
        }
    };
};

int alphaAt(WindowShadow &shadow, int x, int y)
{
    QImage image(shadow.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    shadow.render(&image, {}, {}, QWidget::DrawChildren);
    return qAlpha(image.pixel(x, y));
}

// Moves the display's own pointer with its button held, so slowly that no two moves become one.
bool dragOnDisplay(const QPoint &from, const QPoint &by)
{
    QStringList steps;
    const auto moveTo = [&steps](const QPoint &pos) {
        steps << "mousemove"_s << QString::number(pos.x()) << QString::number(pos.y()) << "sleep"_s
              << "0.1"_s;
    };
    moveTo(from);
    steps << "mousedown"_s
          << "1"_s;
    moveTo(from);
    moveTo(from + by / 2);
    moveTo(from + by);
    steps << "mouseup"_s
          << "1"_s;
    QProcess tool;
    tool.start("xdotool"_s, steps);
    return QTest::qWaitFor([&tool] { return tool.state() == QProcess::NotRunning; }) &&
           tool.exitCode() == 0;
}

} // namespace

class TestWindowChrome : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(Look::apply());
        QTRY_VERIFY(isCompositingActive());
    }

    void shadowLetsThePointerThrough()
    {
        Window window;
        WindowShadow shadow(&window);
        QVERIFY(window.showUp());
        QTRY_VERIFY(shadow.isVisible());
        QPushButton button(&window);
        button.setGeometry(40, 80, 100, 40);
        button.show();
        QSignalSpy clicks(&button, &QPushButton::clicked);
        QTRY_VERIFY(dragOnDisplay(button.mapToGlobal(QPoint(50, 20)), {}) && !clicks.isEmpty());
    }

    void dragMovesTheWindow()
    {
        Window window;
        QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(window.showUp());
        QTRY_COMPARE(window.pos(), QPoint(300, 200));
        Pointer pointer(window.bar);
        pointer.press({100, 20});
        pointer.moveBy(5);
        QCOMPARE(window.pos(), QPoint(300, 200));
        pointer.moveBy(45, 30);
        pointer.moveBy(10, 10);
        pointer.release();
        QTRY_COMPARE(window.pos(), QPoint(360, 240));
        pointer.moveBy(50, 50);
        QCOMPARE(window.pos(), QPoint(360, 240));
    }

    void dragOfAMaximizedWindow()
    {
        Window window;
        QVERIFY(window.showUp());
        window.bar->windowMaximized();
        QTRY_COMPARE(window.width(), window.screen()->size().width());
        Pointer pointer(window.bar);
        pointer.press({window.width() / 4, 20});
        pointer.moveBy(0, 5);
        QTRY_VERIFY(!window.isMaximized());
        QTRY_COMPARE(window.size(), QSize(400, 300));
        pointer.moveBy(10, 100);
        QTRY_COMPARE(window.pos(), pointer.global() - QPoint(100, 20));
        pointer.release();
    }

    void releaseAboveTheScreen()
    {
        const auto check = [&](const char *caseName, bool enabled, bool dragged, bool maximized) {
            const CaseName inCase(caseName);
            Window window;
            window.bar->setDblClkEnable(enabled);
            QVERIFY(window.showUp());
            QTRY_COMPARE(window.pos(), QPoint(300, 200));
            if (!dragged) {
                window.move(300, -15);
                QTRY_COMPARE(window.y(), -15);
            }
            Pointer pointer(window.bar);
            pointer.press({100, 30});
            if (dragged) {
                pointer.moveBy(0, -1);
                pointer.moveBy(0, -219);
            }
            pointer.release();
            QTRY_COMPARE(window.y(), 0);
            QTRY_COMPARE(window.isMaximized(), maximized);
        };
        check("drag, disabled", false, true, false);
        check("drag, enabled", true, true, true);
        check("click, enabled", true, false, false);
    }

    void doubleClick()
    {
        Window window;
        QVERIFY(window.showUp());
        QTest::mouseDClick(window.bar, Qt::LeftButton);
        QVERIFY(!window.isMaximized());
        window.bar->setDblClkEnable(true);
        QTest::mouseDClick(window.bar, Qt::LeftButton);
        QTRY_VERIFY(window.isMaximized());
        QTest::mouseDClick(window.bar, Qt::LeftButton);
        QTRY_VERIFY(!window.isMaximized());
    }

    void shadowFollowsItsTarget()
    {
        auto window = std::make_unique<Window>();
        QPointer<WindowShadow> shadow = new WindowShadow(window.get());
        shadow->setup(11, {0, 1}, QColor(0, 0, 0, 36));
        QVERIFY(window->showUp());
        QTRY_VERIFY(shadow->isVisible());
        QTRY_COMPARE(shadow->geometry(), QRect(289, 190, 422, 322));
        QVERIFY(window->isActiveWindow());
        window->move(350, 250);
        window->resize(500, 300);
        QTRY_COMPARE(shadow->geometry(), QRect(339, 240, 522, 322));
        window->showMaximized();
        QTRY_VERIFY(window->isMaximized() && !shadow->isVisible());
        window->showNormal();
        QTRY_VERIFY(shadow->isVisible());
        QTRY_COMPARE(shadow->geometry(), QRect(339, 240, 522, 322));
        window->showMinimized();
        QTRY_VERIFY(!shadow->isVisible());
        window->showNormal();
        QTRY_VERIFY(shadow->isVisible());
        window->hide();
        QVERIFY(!shadow->isVisible());
        window->show();
        QTRY_VERIFY(shadow->isVisible());
        window.reset();
        QTRY_VERIFY(shadow.isNull());
    }

    void shadowOfAnOpaqueWindow()
    {
        Window window;
        WindowShadow shadow(&window);
        QVERIFY(window.showUp());
        QTRY_VERIFY(shadow.isVisible());
        // Darkest at the window, fading outwards, cut out within.
        const int middle = shadow.height() / 2;
        QVERIFY(alphaAt(shadow, 9, middle) > alphaAt(shadow, 4, middle));
        QVERIFY(alphaAt(shadow, 4, middle) > alphaAt(shadow, 0, middle));
        QVERIFY(qAbs(alphaAt(shadow, 9, middle) - alphaAt(shadow, 410, middle)) <= 1);
        QCOMPARE(alphaAt(shadow, 10, 10), 0);
        QCOMPARE(alphaAt(shadow, shadow.width() - 11, middle), 0);
        const int before = alphaAt(shadow, 9, middle);
        window.resize(900, 700);
        QTRY_COMPARE(shadow.width(), 920);
        QCOMPARE(alphaAt(shadow, 9, shadow.height() / 2), before);
        shadow.setRadius(20);
        QTRY_COMPARE(shadow.width(), 940);
        QVERIFY(alphaAt(shadow, 19, 300) > 0 && alphaAt(shadow, 20, 300) == 0);
    }

    void shadowOfARoundWindow()
    {
        RoundWindow window;
        WindowShadow shadow(&window);
        QVERIFY(window.showUp());
        QTRY_VERIFY(shadow.isVisible());
        for (const int width : {400, 600}) {
            window.resize(width, 300);
            QTRY_COMPARE(shadow.width(), width + 20);
            // The corner outside the rounding belongs to the shadow.
            QVERIFY(alphaAt(shadow, 10, 10) > 0);
            QVERIFY(alphaAt(shadow, width + 9, 10) > 0);
            QCOMPARE(alphaAt(shadow, 10, 30), 0);
            QCOMPARE(alphaAt(shadow, width / 2, 10), 0);
            QVERIFY(alphaAt(shadow, width / 2, 9) > 0);
        }
    }

    void edges()
    {
        const auto check = [&](const char *caseName, const QPoint &from, const QRect &change) {
            const CaseName inCase(caseName);
            FramelessWidget widget;
            widget.setGeometry(400, 300, 200, 150);
            widget.show();
            QVERIFY(QTest::qWaitForWindowActive(&widget));
            QTRY_COMPARE(widget.geometry(), QRect(400, 300, 200, 150));
            QVERIFY(dragOnDisplay(widget.mapToGlobal(from), {30, 20}));
            const QRect wanted(QPoint(400, 300) + change.topLeft(),
                               QSize(200, 150) + change.size());
            QTRY_COMPARE(widget.geometry(), wanted);
            QCOMPARE(edgesAt(widget.rect(), {-1, 75}, 4), Qt::Edges());
        };
        check("top left", QPoint(1, 2), QRect(30, 20, -30, -20));
        check("top right", QPoint(198, 1), QRect(0, 20, 30, -20));
        check("bottom right", QPoint(198, 147), QRect(0, 0, 30, 20));
        check("bottom left", QPoint(3, 147), QRect(30, 0, -30, 20));
        check("bottom", QPoint(100, 148), QRect(0, 0, 0, 20));
        check("inside: moves", QPoint(100, 75), QRect(30, 20, 0, 0));
    }

    void toastLivesItsTime()
    {
        Window window;
        QVERIFY(window.showUp());
        QTRY_COMPARE(window.pos(), QPoint(300, 200));
        QPointer<Toast> toast = Toast::showToast("text"_s, 400, Toast::centred, 50, &window);
        QVERIFY(!toast->isVisible());
        QTRY_VERIFY(toast->isVisible());
        QCOMPARE(toast->pos(), QPoint(300 + (400 - toast->width()) / 2, 250));
        QTRY_VERIFY(toast.isNull());
        // Without a time it stays, until it is closed.
        toast = Toast::showToast("text"_s, 0, 0, 0, &window);
        QTRY_VERIFY(toast->isVisible());
        QTest::keyClick(toast.data(), Qt::Key_Escape);
        QTRY_VERIFY(toast.isNull());
        auto parent = std::make_unique<Window>();
        QVERIFY(parent->showUp());
        toast = Toast::showToast("text"_s, 5000, 0, 0, parent.get());
        QTRY_VERIFY(toast->isVisible());
        parent.reset();
        QVERIFY(toast.isNull());
    }

    void dialogIsClosed()
    {
        for (const bool byKey : {true, false}) {
            Dialog dialog;
            QCOMPARE(dialog.windowTitle(), "title"_s);
            QSignalSpy rejected(&dialog, &QDialog::rejected);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            auto *action = dialog.findChild<QPushButton *>("btnAction"_s);
            QTRY_VERIFY(action->hasFocus());
            QTest::keyClick(&dialog, Qt::Key_Return);
            QCOMPARE(dialog.clicks, 1);
            auto *close = dialog.findChild<QPushButton *>("btnClose"_s);
            if (byKey)
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                QTest::mouseClick(close, Qt::LeftButton);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(rejected.count(), 1);
        }
    }

    void popupStaysOnTheScreen()
    {
        Window window;
        QVERIFY(window.showUp());
        QTRY_COMPARE(window.pos(), QPoint(300, 200));
        QLabel popup;
        popup.setFixedSize(100, 60);
        placeBelow(&popup, &window, Qt::AlignRight, 4);
        QCOMPARE(popup.pos(), QPoint(600, 504));
        placeAbove(&popup, &window, Qt::AlignHCenter, 4);
        QCOMPARE(popup.pos(), QPoint(450, 136));
        window.move(-50, 20);
        QTRY_COMPARE(window.pos(), QPoint(-50, 20));
        placeAbove(&popup, &window, Qt::AlignLeft, 4);
        QCOMPARE(popup.pos(), QPoint(0, 0));
    }
};

QTEST_MAIN(TestWindowChrome)
#include "tst_windowchrome.moc"
