// SPDX-License-Identifier: MIT
#include "browser/pageserver.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "resources/look.h"
#include "support/desktop.h"
#include "support/guisupport.h"
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/toolrun.h"

#include <QMenu>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int limitMs = 20000;

Screencap &engine()
{
    return Screencap::instance();
}

} // namespace

// A recording and the rest of the program: tray, leaving, what a crash has left.
class TestRecordProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void trayControls();
    void leavingAsksAndSaves();
    void rescuedOnesAreOffered();
    void lowSpaceIsTold();
    void useIsReported();

private:
    void record();
    // Of events, as they come in.
    QStringList reported() const;
    ScreencapFuncionPage *page() const { return m_window->findChild<ScreencapFuncionPage *>(); }
    const QSystemTrayIcon *tray() const { return m_window->findChild<QSystemTrayIcon *>(); }
    QStringList trayTexts() const
    {
        QStringList texts;
        for (const QAction *action : tray()->contextMenu()->actions())
            texts += action->text();
        return texts;
    }
    QAction *trayAction(const char *name) const
    {
        return m_window->findChild<QAction *>(QLatin1String(name));
    }
    QImage trayPicture() const { return tray()->icon().pixmap(64, 64).toImage(); }

    PageServer m_service;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MainWindow> m_window;
};

void TestRecordProgram::initTestCase()
{
    QApplication::setQuitOnLastWindowClosed(false);
    writeTestFile(appDir() + "/main.ini"_s,
                  "[Service]\nevents=" + m_service.address().toUtf8() + '\n');
    QFile::remove(appDir() + "/module"_s);
    QVERIFY(QFile::link(builtProgram("module"_s), appDir() + "/module"_s));
    QVERIFY(Look::apply());
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    AppIni::instance().setValue(AppIni::Key::IsExitTips, false);
    AppIni::instance().setValue(AppIni::Key::ExitMode, 1);
}

void TestRecordProgram::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    FunctionSettings::instance().setValue(FunctionSection::screenCap, FunctionKey::outPath,
                                          m_folder->path());
    m_window = std::make_unique<MainWindow>();
    m_window->open();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    child<QPushButton>(*m_window, "btnScreencap")->click();
    child<QAbstractButton>(*page(), "rbSDNone")->click();
}

void TestRecordProgram::cleanup()
{
    engine().stop();
    QTRY_COMPARE_WITH_TIMEOUT(engine().state(), Screencap::CapIdle, limitMs);
    m_window.reset();
}

void TestRecordProgram::record()
{
    child<QAbstractButton>(*page(), "wbnCapStartPause")->click();
    QTRY_VERIFY_WITH_TIMEOUT(engine().elapsedSeconds() >= 1, limitMs);
    QVERIFY(m_window->isMinimized());
}

void TestRecordProgram::trayControls()
{
    const QStringList usual = trayTexts();
    const QImage logo = trayPicture();
    record();
    QCOMPARE(trayTexts(), QStringList({"暂停录制"_s, "停止录制"_s, QString()}) + usual);
    const QImage recording = trayPicture();
    QVERIFY(recording != logo);
    QVERIFY(tray()->toolTip().contains("00:00:0"_s));
    trayAction("actPause")->trigger();
    QTRY_VERIFY(engine().isPaused());
    QCOMPARE(trayAction("actPause")->text(), "继续录制"_s);
    QVERIFY(trayPicture() != logo && trayPicture() != recording);
    trayAction("actPause")->trigger();
    QTRY_VERIFY(!engine().isPaused());
    QCOMPARE(trayPicture(), recording);
    trayAction("actStop")->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(engine().state(), Screencap::CapIdle, limitMs);
    QCOMPARE(trayTexts(), usual);
    QCOMPARE(trayPicture(), logo);
    QTRY_VERIFY(!m_window->isMinimized());
    QVERIFY(probeMedia(engine().outputPath()).isMedia());
    // The menu may still be open when a recording ends by itself.
    trayAction("actStop")->trigger();
    QVERIFY(child<QWidget>(*page(), "wdtSettting")->isEnabled());
}

