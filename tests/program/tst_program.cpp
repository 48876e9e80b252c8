// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/appinstance.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "platform/utf8locale.h"
#include "support/desktop.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QtTest>

namespace {

constexpr quint32 mp4Small = 1003005;
constexpr int endLimitMs = 60000;

} // namespace

// The whole program in this process: its start, its window, and a user's way from files to results.
class TestProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void convertsThreeFiles();
    void secondStartBringsTheWindowToTheFront();
    void leavesNothingBehind();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<MainWindow> m_window;
};

void TestProgram::initTestCase()
{
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    FunctionSettings::instance().setValue(FunctionSection::converter, FunctionKey::outPath,
                                          m_folder.filePath(QStringLiteral("out")));
    m_window = std::make_unique<MainWindow>();
    connect(static_cast<QtSingleApplication *>(qApp), &QtSingleApplication::messageReceived,
            m_window.get(), &MainWindow::sltMessageReceived);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestProgram::convertsThreeFiles()
{
    QStringList files;
    for (const char *name : {"a.mp4", "b.mkv", "c.mp3"}) {
        ClipPlan plan;
        plan.width = qstrcmp(name, "c.mp3") == 0 ? 0 : plan.width;
        files += m_folder.filePath(QLatin1String(name));
        makeClip(files.last(), plan);
    }
    press(*m_window, "btnConverter");
    auto *page = m_window->findChild<MediaConvertFunctionPage *>();
    QTRY_VERIFY(page->isVisible());
    FileChooser::setNextAnswer(files);
    press(*page, "btnAddFile");
    auto *list = child<QListWidget>(*page, "convertList");
    QTRY_COMPARE(list->count(), 3);
    press(*child(*page, "wdtChoices"), "btnFormatSet");
    pickPreset(mp4Small);
    press(*page, "btnConvertAll");
    auto *all = child<QPushButton>(*page, "btnConvertAll");
    QCOMPARE(all->text(), QStringLiteral("正在转换"));
    QTRY_COMPARE_WITH_TIMEOUT(all->text(), QStringLiteral("全部转换"), endLimitMs);

    const QList<HistoryRecord::Record> records = HistoryRecord::instance().records();
    QCOMPARE(records.size(), 3);
    for (const HistoryRecord::Record &record : records) {
        QVERIFY(files.contains(record.inputfile));
        QVERIFY2(probeMedia(record.outputfile).isMedia(), qPrintable(record.outputfile));
    }
}

void TestProgram::secondStartBringsTheWindowToTheFront()
{
    const SystemTray tray;
    m_window->close();
    QVERIFY(!m_window->isVisible());
    QProcess second;
    second.start(builtProgram(QStringLiteral("morvane")), QStringList());
    QTRY_COMPARE_WITH_TIMEOUT(second.state(), QProcess::NotRunning, endLimitMs);
    QCOMPARE(second.exitCode(), 0);
    QTRY_VERIFY(m_window->isVisible() && m_window->isActiveWindow());
    // Its keyboard lives.
    bool isAnswered = false;
    whenModal("ExitTipsDialog", [&isAnswered](QWidget &dialog) {
        isAnswered = true;
        press(dialog, "btnClose");
    });
    QTRY_VERIFY(Desktop::hasKeyboard(*m_window));
    Desktop::key("ctrl+q");
    QTRY_VERIFY(isAnswered);
}

void TestProgram::leavesNothingBehind()
{
    m_window.reset();
    QVERIFY(processesWith(m_folder.path()).isEmpty());
    QCOMPARE(QDir(m_folder.filePath(QStringLiteral("out"))).entryList(QDir::Files).size(), 3);
}

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    AppInstance instance(argc, argv);
    if (!instance.init())
        return 1;
    TestProgram test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_program.moc"
