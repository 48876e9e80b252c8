// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "support/mediatest.h"
#include "support/pagetest.h"

#include <QLineEdit>

namespace {

constexpr quint32 mp4Small = 1003005;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;
constexpr int endLimitMs = 60000;

struct BatchTest : PageTest<MediaConvertFunctionPage>
{
    BatchTest() : PageTest(FunctionSection::converter, mp4Huge) {}
};

} // namespace

// Rows that wait, run, are paused, stopped or deleted, alone and by the page's start.
class TestConvertBatch : public MediaTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeClip(m_clip);
        makeClip(m_long, {20});
    }

    void choicesReachOnlyIdleRows()
    {
        BatchTest test;
        test.addRows({m_long, m_clip, m_clip});
        press(*test.row(0), "btnConvert");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        // One that waits has its choices, too.
        press(*test.row(2), "btnConvert");
        QVERIFY(!child(*test.row(0), "btnCut")->isEnabled());
        QVERIFY(child<ComplexEdit>(*test.row(0), "cedtOutputName")->isReadOnly());

        press(*child(*test.page, "wdtChoices"), "btnFormatSet");
        // The popup opens on the category of the present preset.
        pickPreset(mp4Small);
        const QString other = test.folder.filePath("other"_s);
        FileChooser::setNextAnswer({other});
        press(*test.page, "btnChangePath");
        QCOMPARE(child<QLineEdit>(*test.page, "ledtCustomPath")->text(), other);
        QCOMPARE(test.row(0)->encParamInfoID(), mp4Huge);
        QCOMPARE(test.row(1)->encParamInfoID(), mp4Small);
        QCOMPARE(test.row(2)->encParamInfoID(), mp4Huge);
        QVERIFY(test.row(2)->outputPath().startsWith(test.out()));
        QVERIFY(test.row(0)->outputPath().startsWith(test.out()));
        QVERIFY(test.row(1)->outputPath().startsWith(other));
        const FunctionSettings &settings = FunctionSettings::instance();
        const QLatin1String section = FunctionSection::converter;
        QCOMPARE(settings.value(section, FunctionKey::outPath), QVariant(other));
        QCOMPARE(settings.value(section, FunctionKey::encParamID), QVariant(mp4Small));

        press(*test.row(2), "btnStop");
        press(*test.row(0), "btnStop");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::STOPED, endLimitMs);
        QCOMPARE(test.statePage(0), 0);
        QVERIFY(child(*test.row(0), "btnCut")->isEnabled());
        QVERIFY(test.results().isEmpty());
    }

    void waitingRows()
    {
        BatchTest test;
        test.addRows({m_long, m_clip, m_clip});
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        for (const int row : {1, 2})
            QCOMPARE(test.text(row, "lblProgress"), "等待中"_s);
        QVERIFY(test.text(0, "lblProgress").endsWith(u'%'));
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
        QTRY_COMPARE(test.startAllText(), "全部转换"_s);
        press(*test.row(2), "btnConvert");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(2), MediaTask::RUNNING, endLimitMs);
        QCOMPARE(test.state(1), MediaTask::UNSTARTED);
        press(*test.row(2), "btnStop");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(2), MediaTask::STOPED, endLimitMs);
        press(*test.row(1), "btnPause");
        QCOMPARE(test.text(1, "lblProgress"), "等待中"_s);
        QTRY_COMPARE_WITH_TIMEOUT(test.state(1), MediaTask::RUNNING, endLimitMs);
        press(*test.row(1), "btnStop");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(1), MediaTask::STOPED, endLimitMs);
    }

    void pausedBatchEndsAndResumes()
    {
        BatchTest test;
        test.addRows({m_long});
        press(*test.page, "btnConvertAll");
        QTRY_VERIFY_WITH_TIMEOUT(isGoing(test.text(0, "lblProgress")), endLimitMs);
        shoot(*test.page, "convert_working");
        press(*test.row(0), "btnPause");
        QTRY_COMPARE(test.state(0), MediaTask::PAUSED);
        QCOMPARE(test.startAllText(), "全部转换"_s);
        QCOMPARE(test.statePage(0), 1);
        // What is held tells no progress; what takes the row's picture may yet be at work.
        QTRY_VERIFY(areHeld(processesWith(m_long)));
        QCOMPARE(test.text(0, "lblTimeName"), "已暂停"_s);
        QVERIFY(child(*test.row(0), "lblTimeRemained")->isHidden());
        const QString progress = test.text(0, "lblProgress");

        press(*test.row(0), "btnPause");
        QTRY_COMPARE(test.state(0), MediaTask::RESUMED);
        QTRY_VERIFY_WITH_TIMEOUT(test.text(0, "lblProgress") != progress, endLimitMs);
        QCOMPARE(test.text(0, "lblTimeName"), "剩余时间："_s);
        QTRY_VERIFY_WITH_TIMEOUT(test.text(0, "lblTimeRemained").startsWith("00:"_s), endLimitMs);

        // Paused again, a new batch takes it up.
        press(*test.row(0), "btnPause");
        QTRY_COMPARE(test.state(0), MediaTask::PAUSED);
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE(test.state(0), MediaTask::RESUMED);
        QVERIFY(!child<QPushButton>(*test.row(0), "btnPause")->isChecked());
        press(*test.row(0), "btnPause");
        QTRY_COMPARE(test.state(0), MediaTask::PAUSED);
        press(*test.row(0), "btnStop");
        QTRY_COMPARE(test.state(0), MediaTask::STOPED);
        QCOMPARE(test.startAllText(), "全部转换"_s);
        QCOMPARE(test.text(0, "lblTimeRemained"), "正在计算"_s);

        // Stopped in a pause, it doesn't begin with one.
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        QVERIFY(!child<QPushButton>(*test.row(0), "btnPause")->isChecked());
    }

    void stopOfOneLetsTheNextRun()
    {
        BatchTest test;
        test.addRows({m_long, m_clip, m_long});
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        // One that waits leaves at once.
        press(*test.row(2), "btnStop");
        QCOMPARE(test.statePage(2), 0);
        QCOMPARE(test.state(1), MediaTask::UNSTARTED);
        press(*test.row(0), "btnStop");
        QCOMPARE(test.startAllText(), "正在转换"_s);
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(1), 2, endLimitMs);
        QCOMPARE(test.startAllText(), "全部转换"_s);
        QCOMPARE(test.results().size(), 1);
        // Done rows are left out of the next batch.
        press(*test.page, "btnConvertAll");
        QCOMPARE(test.statePage(1), 2);
        QCOMPARE(test.statePage(0), 1);
        QVERIFY(!askedBy([&] { press(*test.page, "btnClear"); }, "btnOK").isEmpty());
        QTRY_VERIFY(test.isEmptyShown());
        QTRY_VERIFY(!isAnyToolAtWork());
    }

    void deleteWhileRunning()
    {
        BatchTest test;
        test.addRows({m_long, m_long});
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        QVERIFY(!askedBy([&] { press(*test.row(0), "btnDel"); }, "btnOK").isEmpty());
        QCOMPARE(test.list()->count(), 1);
        QVERIFY(!test.isEmptyShown());
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        // By the keyboard this time.
        test.row(0)->setFocus();
        QTest::keyClick(test.row(0), Qt::Key_Tab);
        QVERIFY(test.row(0)->isAncestorOf(QApplication::focusWidget()));
        askedBy([] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete); }, "btnOK");
        QTRY_VERIFY(test.isEmptyShown());
        QTRY_COMPARE(test.startAllText(), "全部转换"_s);
        QTRY_VERIFY(!isAnyToolAtWork());
        QVERIFY(test.results().isEmpty());
    }

    void destroyedWhileWorking()
    {
        BatchTest test;
        test.addRows({m_long, m_clip});
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        test.page.reset();
        QTRY_VERIFY(!isAnyToolAtWork());
        QVERIFY(test.results().isEmpty());
    }

private:
    QString m_clip = media("clip.mp4"_s);
    QString m_long = media("long.mp4"_s);
};

QTEST_MAIN(TestConvertBatch)
#include "tst_convertbatch.moc"
