// SPDX-License-Identifier: MIT
#include "controls/interceptslider.h"
#include "cut/cutfields.h"
#include "MediaKits/FunctionPage/AudioConvert/audioconvertfunctionpage.h"
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "support/casename.h"
#include "support/pagetest.h"

#include <QFileDialog>
#include <QtTest>

namespace {

using AudioPage = PageTest<AudioConvertFunctionPage>;

constexpr quint32 mp3High = 1200001;
constexpr quint32 wavPreset = 1205001;
constexpr quint32 mp3AsSource = 1200000;
constexpr int endLimitMs = 60000;
constexpr int clipMs = 10000;

} // namespace

class TestAudioPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        constexpr double seconds = clipMs / 1000.0;
        makeClip(m_film, {seconds});
        makeClip(m_sound, {seconds, 0});
        makeClip(m_silent, {seconds, 320, 240, 30, 0});
        makeClip(m_web, {seconds, 160, 120, 5});
    }

    void convertsAFilmsSound()
    {
        AudioPage test(FunctionSection::audioConverter, wavPreset);
        test.addRows({m_film, m_sound});
        press(*test.page, "btnConvertAll");
        for (int i = 0; i < 2; ++i) {
            QTRY_COMPARE_WITH_TIMEOUT(test.statePage(i), 2, endLimitMs);
            const ProbedFile result = probeMedia(test.row(i)->outputPath());
            QVERIFY(test.row(i)->outputPath().endsWith(".wav"_s));
            QVERIFY(result.video.isEmpty());
            QVERIFY(!result.audio.isEmpty());
            QVERIFY(qAbs(result.seconds - clipMs / 1000.0) < 0.3);
        }
    }

    void rowFacts()
    {
        const auto check = [&](const char *caseName, const QString &source, quint32 preset,
                               const QString &in, const QString &out) {
            const CaseName inCase(caseName);
            AudioPage test(FunctionSection::audioConverter, preset);
            test.addRows({source}, "btnCut");
            const auto matches = [&](const char *label, const QString &pattern) {
                return QRegularExpression(QRegularExpression::anchoredPattern(pattern))
                    .match(test.text(0, label))
                    .hasMatch();
            };
            QVERIFY(matches("lblInBitrate", in));
            QVERIFY(matches("lblOutBitrate", out));
            QCOMPARE(test.text(0, "lblInDuration"), "00:00:10"_s);

            // Only audio is offered.
            press(*child(*test.page, "wdtChoices"), "btnFormatSet");
            QWidget *dialog = nullptr;
            QTRY_VERIFY((dialog = visibleWindow("MediaFormatDialog")));
            for (const QPushButton *tab : dialog->findChildren<QPushButton *>())
                QVERIFY(tab->text() != "视频"_s || !tab->isVisible());
            dialog->close();
        };
        const QString any = "[1-9][0-9]*Kbps"_s;
        check("the preset's own", m_sound, mp3High, any, "256Kbps"_s);
        check("as the source", m_film, mp3AsSource, any, any);
        check("no sound", m_silent, mp3AsSource, QString(), QString());
        check("of no known rate", m_web, mp3AsSource, QString(), QString());
    }

    void offersSoundsFirst()
    {
        AudioPage test(FunctionSection::audioConverter, mp3High);
        for (const char *button : {"btnAddMediaFiles", "btnAddFile"}) {
            QString filter;
            whenModal("QFileDialog", [&filter](QWidget &dialog) {
                filter = qobject_cast<QFileDialog *>(&dialog)->selectedNameFilter();
                dialog.close();
            });
            press(*test.page, button);
            QVERIFY2(filter.startsWith("音频文件"_s), qPrintable(filter));
        }
    }

    void cutsASound()
    {
        AudioPage test(FunctionSection::audioConverter, mp3High);
        test.addRows({m_sound}, "btnCut");
        whenModal("AudioCutDialog", [](QWidget &dialog) {
            setTime(dialog, "tedtStart", 2000);
            setTime(dialog, "tedtEnd", 5500);
            auto *bar = dialog.findChild<InterceptSlider *>();
            QVERIFY(QTest::qWaitFor([bar] { return bar->value() >= 3000; }, endLimitMs));
            QVERIFY(!processesWith("showwaves"_s).isEmpty());
            shoot(dialog, "audio_cut");
            press(dialog, "btnSave");
        });
        press(*test.row(0), "btnCut");
        QCOMPARE(test.text(0, "lblOutDuration"), "00:00:03"_s);
        // Opened again, the dialog shows the cut; cancelled, nothing changes.
        QTime shown;
        whenModal("AudioCutDialog", [&shown](QWidget &dialog) {
            shown = child<QTimeEdit>(dialog, "tedtEnd")->time();
            setTime(dialog, "tedtEnd", 9000);
            press(dialog, "btnCancel");
        });
        press(*test.row(0), "btnCut");
        QCOMPARE(shown, QTime(0, 0).addMSecs(5500));
        shoot(*test.page, "audio_idle");
        QVERIFY(qAbs(probeMedia(test.convert(0)).seconds - 3.5) < 0.1);
    }

    void cutDialogKeepsItsPartsTogether()
    {
        AudioCutDialog dialog;
        dialog.start(m_film, {"--ao=null"_s});
        dialog.setDuration(clipMs);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto *player = dialog.findChild<CSVideoPlayer *>();
        auto *bar = dialog.findChild<InterceptSlider *>();
        auto *start = child<QTimeEdit>(dialog, "tedtStart");
        auto *end = child<QTimeEdit>(dialog, "tedtEnd");
        QTRY_VERIFY_WITH_TIMEOUT(bar->value() > 0, endLimitMs);

        // The field moves the handle and the preview; a start behind the end is held back.
        press(dialog, "btnPlay");
        end->setTime(QTime(0, 0).addMSecs(6000));
        QCOMPARE(bar->rightValue(), 6000);
        QTRY_COMPARE_WITH_TIMEOUT(bar->value(), 6000, endLimitMs);
        start->setTime(QTime(0, 0).addMSecs(8000));
        QCOMPARE(start->time(), QTime(0, 0).addMSecs(6000));
        QCOMPARE(bar->leftValue(), 6000);

        // The handle moves the field.
        start->setTime(QTime(0, 0).addMSecs(0));
        QSignalSpy startSignals(start, &QTimeEdit::timeChanged);
        emit bar->leftValueChanged(3000);
        QCOMPARE(start->time(), QTime(0, 0).addMSecs(3000));
        QCOMPARE(end->minimumTime(), QTime(0, 0).addMSecs(3000));
        QVERIFY(startSignals.isEmpty());

        // Keys and capture: one second on from where the handle left the preview.
        QTRY_COMPARE_WITH_TIMEOUT(bar->value(), 3000, endLimitMs);
        QTest::keyClick(&dialog, Qt::Key_Right);
        QTRY_COMPARE_WITH_TIMEOUT(bar->value(), 4000, endLimitMs);
        press(dialog, "btnSCapture");
        QCOMPARE(start->time(), QTime(0, 0).addMSecs(4000));
        QVERIFY(player->isRunning());
        QTest::keyClick(&dialog, Qt::Key_Space);
        QVERIFY(child<QPushButton>(dialog, "btnPlay")->isChecked());
    }

private:
    QTemporaryDir m_media;
    QString m_film = m_media.filePath("film.mp4"_s);
    QString m_sound = m_media.filePath("Trip.2024.mp3"_s);
    QString m_web = m_media.filePath("film.webm"_s);
    QString m_silent = m_media.filePath("silent.mp4"_s);
};

QTEST_MAIN(TestAudioPage)
#include "tst_audiopage.moc"