void TestRecordProgram::leavingAsksAndSaves()
{
    record();
    QAction *leave = tray()->contextMenu()->actions().last();
    int code = -1;
    QTimer::singleShot(0, qApp, [&] {
        const QString asked = askedBy([&] { leave->trigger(); }, "btnCancel");
        QVERIFY2(asked.contains("正在录制"_s), qPrintable(asked));
        QCOMPARE(engine().state(), Screencap::CapRunning);
        askedBy([&] { leave->trigger(); }, "btnOK");
    });
    code = QCoreApplication::exec();
    QCOMPARE(code, 0);
    QCOMPARE(engine().state(), Screencap::CapIdle);
    const QStringList files = QDir(m_folder->path()).entryList(QDir::Files);
    QCOMPARE(files.size(), 1);
    const ProbedFile probed = probeMedia(m_folder->filePath(files.first()));
    QVERIFY2(probed.seconds >= 0.5, qPrintable(QString::number(probed.seconds)));
    QVERIFY(!visibleWindow("MediaMessageBox") && !visibleWindow("MediaPreviewWnd"));
}

void TestRecordProgram::rescuedOnesAreOffered()
{
    child<QPushButton>(*m_window, "btnHome")->click();
    const QString file = m_folder->filePath("rec_2026-03-01 093000.mp4"_s);
    const QString asked = askedBy([&] { emit engine().recordingsRepaired({file}); }, "btnOK");
    QVERIFY2(asked.contains("已找回 1 个录像"_s), qPrintable(asked));
    QTRY_VERIFY(page()->isVisible());
    auto *strip = child<QWidget>(*page(), "wdtRescued");
    QVERIFY(strip->isVisible());
    QVERIFY(child<QLabel>(*strip, "lblText")
                ->property("fullText")
                .toString()
                .contains(QFileInfo(file).fileName()));
    press(*strip, "btnDismiss");
    QVERIFY(!strip->isVisible());
}

void TestRecordProgram::lowSpaceIsTold()
{
    record();
    emit engine().spaceLow(300 * 1024 * 1024);
    const auto *remarks = child<QLabel>(*page(), "lblRemarks");
    QVERIFY(remarks->text().contains("300 MB"_s));
    page()->startOrStop();
    QTRY_COMPARE_WITH_TIMEOUT(engine().state(), Screencap::CapIdle, limitMs);
    QVERIFY(!remarks->text().contains("300 MB"_s));
}

QStringList TestRecordProgram::reported() const
{
    static const QRegularExpression pattern(
        R"re("event":"(\w*convert\w*)","local_time_ms":\d+,"params":"\{(.*?)\}")re"_s);
    QStringList events;
    const QString posted = QString::fromUtf8(m_service.posted());
    for (auto found = pattern.globalMatch(posted); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        events += match.captured(1) + u' ' + match.captured(2).remove(u'\\').remove(u'"');
    }
    return events;
}

// What ends well is a conversion; what fails was only begun.
void TestRecordProgram::useIsReported()
{
    const int before = reported().size();
    const QString file = m_folder->filePath("file"_s);
    writeTestFile(file);
    engine().setOutputDir(file + "/below"_s);
    bool isTold = false;
    whenModal("MediaMessageBox", [&isTold](QWidget &box) {
        isTold = child<QLabel>(box, "lblText")->text().contains("below"_s);
        press(box, "btnOK");
    });
    press(*page(), "wbnCapStartPause");
    QTRY_VERIFY_WITH_TIMEOUT(isTold, limitMs);
    QTRY_VERIFY(!m_window->isMinimized());
    engine().setOutputDir(m_folder->path());
    child<QAbstractButton>(*page(), "rbFMTFLV")->click();
    record();
    child<QAbstractButton>(*page(), "wbnCapStop")->click();
    QTRY_COMPARE_WITH_TIMEOUT(engine().state(), Screencap::CapIdle, limitMs);
    const QString start =
        "video_convert_start convert_number_mode:单个转换,current_page:屏幕录像"_s;
    const QString facts = "input_format:SCREEN,is_convert_success:true,output_format:.flv"_s;
    const QStringList expected{start, start, "video_convert_submit "_s + facts,
                               "convert_success "_s + facts};
    QTRY_COMPARE(reported().mid(before), expected);
}

QTEST_MAIN(TestRecordProgram)
#include "tst_recordprogram.moc"
