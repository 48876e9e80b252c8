// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowform.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "resources/look.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"
#include "support/utf8.h"

#include <QDialog>
#include <QScrollBar>
#include <QSpinBox>
#include <QTimeEdit>
#include <QTreeWidget>
#include <QtTest>

namespace {

constexpr quint32 mp4AsSource = 1003001;
constexpr quint32 mp4Small = 1003005;
// Upscaling to it takes long enough to act meanwhile.
constexpr quint32 mp4Huge = 1031001;
constexpr int endLimitMs = 60000;
constexpr double closeEnough = 0.1;

const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor green(0, 255, 0);

struct Part
{
    int start;
    int end;
    QRect box; // empty for the whole picture
};

void markPart(const QWidget &dialog, const Part &part)
{
    const auto setTime = [&](const char *name, int ms) {
        child<QTimeEdit>(dialog, name)->setTime(QTime(0, 0).addMSecs(ms));
    };
    const auto setNumber = [&](const char *name, int value) {
        child<QSpinBox>(dialog, name)->setValue(value);
    };
    const auto setBox = [&](const QRect &box) {
        setNumber("sbX", box.x());
        setNumber("sbY", box.y());
        setNumber("sbW", box.width());
        setNumber("sbH", box.height());
    };
    setTime("tedtStart", 0);
    setTime("tedtEnd", part.end);
    setTime("tedtStart", part.start);
    if (part.box.isEmpty())
        return;
    constexpr int wide = 9999;
    setBox({0, 0, wide, wide});
    setBox(part.box);
}

class CutPage : public PageTest<MediaCutFunctionPage>
{
public:
    explicit CutPage(quint32 preset = mp4AsSource) : PageTest(FunctionSection::cutter, preset) {}

    QTreeWidget *tree() const { return child<QTreeWidget>(*page, "convertTree"); }
    QTreeWidgetItem *source(int index) const { return tree()->topLevelItem(index); }
    QWidget *sourceRow(int index) const { return tree()->itemWidget(source(index), 0); }
    TaskRowWidget *fragment(int index, int part) const
    {
        return qobject_cast<TaskRowWidget *>(tree()->itemWidget(source(index)->child(part), 0));
    }
    MediaTask::State state(int index, int part) const
    {
        return fragment(index, part)->task()->state();
    }
    QString text(int index, int part, const char *label) const
    {
        return child<QLabel>(*fragment(index, part), label)->text();
    }
    QString hint(int index) const { return child<QLabel>(*sourceRow(index), "lblHint")->toolTip(); }

    void addSources(const QStringList &files)
    {
        const int before = tree() ? tree()->topLevelItemCount() : 0;
        add(files);
        QTRY_COMPARE(tree()->topLevelItemCount(), before + files.size());
        for (int i = before; i < tree()->topLevelItemCount(); ++i)
            QTRY_VERIFY(child(*sourceRow(i), "btnAddItem")->isEnabled());
    }
    /// Adds fragments by the source's button.
    void mark(int index, const QVector<Part> &parts, bool accept = true)
    {
        bool marked = false;
        whenModal("MutiVideoCutDialog", [&](QWidget &dialog) {
            for (const Part &part : parts) {
                markPart(dialog, part);
                press(dialog, "btnFragmentAdd");
            }
            marked = true;
            if (accept)
                press(dialog, "btnOk");
            else
                qobject_cast<QDialog *>(&dialog)->done(QDialog::Rejected);
        });
        press(*sourceRow(index), "btnAddItem");
        QVERIFY(marked);
    }
};

// The average of a picture, by a program of its own.
QColor colourAt(const QString &path, double seconds)
{
    const QByteArray rgb =
        runTool(QStringLiteral("ffmpeg"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-ss"),
                 QString::number(seconds), QStringLiteral("-i"), path, QStringLiteral("-frames:v"),
                 QStringLiteral("1"), QStringLiteral("-vf"), QStringLiteral("scale=1:1"),
                 QStringLiteral("-f"), QStringLiteral("rawvideo"), QStringLiteral("-pix_fmt"),
                 QStringLiteral("rgb24"), QStringLiteral("-")})
            .out;
    return rgb.size() == 3 ? QColor(quint8(rgb[0]), quint8(rgb[1]), quint8(rgb[2])) : QColor();
}

bool isNear(const QColor &one, const QColor &other)
{
    constexpr int tolerance = 40;
    return one.isValid() && std::abs(one.red() - other.red()) < tolerance &&
           std::abs(one.green() - other.green()) < tolerance &&
           std::abs(one.blue() - other.blue()) < tolerance;
}

QSize pictureSize(const ProbedFile &file)
{
    return {file.video.value(QLatin1String("width")).toInt(),
            file.video.value(QLatin1String("height")).toInt()};
}

} // namespace

class TestCutPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void twoPartsOfOneFile();
    void otherSources_data();
    void otherSources();
    void cutAgain();
    void addsAndDeletes();
    void choicesReachWaitingFragments();
    void deletesARunningSource();
    void unreadableSource();
    void manyFragments();

private:
    QString media(const QString &name) const { return m_media.filePath(name); }

    QTemporaryDir m_media;
    QString m_film = media(utf8("假期 100% 'y'.mp4"));
    QString m_long = media(QStringLiteral("long.mp4"));
};

void TestCutPage::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    // 320x240: red left and blue right for three seconds, then green.
    const auto ffmpeg = [](const QString &options, const QString &path) {
        QCOMPARE(
            runTool(QStringLiteral("ffmpeg"), options.split(QLatin1Char(' ')) << path).exitCode, 0);
    };
    ffmpeg(QStringLiteral(
               "-v error -f lavfi -i color=red:s=160x240:d=3[a];color=blue:s=160x240:d=3[b];"
               "[a][b]hstack[x];color=lime:s=320x240:d=3[c];[x][c]concat=n=2 -f lavfi -i sine=d=6"),
           m_film);
    // The tag tells the turn the other way round.
    for (const auto &turn : {QStringLiteral("90"), QStringLiteral("270")}) {
        const int clockwise = 360 - turn.toInt();
        QFile::copy(m_film, media(QStringLiteral("plain.mp4")));
        ffmpeg(QStringLiteral("-v error -i %1 -c copy -metadata:s:v rotate=%2")
                   .arg(media(QStringLiteral("plain.mp4")), turn),
               media(QStringLiteral("turned%1.mp4").arg(clockwise)));
    }
    ClipPlan plan;
    plan.seconds = 20;
    makeClip(m_long, plan);
    plan.seconds = 4;
    plan.width = 0;
    makeClip(media(QStringLiteral("song.mp3")), plan);
}

void TestCutPage::cleanup()
{
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
}

void TestCutPage::twoPartsOfOneFile()
{
    HistoryRecord::instance().clear();
    CutPage test;
    QVERIFY(test.shown);
    test.addSources({m_film, m_long});
    shoot(*test.page, "cut_sources");
    test.mark(0, {{500, 2000, {160, 0, 160, 240}}, {3500, 6000, {20, 40, 120, 100}}});
    QCOMPARE(test.source(0)->childCount(), 2);
    QVERIFY(test.source(0)->isExpanded());
    QCOMPARE(test.text(0, 0, "lblInDuration"), QStringLiteral("00:00:06"));
    QCOMPARE(test.text(0, 0, "lblInRes"), QStringLiteral("320x240"));
    QCOMPARE(test.text(0, 0, "lblOutDuration"), QStringLiteral("00:00:01"));
    QCOMPARE(test.text(0, 0, "lblOutRes"), QStringLiteral("160x240"));
    QCOMPARE(test.text(0, 1, "lblOutRes"), QStringLiteral("120x100"));
    // Each shows its own first frame, the one that begins with the film that of the film.
    const auto shown = [&](int part, int fromLeft) {
        const QImage picture = test.fragment(0, part)->content().picture.toImage();
        return picture.isNull()
                   ? QColor()
                   : picture.pixelColor(fromLeft * picture.width() / 100, picture.height() / 2);
    };
    QTRY_VERIFY(isNear(shown(1, 25), green));
    QTRY_VERIFY(isNear(shown(0, 25), red));
    shoot(*test.page, "cut_idle");

    press(*test.page, "btnConvertAll");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0, 1), MediaTask::FINISHED, endLimitMs);
    QTRY_COMPARE(test.startAllText(), QStringLiteral("全部转换"));
    QCOMPARE(test.results().size(), 2);
    const QDir out(test.out());
    const QString first = out.filePath(utf8("假期 100% 'y'(000000-000002).mp4"));
    const QString second = out.filePath(utf8("假期 100% 'y'(000003-000006).mp4"));
    QCOMPARE(test.fragment(0, 0)->outputPath(), first);
    QCOMPARE(HistoryRecord::instance().records().value(0).outputfile, second);
    const ProbedFile one = probeMedia(first);
    const ProbedFile two = probeMedia(second);
    QVERIFY(std::abs(one.seconds - 1.5) < closeEnough);
    QVERIFY(std::abs(two.seconds - 2.5) < closeEnough);
    QCOMPARE(pictureSize(one), QSize(160, 240));
    QCOMPARE(pictureSize(two), QSize(120, 100));
    QVERIFY(isNear(colourAt(first, 0.1), blue));
    QVERIFY(isNear(colourAt(first, 1.4), blue));
    QVERIFY(isNear(colourAt(second, 0.1), green));
}

