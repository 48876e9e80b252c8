// SPDX-License-Identifier: MIT
#include "cut/cutfields.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "support/casename.h"
#include "support/mediatest.h"
#include "support/pagetest.h"

#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

namespace {

constexpr quint32 mp4Small = 1003005;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;
constexpr int endLimitMs = 90000;

struct RowsTest : PageTest<MediaConvertFunctionPage>
{
    explicit RowsTest(quint32 preset) : PageTest(FunctionSection::converter, preset) {}

    void addRows(const QStringList &files) { PageTest::addRows(files, "btnCut"); }
    static QString asked(const QWidget &parent, const char *button, bool agree)
    {
        return askedBy([&] { press(parent, button); }, agree ? "btnOK" : "btnCancel");
    }
    /// Cuts the first seconds off in the row's editor, once `before` has come true there.
    template<class Before>
    void cutRow(int index, int fromMs, Before before)
    {
        whenModal("VideoCutDialog", [&](QWidget &dialog) {
            const bool came = QTest::qWaitFor(before, endLimitMs);
            setTime(dialog, "tedtStart", fromMs);
            press(dialog, "btnSave");
            QVERIFY(came);
        });
        press(*row(index), "btnCut");
    }
};

} // namespace

// What rows, their list and the bar below say and do while things change.
class TestConvertRows : public MediaTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeClip(m_clip, {3});
        makeClip(m_long, {20});
    }

    void cutSavedAfterTheRun()
    {
        RowsTest test(mp4Small);
        test.addRows({m_clip});
        const auto finished = [&] { return test.state(0) == MediaTask::FINISHED; };
        press(*test.row(0), "btnConvert");
        // It waits for its turn, and has run before the editor is closed.
        QVERIFY(!askedBy([&] { test.cutRow(0, 2000, finished); }, "btnOK").isEmpty());
        // Held and taken back, it can still do its work anew.
        press(*test.row(0), "btnPause");
        press(*test.row(0), "btnStop");
        press(*test.row(0), "btnConvert");
        QTRY_COMPARE_WITH_TIMEOUT(test.results().size(), 2, endLimitMs);
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
        QVERIFY(std::abs(probeMedia(test.row(0)->outputPath()).seconds - 1) < 0.2);
        QTRY_COMPARE(test.text(0, "lblOutDuration"), "00:00:01"_s);
    }

    void cutSavedDuringTheRun()
    {
        RowsTest test(mp4Huge);
        test.addRows({m_long});
        const auto runs = [&] { return test.state(0) == MediaTask::RUNNING; };
        press(*test.row(0), "btnConvert");
        QVERIFY(!askedBy([&] { test.cutRow(0, 5000, runs); }, "btnCancel").isEmpty());
        // Left as it is, the row shows what it makes.
        QCOMPARE(test.state(0), MediaTask::RUNNING);
        QVERIFY(!test.param(0).timeRange);
        QCOMPARE(test.text(0, "lblOutDuration"), "00:00:20"_s);
        press(*test.row(0), "btnStop");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::STOPED, endLimitMs);
        press(*test.row(0), "btnConvert");
        QVERIFY(!askedBy([&] { test.cutRow(0, 19500, runs); }, "btnOK").isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
        QCOMPARE(test.results().size(), 1);
        QVERIFY(std::abs(probeMedia(test.row(0)->outputPath()).seconds - 0.5) < 0.2);
    }

    void asksBeforeWorkIsLost()
    {
        RowsTest test(mp4Huge);
        test.addRows({m_long, m_clip});
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        QVERIFY(!test.asked(*test.row(0), "btnDel", false).isEmpty());
        // Keys act in an active window alone.
        QVERIFY(QTest::qWaitForWindowActive(test.page->window()));
        test.row(0)->setFocus();
        const auto pressDelete = [&] { QTest::keyClick(test.row(0), Qt::Key_Delete); };
        QVERIFY(!askedBy(pressDelete, "btnCancel").isEmpty());
        QVERIFY(!test.asked(*test.page, "btnClear", false).isEmpty());
        QCOMPARE(test.state(0), MediaTask::RUNNING);
        QCOMPARE(test.list()->count(), 2);
        // One that doesn't work yet just goes.
        press(*test.row(1), "btnDel");
        QCOMPARE(test.list()->count(), 1);
        QVERIFY(!test.asked(*test.page, "btnClear", true).isEmpty());
        QVERIFY(test.isEmptyShown());

        HistoryRecord::instance().add({"2024.01.01 01:01"_s, m_clip, m_clip});
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

    void saysWhatToDo()
    {
        RowsTest test(mp4Small);
        QCOMPARE(test.asked(*test.page, "btnConvertAll", true), "请先添加文件"_s);
        test.addRows({m_clip});
        press(*test.row(0), "btnConvert");
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
        QVERIFY(!test.asked(*test.page, "btnConvertAll", true).isEmpty());
    }

    void rowsFollowTheWindow()
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

    void nameCanBeEditedAgain()
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

    void outputFolderAsTyped()
    {
        const auto check = [&](const char *caseName, const QString &typed, const QString &folder) {
            const CaseName inCase(caseName);
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
            QCOMPARE(test.convert(0), folder + "/clip.mp4"_s);
            QVERIFY(QFile::exists(folder + "/clip.mp4"_s));
        };
        const QString home = QDir::homePath();
        check("home", "~/my films"_s, home + "/my films"_s);
        check("relative", "new/folder"_s, home + "/new/folder"_s);
        check("nothing", QString(), defaultOutputDir(MediaFunction::Convert));
    }

    void uprightSource()
    {
        const QString upright = media("upright.mp4"_s);
        makeMedia("-i @ -c copy -metadata:s:v rotate=270 @"_s, {m_clip, upright});
        constexpr quint32 mp4AsSource = 1003001;
        RowsTest test(mp4AsSource);
        test.addRows({upright});
        QCOMPARE(test.text(0, "lblInRes"), "240x320"_s);
        QCOMPARE(test.text(0, "lblOutRes"), "240x320"_s);
    }

private:
    QString m_clip = media("clip.mp4"_s);
    QString m_long = media("long.mp4"_s);
};

QTEST_MAIN(TestConvertRows)
#include "tst_convertrows.moc"
