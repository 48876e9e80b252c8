// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/mainwindow.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/DataTracker/currentfunction.h"
#include "MediaKits/MainWindow/homepage.h"
#include "resources/look.h"
#include "support/desktop.h"
#include "support/guisupport.h"
#include "support/scriptedserver.h"
#include "support/testfile.h"
#include "support/toolrun.h"

#include <QCheckBox>
#include <QDialog>
#include <QMenu>
#include <QStackedWidget>
#include <QSystemTrayIcon>
#include <QtTest>
#include <QWindow>

namespace {

int shownPage(const QWidget &window)
{
    return window.findChild<QStackedWidget *>("skdWdtFunction"_s)->currentIndex();
}

// Runs an event loop in which `action` is done first.
// @return its exit code, -1 when the loop went on
template<class Action>
int exitCodeAfter(Action action)
{
    QTimer::singleShot(0, qApp, action);
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [] { QCoreApplication::exit(-1); });
    watch.start(500);
    return QCoreApplication::exec();
}

// Presses a button of the exit dialog as soon as it is there.
void answerExitDialog(const char *button, bool noMore)
{
    QTimer::singleShot(0, qApp, [=] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog != nullptr);
        dialog->findChild<QCheckBox *>()->setChecked(noMore);
        press(*dialog, button);
    });
}

// The window's place among all, as the window manager stacks them; its shadow lies above it.
int stackPlace(const QWidget &window)
{
    const QByteArray ids = runTool("xprop"_s, {"-root"_s, "_NET_CLIENT_LIST_STACKING"_s}).out;
    return ids.indexOf("0x" + QByteArray::number(window.windowHandle()->winId(), 16));
}

// Returns when Qt knows that the focus is gone: a window that comes back before doesn't get it.
void hideFully(QWidget &window)
{
    window.hide();
    QTRY_COMPARE(QGuiApplication::focusWindow(), nullptr);
}

} // namespace

// Looked at in a grid: a style for something else can take the background away from a whole page.
static bool isOpaque(const QImage &picture)
{
    constexpr int step = 12;
    for (int y = step; y < picture.height() - step; y += step) {
        for (int x = step; x < picture.width() - step; x += step) {
            if (picture.pixelColor(x, y).alpha() != 255)
                return false;
        }
    }
    return true;
}

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void closeButton_data();
    void closeButton();
    void systemCloseHidesUntilTrayLeaves();
    void withoutTrayClosingLeaves();
    void destructionRemovesTempDir();
    void secondStart_data();
    void secondStart();
    void secondStartUnderDialog();
    void navigation();
    void navigationIsReported();
};

void TestMainWindow::init()
{
    AppIni::instance().setValue(AppIni::Key::IsExitTips, true);
    AppIni::instance().setValue(AppIni::Key::ExitMode, 0);
}

void TestMainWindow::closeButton_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<bool>("noMore");
    QTest::addColumn<int>("mode");
    QTest::newRow("tray") << QByteArray("btnToTray") << false << 0;
    QTest::newRow("tray from now on") << QByteArray("btnToTray") << true << 0;
    QTest::newRow("leave") << QByteArray("btnEixt") << false << 1;
    QTest::newRow("leave from now on") << QByteArray("btnEixt") << true << 1;
    QTest::newRow("neither") << QByteArray("btnClose") << true << 0;
}

