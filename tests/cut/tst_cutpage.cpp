// SPDX-License-Identifier: MIT
#include "controls/complexedit.h"
#include "cut/cutfields.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowform.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "support/casename.h"
#include "support/mediatest.h"
#include "support/treepagetest.h"

#include <QDialog>
#include <QScrollBar>
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

class CutPage : public TreePageTest<MediaCutFunctionPage>
{
public:
    explicit CutPage(quint32 preset = mp4AsSource) : TreePageTest(FunctionSection::cutter, preset)
    {
    }

    /// Adds fragments by the source's button.
    void mark(int index, const QVector<Part> &parts, bool accept = true)
    {
        edit(index, "MutiVideoCutDialog", [&](QWidget &dialog) {
            for (const Part &part : parts) {
                ::mark(dialog, part.start, part.end, part.box);
                press(dialog, "btnFragmentAdd");
            }
            if (accept)
                press(dialog, "btnOk");
            else
                qobject_cast<QDialog *>(&dialog)->done(QDialog::Rejected);
        });
    }
};

// The average of a picture, by a program of its own.
QColor colourAt(const QString &path, double seconds)
{
    const QByteArray rgb =
        runFfmpeg(
            "-ss %1 -i @ -frames:v 1 -vf scale=1:1 -f rawvideo -pix_fmt rgb24 -"_s.arg(seconds),
            {path})
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

} // namespace

