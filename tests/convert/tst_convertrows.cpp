// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "resources/look.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

#include <QLineEdit>
#include <QTableWidget>
#include <QTimeEdit>
#include <QtTest>

namespace {

constexpr quint32 mp4Small = 1003005;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;
constexpr int endLimitMs = 90000;

struct RowsTest : PageTest<MediaConvertFunctionPage>
{
    explicit RowsTest(quint32 preset) : PageTest(FunctionSection::converter, preset) {}

    void addRows(const QStringList &files)
    {
        add(files);
        QTRY_COMPARE(list()->count(), files.size());
        for (int i = 0; i < files.size(); ++i)
            QTRY_VERIFY(child(*row(i), "btnCut") && child(*row(i), "btnCut")->isEnabled());
    }
    /// Waits for a question, answers it, and presses what makes it asked.
    QString asked(const std::function<void()> &act, bool agree) const
    {
        QString text;
        whenModal("MediaMessageBox", [&](QWidget &box) {
            text = child<QLabel>(box, "lblText")->text();
            shoot(box, "row_question");
            press(box, agree ? "btnOK" : "btnCancel");
        });
        act();
        return text;
    }
    QString asked(const QWidget &parent, const char *button, bool agree) const
    {
        return asked([&] { press(parent, button); }, agree);
    }
    /// Cuts the first seconds off in the row's editor, once `before` has come true there.
    template<class Before>
    void cutRow(int index, int fromMs, Before before)
    {
        whenModal("VideoCutDialog", [&](QWidget &dialog) {
            const bool came = QTest::qWaitFor(before, endLimitMs);
            child<QTimeEdit>(dialog, "tedtStart")->setTime(QTime(0, 0).addMSecs(fromMs));
            press(dialog, "btnSave");
            QVERIFY(came);
        });
        press(*row(index), "btnCut");
    }
};

} // namespace

// What rows, their list and the bar below say and do while things change.
class TestConvertRows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void cutSavedAfterTheRun();
    void cutSavedDuringTheRun();
    void waitingRows();
    void asksBeforeWorkIsLost();
    void saysWhatToDo();
    void rowsFollowTheWindow();
    void nameCanBeEditedAgain();
    void outputFolderAsTyped_data();
    void outputFolderAsTyped();
    void uprightSource();

private:
    QString media(const QString &name) const { return m_media.filePath(name); }

    QTemporaryDir m_media;
    QString m_clip = media(QStringLiteral("clip.mp4"));
    QString m_long = media(QStringLiteral("long.mp4"));
};

void TestConvertRows::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    ClipPlan plan;
    plan.seconds = 3;
    makeClip(m_clip, plan);
    plan.seconds = 20;
    makeClip(m_long, plan);
}

void TestConvertRows::cleanup()
{
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
}

