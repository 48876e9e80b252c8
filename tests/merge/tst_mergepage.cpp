// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistitemwidget.h"
#include "resources/look.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"
#include "support/utf8.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

namespace {

constexpr int endLimitMs = 90000;
constexpr double closeEnough = 0.2;
constexpr quint32 noPreset = 0;
constexpr quint32 mp4Small = 1003005;
// With encoders, but without a size.
constexpr quint32 mpegAsSource = 1009001;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;

class MergePage : public PageTest<MediaMergeFunctionPage>
{
public:
    explicit MergePage(quint32 preset = mp4Small) : PageTest(FunctionSection::merger, preset) {}

    MediaMergeListItemWidget *input(int index) const
    {
        return qobject_cast<MediaMergeListItemWidget *>(rowWidget(index));
    }
    MediaTask *task() const
    {
        return list()->item(0)->data(MergeTaskRole).value<QSharedPointer<MediaTask>>().data();
    }
    QString buttonText() const { return child<QPushButton>(*page, "btnMerge")->text(); }
    bool isShown(int index, const char *name) const
    {
        return child(*rowWidget(index), name)->isVisible();
    }
    /// Which of a row's buttons and connectors are seen, as "ud" and "UD".
    QString moves(int index) const
    {
        const QPair<const char *, char> parts[] = {
            {"btnUp", 'u'}, {"btnDown", 'd'}, {"lblCondup", 'U'}, {"lblCondown", 'D'}};
        QString seen;
        for (const auto &part : parts) {
            if (isShown(index, part.first))
                seen += QLatin1Char(part.second);
        }
        return seen;
    }
    /// Presses the start and waits for the end's dialog, which it closes by a button.
    bool merge(const char *dialogClass, const char *button)
    {
        bool ended = false;
        whenModal(dialogClass, [&](QWidget &dialog) {
            shoot(dialog, dialogClass);
            ended = true;
            press(dialog, button);
        });
        press(*page, "btnMerge");
        return QTest::qWaitFor([&] { return ended; }, endLimitMs);
    }
};

// Options are divided at blanks; each "%" stands for the path.
ToolRun runFfmpeg(const QString &options, const QString &path)
{
    QStringList arguments = options.split(QLatin1Char(' '));
    arguments.replaceInStrings(QStringLiteral("%"), path);
    return runTool(QStringLiteral("ffmpeg"), arguments);
}

// Red, green and blue of the picture's average at a time.
QByteArray colourAt(const QString &path, double seconds)
{
    return runFfmpeg(QStringLiteral("-v error -ss %1 -i % -frames:v 1 -vf scale=1:1 -f rawvideo "
                                    "-pix_fmt rgb24 -")
                         .arg(seconds),
                     path)
        .out;
}

// Whether the second that begins at a time has a silence.
bool hasSilence(const QString &path, double from)
{
    return runFfmpeg(QStringLiteral("-ss %1 -t 1 -i % -af silencedetect=n=-50dB:d=0.3 -f null -")
                         .arg(from),
                     path)
        .err.contains("silence_start");
}

} // namespace

class TestMergePage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void mergesUnlikeInputs_data();
    void mergesUnlikeInputs();
    void ordersAndCuts();
    void tellsTheSize();
    void asksForWhatIsMissing();
    void stops_data();
    void stops();
    void deletesDownToNone();
    void tellsOfAFailure();
    void movedRowStaysInHand_data();
    void movedRowStaysInHand();
    void keepsNameAndFolder();

private:
    QString media(const QString &name) const { return m_media.filePath(name); }

    QTemporaryDir m_media;
    QString m_clip = media(utf8("假期 'y'.mp4"));
    QString m_web = media(QStringLiteral("small.webm"));
    QString m_old = media(QStringLiteral("old.avi"));
    QString m_silent = media(QStringLiteral("silent.mp4"));
    QString m_long = media(QStringLiteral("long.mp4"));
};

void TestMergePage::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    makeClip(m_clip, {2});
    makeClip(m_web, {2, 640, 360, 25, 2, 48000});
    makeClip(m_old, {2, 200, 400, 15, 1, 22050});
    makeClip(m_silent, {2, 200, 400, 15, 0});
    makeClip(m_long, {20});
}

void TestMergePage::cleanup()
{
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
}

void TestMergePage::mergesUnlikeInputs_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("silentPart");
    QTest::newRow("with sound") << QStringList{m_clip, m_web, m_old} << -1;
    QTest::newRow("one without sound") << QStringList{m_clip, m_silent, m_web} << 1;
    QTest::newRow("first without sound") << QStringList{m_silent, m_clip, m_web} << 0;
}