class TestCutPage : public MediaTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        // 320x240: red left and blue right for three seconds, then green.
        makeMedia(
            "-f lavfi -i color=red:s=160x240:d=3[a];color=blue:s=160x240:d=3[b];[a][b]hstack[x];"
            "color=lime:s=320x240:d=3[c];[x][c]concat=n=2 -f lavfi -i sine=d=6 @"_s,
            {m_film});
        // The tag tells the turn the other way round.
        for (const int turn : {90, 270})
            makeMedia("-i @ -c copy -metadata:s:v rotate=%1 @"_s.arg(turn),
                      {m_film, media("turned%1.mp4"_s.arg(360 - turn))});
        makeClip(m_long, {20});
        makeClip(media("song.mp3"_s), {4, 0});
    }

    void twoPartsOfOneFile()
    {
        HistoryRecord::instance().clear();
        CutPage test;
        QVERIFY(test.shown);
        test.addSources({m_film, m_long});
        shoot(*test.page, "cut_sources");
        test.mark(0, {{500, 2000, {160, 0, 160, 240}}, {3500, 6000, {20, 40, 120, 100}}});
        QCOMPARE(test.source(0)->childCount(), 2);
        QVERIFY(test.source(0)->isExpanded());
        QCOMPARE(test.text(0, 0, "lblInDuration"), "00:00:06"_s);
        QCOMPARE(test.text(0, 0, "lblInRes"), "320x240"_s);
        QCOMPARE(test.text(0, 0, "lblOutDuration"), "00:00:01"_s);
        QCOMPARE(test.text(0, 0, "lblOutRes"), "160x240"_s);
        QCOMPARE(test.text(0, 1, "lblOutRes"), "120x100"_s);
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
        QTRY_COMPARE(test.startAllText(), "全部转换"_s);
        QCOMPARE(test.results().size(), 2);
        const QDir out(test.out());
        const QString first = out.filePath("假期 100% 'y'(000000-000002).mp4"_s);
        const QString second = out.filePath("假期 100% 'y'(000003-000006).mp4"_s);
        QCOMPARE(test.fragment(0, 0)->outputPath(), first);
        QCOMPARE(HistoryRecord::instance().records().value(0).outputfile, second);
        const ProbedFile one = probeMedia(first);
        const ProbedFile two = probeMedia(second);
        QVERIFY(std::abs(one.seconds - 1.5) < closeEnough);
        QVERIFY(std::abs(two.seconds - 2.5) < closeEnough);
        QCOMPARE(one.size(), QSize(160, 240));
        QCOMPARE(two.size(), QSize(120, 100));
        QVERIFY(isNear(colourAt(first, 0.1), blue));
        QVERIFY(isNear(colourAt(first, 1.4), blue));
        QVERIFY(isNear(colourAt(second, 0.1), green));
    }

    void otherSources()
    {
        const auto check = [&](const char *caseName, const QString &file, const QRect &box,
                               const QColor &colour) {
            const CaseName inCase(caseName);
            CutPage test;
            test.addSources({media(file)});
            test.mark(0, {{1000, 2500, box}});
            const ProbedFile result = probeMedia(test.convert(0, 0));
            QVERIFY(std::abs(result.seconds - 1.5) < closeEnough);
            QCOMPARE(result.size(), box.isEmpty() ? QSize(0, 0) : box.size());
            QVERIFY(!colour.isValid() ||
                    isNear(colourAt(test.fragment(0, 0)->outputPath(), 0.5), colour));
        };
        // Red is on top of the one, blue on top of the other.
        check("turned by 90", "turned90.mp4"_s, QRect(40, 170, 200, 150), blue);
        check("turned by 270", "turned270.mp4"_s, QRect(0, 170, 200, 70), red);
        check("sound alone", "song.mp3"_s, QRect(), QColor());
    }

    void cutAgain()
    {
        CutPage test(mp4Small);
        test.addSources({m_film});
        test.mark(0, {{0, 6000, {}}});
        QCOMPARE(child<ComplexEdit>(*test.fragment(0, 0), "cedtOutputName")->text(),
                 QFileInfo(m_film).completeBaseName());
        QCOMPARE(test.text(0, 0, "lblOutRes"), "640x480"_s);
        const auto cut = [&](const Part &part) {
            whenModal("VideoCutDialog", [part](QWidget &dialog) {
                ::mark(dialog, part.start, part.end, part.box);
                press(dialog, "btnSave");
            });
            press(*test.fragment(0, 0), "btnCut");
        };
        cut({1000, 4000, {10, 20, 100, 50}});
        QCOMPARE(test.text(0, 0, "lblOutDuration"), "00:00:03"_s);
        QCOMPARE(test.text(0, 0, "lblOutRes"), "100x50"_s);
        const auto *param = &test.param(0, 0);
        QVERIFY(param->timeRange && param->timeRange->start == 1000 &&
                param->timeRange->end == 4000);
        QVERIFY(param->cropRect && param->cropRect->y == 20 && param->cropRect->width == 100);
        cut({0, 6000, {0, 0, 320, 240}});
        QVERIFY(!param->timeRange && !param->cropRect);
        QCOMPARE(test.text(0, 0, "lblOutDuration"), "00:00:06"_s);
        QCOMPARE(test.text(0, 0, "lblOutRes"), "640x480"_s);
    }

    void addsAndDeletes()
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
        QVERIFY(test.fragment(0, 0)->outputPath().endsWith("(000000-000001).mp4"_s));
        QVERIFY(test.fragment(0, 2)->outputPath().endsWith("(000002-000003).mp4"_s));
        QVERIFY(test.hint(0).contains(u'3'));
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
        QVERIFY(!test.hint(0).contains(u'3'));
        press(*test.sourceRow(0), "btnDel");
        QVERIFY(test.isEmptyShown());
        test.addSources({m_film});
        QVERIFY(!test.isEmptyShown());
        press(*test.page, "btnClear");
        QVERIFY(test.isEmptyShown());
    }

    void choicesReachWaitingFragments()
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
        const QString other = test.folder.filePath("other"_s);
        FileChooser::setNextAnswer({other});
        press(*test.page, "btnChangePath");
        QCOMPARE(test.fragment(0, 0)->encParamInfoID(), mp4Huge);
        for (const auto *row : {test.fragment(0, 1), test.fragment(1, 0)}) {
            QCOMPARE(row->encParamInfoID(), mp4Small);
            QVERIFY(row->outputPath().startsWith(other));
        }
        QCOMPARE(test.text(0, 1, "lblOutRes"), "640x480"_s);
        QCOMPARE(test.text(1, 0, "lblOutRes"), "100x100"_s);
        // The page goes while it works.
        test.page.reset();
        QTRY_VERIFY(!isAnyToolAtWork());
        QVERIFY(test.results().isEmpty());
    }

    void deletesARunningSource()
    {
        CutPage test(mp4Huge);
        test.addSources({m_long, m_film});
        test.mark(0, {{0, 19000, {}}, {1000, 18000, {}}});
        test.mark(1, {{0, 500, {}}});
        press(*test.page, "btnConvertAll");
        QTRY_VERIFY_WITH_TIMEOUT(isGoing(test.text(0, 0, "lblProgress")), endLimitMs);
        shoot(*test.page, "cut_working");
        for (const char *answer : {"btnCancel", "btnOK"}) {
            QCOMPARE(test.tree()->topLevelItemCount(), 2);
            QVERIFY(!askedBy([&] { press(*test.sourceRow(0), "btnDel"); }, answer).isEmpty());
        }
        QCOMPARE(test.tree()->topLevelItemCount(), 1);
        QTRY_VERIFY(processesWith(m_long).isEmpty());
        QCOMPARE(test.startAllText(), "正在转换"_s);
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0, 0), MediaTask::FINISHED, endLimitMs);
        QCOMPARE(test.startAllText(), "全部转换"_s);
        QCOMPARE(test.results().size(), 1);
        QVERIFY(entriesOf(test.out() + "/~~MRVN_Temp~~"_s).isEmpty());
    }

    void unreadableSource()
    {
        const QString broken = media("broken.mp4"_s);
        writeTestFile(broken, QByteArray(20000, 'x'));
        CutPage test;
        test.add({broken});
        QTRY_COMPARE(test.hint(0), "无法读取该文件"_s);
        QVERIFY(!child(*test.sourceRow(0), "btnAddItem")->isEnabled());
    }

    void manyFragments()
    {
        CutPage test;
        test.addSources({m_long});
        test.mark(0, QVector<Part>(100, {0, 1000, {}}));
        QCOMPARE(test.source(0)->childCount(), 100);
        const auto shownRows = [&test] {
            return test.tree()->findChildren<TaskRowForm *>().size();
        };
        QTRY_VERIFY(child(*test.fragment(0, 99), "btnConvert"));
        QVERIFY(!child(*test.fragment(0, 0), "btnConvert"));
        QVERIFY(shownRows() < 20);
        test.tree()->verticalScrollBar()->setValue(0);
        QTRY_VERIFY(child(*test.fragment(0, 0), "btnConvert"));
        QTRY_VERIFY(shownRows() < 20);
    }

private:
    QString m_film = media("假期 100% 'y'.mp4"_s);
    QString m_long = media("long.mp4"_s);
};

QTEST_MAIN(TestCutPage)
#include "tst_cutpage.moc"
