// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "controls/interceptslider.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/FunctionPage/AudioConvert/audioconvertfunctionpage.h"
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "resources/look.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testmedia.h"

#include <QFileDialog>
#include <QTimeEdit>
#include <QtTest>

namespace {

using AudioPage = PageTest<AudioConvertFunctionPage>;

constexpr quint32 mp3High = 1200001;
constexpr quint32 mp3AsSource = 1200000;
constexpr int endLimitMs = 60000;
constexpr int clipMs = 10000;

QTime at(int ms)
{
    return QTime(0, 0).addMSecs(ms);
}

} // namespace

class TestAudioPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void convertsToEachCategory_data();
    void convertsToEachCategory();
    void rowFacts_data();
    void rowFacts();
    void offersSoundsFirst();
    void cutsASound();
    void cutDialogSpan_data();
    void cutDialogSpan();
    void cutDialogKeepsItsPartsTogether();

private:
    QTemporaryDir m_media;
    QString m_film = m_media.filePath(QStringLiteral("film.mp4"));
    QString m_sound = m_media.filePath(QStringLiteral("song.mp3"));
    QString m_web = m_media.filePath(QStringLiteral("film.webm"));
    QString m_silent = m_media.filePath(QStringLiteral("silent.mp4"));
};

void TestAudioPage::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    ClipPlan plan;
    plan.seconds = clipMs / 1000.0;
    makeClip(m_film, plan);
    ClipPlan soundPlan = plan;
    soundPlan.width = 0;
    makeClip(m_sound, soundPlan);
    plan.channels = 0;
    makeClip(m_silent, plan);
    makeClip(m_web, {clipMs / 1000.0, 160, 120, 5});
}

void TestAudioPage::convertsToEachCategory_data()
{
    QTest::addColumn<quint32>("preset");
    QTest::addColumn<QString>("suffix");
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    // The last preset of each category: settings of its own.
    for (const quint32 category : catalogue.categoryIds()) {
        if (EncParamCatalog::categoryKind(category) != 2)
            continue;
        quint32 last = 0;
        for (const quint32 id : catalogue.encParamIds()) {
            if (catalogue.encParam(id)->displayCategoryID == category)
                last = id;
        }
        const QString suffix = catalogue.category(category)->title.toLower();
        QTest::newRow(qPrintable(suffix)) << last << suffix;
    }
}

void TestAudioPage::convertsToEachCategory()
{
    QFETCH(quint32, preset);
    QFETCH(QString, suffix);
    AudioPage test(FunctionSection::audioConverter, preset);
    test.add({m_film, m_sound});
    QTRY_COMPARE(test.list()->count(), 2);
    press(*test.page, "btnConvertAll");
    for (int i = 0; i < 2; ++i) {
        QTRY_COMPARE_WITH_TIMEOUT(test.statePage(i), 2, endLimitMs);
        const ProbedFile result = probeMedia(test.row(i)->outputPath());
        QVERIFY(test.row(i)->outputPath().endsWith(suffix));
        QVERIFY(result.video.isEmpty());
        QVERIFY(!result.audio.isEmpty());
        QVERIFY(qAbs(result.seconds - clipMs / 1000.0) < 0.3);
    }
}

void TestAudioPage::rowFacts_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<quint32>("preset");
    QTest::addColumn<QString>("in");
    QTest::addColumn<QString>("out");
    const QString any = QStringLiteral("[1-9][0-9]*Kbps");
    QTest::newRow("the preset's own") << m_sound << mp3High << any << "256Kbps";
    QTest::newRow("as the source") << m_film << mp3AsSource << any << any;
    QTest::newRow("no sound") << m_silent << mp3AsSource << ""
                              << "";
    QTest::newRow("of no known rate") << m_web << mp3AsSource << ""
                                      << "";
}

void TestAudioPage::rowFacts()
{
    QFETCH(QString, source);
    QFETCH(quint32, preset);
    QFETCH(QString, in);
    QFETCH(QString, out);
    AudioPage test(FunctionSection::audioConverter, preset);
    test.add({source});
    QTRY_COMPARE(test.list()->count(), 1);
    QTRY_VERIFY(child(*test.row(0), "btnCut")->isEnabled());
    const auto matches = [&](const char *label, const QString &pattern) {
        return QRegularExpression(QRegularExpression::anchoredPattern(pattern))
            .match(test.text(0, label))
            .hasMatch();
    };
    QVERIFY(matches("lblInBitrate", in));
    QVERIFY(matches("lblOutBitrate", out));
    QCOMPARE(test.text(0, "lblInDuration"), QStringLiteral("00:00:10"));

    // Only audio is offered.
    press(*child(*test.page, "wdtChoices"), "btnFormatSet");
    QWidget *dialog = nullptr;
    QTRY_VERIFY((dialog = visibleWindow("MediaFormatDialog")));
    for (const QPushButton *tab : dialog->findChildren<QPushButton *>())
        QVERIFY(tab->text() != QStringLiteral("视频") || !tab->isVisible());
    dialog->close();
}

