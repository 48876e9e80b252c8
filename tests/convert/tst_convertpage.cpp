// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"
#include "controls/elidedlabel.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "resources/look.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"
#include "support/utf8.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QtTest>

namespace {

using ConvertPage = PageTest<MediaConvertFunctionPage>;

constexpr quint32 noPreset = 0;
constexpr quint32 mp4AsSource = 1003001;
constexpr quint32 mp4Small = 1003005;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;
constexpr quint32 mp3Preset = 1200001;
constexpr int endLimitMs = 60000;

// To the next question.
void agree()
{
    whenModal("MediaMessageBox", [](QWidget &box) { press(box, "btnOK"); });
}

} // namespace

// The page as its user meets it: real intake, real dialogs, real tools.
class TestConvertPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void convertsThreeFilesFromIntakeToHistory();
    void asksForAPreset();
    void rowFacts_data();
    void rowFacts();
    void namesTheResult_data();
    void namesTheResult();
    void choicesReachOnlyIdleRows();
    void speedMenu();
    void pausedBatchEndsAndResumes();
    void stopOfOneLetsTheNextRun();
    void deleteWhileRunning();
    void failureIsExplained_data();
    void failureIsExplained();
    void remarksOnAResult();
    void opensAndReveals();
    void destroyedWhileWorking();

    void openUrl(const QUrl &url) { m_opened = url; }

private:
    QString media(const QString &name) const { return m_media.filePath(name); }

    QTemporaryDir m_media;
    QString m_clip = media(utf8("假期 100% \"x\" 'y'.mp4"));
    QString m_long = media(QStringLiteral("long.mp4"));
    QString m_sound = media(QStringLiteral("song.mp3"));
    QUrl m_opened;
};

void TestConvertPage::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    makeClip(m_clip);
    ClipPlan plan;
    plan.seconds = 20;
    makeClip(m_long, plan);
    plan.seconds = 1;
    plan.width = 0;
    makeClip(m_sound, plan);
}

void TestConvertPage::cleanup()
{
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
}

void TestConvertPage::convertsThreeFilesFromIntakeToHistory()
{
    HistoryRecord::instance().clear();
    ConvertPage test(FunctionSection::converter, mp4AsSource);
    QVERIFY(test.shown);
    QVERIFY(test.isEmptyShown());
    shoot(*test.page, "convert_empty");
    const QString second = media(QStringLiteral("-b.mp4"));
    QFile::copy(m_clip, second);
    test.add({m_clip, second, m_sound});
    QTRY_COMPARE(test.list()->count(), 3);
    QVERIFY(!test.isEmptyShown());
    QTRY_COMPARE(test.text(0, "lblInRes"), QStringLiteral("320x240"));

    press(*child(*test.page, "wdtChoices"), "btnFormatSet");
    pickPreset(mp4Small);
    QCOMPARE(child<QLabel>(*test.page, "lblTextFormatSet")->text(), QStringLiteral("MP4 SD 480P"));
    QCOMPARE(test.text(0, "lblOutRes"), QStringLiteral("640x480"));
    QTRY_VERIFY(!child<QLabel>(*test.row(0), "lblVideo")->pixmap(Qt::ReturnByValue).isNull());
    shoot(*test.page, "convert_idle");

    QCOMPARE(test.startAllText(), QStringLiteral("全部转换"));
    press(*test.page, "btnConvertAll");
    QCOMPARE(test.startAllText(), QStringLiteral("正在转换"));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(test.statePage(i), 1);
        QCOMPARE(test.text(i, "lblProgress"), QStringLiteral("等待中"));
    }
    // A second press changes nothing while the batch runs.
    press(*test.page, "btnConvertAll");
    for (int i = 0; i < 3; ++i)
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(i), 2, endLimitMs);
    QTRY_COMPARE(test.startAllText(), QStringLiteral("全部转换"));
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
    QCOMPARE(probeMedia(records.at(2).outputfile).video.value(QLatin1String("width")).toInt(), 640);
    QTRY_VERIFY(test.text(0, "lblOutSize").endsWith(QLatin1String("KB")));
}