void TestCutPage::otherSources_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QRect>("box");
    QTest::addColumn<QColor>("colour");
    // Red is on top of the one, blue on top of the other.
    QTest::newRow("turned by 90") << "turned90.mp4" << QRect(40, 170, 200, 150) << blue;
    QTest::newRow("turned by 270") << "turned270.mp4" << QRect(0, 170, 200, 70) << red;
    QTest::newRow("sound alone") << "song.mp3" << QRect() << QColor();
}

void TestCutPage::otherSources()
{
    QFETCH(QString, file);
    QFETCH(QRect, box);
    QFETCH(QColor, colour);
    CutPage test;
    test.addSources({media(file)});
    test.mark(0, {{1000, 2500, box}});
    press(*test.fragment(0, 0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0, 0), MediaTask::FINISHED, endLimitMs);
    const ProbedFile result = probeMedia(test.fragment(0, 0)->outputPath());
    QVERIFY(std::abs(result.seconds - 1.5) < closeEnough);
    QCOMPARE(pictureSize(result), box.isEmpty() ? QSize(0, 0) : box.size());
    QVERIFY(!colour.isValid() || isNear(colourAt(test.fragment(0, 0)->outputPath(), 0.5), colour));
}

void TestCutPage::cutAgain()
{
    CutPage test(mp4Small);
    test.addSources({m_film});
    test.mark(0, {{0, 6000, {}}});
    QCOMPARE(child<ComplexEdit>(*test.fragment(0, 0), "cedtOutputName")->text(),
             QFileInfo(m_film).completeBaseName());
    QCOMPARE(test.text(0, 0, "lblOutRes"), QStringLiteral("640x480"));
    const auto cut = [&](const Part &part) {
        whenModal("VideoCutDialog", [part](QWidget &dialog) {
            markPart(dialog, part);
            press(dialog, "btnSave");
        });
        press(*test.fragment(0, 0), "btnCut");
    };
    cut({1000, 4000, {10, 20, 100, 50}});
    QCOMPARE(test.text(0, 0, "lblOutDuration"), QStringLiteral("00:00:03"));
    QCOMPARE(test.text(0, 0, "lblOutRes"), QStringLiteral("100x50"));
    const auto *param = static_cast<ConvertTaskParam *>(test.fragment(0, 0)->task()->param());
    QVERIFY(param->timeRange && param->timeRange->start == 1000 && param->timeRange->end == 4000);
    QVERIFY(param->cropRect && param->cropRect->y == 20 && param->cropRect->width == 100);
    cut({0, 6000, {0, 0, 320, 240}});
    QVERIFY(!param->timeRange && !param->cropRect);
    QCOMPARE(test.text(0, 0, "lblOutDuration"), QStringLiteral("00:00:06"));
    QCOMPARE(test.text(0, 0, "lblOutRes"), QStringLiteral("640x480"));
}

void TestCutPage::addsAndDeletes()
{
    CutPage test;
    test.addSources({m_film, m_long});
    test.mark(0, {});
    test.mark(0, {{0, 1000, {}}}, false);
    QCOMPARE(test.source(0)->childCount(), 0);
    test.mark(0, {{0, 1000, {}}, {1000, 2000, {}}});
    test.mark(1, {{0, 5000, {}}});
    test.mark(0, {{2000, 3000, {}}});
    QCOMPARE(test.source(0)->childCount(), 3);
    QVERIFY(test.fragment(0, 0)->outputPath().endsWith(QLatin1String("(000000-000001).mp4")));
    QVERIFY(test.fragment(0, 2)->outputPath().endsWith(QLatin1String("(000002-000003).mp4")));
    QVERIFY(test.hint(0).contains(QLatin1Char('3')));
    // The focus goes down the tree, whatever was made first.
    const QWidget *last = test.fragment(0, 2);
    const QWidget *next = last->nextInFocusChain();
    while (last->isAncestorOf(next) || !(next->focusPolicy() & Qt::TabFocus))
        next = next->nextInFocusChain();
    QCOMPARE(next, test.sourceRow(1));

    const QPointer<QWidget> below = test.fragment(1, 0);
    press(*test.sourceRow(1), "btnDel");
    QTRY_VERIFY(!below);
    QVERIFY(!test.isEmptyShown());
    while (test.source(0)->childCount() > 0)
        press(*test.fragment(0, 0), "btnDel");
    QVERIFY(!test.isEmptyShown());
    QVERIFY(!test.hint(0).contains(QLatin1Char('3')));
    press(*test.sourceRow(0), "btnDel");
    QVERIFY(test.isEmptyShown());
    test.addSources({m_film});
    QVERIFY(!test.isEmptyShown());
    press(*test.page, "btnClear");
    QVERIFY(test.isEmptyShown());
}