void TestMergePage::mergesUnlikeInputs()
{
    QFETCH(QStringList, files);
    QFETCH(int, silentPart);
    HistoryRecord::instance().clear();
    MergePage test;
    QVERIFY(test.shown);
    test.add(files);
    QTRY_COMPARE(test.list()->count(), 3);
    QTRY_VERIFY(!test.text(0, "lblInRes").isEmpty());
    QTRY_COMPARE(test.text(2, "lblInDuration"), QStringLiteral("00:00:02"));
    QTRY_VERIFY(!test.input(2)->item().data(PictureRole).isNull());
    QCOMPARE(test.moves(0), QStringLiteral("dD"));
    QCOMPARE(test.moves(1), QStringLiteral("udUD"));
    QCOMPARE(test.moves(2), QStringLiteral("uU"));
    QVERIFY(!test.isShown(0, "wdtOutputInfo"));
    shoot(*test.page, "merge_idle");

    QSignalSpy queued(test.task(), &MediaTask::taskOperateChanged);
    QCOMPARE(test.buttonText(), QStringLiteral("开始合并"));
    press(*test.page, "btnMerge");
    QCOMPARE(test.buttonText(), QStringLiteral("正在合并"));
    QCOMPARE(test.statePage(2), 1);
    // The second press finds the task waiting.
    QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
    QCOMPARE(queued.count(), 2); // queued, dispatched
    QCOMPARE(test.buttonText(), QStringLiteral("开始合并"));
    QCOMPARE(test.statePage(0), 0);

    const HistoryRecord::Record record = HistoryRecord::instance().records().value(0);
    QCOMPARE(record.inputfile, QStringLiteral("合并视频"));
    QCOMPARE(record.outputfile, QDir(test.out()).filePath(QStringLiteral("合并视频.mp4")));
    const ProbedFile result = probeMedia(record.outputfile);
    const auto seconds = [](const QJsonObject &stream) {
        return stream.value(QLatin1String("duration")).toString().toDouble();
    };
    QVERIFY(std::abs(result.seconds - 6) < closeEnough);
    QVERIFY(std::abs(seconds(result.video) - 6) < closeEnough);
    QCOMPARE(result.video.value(QLatin1String("width")).toInt(), 640);
    QCOMPARE(result.video.value(QLatin1String("height")).toInt(), 480);
    QVERIFY(std::abs(seconds(result.audio) - 6) < closeEnough);
    for (int part = 0; part < files.size(); ++part)
        QCOMPARE(hasSilence(record.outputfile, part * 2 + 0.5), part == silentPart);

    // The same list again, which takes a free name.
    QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
    QCOMPARE(HistoryRecord::instance().records().value(0).outputfile,
             QDir(test.out()).filePath(QStringLiteral("合并视频(2).mp4")));
}

