// SPDX-License-Identifier: MIT
#include "controls/interceptslider.h"
#include "dubbing/dubbingpage.h"
#include "dubbing/heardsound.h"

#include <QProgressBar>
#include <QRadioButton>
#include <QtTest>

namespace {

constexpr int endLimitMs = 60000;
constexpr int filmTone = 400;
constexpr int shortTone = 1000;
constexpr int longTone = 2500;

} // namespace

class TestDubbingPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia("-f lavfi -i testsrc2=s=320x240:r=10:d=12 -f lavfi -i sine=%1:d=12 -ac 2 @"_s.arg(
                      filmTone),
                  {m_film});
        makeMedia("-f lavfi -i sine=%1:d=3 -ac 2 @"_s.arg(shortTone), {m_short});
        makeMedia("-f lavfi -i sine=%1:d=30 -ac 2 @"_s.arg(longTone), {m_long});
    }

    // From the page's button to the file, which is listened to.
    void theListIsWhatIsHeard()
    {
        DubbingPage test({m_film});
        QCOMPARE(child<QPushButton>(*test.rowWidget(0), "btnConvert")->text(), "开始配音"_s);
        test.edit(0, [this](QWidget &dialog) {
            setStart(dialog, 3500);
            box(dialog, "sbAudioVolume")->setValue(50);
            addMusic(dialog, m_short);
            setStart(dialog, 7250);
            QCOMPARE(entry(dialog, 0).value("startTime"_s).toInt(), 7250);
            setStart(dialog, 3500);
            addMusic(dialog, m_long);
            setStart(dialog, 8000);
            box(dialog, "sbAudioVolume")->setValue(200);
            box(dialog, "sbVideoVolume")->setValue(150);
            press(dialog, "btnOk");
        });
        const QVariantMap made = test.dubbing(0);
        QCOMPARE(test.param(0).audioFilters.size(), 1);
        QCOMPARE(made.keys(), QStringList({"filter"_s, "isMax"_s, "musics"_s, "videoVolume"_s}));
        QCOMPARE(made.value("filter"_s).toString(), "dubbing"_s);
        QCOMPARE(made.value("videoVolume"_s).toFloat(), 1.5F);
        QVERIFY(made.value("isMax"_s).toBool());
        const QVariantMap first = made.value("musics"_s).toList().value(0).toMap();
        QCOMPARE(first.value("filePath"_s).toString(), m_short);
        QCOMPARE(first.value("startTime"_s).toInt(), 3500);
        QCOMPARE(first.value("volume"_s).toFloat(), 0.5F);
        QVERIFY(std::abs(first.value("duration"_s).toInt() - 3000) < 60);

        const HeardSound heard(test.convert(0));
        const HeardSound film(m_film);
        QVERIFY(std::abs(heard.seconds() - 12.0) < 0.05);
        QVERIFY(std::abs(heard.onset(shortTone) - 3.5) < 0.02);
        QVERIFY(std::abs(heard.onset(longTone) - 8.0) < 0.02);
        const double own = film.level(filmTone, 1, 11);
        QVERIFY(std::abs(heard.level(filmTone, 1, 11) / own - 1.5) < 0.06);
        const auto isHeardAt = [&](int tone, double from, const QString &file, double factor) {
            const double ratio =
                heard.level(tone, from, from + 2) / HeardSound(file).level(tone, 0.5, 2.5);
            if (std::abs(ratio - factor) > 0.05 * factor)
                qWarning("%d Hz: %f", tone, ratio);
            return std::abs(ratio - factor) <= 0.05 * factor;
        };
        QVERIFY(isHeardAt(shortTone, 4, m_short, 0.5));
        QVERIFY(isHeardAt(longTone, 9, m_long, 2.0));
    }

    // The current piece, the fields and the time line tell the same.
    void controlsGoTogether()
    {
        DubbingPage test({m_film});
        test.edit(0, [this](QWidget &dialog) {
            const auto *bar = child<InterceptSlider>(dialog, "scrubBar");
            const auto *start = child<QTimeEdit>(dialog, "tedtStart");
            QCOMPARE(bar->rightValue(), 0);
            QVERIFY(child<QRadioButton>(dialog, "rbMix")->isChecked());
            setStart(dialog, 2000);
            QCOMPARE(bar->leftValue(), 0);
            addMusic(dialog, m_short);
            QCOMPARE(bar->leftValue(), 2000);
            QVERIFY(std::abs(bar->rightValue() - 5000) < 60);
            QCOMPARE(rowText(dialog, 0, "lblStart"), "00:00:02"_s);
            QCOMPARE(rowText(dialog, 0, "lblDuration"), "00:00:03"_s);
            addMusic(dialog, m_long);
            QCOMPARE(bar->rightValue(), 12000);
            box(dialog, "sbAudioVolume")->setValue(30);
            setStart(dialog, 4000);
            pick(dialog, 0);
            QCOMPARE(start->time(), QTime(0, 0, 2));
            QCOMPARE(box(dialog, "sbAudioVolume")->value(), 100);
            QCOMPARE(bar->leftValue(), 2000);
            pick(dialog, 1);
            QCOMPARE(box(dialog, "sbAudioVolume")->value(), 30);
            QCOMPARE(start->time(), QTime(0, 0, 4));
            FileChooser::setNextAnswer({});
            press(dialog, "btnAddDubbing");
            QCOMPARE(musics(dialog)->count(), 2);
            press(*musics(dialog)->itemWidget(musics(dialog)->item(1)), "btnDel");
            QCOMPARE(musics(dialog)->count(), 1);
            QCOMPARE(start->time(), QTime(0, 0, 2));
            press(dialog, "btnClr");
            QCOMPARE(musics(dialog)->count(), 0);
            QCOMPARE(bar->rightValue(), 0);
            press(dialog, "rbNoOrigin");
            press(dialog, "btnOk");
        });
        QVERIFY(test.dubbing(0).value("musics"_s).toList().isEmpty());
        QVERIFY(!test.dubbing(0).value("isMax"_s).toBool());
        const HeardSound heard(test.convert(0));
        QVERIFY(heard.level(filmTone, 1, 11) < 0.001);
    }

    // What was saved comes back; what was cancelled leaves no trace, not in what was saved either.
    void keepsWhatWasSaved()
    {
        DubbingPage test({m_film});
        const auto cancel = [](QWidget &dialog) {
            QTimer::singleShot(0, &dialog, [&dialog] { press(dialog, "btnCancel"); });
            QTRY_VERIFY(!dialog.isVisible());
        };
        test.edit(0, [&](QWidget &dialog) {
            addMusic(dialog, m_short);
            cancel(dialog);
        });
        QVERIFY(test.isUntouched(0));
        test.edit(0, [&](QWidget &dialog) {
            addMusic(dialog, m_short);
            setStart(dialog, 1000);
            addMusic(dialog, m_long);
            box(dialog, "sbVideoVolume")->setValue(70);
            press(dialog, "btnOk");
        });
        const QVariantMap saved = test.dubbing(0);
        QCOMPARE(test.settings(0).keys(), QStringList({"isMax"_s, "musics"_s, "videoVolume"_s}));
        test.edit(0, [&](QWidget &dialog) {
            QCOMPARE(musics(dialog)->count(), 2);
            QCOMPARE(box(dialog, "sbVideoVolume")->value(), 70);
            pick(dialog, 0);
            setStart(dialog, 9000);
            press(*musics(dialog)->itemWidget(musics(dialog)->item(1)), "btnDel");
            // It asks before anything is lost.
            const QString asked =
                askedBy([&dialog] { QTest::keyClick(&dialog, Qt::Key_Escape); }, "btnOK");
            QVERIFY(!asked.isEmpty());
        });
        QCOMPARE(test.dubbing(0), saved);
        test.edit(0, [&](QWidget &dialog) {
            QCOMPARE(musics(dialog)->count(), 2);
            QCOMPARE(entry(dialog, 0).value("startTime"_s).toInt(), 1000);
            press(dialog, "btnOk");
        });
        QCOMPARE(test.dubbing(0), saved);
    }

    void forAll()
    {
        const QString second = m_folder.filePath("b.mp4"_s);
        QVERIFY(QFile::copy(m_film, second));
        DubbingPage test({m_film, second});
        test.edit(0, [&](QWidget &dialog) {
            addMusic(dialog, m_short);
            press(dialog, "cbForAll");
            press(dialog, "btnOk");
        });
        QCOMPARE(test.dubbing(1), test.dubbing(0));
        test.edit(1, [&](QWidget &dialog) {
            QCOMPARE(musics(dialog)->count(), 1);
            box(dialog, "sbAudioVolume")->setValue(10);
            press(dialog, "btnOk");
        });
        const auto volume = [&](int row) {
            return test.dubbing(row)
                .value("musics"_s)
                .toList()
                .value(0)
                .toMap()
                .value("volume"_s)
                .toFloat();
        };
        QCOMPARE(volume(0), 1.0F);
        QCOMPARE(volume(1), 0.1F);
    }

    // Such files are added all the same; the row names the one it failed by.
    void filesWithoutSound()
    {
        const QString text = m_folder.filePath("没有声音.mp3"_s);
        writeTestFile(text, "no music");
        DubbingPage test({m_film});
        test.edit(0, [&](QWidget &dialog) {
            addMusic(dialog, text);
            QCOMPARE(entry(dialog, 0).value("duration"_s).toInt(), 0);
            QTRY_VERIFY(hint(dialog).contains("没有声音.mp3"_s));
            QCOMPARE(child<InterceptSlider>(dialog, "scrubBar")->rightValue(), 12000);
            QTRY_COMPARE_WITH_TIMEOUT(child<QProgressBar>(dialog, "pbMusic")->format(), "无声"_s,
                                      endLimitMs);
            press(dialog, "btnOk");
        });
        QVERIFY(test.convert(0).isEmpty());
        QVERIFY(test.row(0)->task()->failure().cause.contains("没有声音.mp3"_s));
        QVERIFY(QFile::remove(text));
        press(*test.rowWidget(0), "btnConvert");
        QTRY_VERIFY(test.row(0)->task()->failure().cause.contains("文件不存在"_s));
    }

    // Loudness beside each other, with their factors: the bars follow the fields.
    void showsLoudness()
    {
        DubbingPage test({m_film});
        test.edit(0, [&](QWidget &dialog) {
            const auto *film = child<QProgressBar>(dialog, "pbVideo");
            const auto *music = child<QProgressBar>(dialog, "pbMusic");
            addMusic(dialog, m_short);
            QTRY_VERIFY_WITH_TIMEOUT(
                film->format().endsWith("dB"_s) && music->format().endsWith("dB"_s), endLimitMs);
            const int full = film->value();
            QVERIFY(std::abs(music->value() - full) <= 3);
            box(dialog, "sbAudioVolume")->setValue(50);
            QVERIFY(std::abs(full - music->value() - 6) <= 3);
            box(dialog, "sbVideoVolume")->setValue(200);
            QCOMPARE(film->value(), full + 6);
            press(dialog, "rbNoOrigin");
            QCOMPARE(film->format(), "无声"_s);
        });
    }

    // Files that take long to be read are in the list at once, with what stood there.
    void savesMusicThatIsStillRead()
    {
        const QString huge = m_folder.filePath("riesig.wav"_s);
        QVERIFY(QFile::copy(m_long, huge));
        QVERIFY(QFile::resize(huge, 3LL * 1024 * 1024 * 1024 + 1));
        DubbingPage test({m_film});
        const auto chooseHuge = [&](QWidget &dialog) {
            FileChooser::setNextAnswer({huge});
            setStart(dialog, 2000);
            press(dialog, "btnAddDubbing");
        };
        test.edit(0, [&](QWidget &dialog) {
            chooseHuge(dialog);
            press(dialog, "btnOk");
        });
        const QVariantList saved = test.dubbing(0).value("musics"_s).toList();
        QCOMPARE(saved.size(), 1);
        QCOMPARE(saved.first().toMap().value("startTime"_s).toInt(), 2000);
        QVERIFY(QFile::remove(huge));
    }

    void byKeyboard()
    {
        DubbingPage test({m_film});
        test.edit(0, [&](QWidget &dialog) {
            const auto tabTo = [](const QWidget *goal) {
                for (int i = 0; i < 60 && QApplication::focusWidget() != goal; ++i)
                    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                return QApplication::focusWidget() == goal;
            };
            const auto key = [](Qt::Key which) {
                QTest::keyClick(QApplication::focusWidget(), which);
            };
            for (const QString &file : {m_short, m_long}) {
                FileChooser::setNextAnswer({file});
                const int count = musics(dialog)->count();
                QVERIFY(tabTo(child(dialog, "btnAddDubbing")));
                key(Qt::Key_Space);
                QTRY_COMPARE(musics(dialog)->count(), count + 1);
            }
            QVERIFY(tabTo(musics(dialog)));
            QCOMPARE(musics(dialog)->currentRow(), 1);
            key(Qt::Key_Up);
            QCOMPARE(musics(dialog)->currentRow(), 0);
            key(Qt::Key_Delete);
            QCOMPARE(musics(dialog)->count(), 1);
            QVERIFY(tabTo(box(dialog, "sbVideoVolume")));
            QTest::keyClicks(QApplication::focusWidget(), "80"_s);
            QVERIFY(tabTo(child(dialog, "rbMix")));
            key(Qt::Key_Right);
            QVERIFY(tabTo(child(dialog, "btnOk")));
            key(Qt::Key_Return);
        });
        const QVariantMap made = test.dubbing(0);
        QCOMPARE(made.value("musics"_s).toList().size(), 1);
        QCOMPARE(made.value("musics"_s).toList().first().toMap().value("filePath"_s).toString(),
                 m_long);
        QCOMPARE(made.value("videoVolume"_s).toFloat(), 0.8F);
        QVERIFY(!made.value("isMax"_s).toBool());
    }

private:
    QTemporaryDir m_folder;
    const QString m_film = m_folder.filePath("片 a.mp4"_s);
    const QString m_short = m_folder.filePath("短 '1%d.mp3"_s);
    const QString m_long = m_folder.filePath("长.wav"_s);
};

QTEST_MAIN(TestDubbingPage)
#include "tst_dubbingpage.moc"
