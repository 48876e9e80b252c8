// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"
#include "controls/elidedlabel.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "support/casename.h"
#include "support/pagetest.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QLineEdit>
#include <QRadioButton>

namespace {

using ConvertPage = PageTest<MediaConvertFunctionPage>;

constexpr quint32 noPreset = 0;
constexpr quint32 mp4AsSource = 1003001;
constexpr quint32 mp4Small = 1003005;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;
constexpr quint32 mp3Preset = 1200001;
constexpr int endLimitMs = 60000;

// Opens the details that a row's button shows; gives their cause.
QString causeBehind(const QWidget &row, const char *button)
{
    QString cause;
    whenModal("FailureDetailsDialog", [&](QWidget &dialog) {
        cause = child<QLabel>(dialog, "lblCause")->text();
        shoot(dialog, button);
        press(dialog, "btnCopy");
        press(dialog, "btnOK");
    });
    press(row, button);
    return cause;
}

} // namespace

// The page as its user meets it: real intake, real dialogs, real tools.
class TestConvertPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeClip(m_clip);
        makeClip(m_long, {20});
        makeClip(m_sound, {1, 0});
    }

    void cleanup() { QTRY_VERIFY(processesWith(m_media.path()).isEmpty()); }

    void convertsThreeFilesFromIntakeToHistory()
    {
        HistoryRecord::instance().clear();
        ConvertPage test(FunctionSection::converter, mp4AsSource);
        QVERIFY(test.shown && test.isEmptyShown());
        shoot(*test.page, "convert_empty");
        const QString second = media("-b.mp4"_s);
        QFile::copy(m_clip, second);
        test.addRows({m_clip, second, m_sound});
        QVERIFY(!test.isEmptyShown());
        QTRY_COMPARE(test.text(0, "lblInRes"), "320x240"_s);

        press(*child(*test.page, "wdtChoices"), "btnFormatSet");
        pickPreset(mp4Small);
        QCOMPARE(child<QLabel>(*test.page, "lblTextFormatSet")->text(), "MP4 SD 480P"_s);
        QCOMPARE(test.text(0, "lblOutRes"), "640x480"_s);
        QTRY_VERIFY(!child<QLabel>(*test.row(0), "lblVideo")->pixmap(Qt::ReturnByValue).isNull());
        shoot(*test.page, "convert_idle");

        QCOMPARE(test.startAllText(), "全部转换"_s);
        press(*test.page, "btnConvertAll");
        QCOMPARE(test.startAllText(), "正在转换"_s);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(test.statePage(i), 1);
            QCOMPARE(test.text(i, "lblProgress"), "等待中"_s);
        }
        // A second press changes nothing while the batch runs.
        press(*test.page, "btnConvertAll");
        for (int i = 0; i < 3; ++i)
            QTRY_COMPARE_WITH_TIMEOUT(test.statePage(i), 2, endLimitMs);
        QTRY_COMPARE(test.startAllText(), "全部转换"_s);
        shoot(*test.page, "convert_done");

        QCOMPARE(test.results().size(), 3);
        const QList<HistoryRecord::Record> records = HistoryRecord::instance().records();
        QCOMPARE(records.size(), 3);
        const QStringList inputs{m_clip, second, m_sound};
        for (int i = 0; i < 3; ++i) {
            const HistoryRecord::Record &record = records.at(2 - i);
            QCOMPARE(record.inputfile, inputs.at(i));
            QCOMPARE(record.outputfile, test.row(i)->outputPath());
            QVERIFY(probeMedia(record.outputfile).isMedia());
        }
        QCOMPARE(probeMedia(records.at(2).outputfile).size().width(), 640);
        QTRY_VERIFY(test.text(0, "lblOutSize").endsWith("KB"_s));
    }

    // Instead of passing it over.
    void tellsOfUndecodableNames()
    {
        ConvertPage test(FunctionSection::converter, mp4AsSource);
        const QString lost = m_media.filePath("t\uFFFD.mp4"_s);
        const QString said = askedBy([&] { test.add({lost, m_clip}); }, "btnOK");
        QVERIFY2(said.contains("UTF-8"_s) && said.contains("t\uFFFD.mp4"_s), qPrintable(said));
        QCOMPARE(test.list()->count(), 1);
    }

    void asksForAPreset()
    {
        ConvertPage test(FunctionSection::converter, noPreset);
        test.addRows({m_clip});
        QCOMPARE(test.text(0, "lblOutFormat"), "MP4"_s);
        for (const char *button : {"btnConvertAll", "btnConvert"}) {
            const auto start = [&] { press(*test.page, button); };
            QVERIFY(!askedBy(start, "btnOK", "MediaFormatSetTipsDialog").isEmpty());
            QCOMPARE(test.statePage(0), 0);
        }
    }

    void rowFacts()
    {
        const auto check = [&](const char *caseName, quint32 preset, const QString &format,
                               const QString &resolution) {
            const CaseName inCase(caseName);
            ConvertPage test(FunctionSection::converter, preset);
            test.addRows({m_clip});
            QTRY_COMPARE(test.text(0, "lblInRes"), "320x240"_s);
            QCOMPARE(test.text(0, "lblInFormat"), "MP4"_s);
            QCOMPARE(test.text(0, "lblOutFormat"), format);
            QCOMPARE(test.text(0, "lblOutRes"), resolution);
            QCOMPARE(test.text(0, "lblInDuration"), test.text(0, "lblOutDuration"));
            QCOMPARE(child<QPushButton>(*test.row(0), "btnConvert")->text(), "转换(极速)"_s);
            QVERIFY(child(*test.row(0), "btnCut")->isEnabled());
        };
        check("as the source", mp4AsSource, "MP4"_s, "320x240"_s);
        check("sound alone", mp3Preset, "MP3"_s, QString());
    }

    void namesTheResult()
    {
        const auto check = [&](const char *caseName, const QString &typed, const QString &name) {
            const CaseName inCase(caseName);
            ConvertPage test(FunctionSection::converter, mp4Small);
            test.addRows({m_clip, m_clip});
            for (int i = 0; i < 2; ++i) {
                press(*test.row(i), "btnEdit");
                auto *edit = child<QLineEdit>(*test.row(i), "edtText");
                edit->setText(typed);
                QTest::keyClick(edit, Qt::Key_Return);
            }
            press(*test.page, "btnConvertAll");
            QTRY_COMPARE_WITH_TIMEOUT(test.statePage(1), 2, endLimitMs);
            const QFileInfo file(name);
            const QString taken = file.completeBaseName() + "(2)."_s + file.suffix();
            QCOMPARE(QFileInfo(test.row(0)->outputPath()).fileName(), name);
            QCOMPARE(QFileInfo(test.row(1)->outputPath()).fileName(), taken);
            for (int i = 0; i < 2; ++i)
                QVERIFY(QFile::exists(test.row(i)->outputPath()));
        };
        check("another name", "新 名 %d"_s, "新 名 %d.mp4"_s);
        check("no path", "../a"_s, ".._a.mp4"_s);
        check("nothing", "  "_s, QFileInfo(m_clip).fileName());
    }

    void choicesReachOnlyIdleRows()
    {
        ConvertPage test(FunctionSection::converter, mp4Huge);
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

    void speedMenu()
    {
        ConvertPage test(FunctionSection::converter, mp4Small);
        test.addRows({m_clip});
        press(*test.row(0), "btnSpeedSwitch");
        QWidget *menu = nullptr;
        QTRY_VERIFY((menu = visibleWindow("ConvertSpeedSwitchMenu")));
        for (QRadioButton *button : menu->findChildren<QRadioButton *>()) {
            if (!button->isChecked())
                button->click();
        }
        QCOMPARE(child<QPushButton>(*test.row(0), "btnConvert")->text(), "转换(原速)"_s);
        QCOMPARE(test.param(0).speed, 0);
    }

    void pausedBatchEndsAndResumes()
    {
        ConvertPage test(FunctionSection::converter, mp4Huge);
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
        ConvertPage test(FunctionSection::converter, mp4Huge);
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
        QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
    }

    void deleteWhileRunning()
    {
        ConvertPage test(FunctionSection::converter, mp4Huge);
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
        QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
        QVERIFY(test.results().isEmpty());
    }

    void failureIsExplained()
    {
        const auto check = [&](const char *caseName, bool badSource) {
            const CaseName inCase(caseName);
            ConvertPage test(FunctionSection::converter, mp4Small);
            const QString broken = media("broken.mp4"_s);
            writeTestFile(broken, QByteArray(20000, 'x'));
            if (!badSource)
                writeTestFile(test.out());
            test.addRows({badSource ? broken : m_clip, m_clip});
            press(*test.row(0), "btnConvert");
            QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::ERROR, endLimitMs);
            QCOMPARE(test.statePage(0), 0);
            auto *error = child<QLabel>(*test.row(0), "lblErrorConvert");
            QVERIFY(error->isVisible());
            QCOMPARE(error->text(), "转换失败"_s);
            QVERIFY(!error->toolTip().isEmpty());
            shoot(*test.page, badSource ? "convert_failed" : "convert_failed_folder");

            const QString shown = causeBehind(*test.row(0), "btnErrorDetail");
            QCOMPARE(shown, test.row(0)->task()->failure().cause);
            QVERIFY(QApplication::clipboard()->text().startsWith(shown));
            // The row can be tried again, and the error goes with the new start.
            press(*test.row(0), "btnConvert");
            QTRY_VERIFY(!error->isVisible());
            QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::ERROR, endLimitMs);
        };
        check("no media", true);
        check("no folder to write to", false);
    }

    // What a finished result lacks stands in the row, with the tool's words behind it.
    void remarksOnAResult()
    {
        const QString whole = media("whole.mkv"_s);
        makeClip(whole, {6});
        QFile file(whole);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString cut = media("cut.mkv"_s);
        writeTestFile(cut, file.read(file.size() / 2));
        ConvertPage test(FunctionSection::converter, mp4Small);
        test.addRows({cut, m_clip});
        press(*test.row(1), "btnConvert");
        press(*test.row(0), "btnConvert");
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(1), 2, endLimitMs);
        QVERIFY(!child<QWidget>(*test.row(1), "wdtRemark")->isVisible());
        auto *remark = child<ElidedLabel>(*test.row(0), "lblRemark");
        QVERIFY(remark->isVisible());
        QVERIFY2(remark->fullText().startsWith("比源文件短"_s), qPrintable(remark->fullText()));
        shoot(*test.page, "convert_remark");
        QCOMPARE(causeBehind(*test.row(0), "btnRemarkDetail"),
                 test.row(0)->task()->remarks().texts.join(u'\n'));
    }

    void opensAndReveals()
    {
        ConvertPage test(FunctionSection::converter, mp4Small);
        test.addRows({m_clip});
        QDesktopServices::setUrlHandler("file"_s, this, "openUrl");
        press(*test.row(0), "btnPlaySrc");
        QCOMPARE(m_opened.toLocalFile(), m_clip);
        press(*test.row(0), "btnConvert");
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
        press(*test.row(0), "btnPlayDst");
        QWidget *preview = nullptr;
        QTRY_VERIFY((preview = visibleWindow("MediaPreviewWnd")));
        QTRY_COMPARE(preview->findChild<CSVideoPlayer *>()->fileName(), test.row(0)->outputPath());
        delete preview;
        auto *reveal = child<QPushButton>(*test.row(0), "btnOpenDir");
        press(*test.row(0), "btnOpenDir");
        QVERIFY(!reveal->isEnabled());
        QTRY_VERIFY(reveal->isEnabled());
        QDesktopServices::unsetUrlHandler("file"_s);
    }

    void destroyedWhileWorking()
    {
        ConvertPage test(FunctionSection::converter, mp4Huge);
        test.addRows({m_long, m_clip});
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        test.page.reset();
        QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
        QVERIFY(test.results().isEmpty());
    }

    void openUrl(const QUrl &url) { m_opened = url; }

private:
    QString media(const QString &name) const { return m_media.filePath(name); }

    QTemporaryDir m_media;
    QString m_clip = media("假期 100% \"x\" 'y'.2024.mp4"_s);
    QString m_long = media("long.mp4"_s);
    QString m_sound = media("song.mp3"_s);
    QUrl m_opened;
};

QTEST_MAIN(TestConvertPage)
#include "tst_convertpage.moc"