void TestMergePage::ordersAndCuts()
{
    const QString red = media(QStringLiteral("red.mp4"));
    const QString blue = media(QStringLiteral("blue.mp4"));
    const auto colour =
        QStringLiteral("-v error -y -f lavfi -i color=%1:s=320x240:d=%2 -f lavfi -i sine=d=%2 %");
    QCOMPARE(runFfmpeg(colour.arg(QLatin1String("red")).arg(3), red).exitCode, 0);
    QCOMPARE(runFfmpeg(colour.arg(QLatin1String("blue")).arg(1), blue).exitCode, 0);
    MergePage test;
    test.add({red, blue});
    QTRY_COMPARE(test.text(1, "lblInDuration"), QStringLiteral("00:00:01"));
    const auto param = MediaMergeListItemWidget::inputOf(test.input(0)->item());
    param->timeRange = QSharedPointer<TimeSpan>::create(TimeSpan{1000, 2000});
    param->cropRect = QSharedPointer<CropBox>::create(CropBox{10, 20, 160, 120});
    test.input(0)->showSelection();
    QVERIFY(test.isShown(0, "lblTo"));

    const QPointer<QWidget> before = test.rowWidget(0);
    press(*test.rowWidget(0), "btnDown");
    QTRY_VERIFY(!before);
    QCOMPARE(test.text(1, "lblInputName"), QStringLiteral("red.mp4"));
    QCOMPARE(test.text(1, "lblInDuration"), QStringLiteral("00:00:03"));
    QCOMPARE(test.text(1, "lblOutSize"), QStringLiteral("160x120"));
    QCOMPARE(test.text(1, "lblOutFromTo"), QStringLiteral("00:00:01-00:00:02"));
    QVERIFY(!test.isShown(0, "wdtOutputInfo"));
    QCOMPARE(test.moves(0), QStringLiteral("dD"));
    QCOMPARE(test.moves(1), QStringLiteral("uU"));
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
void TestMergePage::tellsTheSize()
{
    MergePage test(mpegAsSource);
    const auto size = [&test] { return child<QLabel>(*test.page, "lblResultSize")->text(); };
    QCOMPARE(size(), QString());
    test.add({m_clip, m_old});
    QTRY_COMPARE(size(), QStringLiteral("画面：320x240"));
    press(*test.rowWidget(0), "btnDown");
    QTRY_COMPARE(size(), QStringLiteral("画面：200x400"));
    shoot(*test.page, "merge_size");

    press(*test.page, "btnFormatSet");
    QTRY_VERIFY(visibleWindow("MediaFormatDialog"));
    QWidget *dialog = visibleWindow("MediaFormatDialog");
    const auto *presets = child<QListWidget>(*dialog, "lwdtParamInfos");
    QCOMPARE(child<QLabel>(*presets->itemWidget(presets->item(0)), "lblSub")->text(),
             QStringLiteral("原视频分辨率 200*400"));
    shoot(*dialog, "merge_formats");
    dialog->close();

    MediaMergeListItemWidget::inputOf(test.input(0)->item())->cropRect =
        QSharedPointer<CropBox>::create(CropBox{0, 0, 161, 120});
    test.input(0)->showSelection();
    QCOMPARE(size(), QStringLiteral("画面：160x120"));
    QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
    const QString result = QDir(test.out()).filePath(test.results().value(0));
    QCOMPARE(probeMedia(result).video.value(QLatin1String("width")).toInt(), 160);
    QVERIFY(std::abs(probeMedia(result).seconds - 4) < closeEnough);
}

void TestMergePage::asksForWhatIsMissing()
{
    MergePage test(noPreset);
    test.add({m_clip});
    QTRY_COMPARE(test.list()->count(), 1);
    QString text;
    whenModal("MediaMessageBox", [&text](QWidget &dialog) {
        text = child<QLabel>(dialog, "lblText")->text();
        press(dialog, "btnOK");
    });
    press(*test.page, "btnMerge");
    QCOMPARE(text, QStringLiteral("至少需要两个视频才可以合并"));
    test.add({m_web});
    QTRY_COMPARE(test.list()->count(), 2);
    QVERIFY(test.merge("MediaFormatSetTipsDialog", "btnOK"));
    QCOMPARE(test.buttonText(), QStringLiteral("开始合并"));
    QCOMPARE(test.task()->operate(), MediaTask::OperateNone);
}

void TestMergePage::stops_data()
{
    QTest::addColumn<bool>("running");
    QTest::addColumn<QString>("action");
    QTest::newRow("pressed again") << true << "btnMerge";
    QTest::newRow("files added") << true << "btnAddFile";
    QTest::newRow("files added while it waits") << false << "btnAddFile";
    QTest::newRow("list cleared") << true << "btnClear";
    QTest::newRow("page destroyed") << true << "";
}

void TestMergePage::stops()
{
    QFETCH(bool, running);
    QFETCH(QString, action);
    MergePage test(mp4Huge);
    test.add({m_long, m_clip});
    QTRY_COMPARE(test.list()->count(), 2);
    const auto task = test.list()->item(0)->data(MergeTaskRole).value<QSharedPointer<MediaTask>>();
    press(*test.page, "btnMerge");
    if (running)
        QTRY_VERIFY_WITH_TIMEOUT(isGoing(test.text(0, "lblProgress")), endLimitMs);
    shoot(*test.page, "merge_working");
    if (action.isEmpty()) {
        test.page.reset();
    } else {
        FileChooser::setNextAnswer({m_clip});
        // A merge isn't given up without a question.
        bool asked = false;
        const auto answer = [&](const char *button) {
            whenModal("MediaMessageBox", [&asked, button](QWidget &box) {
                asked = true;
                press(box, button);
            });
        };
        if (running && action == QLatin1String("btnMerge")) {
            answer("btnCancel");
            press(*test.page, "btnMerge");
            QVERIFY(asked);
            QCOMPARE(task->state(), MediaTask::RUNNING);
            asked = false;
        }
        if (running)
            answer("btnOK");
        press(*test.page, qPrintable(action));
        QCOMPARE(asked, running);
        if (running)
            QTRY_COMPARE_WITH_TIMEOUT(task->state(), MediaTask::STOPED, endLimitMs);
        QTRY_COMPARE(test.buttonText(), QStringLiteral("开始合并"));
        QTRY_COMPARE(test.list()->count(), action == QLatin1String("btnAddFile") ? 3
                                           : action == QLatin1String("btnClear") ? 0
                                                                                 : 2);
        QVERIFY(!task->manager());
        QVERIFY(test.list()->count() == 0 || test.statePage(0) == 0);
    }
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
    QVERIFY(test.results().isEmpty());
}

void TestMergePage::deletesDownToNone()
{
    MergePage test;
    test.add({m_clip, m_web, m_old});
    QTRY_COMPARE(test.list()->count(), 3);
    press(*test.rowWidget(2), "btnDel");
    QCOMPARE(test.moves(1), QStringLiteral("uU"));
    press(*test.rowWidget(0), "btnDel");
    QCOMPARE(test.list()->count(), 1);
    QCOMPARE(test.moves(0), QString());
    QVERIFY(!test.isEmptyShown());
    test.rowWidget(0)->setFocus();
    QTest::keyClick(test.rowWidget(0), Qt::Key_Delete);
    QTRY_VERIFY(test.isEmptyShown());
}

void TestMergePage::tellsOfAFailure()
{
    const QString broken = media(QStringLiteral("broken.mp4"));
    writeTestFile(broken, QByteArray(20000, 'x'));
    MergePage test;
    test.add({m_clip, broken});
    QTRY_COMPARE(test.list()->count(), 2);
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
    QVERIFY(told.startsWith(QStringLiteral("合并失败")));
    QVERIFY(!details.isEmpty());
    QCOMPARE(test.task()->state(), MediaTask::ERROR);
    QCOMPARE(test.buttonText(), QStringLiteral("开始合并"));
    QCOMPARE(test.statePage(1), 0);
    QVERIFY(test.results().isEmpty());
    // Mended, it can be merged. What shows the file is asked by the session bus.
    const QString asked = media(QStringLiteral("asked"));
    writeTestProgram(media(QStringLiteral("dbus-send")),
                     "case \"$*\" in *.mp4*) touch " + QFile::encodeName(asked) + ";; esac\n");
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(m_media.path()) + ':' + path);
    press(*test.rowWidget(1), "btnDel");
    test.add({m_clip});
    QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnOpen"));
    QTRY_VERIFY(QFile::exists(asked));
    qputenv("PATH", path);
}