void TestConvertPage::asksForAPreset()
{
    ConvertPage test(FunctionSection::converter, noPreset);
    test.add({m_clip});
    QTRY_COMPARE(test.list()->count(), 1);
    QCOMPARE(test.text(0, "lblOutFormat"), QStringLiteral("MP4"));
    for (const char *button : {"btnConvertAll", "btnConvert"}) {
        bool asked = false;
        whenModal("MediaFormatSetTipsDialog", [&asked](QWidget &dialog) {
            asked = true;
            press(dialog, "btnOK");
        });
        press(*test.page, button);
        QVERIFY(asked);
        QCOMPARE(test.statePage(0), 0);
    }
}

void TestConvertPage::rowFacts_data()
{
    QTest::addColumn<quint32>("preset");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("resolution");
    QTest::newRow("as the source") << mp4AsSource << "MP4"
                                   << "320x240";
    QTest::newRow("a size of its own") << mp4Small << "MP4"
                                       << "640x480";
    QTest::newRow("sound alone") << mp3Preset << "MP3"
                                 << "";
}

void TestConvertPage::rowFacts()
{
    QFETCH(quint32, preset);
    QFETCH(QString, format);
    QFETCH(QString, resolution);
    ConvertPage test(FunctionSection::converter, preset);
    test.add({m_clip});
    QTRY_COMPARE(test.list()->count(), 1);
    QTRY_COMPARE(test.text(0, "lblInRes"), QStringLiteral("320x240"));
    QCOMPARE(test.text(0, "lblInFormat"), QStringLiteral("MP4"));
    QCOMPARE(test.text(0, "lblOutFormat"), format);
    QCOMPARE(test.text(0, "lblOutRes"), resolution);
    QCOMPARE(test.text(0, "lblInDuration"), test.text(0, "lblOutDuration"));
    QCOMPARE(child<QPushButton>(*test.row(0), "btnConvert")->text(), QStringLiteral("转换(极速)"));
    QVERIFY(child(*test.row(0), "btnCut")->isEnabled());
}

void TestConvertPage::namesTheResult_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::newRow("another name") << utf8("新 名 %d") << utf8("新 名 %d.mp4");
    QTest::newRow("no path") << "../a"
                             << ".._a.mp4";
    QTest::newRow("nothing") << "  " << QFileInfo(m_clip).fileName();
}

void TestConvertPage::namesTheResult()
{
    QFETCH(QString, typed);
    QFETCH(QString, name);
    ConvertPage test(FunctionSection::converter, mp4Small);
    test.add({m_clip, m_clip});
    QTRY_COMPARE(test.list()->count(), 2);
    for (int i = 0; i < 2; ++i) {
        press(*test.row(i), "btnEdit");
        auto *edit = child<QLineEdit>(*test.row(i), "edtText");
        edit->setText(typed);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(1), 2, endLimitMs);
    const QFileInfo file(name);
    const QString taken = file.completeBaseName() + QLatin1String("(2).") + file.suffix();
    QCOMPARE(QFileInfo(test.row(0)->outputPath()).fileName(), name);
    QCOMPARE(QFileInfo(test.row(1)->outputPath()).fileName(), taken);
    QVERIFY(QFile::exists(test.row(0)->outputPath()));
    QVERIFY(QFile::exists(test.row(1)->outputPath()));
}

void TestConvertPage::choicesReachOnlyIdleRows()
{
    ConvertPage test(FunctionSection::converter, mp4Huge);
    test.add({m_long, m_clip, m_clip});
    QTRY_COMPARE(test.list()->count(), 3);
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    // One that waits has its choices, too.
    press(*test.row(2), "btnConvert");
    QVERIFY(!child(*test.row(0), "btnCut")->isEnabled());
    QVERIFY(child<ComplexEdit>(*test.row(0), "cedtOutputName")->isReadOnly());

    press(*child(*test.page, "wdtChoices"), "btnFormatSet");
    // The popup opens on the category of the present preset.
    pickPreset(mp4Small);
    const QString other = test.folder.filePath(QStringLiteral("other"));
    FileChooser::setNextAnswer({other});
    press(*test.page, "btnChangePath");
    QCOMPARE(child<QLineEdit>(*test.page, "ledtCustomPath")->text(), other);
    QCOMPARE(test.row(0)->encParamInfoID(), mp4Huge);
    QCOMPARE(test.row(1)->encParamInfoID(), mp4Small);
    QCOMPARE(test.row(2)->encParamInfoID(), mp4Huge);
    QVERIFY(test.row(2)->outputPath().startsWith(test.out()));
    QVERIFY(test.row(0)->outputPath().startsWith(test.out()));
    QVERIFY(test.row(1)->outputPath().startsWith(other));
    QCOMPARE(FunctionSettings::instance().value(FunctionSection::converter, FunctionKey::outPath),
             QVariant(other));
    QCOMPARE(
        FunctionSettings::instance().value(FunctionSection::converter, FunctionKey::encParamID),
        QVariant(mp4Small));

    press(*test.row(2), "btnStop");
    press(*test.row(0), "btnStop");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::STOPED, endLimitMs);
    QCOMPARE(test.statePage(0), 0);
    QVERIFY(child(*test.row(0), "btnCut")->isEnabled());
    QVERIFY(test.results().isEmpty());
}

