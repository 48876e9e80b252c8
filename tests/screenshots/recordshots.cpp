// SPDX-License-Identifier: MIT
#include "screenshots/recordshots.h"

#include "MediaKits/FunctionPage/ScreenRecord/countdownwnd.h"
#include "MediaKits/FunctionPage/ScreenRecord/recordnotices.h"
#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"
#include "MediaKits/FunctionPage/ScreenRecord/windowcapwidget.h"
#include "screenshots/stage.h"
#include "support/utf8.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

namespace {

const QRect pickedArea(120, 90, 480, 300); // logical pixels

ScreencapFuncionPage &openPage(Stage &stage)
{
    auto &page = stage.open<ScreencapFuncionPage>("btnScreencap");
    Stage::child<QAbstractButton>(page, "rbSDNone").click();
    return page;
}

void showNotices(Stage &stage)
{
    auto &notices = Stage::child<RecordNotices>(openPage(stage), "wdtNotices");
    notices.setRemarks({"没有可用的声音服务，录制将没有声音"_s,
                        "快捷键 Ctrl+Alt+R 已被其他程序占用，请用本页的按钮或托盘图标控制录制"_s});
    notices.offerRescued({"/home/录像/rec_2026-03-01 093000.mp4"_s});
    notices.offerSaved({"/home/录像/rec_2026-03-01 101500.mp4"_s}, QString());
}

WindowCapWidget *openOverlay(Stage &stage)
{
    auto *overlay = new WindowCapWidget;
    overlay->setParent(&stage.window(), overlay->windowFlags());
    overlay->pickArea();
    if (!QTest::qWaitForWindowExposed(overlay))
        qFatal("no overlay");
    return overlay;
}

void dragArea(Stage &stage, bool isDone)
{
    WindowCapWidget *overlay = openOverlay(stage);
    QTest::mousePress(overlay, Qt::LeftButton, {}, pickedArea.topLeft());
    QTest::mouseMove(overlay, pickedArea.center());
    QMouseEvent move(QEvent::MouseMove, pickedArea.bottomRight(), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(overlay, &move);
    if (!isDone)
        return;
    QTest::mouseRelease(overlay, Qt::LeftButton, {}, pickedArea.bottomRight());
    overlay->setOverlayState(WindowCapWidget::AreaRecorded);
}

// As it is for most of the time: with a recording that is paused.
void showPaused(Stage &stage)
{
    auto &page = openPage(stage);
    Screencap &engine = Screencap::instance();
    engine.setOutputDir(QDir::tempPath());
    engine.start();
    QTRY_VERIFY_WITH_TIMEOUT(engine.elapsedSeconds() >= 3, 20000);
    page.pauseOrResume();
}

void endRecording()
{
    Screencap::instance().stop();
    QTRY_COMPARE_WITH_TIMEOUT(Screencap::instance().state(), Screencap::CapIdle, 20000);
}

} // namespace

QVector<Shot> recordShots()
{
    return {
        {"record-page"_s, [](Stage &stage) { openPage(stage); }},
        {"record-notices"_s, showNotices},
        {"record-pick-hint"_s,
         [](Stage &stage) {
             QTest::mouseMove(openOverlay(stage), stage.window().geometry().center());
         }},
        {"record-pick-area"_s, [](Stage &stage) { dragArea(stage, false); }},
        {"record-frame"_s, [](Stage &stage) { dragArea(stage, true); }},
        {"record-countdown"_s,
         [](Stage &stage) {
             auto *countdown = new CountdownWnd(&stage.window());
             countdown->moveToMiddle(*QGuiApplication::primaryScreen());
             stage.show(countdown);
         }},
        {"record-paused"_s, showPaused},
        {"record-saved"_s, [](Stage &) { endRecording(); }},
    };
}