void TestConvertRows::cutSavedAfterTheRun()
{
    RowsTest test(mp4Small);
    test.addRows({m_clip});
    const auto finished = [&] { return test.state(0) == MediaTask::FINISHED; };
    press(*test.row(0), "btnConvert");
    // It waits for its turn, and has run before the editor is closed.
    const QString question = test.asked([&] { test.cutRow(0, 2000, finished); }, true);
    QVERIFY(!question.isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(test.results().size(), 2, endLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
    QVERIFY(std::abs(probeMedia(test.row(0)->outputPath()).seconds - 1) < 0.2);
    QCOMPARE(test.text(0, "lblOutDuration"), QStringLiteral("00:00:01"));
}

void TestConvertRows::cutSavedDuringTheRun()
{
    RowsTest test(mp4Huge);
    test.addRows({m_long});
    const auto runs = [&] { return test.state(0) == MediaTask::RUNNING; };
    const auto *param = static_cast<ConvertTaskParam *>(test.row(0)->task()->param());
    press(*test.row(0), "btnConvert");
    QVERIFY(!test.asked([&] { test.cutRow(0, 5000, runs); }, false).isEmpty());
    // Left as it is, the row shows what it makes.
    QCOMPARE(test.state(0), MediaTask::RUNNING);
    QVERIFY(!param->timeRange);
    QCOMPARE(test.text(0, "lblOutDuration"), QStringLiteral("00:00:20"));
    press(*test.row(0), "btnStop");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::STOPED, endLimitMs);
    press(*test.row(0), "btnConvert");
    QVERIFY(!test.asked([&] { test.cutRow(0, 19500, runs); }, true).isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
    QCOMPARE(test.results().size(), 1);
    QVERIFY(std::abs(probeMedia(test.row(0)->outputPath()).seconds - 0.5) < 0.2);
}

void TestConvertRows::waitingRows()
{
    RowsTest test(mp4Huge);
    test.addRows({m_long, m_clip, m_clip});
    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    for (const int row : {1, 2})
        QCOMPARE(test.text(row, "lblProgress"), QStringLiteral("等待中"));
    QVERIFY(test.text(0, "lblProgress").endsWith(QLatin1Char('%')));
    shoot(*test.page, "rows_waiting");

    // Paused, it lets its turn pass; stopped, it is idle.
    press(*test.row(1), "btnPause");
    QVERIFY(child<QPushButton>(*test.row(1), "btnPause")->isChecked());
    QCOMPARE(test.statePage(1), 1);
    press(*test.row(2), "btnPause");
    press(*test.row(2), "btnStop");
    QCOMPARE(test.statePage(2), 0);
    press(*test.row(0), "btnStop");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::STOPED, endLimitMs);
    QTRY_COMPARE(test.startAllText(), QStringLiteral("全部转换"));
    press(*test.row(2), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(2), MediaTask::RUNNING, endLimitMs);
    QCOMPARE(test.state(1), MediaTask::UNSTARTED);
    press(*test.row(2), "btnStop");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(2), MediaTask::STOPED, endLimitMs);
    press(*test.row(1), "btnPause");
    QCOMPARE(test.text(1, "lblProgress"), QStringLiteral("等待中"));
    QTRY_COMPARE_WITH_TIMEOUT(test.state(1), MediaTask::RUNNING, endLimitMs);
    press(*test.row(1), "btnStop");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(1), MediaTask::STOPED, endLimitMs);
}

void TestConvertRows::asksBeforeWorkIsLost()
{
    RowsTest test(mp4Huge);
    test.addRows({m_long, m_clip});
    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    QVERIFY(!test.asked(*test.row(0), "btnDel", false).isEmpty());
    // Keys act in an active window alone.
    QVERIFY(QTest::qWaitForWindowActive(test.page->window()));
    test.row(0)->setFocus();
    QVERIFY(!test.asked([&] { QTest::keyClick(test.row(0), Qt::Key_Delete); }, false).isEmpty());
    QVERIFY(!test.asked(*test.page, "btnClear", false).isEmpty());
    QCOMPARE(test.state(0), MediaTask::RUNNING);
    QCOMPARE(test.list()->count(), 2);
    // One that doesn't work yet just goes.
    press(*test.row(1), "btnDel");
    QCOMPARE(test.list()->count(), 1);
    QVERIFY(!test.asked(*test.page, "btnClear", true).isEmpty());
    QVERIFY(test.isEmptyShown());

    HistoryRecord::instance().add({QStringLiteral("2024.01.01 01:01"), m_clip, m_clip});
    for (const bool agree : {false, true}) {
        QString question;
        whenModal("HistoryRecordCovertDialog", [&](QWidget &dialog) {
            question = test.asked(dialog, "btnClearData", agree);
            QCOMPARE(child<QTableWidget>(dialog, "tableWidget")->rowCount() == 0, agree);
            press(dialog, "btnClose");
        });
        press(*test.page, "btnHistory");
        QVERIFY(!question.isEmpty());
        QCOMPARE(HistoryRecord::instance().records().isEmpty(), agree);
    }
}