void TestConvertPage::speedMenu()
{
    ConvertPage test(FunctionSection::converter, mp4Small);
    test.add({m_clip});
    QTRY_COMPARE(test.list()->count(), 1);
    press(*test.row(0), "btnSpeedSwitch");
    QWidget *menu = nullptr;
    QTRY_VERIFY((menu = visibleWindow("ConvertSpeedSwitchMenu")));
    for (QRadioButton *button : menu->findChildren<QRadioButton *>()) {
        if (!button->isChecked())
            button->click();
    }
    QCOMPARE(child<QPushButton>(*test.row(0), "btnConvert")->text(), QStringLiteral("转换(原速)"));
    const auto *param = static_cast<ConvertTaskParam *>(test.row(0)->task()->param());
    QCOMPARE(param->speed, 0);
}

void TestConvertPage::pausedBatchEndsAndResumes()
{
    ConvertPage test(FunctionSection::converter, mp4Huge);
    test.add({m_long});
    QTRY_COMPARE(test.list()->count(), 1);
    press(*test.page, "btnConvertAll");
    QTRY_VERIFY_WITH_TIMEOUT(isGoing(test.text(0, "lblProgress")), endLimitMs);
    shoot(*test.page, "convert_working");
    press(*test.row(0), "btnPause");
    QTRY_COMPARE(test.state(0), MediaTask::PAUSED);
    QCOMPARE(test.startAllText(), QStringLiteral("全部转换"));
    QCOMPARE(test.statePage(0), 1);
    const QString progress = test.text(0, "lblProgress");
    QTest::qWait(700);
    QCOMPARE(test.text(0, "lblProgress"), progress);

    press(*test.row(0), "btnPause");
    QTRY_COMPARE(test.state(0), MediaTask::RESUMED);
    QTRY_VERIFY_WITH_TIMEOUT(test.text(0, "lblProgress") != progress, endLimitMs);
    QVERIFY(test.text(0, "lblTimeRemained").startsWith(QLatin1String("00:")));

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
    QCOMPARE(test.startAllText(), QStringLiteral("全部转换"));
    QCOMPARE(test.text(0, "lblTimeRemained"), QStringLiteral("正在计算"));

    // Stopped in a pause, it doesn't begin with one.
    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    QVERIFY(!child<QPushButton>(*test.row(0), "btnPause")->isChecked());
}

void TestConvertPage::stopOfOneLetsTheNextRun()
{
    ConvertPage test(FunctionSection::converter, mp4Huge);
    test.add({m_long, m_clip, m_long});
    QTRY_COMPARE(test.list()->count(), 3);
    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    // One that waits leaves at once.
    press(*test.row(2), "btnStop");
    QCOMPARE(test.statePage(2), 0);
    QCOMPARE(test.state(1), MediaTask::UNSTARTED);
    press(*test.row(0), "btnStop");
    QCOMPARE(test.startAllText(), QStringLiteral("正在转换"));
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(1), 2, endLimitMs);
    QCOMPARE(test.startAllText(), QStringLiteral("全部转换"));
    QCOMPARE(test.results().size(), 1);
    // Done rows are left out of the next batch.
    press(*test.page, "btnConvertAll");
    QCOMPARE(test.statePage(1), 2);
    QCOMPARE(test.statePage(0), 1);
    agree();
    press(*test.page, "btnClear");
    QTRY_VERIFY(test.isEmptyShown());
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
}