void TestMainWindow::closeButton()
{
    QFETCH(QByteArray, button);
    QFETCH(bool, noMore);
    QFETCH(int, mode);
    const SystemTray tray;
    const bool rejected = button == "btnClose";
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    const int code = exitCodeAfter([&] {
        answerExitDialog(button.constData(), noMore);
        press(window, "btnClose");
    });
    QCOMPARE(code, mode == 1 ? 0 : -1);
    QCOMPARE(window.isVisible(), mode == 1 || rejected);
    const bool asksAgain = rejected || !noMore;
    QCOMPARE(AppIni::instance().value(AppIni::Key::IsExitTips).toBool(), asksAgain);
    QCOMPARE(AppIni::instance().value(AppIni::Key::ExitMode).toInt(), mode);
    if (asksAgain)
        return;

    hideFully(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const int laterCode = exitCodeAfter([&] {
        QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
    });
    QCOMPARE(laterCode, mode == 1 ? 0 : -1);
    QCOMPARE(window.isVisible(), mode == 1);
}

void TestMainWindow::systemCloseHidesUntilTrayLeaves()
{
    const SystemTray tray;
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(!window.close());
    QVERIFY(!window.isVisible());
    auto *icon = window.findChild<QSystemTrayIcon *>();
    QVERIFY(icon->isVisible());

    emit icon->activated(QSystemTrayIcon::Context);
    QVERIFY(!window.isVisible());
    hideFully(window);
    emit icon->activated(QSystemTrayIcon::Trigger);
    QTRY_VERIFY(window.isActiveWindow());

    QStringList texts;
    for (const QAction *action : icon->contextMenu()->actions())
        texts += action->text();
    QCOMPARE(texts, QStringList({"登录/注册"_s, "关于"_s, QString(), "退出"_s}));
    window.hide();
    QCOMPARE(exitCodeAfter([&] { icon->contextMenu()->actions().last()->trigger(); }), 0);
    QVERIFY(!icon->isVisible());
}

// Nothing could bring a hidden window back, whatever was answered on another desktop.
void TestMainWindow::withoutTrayClosingLeaves()
{
    AppIni::instance().setValue(AppIni::Key::IsExitTips, false);
    AppIni::instance().setValue(AppIni::Key::ExitMode, 0);
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCOMPARE(exitCodeAfter([&window] { press(window, "btnClose"); }), 0);
    QCOMPARE(exitCodeAfter([&window] { window.close(); }), 0);
}

void TestMainWindow::destructionRemovesTempDir()
{
    const QString dir = tempDir();
    {
        MainWindow window;
        writeTestFile(dir + "/deep/thumbnail.png"_s);
    }
    QVERIFY(!QFileInfo::exists(dir));
}

void TestMainWindow::secondStart_data()
{
    QTest::addColumn<QByteArray>("state");
    for (const char *state :
         {"hidden", "just hidden", "covered", "minimized", "maximized", "other desktop"})
        QTest::newRow(state) << QByteArray(state);
}

void TestMainWindow::secondStart()
{
    QFETCH(QByteArray, state);
    const SystemTray tray;
    MainWindow window;
    window.open();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QRect place = window.geometry();
    if (state == "hidden" || state == "just hidden")
        window.hide();
    else if (state == "minimized")
        press(window, "btnMin");
    else if (state == "maximized") {
        press(window, "btnMax");
        QTRY_COMPARE(child(window, "btnMax")->toolTip(), "还原"_s);
    } else if (state == "other desktop")
        runTool("xdotool"_s, {"set_desktop"_s, "1"_s});
    QWidget other;
    if (state != "just hidden") {
        other.setGeometry(place);
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
    }

    window.sltMessageReceived("runing"_s);
    QTRY_VERIFY(window.isActiveWindow());
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(!other.isVisible() || stackPlace(window) > stackPlace(other));
    bool isAnswered = false;
    whenModal("ExitTipsDialog", [&isAnswered](QWidget &dialog) {
        isAnswered = true;
        press(dialog, "btnClose");
    });
    QTRY_VERIFY(Desktop::hasKeyboard(window));
    Desktop::key("ctrl+q");
    QTRY_VERIFY(isAnswered);
    QVERIFY(!window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(!window.isMinimized() && !window.isMaximized());
    QCOMPARE(child(window, "btnMax")->toolTip(), "最大化"_s);
    QTRY_COMPARE(window.geometry(), place);
    runTool("xdotool"_s, {"set_desktop"_s, "0"_s});
}

void TestMainWindow::secondStartUnderDialog()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const WId native = window.winId();
    QDialog dialog(&window);
    dialog.setModal(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    window.showMinimized();
    QTRY_VERIFY(!dialog.isActiveWindow());

    window.sltMessageReceived("runing"_s);
    QTRY_VERIFY(dialog.isActiveWindow());
    QTRY_VERIFY(!window.isMinimized());
    // The dialog still belongs to the window, and lies above it.
    QCOMPARE(window.winId(), native);
    QTRY_VERIFY(stackPlace(dialog) > stackPlace(window));
}

void TestMainWindow::navigation()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCOMPARE(shownPage(window), 0);
    QSignalSpy jumps(window.findChild<HomePage *>(), &HomePage::goToFunction);

    const QVector<QPair<const char *, int>> walk = {
        {"btnConverter", 1},   {"btnHome", 0}, {"btnMediaGif", 6},  {"btnHome", 0},
        {"btnBScreencap", 11}, {"btnGif", 6},  {"btnBeautifier", 5}};
    for (const auto &[button, page] : walk) {
        press(window, button);
        QCOMPARE(shownPage(window), page);
        QCOMPARE(int(currentFunction()), page);
        QVERIFY(isOpaque(window.grab().toImage()));
    }
    QCOMPARE(jumps.size(), 2);

    press(window, "btnHome");
    press(window, "btnMediaWatermark");
    const auto *watermark = qobject_cast<QPushButton *>(child(window, "btnWatermark"));
    QVERIFY(watermark->isChecked());
    QVERIFY(!qobject_cast<QPushButton *>(child(window, "btnHome"))->isChecked());
}

// The walk again, in a process whose services are servers of this one.
void TestMainWindow::navigationIsReported()
{
    if (QCoreApplication::applicationFilePath().startsWith(QDir::tempPath()))
        return;
    ScriptedServer collector(R"({"code":"200"})");
    ScriptedServer events(R"({"message":"success","ssid":"s"})");
    QTemporaryDir dir;
    const QString program = dir.filePath("walk"_s);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
    writeTestFile(dir.filePath("main.ini"_s),
                  QByteArray::fromStdString("[Service]\ncollector=" + collector.host() +
                                            "\nevents=" + events.host() +
                                            "\nappKey=" + std::string(32, 'a') + "\n"));
    const ToolRun run = runTool(program, {"navigation"_s});
    QVERIFY2(run.exitCode == 0, run.out.constData());

    const auto reported = [](const ScriptedServer &server, const char *pattern) {
        QStringList found;
        const QRegularExpression expression(QString::fromUtf8(pattern));
        for (const httplib::Request &request : server.requests()) {
            auto matches =
                expression.globalMatch(QString::fromStdString(request.body).remove(u'\\'));
            while (matches.hasNext())
                found += matches.next().captured(1);
        }
        return found;
    };
    QCOMPARE(reported(collector, R"("event_code":"[a-z]+_page_view_([a-z]+)\")"),
             QStringList({"shouye"_s, "shipinzhuanhuan"_s, "shipingif"_s, "shipingif"_s,
                          "shipinmeihua"_s, "shipinshuiyin"_s}));
    const QStringList areas = reported(events, R"("button_area":"([^"]+)\")");
    QCOMPARE(areas.count("首页"_s), 3);
    QCOMPARE(areas.count("侧边栏"_s), 6);
    const QStringList entrances = reported(events, R"("entrance_type":"([^"]+)\")");
    QCOMPARE(entrances.count("首页点击"_s), 4);
    QCOMPARE(entrances.count("侧边栏点击"_s), 6);
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Look::apply();
    TestMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindow.moc"