void TestCutPage::choicesReachWaitingFragments()
{
    CutPage test(mp4Huge);
    test.addSources({m_long, m_film});
    test.mark(0, {{0, 19000, {}}, {1000, 2000, {}}});
    test.mark(1, {{1000, 2000, {0, 0, 100, 100}}});
    press(*test.fragment(0, 0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0, 0), MediaTask::RUNNING, endLimitMs);
    QVERIFY(!child(*test.fragment(0, 0), "btnCut")->isEnabled());
    press(*child(*test.page, "wdtChoices"), "btnFormatSet");
    pickPreset(mp4Small);
    const QString other = test.folder.filePath(QStringLiteral("other"));
    FileChooser::setNextAnswer({other});
    press(*test.page, "btnChangePath");
    QCOMPARE(test.fragment(0, 0)->encParamInfoID(), mp4Huge);
    for (const auto *row : {test.fragment(0, 1), test.fragment(1, 0)}) {
        QCOMPARE(row->encParamInfoID(), mp4Small);
        QVERIFY(row->outputPath().startsWith(other));
    }
    QCOMPARE(test.text(0, 1, "lblOutRes"), QStringLiteral("640x480"));
    QCOMPARE(test.text(1, 0, "lblOutRes"), QStringLiteral("100x100"));
    // The page goes while it works.
    test.page.reset();
    QTRY_VERIFY(processesWith(m_media.path()).isEmpty());
    QVERIFY(test.results().isEmpty());
}

void TestCutPage::deletesARunningSource()
{
    CutPage test(mp4Huge);
    test.addSources({m_long, m_film});
    test.mark(0, {{0, 19000, {}}, {1000, 18000, {}}});
    test.mark(1, {{0, 500, {}}});
    press(*test.page, "btnConvertAll");
    QTRY_VERIFY_WITH_TIMEOUT(isGoing(test.text(0, 0, "lblProgress")), endLimitMs);
    shoot(*test.page, "cut_working");
    for (const char *answer : {"btnCancel", "btnOK"}) {
        bool asked = false;
        whenModal("MediaMessageBox", [&](QWidget &box) {
            asked = true;
            press(box, answer);
        });
        QCOMPARE(test.tree()->topLevelItemCount(), 2);
        press(*test.sourceRow(0), "btnDel");
        QVERIFY(asked);
    }
    QCOMPARE(test.tree()->topLevelItemCount(), 1);
    QTRY_VERIFY(processesWith(m_long).isEmpty());
    QCOMPARE(test.startAllText(), QStringLiteral("正在转换"));
    QTRY_COMPARE_WITH_TIMEOUT(test.state(0, 0), MediaTask::FINISHED, endLimitMs);
    QCOMPARE(test.startAllText(), QStringLiteral("全部转换"));
    QCOMPARE(test.results().size(), 1);
    QVERIFY(entriesOf(test.out() + QLatin1String("/~~MRVN_Temp~~")).isEmpty());
}

void TestCutPage::unreadableSource()
{
    const QString broken = media(QStringLiteral("broken.mp4"));
    writeTestFile(broken, QByteArray(20000, 'x'));
    CutPage test;
    test.add({broken});
    QTRY_COMPARE(test.hint(0), QStringLiteral("无法读取该文件"));
    QVERIFY(!child(*test.sourceRow(0), "btnAddItem")->isEnabled());
}

void TestCutPage::manyFragments()
{
    CutPage test;
    test.addSources({m_long});
    test.mark(0, QVector<Part>(100, {0, 1000, {}}));
    QCOMPARE(test.source(0)->childCount(), 100);
    const auto shownRows = [&test] { return test.tree()->findChildren<TaskRowForm *>().size(); };
    QTRY_VERIFY(child(*test.fragment(0, 99), "btnConvert"));
    QVERIFY(!child(*test.fragment(0, 0), "btnConvert"));
    QVERIFY(shownRows() < 20);
    test.tree()->verticalScrollBar()->setValue(0);
    QTRY_VERIFY(child(*test.fragment(0, 0), "btnConvert"));
    QTRY_VERIFY(shownRows() < 20);
}

QTEST_MAIN(TestCutPage)
#include "tst_cutpage.moc"