void TestConvertPage::deleteWhileRunning()
{
    ConvertPage test(FunctionSection::converter, mp4Huge);
    test.add({m_long, m_long});
    QTRY_COMPARE(test.list()->count(), 2);
    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    agree();
    press(*test.row(0), "btnDel");
    QCOMPARE(test.list()->count(), 1);
    QVERIFY(!test.isEmptyShown());
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    // By the keyboard this time.
    test.row(0)->setFocus();
    QTest::keyClick(test.row(0), Qt::Key_Tab);
    QVERIFY(test.row(0)->isAncestorOf(QApplication::focusWidget()));
    agree();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QTRY_VERIFY(test.isEmptyShown());
    QTRY_COMPARE(test.startAllText(), QStringLiteral("全部转换"));
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
    QVERIFY(test.results().isEmpty());
}

void TestConvertPage::failureIsExplained_data()
{
    QTest::addColumn<bool>("badSource");
    QTest::newRow("no media") << true;
    QTest::newRow("no folder to write to") << false;
}

void TestConvertPage::failureIsExplained()
{
    QFETCH(bool, badSource);
    ConvertPage test(FunctionSection::converter, mp4Small);
    const QString broken = media(QStringLiteral("broken.mp4"));
    writeTestFile(broken, QByteArray(20000, 'x'));
    if (!badSource)
        writeTestFile(test.out());
    test.add({badSource ? broken : m_clip, m_clip});
    QTRY_COMPARE(test.list()->count(), 2);
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::ERROR, endLimitMs);
    QCOMPARE(test.statePage(0), 0);
    auto *error = child<QLabel>(*test.row(0), "lblErrorConvert");
    QVERIFY(error->isVisible());
    QCOMPARE(error->text(), QStringLiteral("转换失败"));
    QVERIFY(!error->toolTip().isEmpty());
    shoot(*test.page, badSource ? "convert_failed" : "convert_failed_folder");

    QString shown;
    whenModal("FailureDetailsDialog", [&shown](QWidget &dialog) {
        shown = child<QLabel>(dialog, "lblCause")->text();
        shoot(dialog, "failure_details");
        press(dialog, "btnCopy");
        press(dialog, "btnOK");
    });
    press(*test.row(0), "btnErrorDetail");
    QCOMPARE(shown, test.row(0)->task()->failure().cause);
    QVERIFY(QApplication::clipboard()->text().startsWith(shown));
    // The row can be tried again, and the error goes with the new start.
    press(*test.row(0), "btnConvert");
    QTRY_VERIFY(!error->isVisible());
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::ERROR, endLimitMs);
}

// What a finished result lacks stands in the row, with the tool's words behind it.
void TestConvertPage::remarksOnAResult()
{
    const QString whole = media(QStringLiteral("whole.mkv"));
    ClipPlan plan;
    plan.seconds = 6;
    makeClip(whole, plan);
    QFile file(whole);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString cut = media(QStringLiteral("cut.mkv"));
    writeTestFile(cut, file.read(file.size() / 2));
    ConvertPage test(FunctionSection::converter, mp4Small);
    test.add({cut, m_clip});
    QTRY_COMPARE(test.list()->count(), 2);
    press(*test.row(1), "btnConvert");
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(1), 2, endLimitMs);
    QVERIFY(!child<QWidget>(*test.row(1), "wdtRemark")->isVisible());
    auto *remark = child<ElidedLabel>(*test.row(0), "lblRemark");
    QVERIFY(remark->isVisible());
    QVERIFY2(remark->fullText().startsWith(QStringLiteral("比源文件短")),
             qPrintable(remark->fullText()));
    shoot(*test.page, "convert_remark");
    QString shown;
    whenModal("FailureDetailsDialog", [&shown](QWidget &dialog) {
        shown = child<QLabel>(dialog, "lblCause")->text();
        shoot(dialog, "remark_details");
        press(dialog, "btnOK");
    });
    press(*test.row(0), "btnRemarkDetail");
    QCOMPARE(shown, test.row(0)->task()->remarks().texts.join(QLatin1Char('\n')));
}

void TestConvertPage::opensAndReveals()
{
    ConvertPage test(FunctionSection::converter, mp4Small);
    test.add({m_clip});
    QTRY_COMPARE(test.list()->count(), 1);
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
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
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void TestConvertPage::destroyedWhileWorking()
{
    ConvertPage test(FunctionSection::converter, mp4Huge);
    test.add({m_long, m_clip});
    QTRY_COMPARE(test.list()->count(), 2);
    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
    test.page.reset();
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
    QVERIFY(test.results().isEmpty());
}

QTEST_MAIN(TestConvertPage)
#include "tst_convertpage.moc"
