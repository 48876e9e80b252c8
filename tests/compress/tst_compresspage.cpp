// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compressplan.h"
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsdialog.h"
#include "MediaKits/FunctionPage/VideoCompress/compressslidewidget.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "support/pagetest.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSlider>
#include <QtTest>

namespace {

constexpr int endLimitMs = 60000;
constexpr double closeEnough = 0.15;

// Noise needs whatever bitrate it is given.
void makeNoise(const QString &path, int seconds)
{
    makeMedia("-f lavfi -i testsrc2=s=640x360:r=25:d=%1,noise=alls=40:allf=t -f lavfi -i sine=d=%1 "
              "-pix_fmt yuv420p -preset ultrafast @"_s.arg(seconds),
              {path});
}

int videoKbps(const QString &path)
{
    return probeMedia(path).video.value("bit_rate"_s).toString().toInt() / 1000;
}

bool isNear(int value, int wanted)
{
    return std::abs(value - wanted) <= wanted * closeEnough;
}

void choose(QWidget &dialog, const char *name, const QString &text)
{
    auto *box = child<QComboBox>(dialog, name);
    QVERIFY2(box->findText(text) > 0, name);
    box->setCurrentText(text);
}

const std::pair<const char *, QString> explicitChoices[] = {
    {"cbResolution", "480x320"_s}, {"cbVBitRate", "1500 kbps"_s},  {"cbFrameRate", "30 fps"_s},
    {"cbABitRate", "96 kbps"_s},   {"cbSampleRate", "32000 Hz"_s},
};

// The page's section, with a rate as if chosen earlier.
QLatin1String sectionWith(double rate)
{
    const QLatin1String section = FunctionSection::compressor;
    FunctionSettings::instance().setValue(section, FunctionKey::compressRate, rate);
    return section;
}

struct CompressPage : PageTest<MediaCompressFunctionPage>
{
    explicit CompressPage(double rate) : PageTest(sectionWith(rate), 0) {}
    QSlider *slider() const { return child<QSlider>(*page, "slider"); }
    int target(int index) const { return param(index).encParam->video->bitrate; }
    void waitForEnd(int index) const { QTRY_COMPARE_WITH_TIMEOUT(statePage(index), 2, endLimitMs); }
};

} // namespace

class TestCompressPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeNoise(m_clip, 6);
    }

    void compressesByRate()
    {
        CompressPage test(0.6);
        QVERIFY(test.shown);
        QCOMPARE(test.slider()->value(), -40);
        shoot(*test.page, "compress_empty");
        test.addRows({m_clip});
        QTRY_COMPARE(test.text(0, "lblOutRes"), "640x360"_s);
        QTest::keyClick(test.slider(), Qt::Key_PageDown);
        QCOMPARE(test.slider()->value(), -50);
        QCOMPARE(FunctionSettings::instance()
                     .value(FunctionSection::compressor, FunctionKey::compressRate)
                     .toDouble(),
                 0.5);
        QCOMPARE(test.text(0, "lblOutSizeName"), "预计大小："_s);
        QCOMPARE(test.text(0, "lblOutSize"), sizeText(QFileInfo(m_clip).size() / 2));
        QCOMPARE(test.text(0, "lblOutDuration"), QString());
        shoot(*test.page, "compress_idle");

        press(*test.page, "btnConvertAll");
        QCOMPARE(test.startAllText(), "正在转换"_s);
        test.waitForEnd(0);
        const QString result = test.row(0)->outputPath();
        QCOMPARE(QFileInfo(result).fileName(), "noise.mp4"_s);
        const int wanted = videoKbps(m_clip) / 2;
        QVERIFY2(isNear(videoKbps(result), wanted),
                 qPrintable("%1 for %2"_s.arg(videoKbps(result)).arg(wanted)));
        QCOMPARE(probeMedia(result).size().width(), 640);
        QCOMPARE(test.text(0, "lblOutSizeName"), "大小："_s);
        QCOMPARE(test.text(0, "lblOutSize"), sizeText(QFileInfo(result).size()));
        shoot(*test.page, "compress_done");
    }

    void compressesByExplicitSettings()
    {
        CompressPage test(0.75);
        test.addRows({m_clip});
        whenModal("CompressSettingsDialog", [](QWidget &dialog) {
            press(dialog, "btnHigh");
            for (const auto &[name, text] : explicitChoices)
                choose(dialog, name, text);
            shoot(dialog, "compress_high");
            press(dialog, "btnOK");
        });
        press(*test.row(0), "btnCompressSet");
        QCOMPARE(test.text(0, "lblOutRes"), "480x320"_s);
        const double said = test.text(0, "lblOutSize").section(u' ', 0, 0).toDouble();

        whenModal("CompressSettingsDialog", [](QWidget &dialog) {
            QVERIFY(child<QPushButton>(dialog, "btnHigh")->isChecked());
            for (const auto &[name, text] : explicitChoices)
                QCOMPARE(child<QComboBox>(dialog, name)->currentText(), text);
            press(dialog, "btnCancel");
        });
        press(*test.row(0), "btnCompressSet");

        press(*test.row(0), "btnConvert");
        test.waitForEnd(0);
        const QString result = test.row(0)->outputPath();
        const ProbedFile made = probeMedia(result);
        const double mebibytes = double(QFileInfo(result).size()) / (1 << 20);
        QVERIFY2(std::abs(mebibytes / said - 1) < 0.05, qPrintable(QString::number(said)));
        QVERIFY2(isNear(videoKbps(result), 1500), qPrintable(QString::number(videoKbps(result))));
        QCOMPARE(made.size().width(), 480);
        QCOMPARE(made.video.value("r_frame_rate"_s).toString(), "30/1"_s);
        QCOMPARE(made.audio.value("sample_rate"_s).toString(), "32000"_s);
    }

    void sliderReachesOnlyIdleRows()
    {
        const QString slow = m_media.filePath("slow.mp4"_s);
        makeNoise(slow, 20);
        CompressPage test(0.5);
        test.addRows({slow, m_clip});
        const int target = test.target(0);
        whenModal("CompressSettingsDialog", [](QWidget &dialog) {
            press(dialog, "btnHigh");
            press(dialog, "btnOK");
        });
        press(*test.row(1), "btnCompressSet");
        QVERIFY(test.param(1).encParam->audio);
        press(*test.row(0), "btnConvert");
        QTRY_COMPARE_WITH_TIMEOUT(test.state(0), MediaTask::RUNNING, endLimitMs);
        QTest::keyClick(test.slider(), Qt::Key_Home);
        QCOMPARE(test.target(0), target);
        QCOMPARE(test.target(1), compressPlan(0.2, *test.row(1)->sourceInfo()).video);
        QCOMPARE(test.param(1).encParam->audio->sampleRate, 0);
        press(*test.row(0), "btnStop");
        QTRY_COMPARE(test.state(0), MediaTask::STOPED);
    }

    void dialogRules()
    {
        MediaInfoData info;
        info.format = QSharedPointer<MediaFormatInfo>::create();
        info.format->fileSize = 100 << 20;
        info.video = QSharedPointer<VEncParam>::create();
        auto settings = QSharedPointer<CompressSettingsParam>::create();
        settings->rate = 0.8;
        CompressSettingsDialog dialog;
        dialog.setMediaInfo(info);
        dialog.setParam(settings);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto *slider = child<CompressSlideWidget>(dialog, "compressSlider");
        auto *size = child<QDoubleSpinBox>(dialog, "sbSize");
        QCOMPARE(child<QLabel>(dialog, "lblSizeRange")->text(), "(20-100)MB"_s);
        QCOMPARE(slider->value(), -20);
        QCOMPARE(size->value(), 80.0);
        slider->setValue(-25);
        QCOMPARE(size->value(), 75.0);
        shoot(dialog, "compress_base");
        size->setFocus();
        size->selectAll();
        QTest::keyClicks(size, "60"_s);
        QCOMPARE(slider->value(), -40);
        QTest::keyClick(size, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(settings->rate, 0.6);
        QVERIFY(!settings->advanced);

        // Of a source without sound, whose bitrate isn't known either.
        dialog.show();
        press(dialog, "btnHigh");
        press(dialog, "btnOK");
        QVERIFY(settings->advanced);
        QVERIFY(!settings->encParam->audio);
        QCOMPARE(settings->encParam->video->bitrate, 0);
    }

    void refusesWhatIsNoVideo()
    {
        const QString text = m_media.filePath("text.mp4"_s);
        writeTestFile(text, QByteArray("no video at all\n").repeated(100));
        CompressPage test(0.5);
        test.addRows({text});
        QWidget *toast = nullptr;
        for (QWidget *widget : QApplication::allWidgets())
            toast = widget->inherits("Toast") ? widget : toast;
        QVERIFY(toast);
        QCOMPARE(toast->findChild<QLabel *>()->text(), "文件格式与内容不匹配"_s);
        QCOMPARE(test.text(0, "lblInSize"), QString());
        QVERIFY(!child(*test.row(0), "btnConvert")->isEnabled());
        QCOMPARE(test.text(0, "lblErrorConvert"), "无法读取该文件"_s);
        QVERIFY(!askedBy([&] { press(*test.page, "btnConvertAll"); }, "btnOK").isEmpty());
        QCOMPARE(test.state(0), MediaTask::UNSTARTED);
    }

    // A suffix that can't be written is told by its stand-in, before anything starts.
    void namesTheResult()
    {
        const QString old = m_media.filePath("old.divx"_s);
        makeClip(old + ".avi"_s);
        QVERIFY(QFile::rename(old + ".avi"_s, old));
        CompressPage test(0.5);
        test.addRows({old});
        QTRY_COMPARE(test.text(0, "lblOutFormat"), "AVI"_s);
        QCOMPARE(test.text(0, "lblInFormat"), "DIVX"_s);
        shoot(*test.page, "compress_divx");
        press(*test.row(0), "btnConvert");
        test.waitForEnd(0);
        QCOMPARE(QFileInfo(test.row(0)->outputPath()).fileName(), "old.avi"_s);
        QVERIFY(probeMedia(test.row(0)->outputPath()).container == "avi"_s);
    }

    void sourcesWithoutBitrate()
    {
        const QString raw = m_media.filePath("clip.webm"_s);
        const QString sound = m_media.filePath("sound.mp4"_s);
        makeClip(raw);
        makeClip(sound, {0.5, 0});
        CompressPage test(0.5);
        test.addRows({raw, sound});
        QVERIFY(test.text(0, "lblOutSize").endsWith(u'B'));
        QVERIFY(test.target(0) > 0);
        QCOMPARE(test.text(1, "lblOutSize"), "无法预估"_s);
        QCOMPARE(test.text(1, "lblErrorConvert"), "无法按比例压缩，请用高级设置"_s);
        QVERIFY(child(*test.row(1), "lblErrorConvert")->isVisible());
        shoot(*test.page, "compress_hindered");
        press(*test.page, "btnConvertAll");
        test.waitForEnd(0);
        press(*test.row(1), "btnConvert");
        QTRY_COMPARE(test.startAllText(), "全部转换"_s);
        QCOMPARE(test.state(1), MediaTask::UNSTARTED);

        whenModal("CompressSettingsDialog", [](QWidget &dialog) {
            press(dialog, "btnHigh");
            choose(dialog, "cbABitRate", "72 kbps"_s);
            press(dialog, "btnOK");
        });
        press(*test.row(1), "btnCompressSet");
        QVERIFY(!child(*test.row(1), "lblErrorConvert")->isVisible());
        press(*test.row(1), "btnConvert");
        test.waitForEnd(1);
        QVERIFY(!probeMedia(test.row(1)->outputPath()).audio.isEmpty());
    }

private:
    QTemporaryDir m_media;
    QString m_clip = m_media.filePath("noise.mp4"_s);
};

QTEST_MAIN(TestCompressPage)
#include "tst_compresspage.moc"
