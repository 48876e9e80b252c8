// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppInstance/LocalStore/tempmarker.h"
#include "MediaKits/FunctionPage/VideoShot/frameshotdialog.h"
#include "MediaKits/FunctionPage/VideoShot/mediashotfunctionpage.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"
#include "support/casename.h"
#include "support/pagetest.h"
#include "support/toolrun.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDirIterator>
#include <QProcess>
#include <QSpinBox>
#include <QTimeEdit>
#include <QtTest>

namespace {

constexpr int endLimitMs = 60000;
constexpr int momentRole = 257;
constexpr int filmSeconds = 60;

QListWidget *moments(const QWidget &dialog)
{
    return child<QListWidget>(dialog, "listWidget");
}

QList<int> positionsIn(const QWidget &dialog)
{
    QList<int> all;
    for (int i = 0; i < moments(dialog)->count(); ++i)
        all += moments(dialog)->item(i)->data(momentRole).toMap().value("pos"_s).toInt();
    return all;
}

bool hasPicture(const QWidget &dialog, int row)
{
    const QListWidget *list = moments(dialog);
    const QWidget *widget = row < list->count() ? list->itemWidget(list->item(row)) : nullptr;
    if (!widget)
        return false;
    const auto *label = child<QLabel>(*widget, "lblImage");
    return !label->pixmap(Qt::ReturnByValue).isNull();
}

QString shotCount(const QWidget &dialog)
{
    return child<QLabel>(dialog, "lblShotCount")->text();
}

void setSpan(const QWidget &dialog, int startSeconds, int endSeconds)
{
    child<QTimeEdit>(dialog, "tedtEnd")->setTime(QTime(0, 0).addSecs(endSeconds));
    child<QTimeEdit>(dialog, "tedtStart")->setTime(QTime(0, 0).addSecs(startSeconds));
}

// Small pictures that have been made and not been taken.
QStringList temporaryPictures()
{
    QStringList found;
    QDirIterator files(tempDir(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        if (files.next().endsWith(".png"_s))
            found += files.filePath();
    }
    return found;
}

class ShotPage : public EditorPageTest<MediaShotFunctionPage>
{
public:
    explicit ShotPage(const QStringList &files)
        : EditorPageTest(FunctionSection::shot, 0, "FrameShotDialog", "btnShotSet")
    {
        addRows(files, "btnShotSet");
    }
    QVariantMap &map(int index) const
    {
        return static_cast<MutiImageTaskParam *>(row(index)->task()->param())->map;
    }
    bool canStart(int index) const { return child(*rowWidget(index), "btnConvert")->isEnabled(); }
    bool shoot(int index)
    {
        press(*rowWidget(index), "btnConvert");
        // Each of hundreds of pictures takes a busy machine some tenths of a second.
        return QTest::qWaitFor([&] { return statePage(index) == 2; }, 3 * endLimitMs);
    }
};

} // namespace

class TestShotPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia(
            "-f lavfi -i testsrc2=s=320x240:r=10:d=%1 -f lavfi -i sine=d=%1 @"_s.arg(filmSeconds),
            {m_film});
    }

    void picturesOfASeries()
    {
        ShotPage test({m_film});
        QVERIFY(!test.canStart(0));
        QVERIFY(!test.row(0)->task()->isEnabled());
        const QString refusal = askedBy([&] { press(*test.page, "btnConvertAll"); }, "btnOK");
        QVERIFY(refusal.contains("截图设置"_s));
        test.edit(0, [](QWidget &dialog) {
            QVERIFY(!child(dialog, "wdtTimeInterval")->isVisible());
            press(dialog, "btnSequenceSelect");
            for (const char *row : {"wdtTimeStart", "wdtTimeEnd", "wdtTimeInterval"})
                QVERIFY(child(dialog, row)->isVisible());
            // To the very end, it ends 100 ms before.
            QCOMPARE(shotCount(dialog), "将截取 12 张"_s);
            setSpan(dialog, 0, 12);
            QCOMPARE(shotCount(dialog), "将截取 3 张"_s);
            press(dialog, "btnFragmentAdd");
            QTRY_COMPARE(positionsIn(dialog), (QList<int>{0, 5000, 10000}));
            for (int i = 0; i < 3; ++i)
                QTRY_VERIFY(hasPicture(dialog, i));
            QTRY_VERIFY(temporaryPictures().isEmpty());
            // What is there keeps its scale.
            child<QSpinBox>(dialog, "sbScale1")->setValue(50);
            child<QComboBox>(dialog, "cbFormat")->setCurrentText("jpg"_s);
            press(dialog, "btnOk");
        });
        QVERIFY(test.canStart(0));
        QCOMPARE(test.text(0, "lblOutCount"), "数量：3"_s);
        QCOMPARE(test.text(0, "lblOutStyle"), "样式：单张"_s);
        QCOMPARE(test.text(0, "lblOutFormat"), "JPG"_s);
        const int recorded = HistoryRecord::instance().records().size();
        QVERIFY(test.shoot(0));
        const QStringList names{"film_1.jpg"_s, "film_2.jpg"_s, "film_3.jpg"_s};
        QCOMPARE(test.results(), names);
        QCOMPARE(QImage(test.out() + "/film_3.jpg"_s).size(), QSize(320, 240));
        QCOMPARE(test.row(0)->outputPath(), test.out() + "/film_1.jpg"_s);
        QCOMPARE(HistoryRecord::instance().records().size(), recorded + 1);
        QCOMPARE(HistoryRecord::instance().records().first().outputfile,
                 test.out() + "/film_1.jpg"_s);
        QCOMPARE(test.map(0).value("baseName"_s).toString(), "film"_s);
    }

    void oneOfAll()
    {
        const auto check = [this](const char *box, const QString &style, const QSize &least) {
            const CaseName inCase(box);
            ShotPage test({m_film});
            test.edit(0, [box](QWidget &dialog) {
                press(dialog, "btnSequenceSelect");
                setSpan(dialog, 0, 20);
                press(dialog, "btnFragmentAdd");
                QTRY_COMPARE(moments(dialog)->count(), 5);
                child<QCheckBox>(dialog, "cbIsPiiic")->setChecked(true);
                child<QCheckBox>(dialog, box)->setChecked(true);
                press(dialog, "btnOk");
            });
            QCOMPARE(test.text(0, "lblOutStyle"), "样式："_s + style);
            QCOMPARE(test.text(0, "lblOutCount"), "数量：5"_s);
            QVERIFY(test.shoot(0));
            QCOMPARE(test.results(), QStringList("film.png"_s));
            const QSize size = QImage(test.out() + "/film.png"_s).size();
            QVERIFY2(size.width() >= least.width() && size.height() >= least.height(),
                     qPrintable("%1x%2"_s.arg(size.width()).arg(size.height())));
        };
        check("cbIsPiiic", "长图"_s, QSize(320, 1200));
        check("cbIsSheet", "图表"_s, QSize(4 * 320, 2 * 240));
    }

    void keys()
    {
        ShotPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            QTest::keyClick(&dialog, Qt::Key_Space);
            for (int i = 0; i < 3; ++i) {
                QTest::keyClick(&dialog, Qt::Key_Right);
                QTest::keyClick(&dialog, Qt::Key_Return);
            }
            QTRY_COMPARE(moments(dialog)->count(), 3);
            const QList<int> before = positionsIn(dialog);
            QCOMPARE(before[1] - before[0], 1000);
            QListWidget *list = moments(dialog);
            QTRY_VERIFY(hasPicture(dialog, 2));
            QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                              list->visualItemRect(list->item(1)).center());
            QTest::keyClick(&dialog, Qt::Key_Delete);
            QCOMPARE(positionsIn(dialog), (QList<int>{before[0], before[2]}));
            // In a field both belong to the typing.
            press(dialog, "btnSequenceSelect");
            auto *interval = child<QSpinBox>(dialog, "sbInterval");
            interval->setFocus();
            QTest::keyClick(interval, Qt::Key_Delete);
            QTest::keyClick(interval, Qt::Key_Return);
            QCOMPARE(moments(dialog)->count(), 2);
            press(dialog, "btnOk");
        });
        // What was saved comes back; an emptied list takes the start away.
        test.edit(0, [](QWidget &dialog) {
            QTRY_COMPARE(moments(dialog)->count(), 2);
            QTRY_VERIFY(hasPicture(dialog, 1));
            press(dialog, "btnClear");
            press(dialog, "btnOk");
        });
        QVERIFY(!test.canStart(0));
        QVERIFY(!test.row(0)->task()->isEnabled());
    }

    void aLongSeries()
    {
        ShotPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            press(dialog, "btnSequenceSelect");
            child<QSpinBox>(dialog, "sbInterval")->setValue(1);
            QCOMPARE(shotCount(dialog), "将截取 60 张"_s);
            press(dialog, "btnFragmentAdd");
            auto *button = child<QPushButton>(dialog, "btnFragmentAdd");
            QCOMPARE(button->text(), "停止截取"_s);
            QTRY_VERIFY(hasPicture(dialog, 3));
            press(dialog, "btnFragmentAdd");
            QCOMPARE(button->text(), "截取到列表 >>"_s);
            const int kept = moments(dialog)->count();
            QVERIFY(kept >= 4 && kept < filmSeconds);
            QVERIFY(hasPicture(dialog, kept - 1));
            // Left in the middle of another, it leaves nothing behind.
            press(dialog, "btnFragmentAdd");
            QTRY_VERIFY(hasPicture(dialog, kept + 1));
        });
        QVERIFY(temporaryPictures().isEmpty());
        QVERIFY(!test.canStart(0));
        // Saved in the middle, it is whole.
        test.edit(0, [](QWidget &dialog) {
            press(dialog, "btnSequenceSelect");
            child<QSpinBox>(dialog, "sbInterval")->setValue(1);
            press(dialog, "btnFragmentAdd");
            press(dialog, "btnOk");
        });
        QCOMPARE(test.text(0, "lblOutCount"), "数量：60"_s);
    }

    // Many moments are one batch: one result of many pictures, told once. The rows behind the
    // hundredth get their widgets in sight alone.
    void twoHundredMoments()
    {
        constexpr int count = 200;
        ShotPage test({m_film});
        QVariantList images;
        for (int i = 0; i < count; ++i)
            images += QVariantMap{{"pos"_s, 290 * i}, {"scale"_s, 0.1F}};
        test.edit(0, [&](QWidget &dialog) {
            static_cast<FrameShotDialog &>(dialog).setOptions(
                {{"format"_s, "jpg"_s}, {"images"_s, images}});
            QTRY_COMPARE(moments(dialog)->count(), count);
            moments(dialog)->scrollToBottom();
            QTRY_VERIFY(hasPicture(dialog, count - 1));
            QVERIFY(!hasPicture(dialog, 150));
            moments(dialog)->scrollToItem(moments(dialog)->item(150));
            QTRY_VERIFY(hasPicture(dialog, 150));
            press(dialog, "btnOk");
        });
        QVERIFY(temporaryPictures().isEmpty());
        QCOMPARE(test.text(0, "lblOutCount"), "数量：200"_s);
        const int recorded = HistoryRecord::instance().records().size();
        QVERIFY(test.shoot(0));
        QCOMPARE(test.results().size(), count);
        QCOMPARE(HistoryRecord::instance().records().size(), recorded + 1);
    }

    // A program that is killed while its small pictures come, and the next one of the same user.
    void killedInTheMiddle()
    {
        const QString role = qEnvironmentVariable("MORVANE_TEST_ROLE");
        const QString program = QCoreApplication::applicationFilePath();
        const QStringList words{"killedInTheMiddle"_s};
        if (role == "next"_s) {
            sweepStaleMarkers();
        } else if (role == "killed"_s) {
            ShotPage test({m_film});
            test.edit(0, [](QWidget &dialog) {
                press(dialog, "btnSequenceSelect");
                press(dialog, "btnFragmentAdd");
                QTest::qWait(endLimitMs); // it is never let live for that long
            });
        } else {
            QProcess killed;
            killed.setProcessEnvironment(environmentWith({"MORVANE_TEST_ROLE=killed"_s}));
            killed.start(program, words);
            // The picture of the row lies beside the marker.
            QTRY_VERIFY_WITH_TIMEOUT(!temporaryPictures().filter(tempMarkerName()).isEmpty(),
                                     2 * endLimitMs);
            killed.kill();
            QVERIFY(killed.waitForFinished());
            QVERIFY(!entriesOf(tempMarkerPath(tempDir())).isEmpty());
            QCOMPARE(runTool(program, words, {"MORVANE_TEST_ROLE=next"_s}).exitCode, 0);
            QCOMPARE(entriesOf(tempMarkerPath(tempDir())), QStringList());
        }
    }

    // What was added singly is no part of a series that is stopped, and a cleared series is over.
    void seriesBesideSingles()
    {
        ShotPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            auto *button = child<QPushButton>(dialog, "btnFragmentAdd");
            for (int i = 0; i < 5; ++i)
                press(dialog, "btnFragmentAdd");
            press(dialog, "btnSequenceSelect");
            child<QSpinBox>(dialog, "sbInterval")->setValue(1);
            QTRY_COMPARE(moments(dialog)->count(), 5);
            QCOMPARE(button->text(), "截取到列表 >>"_s);
            press(dialog, "btnFragmentAdd");
            QCOMPARE(button->text(), "停止截取"_s);
            press(dialog, "btnFragmentAdd");
            QVERIFY(moments(dialog)->count() >= 5);
            press(dialog, "btnFragmentAdd");
            press(dialog, "btnClear");
            QCOMPARE(moments(dialog)->count(), 0);
            QTRY_COMPARE(button->text(), "截取到列表 >>"_s);
        });
    }

private:
    QTemporaryDir m_folder;
    const QString m_film = m_folder.filePath("film.mp4"_s);
};

QTEST_MAIN(TestShotPage)
#include "tst_shotpage.moc"