void TestMergePage::movedRowStaysInHand_data()
{
    QTest::addColumn<int>("height");
    QTest::newRow("all in sight") << 900;
    QTest::newRow("scrolled") << 420;
}

void TestMergePage::movedRowStaysInHand()
{
    QFETCH(int, height);
    MergePage test;
    test.page->resize(1000, height);
    test.add({m_clip, m_web, m_old, m_silent});
    QTRY_COMPARE(test.list()->count(), 4);
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
        QCOMPARE(QApplication::focusWidget(), child(*test.rowWidget(to), "btnDown"));
    }
    // By the keyboard, up to the end, where the button goes.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(test.text(3, "lblInputName"), QFileInfo(m_clip).fileName());
    QCOMPARE(QApplication::focusWidget(), child(*test.rowWidget(3), "btnUp"));
}

void TestMergePage::keepsNameAndFolder()
{
    MergePage test;
    test.add({m_clip, m_clip});
    QTRY_COMPARE(test.list()->count(), 2);
    auto *name = child<QLineEdit>(*test.page, "ledtOutName");
    name->setText(QStringLiteral("a/b"));
    const QString other = test.folder.filePath(QStringLiteral("other"));
    FileChooser::setNextAnswer({other});
    press(*test.page, "btnChangePath");
    const FunctionSettings &settings = FunctionSettings::instance();
    QCOMPARE(settings.value(FunctionSection::merger, FunctionKey::outName),
             QVariant(QStringLiteral("a/b")));
    QCOMPARE(settings.value(FunctionSection::merger, FunctionKey::outPath), QVariant(other));
    QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
    QVERIFY(QFile::exists(other + QLatin1String("/a_b.mp4")));
    name->clear();
    QVERIFY(test.merge("MediaMergeFinishTipsDialog", "btnCancel"));
    QVERIFY(QFile::exists(other + QStringLiteral("/合并视频.mp4")));
}

QTEST_MAIN(TestMergePage)
#include "tst_mergepage.moc"
