// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "merge/mergepage.h"
#include "support/casename.h"
#include "support/mediatest.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

namespace {

constexpr double closeEnough = 0.2;
constexpr quint32 noPreset = 0;
// With encoders, but without a size.
constexpr quint32 mpegAsSource = 1009001;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;

// Red, green and blue of the picture's average at a time.
QByteArray colourAt(const QString &path, double seconds)
{
    return runFfmpeg(
               "-ss %1 -i @ -frames:v 1 -vf scale=1:1 -f rawvideo -pix_fmt rgb24 -"_s.arg(seconds),
               {path})
        .out;
}

// Whether the second that begins at a time has a silence.
bool hasSilence(const QString &path, double from)
{
    const QString options = "-v info -ss %1 -t 1 -i @ -af silencedetect=n=-50dB:d=0.3 -f null -"_s;
    return runFfmpeg(options.arg(from), {path}).err.contains("silence_start");
}

} // namespace

class TestMergePage : public MediaTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeClip(m_clip, {2});
        makeClip(m_web, {2, 640, 360, 25, 2, 48000});
        makeClip(m_old, {2, 200, 400, 15, 1, 22050});
        makeClip(m_silent, {2, 200, 400, 15, 0});
        makeClip(m_long, {20});
    }

    void mergesUnlikeInputs()
    {
        HistoryRecord::instance().clear();
        MergePage test;
        QVERIFY(test.shown);
        test.addRows({m_clip, m_silent, m_web});
        QTRY_VERIFY(!test.text(0, "lblInRes").isEmpty());
        QTRY_COMPARE(test.text(2, "lblInDuration"), "00:00:02"_s);
        QTRY_VERIFY(!test.input(2)->item().data(PictureRole).isNull());
        QCOMPARE(test.moves(0), "dD"_s);
        QCOMPARE(test.moves(1), "udUD"_s);
        QCOMPARE(test.moves(2), "uU"_s);
        QVERIFY(!test.isShown(0, "wdtOutputInfo"));
        shoot(*test.page, "merge_idle");

        QSignalSpy queued(test.task(), &MediaTask::taskOperateChanged);
        QCOMPARE(test.buttonText(), "开始合并"_s);
        press(*test.page, "btnMerge");
        QCOMPARE(test.buttonText(), "正在合并"_s);
        QCOMPARE(test.statePage(2), 1);
        // The second press finds the task waiting.
        QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
        QCOMPARE(queued.count(), 2); // queued, dispatched
        QCOMPARE(test.buttonText(), "开始合并"_s);
        QCOMPARE(test.statePage(0), 0);

        const HistoryRecord::Record record = HistoryRecord::instance().records().value(0);
        QCOMPARE(record.inputfile, "合并视频"_s);
        QCOMPARE(record.outputfile, QDir(test.out()).filePath("合并视频.mp4"_s));
        const ProbedFile result = probeMedia(record.outputfile);
        const auto seconds = [](const QJsonObject &stream) {
            return stream.value("duration"_s).toString().toDouble();
        };
        QVERIFY(std::abs(result.seconds - 6) < closeEnough);
        QVERIFY(std::abs(seconds(result.video) - 6) < closeEnough);
        QCOMPARE(result.size(), QSize(640, 480));
        QVERIFY(std::abs(seconds(result.audio) - 6) < closeEnough);
        for (int part = 0; part < 3; ++part)
            QCOMPARE(hasSilence(record.outputfile, part * 2 + 0.5), part == 1);

        // The same list again, which takes a free name.
        QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
        QCOMPARE(HistoryRecord::instance().records().value(0).outputfile,
                 QDir(test.out()).filePath("合并视频(2).mp4"_s));
    }

    void tellsWhatIsMissing()
    {
        const QByteArray film = contentOf(m_web);
        writeTestFile(media("cut.webm"_s), film.left(film.size() / 2));
        MergePage test;
        test.addRows({m_clip, media("cut.webm"_s)});
        QString remarks, details;
        whenModal("MediaMergeFinishTipsDialog", [&](QWidget &dialog) {
            details =
                askedBy([&] { press(dialog, "btnDetails"); }, "btnOK", "FailureDetailsDialog");
            remarks = child<QLabel>(dialog, "lblRemarks")->text();
            press(dialog, "btnCancel");
        });
        press(*test.page, "btnMerge");
        QTRY_VERIFY_WITH_TIMEOUT(remarks.startsWith("cut.webm："_s), endLimitMs);
        QVERIFY(!details.isEmpty());
    }

    void ordersAndCuts()
    {
        const QString red = media("red.mp4"_s);
        const QString blue = media("blue.mp4"_s);
        const QString colour = "-f lavfi -i color=%1:s=320x240:d=%2 -f lavfi -i sine=d=%2 @"_s;
        makeMedia(colour.arg("red"_s).arg(3), {red});
        makeMedia(colour.arg("blue"_s).arg(1), {blue});
        MergePage test;
        test.add({red, blue});
        QTRY_COMPARE(test.text(1, "lblInDuration"), "00:00:01"_s);
        const auto param = MediaMergeListItemWidget::inputOf(test.input(0)->item());
        param->timeRange = QSharedPointer<TimeSpan>::create(TimeSpan{1000, 2000});
        param->cropRect = QSharedPointer<CropBox>::create(CropBox{10, 20, 160, 120});
        test.input(0)->showSelection();
        QVERIFY(test.isShown(0, "lblTo"));

        const QPointer<QWidget> before = test.rowWidget(0);
        press(*test.rowWidget(0), "btnDown");
        QTRY_VERIFY(!before);
        QCOMPARE(test.text(1, "lblInputName"), "red.mp4"_s);
        QCOMPARE(test.text(1, "lblInDuration"), "00:00:03"_s);
        QCOMPARE(test.text(1, "lblOutSize"), "160x120"_s);
        QCOMPARE(test.text(1, "lblOutFromTo"), "00:00:01-00:00:02"_s);
        QVERIFY(!test.isShown(0, "wdtOutputInfo"));
        QCOMPARE(test.moves(0), "dD"_s);
        QCOMPARE(test.moves(1), "uU"_s);
        shoot(*test.page, "merge_cut");

        QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
        const QString result = QDir(test.out()).filePath(test.results().value(0));
        QVERIFY(std::abs(probeMedia(result).seconds - 2) < closeEnough);
        const QByteArray first = colourAt(result, 0.5);
        const QByteArray second = colourAt(result, 1.5);
        QVERIFY(first.size() == 3 && quint8(first[2]) > 150 && quint8(first[0]) < 80);
        QVERIFY(second.size() == 3 && quint8(second[0]) > 150 && quint8(second[2]) < 80);
    }

    // A preset without a size takes that of the first picture, cut as it is.
    void tellsTheSize()
    {
        MergePage test(mpegAsSource);
        const auto size = [&test] { return child<QLabel>(*test.page, "lblResultSize")->text(); };
        QCOMPARE(size(), QString());
        test.add({m_clip, m_old});
        QTRY_COMPARE(size(), "画面：320x240"_s);
        press(*test.rowWidget(0), "btnDown");
        QTRY_COMPARE(size(), "画面：200x400"_s);
        shoot(*test.page, "merge_size");

        press(*test.page, "btnFormatSet");
        QTRY_VERIFY(visibleWindow("MediaFormatDialog"));
        QWidget *dialog = visibleWindow("MediaFormatDialog");
        const auto *presets = child<QListWidget>(*dialog, "lwdtParamInfos");
        QCOMPARE(child<QLabel>(*presets->itemWidget(presets->item(0)), "lblSub")->text(),
                 "原视频分辨率 200*400"_s);
        shoot(*dialog, "merge_formats");
        dialog->close();

        MediaMergeListItemWidget::inputOf(test.input(0)->item())->cropRect =
            QSharedPointer<CropBox>::create(CropBox{0, 0, 161, 120});
        test.input(0)->showSelection();
        QCOMPARE(size(), "画面：160x120"_s);
        QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
        const QString result = QDir(test.out()).filePath(test.results().value(0));
        QCOMPARE(probeMedia(result).video.value("width"_s).toInt(), 160);
        QVERIFY(std::abs(probeMedia(result).seconds - 4) < closeEnough);
    }

    void asksForWhatIsMissing()
    {
        MergePage test(noPreset);
        test.addRows({m_clip});
        const auto merge = [&] { press(*test.page, "btnMerge"); };
        QCOMPARE(askedBy(merge, "btnOK"), "至少需要两个视频才可以合并"_s);
        test.add({m_web});
        QTRY_COMPARE(test.list()->count(), 2);
        QVERIFY(test.merge("MediaFormatSetTipsDialog", "btnOK"));
        QCOMPARE(test.buttonText(), "开始合并"_s);
        QCOMPARE(test.task()->operate(), MediaTask::OperateNone);
    }

    void stops()
    {
        const auto check = [&](const char *caseName, bool running, const QString &action) {
            const CaseName inCase(caseName);
            MergePage test(mp4Huge);
            test.addRows({m_long, m_clip});
            const auto task =
                test.list()->item(0)->data(MergeTaskRole).value<QSharedPointer<MediaTask>>();
            press(*test.page, "btnMerge");
            if (running)
                QTRY_VERIFY_WITH_TIMEOUT(isGoing(test.text(0, "lblProgress")), endLimitMs);
            shoot(*test.page, "merge_working");
            if (action.isEmpty()) {
                test.page.reset();
            } else {
                FileChooser::setNextAnswer({m_clip});
                // A merge isn't given up without a question.
                const auto act = [&] { press(*test.page, qPrintable(action)); };
                if (running && action == "btnMerge"_s) {
                    QVERIFY(!askedBy(act, "btnCancel").isEmpty());
                    for (const char *change : {"btnDel", "btnDown"})
                        QVERIFY(!askedBy([&] { press(*test.rowWidget(0), change); }, "btnCancel")
                                     .isEmpty());
                    QCOMPARE(test.list()->count(), 2);
                    QCOMPARE(test.text(0, "lblInputName"), QFileInfo(m_long).fileName());
                    QCOMPARE(task->state(), MediaTask::RUNNING);
                }
                if (running)
                    QVERIFY(!askedBy(act, "btnOK").isEmpty());
                else
                    act();
                if (running)
                    QTRY_COMPARE_WITH_TIMEOUT(task->state(), MediaTask::STOPED, endLimitMs);
                QTRY_COMPARE(test.buttonText(), "开始合并"_s);
                QTRY_COMPARE(test.list()->count(), action == "btnAddFile"_s ? 3
                                                   : action == "btnClear"_s ? 0
                                                                            : 2);
                QVERIFY(!task->manager());
                QVERIFY(test.list()->count() == 0 || test.statePage(0) == 0);
            }
            QTRY_VERIFY(!isAnyToolAtWork());
            QVERIFY(test.results().isEmpty());
        };
        check("pressed again", true, "btnMerge"_s);
        check("files added", true, "btnAddFile"_s);
        check("files added while it waits", false, "btnAddFile"_s);
        check("list cleared", true, "btnClear"_s);
        check("page destroyed", true, QString());
    }

    void deletesDownToNone()
    {
        MergePage test;
        test.addRows({m_clip, m_web, m_old});
        press(*test.rowWidget(2), "btnDel");
        QCOMPARE(test.moves(1), "uU"_s);
        press(*test.rowWidget(0), "btnDel");
        QCOMPARE(test.list()->count(), 1);
        QCOMPARE(test.moves(0), QString());
        QVERIFY(!test.isEmptyShown());
        test.rowWidget(0)->setFocus();
        QTest::keyClick(test.rowWidget(0), Qt::Key_Delete);
        QTRY_VERIFY(test.isEmptyShown());
    }

    void tellsOfAFailure()
    {
        const QString broken = media("broken.mp4"_s);
        writeTestFile(broken, QByteArray(20000, 'x'));
        MergePage test;
        test.addRows({m_clip, broken});
        QString told;
        QString details;
        whenModal("MediaMessageBox", [&](QWidget &box) {
            told = child<QLabel>(box, "lblText")->text();
            shoot(box, "merge_failed");
            whenModal("FailureDetailsDialog", [&](QWidget &dialog) {
                details = child<QPlainTextEdit>(dialog, "pteReport")->toPlainText();
                press(dialog, "btnOK");
            });
            if (child(box, "btnDetails"))
                press(box, "btnDetails");
            press(box, "btnOK");
        });
        press(*test.page, "btnMerge");
        QTRY_VERIFY_WITH_TIMEOUT(!told.isEmpty(), endLimitMs);
        QVERIFY2(told.contains(broken), qPrintable(told));
        QVERIFY(told.startsWith("合并失败"_s));
        QVERIFY(!details.isEmpty());
        QCOMPARE(test.task()->state(), MediaTask::ERROR);
        QCOMPARE(test.buttonText(), "开始合并"_s);
        QCOMPARE(test.statePage(1), 0);
        QVERIFY(test.results().isEmpty());
        // Mended, it can be merged. What shows the file is asked by the session bus.
        const QString asked = media("asked"_s);
        writeTestProgram(media("dbus-send"_s),
                         "case \"$*\" in *.mp4*) touch " + QFile::encodeName(asked) + ";; esac\n");
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(media("."_s)) + ':' + path);
        press(*test.rowWidget(1), "btnDel");
        test.add({m_clip});
        QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnOpen"));
        QTRY_VERIFY(QFile::exists(asked));
        qputenv("PATH", path);
    }

    void movedRowStaysInHand()
    {
        const auto check = [&](const char *caseName, int height) {
            const CaseName inCase(caseName);
            MergePage test;
            test.page->resize(1000, height);
            test.addRows({m_clip, m_web, m_old, m_silent});
            QTRY_VERIFY(child(*test.rowWidget(0), "btnDown"));
            test.list()->scrollToTop();
            const auto centre = [&](int index, const char *name) {
                const QWidget *button = child(*test.rowWidget(index), name);
                return button->mapToGlobal(button->rect().center());
            };
            QTRY_VERIFY(child(*test.rowWidget(0), "btnDown")->isVisible());
            QCursor::setPos(centre(0, "btnDown"));
            for (int to = 1; to < 3; ++to) {
                press(*test.rowWidget(to - 1), "btnDown");
                QCOMPARE(test.text(to, "lblInputName"), QFileInfo(m_clip).fileName());
                QTRY_VERIFY((QCursor::pos() - centre(to, "btnDown")).manhattanLength() < 3);
                QTRY_COMPARE(QApplication::focusWidget(), child(*test.rowWidget(to), "btnDown"));
            }
            // By the keyboard, up to the end, where the button goes.
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QCOMPARE(test.text(3, "lblInputName"), QFileInfo(m_clip).fileName());
            QTRY_COMPARE(QApplication::focusWidget(), child(*test.rowWidget(3), "btnUp"));
        };
        check("all in sight", 900);
        check("scrolled", 420);
    }

    void keepsNameAndFolder()
    {
        MergePage test;
        test.addRows({m_clip, m_clip});
        auto *name = child<QLineEdit>(*test.page, "ledtOutName");
        name->setText("a/b"_s);
        const QString other = test.folder.filePath("other"_s);
        FileChooser::setNextAnswer({other});
        press(*test.page, "btnChangePath");
        const FunctionSettings &settings = FunctionSettings::instance();
        QCOMPARE(settings.value(FunctionSection::merger, FunctionKey::outName), QVariant("a/b"_s));
        QCOMPARE(settings.value(FunctionSection::merger, FunctionKey::outPath), QVariant(other));
        QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
        QVERIFY(QFile::exists(other + "/a_b.mp4"_s));
        name->clear();
        QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
        QVERIFY(QFile::exists(other + "/合并视频.mp4"_s));
    }

private:
    QString m_clip = media("假期 'y'.mp4"_s);
    QString m_web = media("small.webm"_s);
    QString m_old = media("old.avi"_s);
    QString m_silent = media("silent.mp4"_s);
    QString m_long = media("long.mp4"_s);
};

QTEST_MAIN(TestMergePage)
#include "tst_mergepage.moc"