void TestAudioPage::offersSoundsFirst()
{
    AudioPage test(FunctionSection::audioConverter, mp3High);
    for (const char *button : {"btnAddMediaFiles", "btnAddFile"}) {
        QString filter;
        whenModal("QFileDialog", [&filter](QWidget &dialog) {
            filter = qobject_cast<QFileDialog *>(&dialog)->selectedNameFilter();
            dialog.close();
        });
        press(*test.page, button);
        QVERIFY2(filter.startsWith(QStringLiteral("音频文件")), qPrintable(filter));
    }
}

void TestAudioPage::cutsASound()
{
    AudioPage test(FunctionSection::audioConverter, mp3High);
    test.add({m_sound});
    QTRY_COMPARE(test.list()->count(), 1);
    QTRY_VERIFY(child(*test.row(0), "btnCut")->isEnabled());
    whenModal("AudioCutDialog", [](QWidget &dialog) {
        child<QTimeEdit>(dialog, "tedtStart")->setTime(at(2000));
        child<QTimeEdit>(dialog, "tedtEnd")->setTime(at(5500));
        auto *bar = dialog.findChild<InterceptSlider *>();
        QVERIFY(QTest::qWaitFor([bar] { return bar->value() >= 3000; }, endLimitMs));
        shoot(dialog, "audio_cut");
        press(dialog, "btnSave");
    });
    press(*test.row(0), "btnCut");
    QCOMPARE(test.text(0, "lblOutDuration"), QStringLiteral("00:00:03"));
    // Opened again, the dialog shows the cut; cancelled, nothing changes.
    QTime shown;
    whenModal("AudioCutDialog", [&shown](QWidget &dialog) {
        shown = child<QTimeEdit>(dialog, "tedtEnd")->time();
        child<QTimeEdit>(dialog, "tedtEnd")->setTime(at(9000));
        press(dialog, "btnCancel");
    });
    press(*test.row(0), "btnCut");
    QCOMPARE(shown, at(5500));
    shoot(*test.page, "audio_idle");
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
    QVERIFY(qAbs(probeMedia(test.row(0)->outputPath()).seconds - 3.5) < 0.1);
}

void TestAudioPage::cutDialogSpan_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<bool>("cuts");
    QTest::newRow("untouched") << 0 << clipMs << false;
    QTest::newRow("499 ms before the end") << 0 << clipMs - 499 << false;
    QTest::newRow("500 ms before the end") << 0 << clipMs - 500 << true;
    QTest::newRow("from the first ms on") << 1 << clipMs << true;
}

void TestAudioPage::cutDialogSpan()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(bool, cuts);
    AudioCutDialog dialog;
    dialog.setDuration(clipMs);
    child<QTimeEdit>(dialog, "tedtEnd")->setTime(at(end));
    child<QTimeEdit>(dialog, "tedtStart")->setTime(at(start));
    press(dialog, "btnSave");
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(!dialog.timeRange().isNull(), cuts);
    if (cuts) {
        QCOMPARE(dialog.timeRange()->start, start);
        QCOMPARE(dialog.timeRange()->end, end);
    }
}

void TestAudioPage::cutDialogKeepsItsPartsTogether()
{
    AudioCutDialog dialog;
    dialog.start(m_film, {QStringLiteral("--ao=null")});
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
    end->setTime(at(6000));
    QCOMPARE(bar->rightValue(), 6000);
    QTRY_COMPARE_WITH_TIMEOUT(bar->value(), 6000, endLimitMs);
    start->setTime(at(8000));
    QCOMPARE(start->time(), at(6000));
    QCOMPARE(bar->leftValue(), 6000);

    // The handle moves the field.
    start->setTime(at(0));
    QSignalSpy startSignals(start, &QTimeEdit::timeChanged);
    emit bar->leftValueChanged(3000);
    QCOMPARE(start->time(), at(3000));
    QCOMPARE(end->minimumTime(), at(3000));
    QVERIFY(startSignals.isEmpty());

    // Keys and capture: one second on from where the handle left the preview.
    QTRY_COMPARE_WITH_TIMEOUT(bar->value(), 3000, endLimitMs);
    QTest::keyClick(&dialog, Qt::Key_Right);
    QTRY_COMPARE_WITH_TIMEOUT(bar->value(), 4000, endLimitMs);
    press(dialog, "btnSCapture");
    QCOMPARE(start->time(), at(4000));
    QVERIFY(player->isRunning());
    QTest::keyClick(&dialog, Qt::Key_Space);
    QVERIFY(child<QPushButton>(dialog, "btnPlay")->isChecked());
}

QTEST_MAIN(TestAudioPage)
#include "tst_audiopage.moc"
