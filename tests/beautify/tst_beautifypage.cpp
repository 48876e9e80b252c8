// SPDX-License-Identifier: MIT
#include "controls/elidedlabel.h"
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifyfunctionpage.h"
#include "MediaKits/MediaInfo/MAMediaInfo/readingprocess.h"
#include "MediaKits/Player/MPVPlayer/mpvplayer.h"
#include "player/mpvpeer.h"
#include "support/casename.h"
#include "support/factsof.h"
#include "support/pagetest.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QtTest>

#include <csignal>

namespace {

constexpr quint32 mp4AsSource = 1003001;
constexpr double closeEnough = 0.1;
constexpr int greyLook = 7;

int box(const QWidget &dialog, const char *name)
{
    return child<QSpinBox>(dialog, name)->value();
}

void setBox(const QWidget &dialog, const char *name, int value)
{
    child<QSpinBox>(dialog, name)->setValue(value);
}

void setSpeed(const QWidget &dialog, double speed)
{
    child<QDoubleSpinBox>(dialog, "sbSpeed")->setValue(speed);
}

QListWidget *looks(const QWidget &dialog)
{
    return child<QListWidget>(dialog, "lwdtFilters");
}

void pickLook(const QWidget &dialog, int row)
{
    press(dialog, "btnFilter");
    QListWidget *list = looks(dialog);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

class BeautyPage : public EditorPageTest<MediaBeautifyFunctionPage>
{
public:
    explicit BeautyPage(const QStringList &files)
        : EditorPageTest(FunctionSection::beautifier, mp4AsSource, "VideoBeautyDialog",
                         "btnBeautySet")
    {
        addRows(files, "btnBeautySet");
    }
    QSharedPointer<VideoBeautyParam> look(int row) const { return param(row).beauty; }
    ProbedFile probed(int index) { return probeMedia(convert(index)); }
};

} // namespace

class TestBeautifyPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia("-f lavfi -i testsrc2=s=320x240:r=10:d=4 -f lavfi -i sine=d=4 @"_s, {m_film});
    }

    void theLookIsInTheFile()
    {
        BeautyPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            pickLook(dialog, greyLook);
            press(dialog, "btnVideo");
            press(dialog, "btnRotateCW");
            setSpeed(dialog, 2.0);
            press(dialog, "btnSave");
        });
        QCOMPARE(test.text(0, "lblOutDuration"), "00:00:02"_s);
        QCOMPARE(test.text(0, "lblOutRes"), "240x320"_s);
        const ProbedFile file = test.probed(0);
        QCOMPARE(file.size(), QSize(240, 320));
        QVERIFY(std::abs(file.seconds - 2.0) < closeEnough);
        const QByteArray rgb =
            decodedMedia(test.row(0)->outputPath(),
                         "-frames:v 1 -vf scale=4:4:flags=area -f rawvideo -pix_fmt rgb24"_s);
        QCOMPARE(rgb.size(), 4 * 4 * 3);
        for (int i = 0; i < rgb.size(); i += 3)
            QVERIFY(std::abs(int(quint8(rgb[i])) - int(quint8(rgb[i + 1]))) < 16);
    }

    // What was saved comes back, as a record of its own; what was cancelled leaves no trace.
    void keepsWhatWasSaved()
    {
        BeautyPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            setSpeed(dialog, 2.0);
            press(dialog, "btnRotateCW");
            QTimer::singleShot(0, &dialog, [&dialog] { press(dialog, "btnCancel"); });
            QTRY_VERIFY(!dialog.isVisible());
        });
        QVERIFY(!test.look(0));
        QCOMPARE(test.text(0, "lblOutDuration"), "00:00:04"_s);

        test.edit(0, [](QWidget &dialog) { press(dialog, "btnSave"); });
        const auto untouched = test.look(0);
        QVERIFY(untouched && isSameLook(*untouched, VideoBeautyParam()));
        QCOMPARE(untouched->filterIndex, -1);

        test.edit(0, [](QWidget &dialog) {
            pickLook(dialog, 1);
            press(dialog, "btnHFilter");
            setBox(dialog, "sbContrast", 150);
            press(dialog, "cbHFlip");
            setBox(dialog, "sbVolume", 180);
            press(dialog, "btnRotateCCW");
            press(dialog, "btnSave");
        });
        const VideoBeautyParam saved = *test.look(0);
        QVERIFY(test.look(0) != untouched);
        QCOMPARE(saved.contrast, 1.5F);
        QCOMPARE(saved.saturation, 0.84F);
        QCOMPARE(saved.rotate, -1);
        QVERIFY(saved.hflip && !saved.vflip);
        test.edit(0, [&saved](QWidget &dialog) {
            QCOMPARE(box(dialog, "sbContrast"), 150);
            QCOMPARE(box(dialog, "sbVolume"), 180);
            QVERIFY(child<QCheckBox>(dialog, "cbHFlip")->isChecked());
            press(dialog, "btnSave");
        });
        QVERIFY(isSameLook(*test.look(0), saved));
    }

    void controlsGoTogether()
    {
        BeautyPage test({m_film});
        test.edit(0, [&](QWidget &dialog) {
            press(dialog, "cbVFlip");
            pickLook(dialog, 2);
            QCOMPARE(box(dialog, "sbContrast"), 109);
            QCOMPARE(box(dialog, "sbR"), 11);
            press(dialog, "btnHFilter");
            QCOMPARE(looks(dialog)->currentRow(), -1);
            QCOMPARE(box(dialog, "sbR"), 11);
            press(dialog, "btnHFilter");
            pickLook(dialog, 9); // the place of one to come
            QCOMPARE(looks(dialog)->currentRow(), -1);

            // The slider reaches further down than the box.
            auto *volume = child<QSlider>(dialog, "sliderVolume");
            volume->setValue(120);
            QCOMPARE(box(dialog, "sbVolume"), 120);
            volume->setValue(20);
            QCOMPARE(box(dialog, "sbVolume"), 50);
            QCOMPARE(volume->value(), 50);
            child<QSlider>(dialog, "sliderSpeed")->setValue(125);
            QCOMPARE(child<QDoubleSpinBox>(dialog, "sbSpeed")->value(), 1.25);

            press(dialog, "btnReset");
            QCOMPARE(box(dialog, "sbContrast"), 100);
            QCOMPARE(box(dialog, "sbVolume"), 100);
            QVERIFY(child<QCheckBox>(dialog, "cbVFlip")->isChecked());
            for (int i = 0; i < 4; ++i)
                press(dialog, "btnRotateCW");
            press(dialog, "btnSave");
        });
        VideoBeautyParam flipped;
        flipped.vflip = true;
        QVERIFY(isSameLook(*test.look(0), flipped));
    }

    // The player turns a tagged film behind all filters: a flip is seen as the other then.
    void turnedFilms()
    {
        for (const int tag : {0, 90, 180, 270}) {
            const CaseName inCase(QByteArray::number(tag).constData());
            const QString film = m_folder.filePath("tag%1.mp4"_s.arg(tag));
            makeMedia("-i @ -c copy -metadata:s:v rotate=%1 @"_s.arg(tag), {m_film, film});
            BeautyPage test({film});
            test.edit(0, [tag](QWidget &dialog) {
                MpvPeer peer(dialog.findChild<MPVPlayer *>()->ipcServerName());
                press(dialog, "cbHFlip");
                QString graph;
                QTRY_VERIFY((graph = QString::fromUtf8(
                                 QJsonDocument(peer.property("vf").toArray()).toJson()))
                                .contains("flip"_s));
                QCOMPARE(graph.contains("vflip"_s), tag % 180 != 0);
            });
        }
    }

    // The keyboard alone; reaching the looks chooses none.
    void byKeyboard()
    {
        BeautyPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            const auto tabTo = [](const QWidget *goal) {
                for (int i = 0; i < 40 && QApplication::focusWidget() != goal; ++i)
                    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                return QApplication::focusWidget() == goal;
            };
            QVERIFY(tabTo(child(dialog, "btnVideo")));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
            QVERIFY(tabTo(looks(dialog)));
            QCOMPARE(looks(dialog)->currentRow(), -1);
            QTest::keyClick(looks(dialog), Qt::Key_Right);
            QTest::keyClick(looks(dialog), Qt::Key_Right);
            QTest::keyClick(looks(dialog), Qt::Key_Return);
        });
        QVERIFY(test.look(0));
        QVERIFY(test.look(0)->filterIndex > 0);
    }

    void forAllThatCanStillChange()
    {
        const QString second = m_folder.filePath("b.mp4"_s);
        const QString third = m_folder.filePath("c.mp4"_s);
        QVERIFY(QFile::copy(m_film, second) && QFile::copy(m_film, third));
        BeautyPage test({m_film, second, third});
        QVERIFY(test.probed(2).isMedia());
        test.edit(0, [](QWidget &dialog) {
            press(dialog, "btnRotateCW");
            press(dialog, "cbForAll");
            press(dialog, "btnSave");
        });
        QVERIFY(test.look(1) && test.look(1)->rotate == 1);
        QCOMPARE(test.text(1, "lblOutRes"), "240x320"_s);
        QVERIFY(!test.look(2));
        test.edit(1, [](QWidget &dialog) {
            press(dialog, "btnRotateCW");
            press(dialog, "btnSave");
        });
        QCOMPARE(test.look(0)->rotate, 1);
        QCOMPARE(test.look(1)->rotate, 2);
    }

    void refusesWhatHasNoPicture()
    {
        const QString sound = m_folder.filePath("sound.mp4"_s);
        const QString broken = m_folder.filePath("broken.mp4"_s);
        makeMedia("-f lavfi -i sine=d=1 @"_s, {sound});
        writeTestFile(broken, "no film");
        BeautyPage test({});
        test.add({sound, broken, m_film});
        QTRY_COMPARE(test.text(0, "lblErrorConvert"), "该文件没有画面"_s);
        QTRY_COMPARE(test.text(1, "lblErrorConvert"), "无法读取该文件"_s);
        QVERIFY(!child(*test.rowWidget(0), "btnConvert")->isEnabled());
        QVERIFY(!child(*test.rowWidget(0), "btnBeautySet")->isEnabled());
        press(*test.page, "btnConvertAll");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(2), MediaTask::FINISHED, test.endLimitMs);
        QCOMPARE(test.state(0), MediaTask::UNSTARTED);
    }

    // What is started at once waits until its source has been read, and one that is then refused
    // leaves the batch.
    void startedBeforeItIsRead()
    {
        const QString sound = m_folder.filePath("alone.mp4"_s);
        makeMedia("-f lavfi -i sine=d=1 @"_s, {sound});
        QVERIFY(factsOf(m_film));
        const pid_t reader = pid_t(ReadingProcess::instance().processId());
        QVERIFY(reader > 0);
        BeautyPage test({});
        QCOMPARE(::kill(reader, SIGSTOP), 0);
        test.add({sound, m_film});
        QTRY_COMPARE(test.list()->count(), 2);
        press(*test.page, "btnConvertAll");
        QCOMPARE(test.state(1), MediaTask::UNSTARTED);
        QCOMPARE(test.startAllText(), "正在转换"_s);
        QCOMPARE(::kill(reader, SIGCONT), 0);
        QTRY_COMPARE_WITH_TIMEOUT(test.state(1), MediaTask::FINISHED, test.endLimitMs);
        QVERIFY(test.param(1).sourceInfo);
        QCOMPARE(test.statePage(0), 0);
        QCOMPARE(test.text(0, "lblErrorConvert"), "该文件没有画面"_s);
        QCOMPARE(test.results().size(), 1);
        QTRY_COMPARE(test.startAllText(), "全部转换"_s);
    }

    void oddSources_data()
    {
        QTest::addColumn<QString>("options");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("seconds");
        const auto row = [](const char *name, const char *options, const QSize &size,
                            double seconds) {
            QTest::newRow(name) << QLatin1String(options) + QString() << size << seconds;
        };
        row("silent", "-f lavfi -i testsrc2=s=320x240:r=10:d=2 @", {240, 320}, 4.0);
        row("odd size", "-f lavfi -i testsrc2=s=321x241:r=10:d=2 -pix_fmt yuv444p @", {242, 322},
            4.0);
        row("one frame",
            "-f lavfi -i testsrc2=s=320x240:r=10:d=1 -f lavfi -i sine=d=1 -frames:v 1 @",
            {240, 320}, 0.2);
        row("four hours", "-f lavfi -i color=s=16x16:r=1:d=14400 -g 600 -preset ultrafast @",
            {16, 16}, 28800.0);
    }

    void oddSources()
    {
        QFETCH(QString, options);
        QFETCH(QSize, size);
        QFETCH(double, seconds);
        const QString film = m_folder.filePath(QLatin1String(QTest::currentDataTag()) + ".mp4"_s);
        makeMedia(options, {film});
        BeautyPage test({film});
        test.edit(0, [](QWidget &dialog) {
            press(dialog, "btnRotateCW");
            setSpeed(dialog, 0.5);
            setBox(dialog, "sbVolume", 200);
            press(dialog, "btnSave");
        });
        const ProbedFile file = test.probed(0);
        QVERIFY(std::abs(file.size().width() - size.width()) <= 2);
        QVERIFY(std::abs(file.size().height() - size.height()) <= 2);
        QVERIFY2(std::abs(file.seconds - seconds) < closeEnough,
                 qPrintable(QString::number(file.seconds)));
    }

    // It begins once more by itself; after that the user is told.
    void playerEnds()
    {
        BeautyPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            const auto *player = dialog.findChild<MPVPlayer *>();
            const auto *hint = child<ElidedLabel>(dialog, "lblHint");
            QSignalSpy progress(player, &MPVPlayer::progressChanged);
            qint64 killed = 0;
            const auto kill = [&] {
                // What the killed one has said before is still read.
                QTRY_VERIFY(player->processId() != killed);
                progress.clear();
                QTRY_VERIFY_WITH_TIMEOUT(!progress.isEmpty(), 15000);
                killed = player->processId();
                ::kill(pid_t(killed), SIGKILL);
            };
            kill();
            QVERIFY(hint->fullText().isEmpty());
            kill();
            QTRY_VERIFY(hint->fullText().contains("预览"_s));
            press(dialog, "btnSave");
        });
        QVERIFY(test.look(0));
    }

private:
    QTemporaryDir m_folder;
    const QString m_film = m_folder.filePath("片 a.mp4"_s);
};

QTEST_MAIN(TestBeautifyPage)
#include "tst_beautifypage.moc"