void TestConvertRows::saysWhatToDo()
{
    RowsTest test(mp4Small);
    QCOMPARE(test.asked(*test.page, "btnConvertAll", true), QStringLiteral("请先添加文件"));
    test.addRows({m_clip});
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
    QVERIFY(!test.asked(*test.page, "btnConvertAll", true).isEmpty());
}

void TestConvertRows::rowsFollowTheWindow()
{
    RowsTest test(mp4Small);
    test.addRows({m_clip, m_clip, m_clip});
    const auto fits = [&] {
        for (int i = 0; i < test.list()->count(); ++i) {
            const int width = test.list()->viewport()->width();
            if (test.rowWidget(i)->width() != width ||
                child(*test.row(i), "btnDel")->geometry().right() > width)
                return false;
        }
        return true;
    };
    QTRY_VERIFY(fits());
    // As the main window's layout does it: at once, and while another page is shown.
    QWidget window;
    window.resize(1800, 900);
    test.page->setParent(&window);
    test.page->resize(window.size());
    test.page->show();
    window.show();
    QTRY_VERIFY(fits());
    // Laid out in the wide view, as any change of the list does it.
    test.list()->doItemsLayout();
    test.page->resize(900, 600);
    QTRY_VERIFY(fits());
    test.page->resize(window.size());
    QTRY_VERIFY(fits());
    test.list()->doItemsLayout();
    test.page->hide();
    test.page->resize(900, 600);
    test.page->show();
    QTRY_VERIFY(fits());
    test.page->setParent(nullptr);
}

void TestConvertRows::nameCanBeEditedAgain()
{
    RowsTest test(mp4Huge);
    test.addRows({m_long});
    auto *pencil = child<QPushButton>(*test.row(0), "btnEdit");
    const QImage before = pencil->grab().toImage();
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    QVERIFY(pencil->width() == 0 || !pencil->isVisible());
    press(*test.row(0), "btnStop");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::STOPED, endLimitMs);
    QTRY_COMPARE(pencil->size(), before.size());
    QCOMPARE(child<QPushButton>(*test.row(0), "btnEdit")->grab().toImage(), before);
}

void TestConvertRows::outputFolderAsTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("folder");
    const QString home = QDir::homePath();
    QTest::newRow("home") << QStringLiteral("~/my films") << home + QLatin1String("/my films");
    QTest::newRow("relative") << QStringLiteral("new/folder")
                              << home + QLatin1String("/new/folder");
    QTest::newRow("nothing") << QString() << defaultOutputDir(MediaFunction::Convert);
}

void TestConvertRows::outputFolderAsTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, folder);
    RowsTest test(mp4Small);
    auto *field = child<QLineEdit>(*test.page, "ledtCustomPath");
    QCOMPARE(field->placeholderText(), defaultOutputDir(MediaFunction::Convert));
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, typed);
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(field->text(), typed.isEmpty() ? QString() : folder);
    test.addRows({m_clip});
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
    QCOMPARE(test.row(0)->outputPath(), folder + QLatin1String("/clip.mp4"));
    QVERIFY(QFile::exists(test.row(0)->outputPath()));
}

void TestConvertRows::uprightSource()
{
    const QString upright = media(QStringLiteral("upright.mp4"));
    QCOMPARE(runTool(QStringLiteral("ffmpeg"),
                     {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), m_clip,
                      QStringLiteral("-c"), QStringLiteral("copy"), QStringLiteral("-metadata:s:v"),
                      QStringLiteral("rotate=270"), upright})
                 .exitCode,
             0);
    constexpr quint32 mp4AsSource = 1003001;
    RowsTest test(mp4AsSource);
    test.addRows({upright});
    QCOMPARE(test.text(0, "lblInRes"), QStringLiteral("240x320"));
    QCOMPARE(test.text(0, "lblOutRes"), QStringLiteral("240x320"));
}

QTEST_MAIN(TestConvertRows)
#include "tst_convertrows.moc"
