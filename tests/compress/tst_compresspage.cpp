// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/FunctionPage/VideoCompress/compressplan.h"
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsdialog.h"
#include "MediaKits/FunctionPage/VideoCompress/compressslidewidget.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "resources/look.h"
#include "support/mediaprobe.h"
#include "support/pagetest.h"
#include "support/testfile.h"
#include "support/testmedia.h"
#include "support/toolrun.h"

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
    const QString options =
        QStringLiteral("-v error -y -f lavfi -i testsrc2=s=640x360:r=25:d=%1,noise=alls=40:allf=t "
                       "-f lavfi -i sine=d=%1 -pix_fmt yuv420p -preset ultrafast")
            .arg(seconds);
    const ToolRun run =
        runTool(QStringLiteral("ffmpeg"), options.split(QLatin1Char(' ')) + QStringList(path));
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

int videoKbps(const QString &path)
{
    return probeMedia(path).video.value(QLatin1String("bit_rate")).toString().toInt() / 1000;
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
    {"cbResolution", QStringLiteral("480x320")},  {"cbVBitRate", QStringLiteral("1500 kbps")},
    {"cbFrameRate", QStringLiteral("30 fps")},    {"cbABitRate", QStringLiteral("96 kbps")},
    {"cbSampleRate", QStringLiteral("32000 Hz")},
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
    ConvertTaskParam &param(int index) const
    {
        return *static_cast<ConvertTaskParam *>(row(index)->task()->param());
    }
    int target(int index) const { return param(index).encParam->video->bitrate; }
    void waitForEnd(int index) const { QTRY_COMPARE_WITH_TIMEOUT(statePage(index), 2, endLimitMs); }
};

} // namespace

class TestCompressPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void compressesByRate();
    void compressesByExplicitSettings();
    void sliderReachesOnlyIdleRows();
    void dialogRules();
    void refusesWhatIsNoVideo();
    void namesTheResult();
    void sourcesWithoutBitrate();

private:
    QTemporaryDir m_media;
    QString m_clip = m_media.filePath(QStringLiteral("noise.mp4"));
};

void TestCompressPage::initTestCase()
{
    Look::apply();
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
    makeNoise(m_clip, 6);
}

void TestCompressPage::compressesByRate()
{
    CompressPage test(0.6);
    QVERIFY(test.shown);
    QCOMPARE(test.slider()->value(), -40);
    shoot(*test.page, "compress_empty");
    test.add({m_clip});
    QTRY_COMPARE(test.list()->count(), 1);
    QTRY_COMPARE(test.text(0, "lblOutRes"), QStringLiteral("640x360"));
    QTest::keyClick(test.slider(), Qt::Key_PageDown);
    QCOMPARE(test.slider()->value(), -50);
    QCOMPARE(FunctionSettings::instance()
                 .value(FunctionSection::compressor, FunctionKey::compressRate)
                 .toDouble(),
             0.5);
    QCOMPARE(test.text(0, "lblOutSizeName"), QStringLiteral("预计大小："));
    QCOMPARE(test.text(0, "lblOutSize"), sizeText(QFileInfo(m_clip).size() / 2));
    QCOMPARE(test.text(0, "lblOutDuration"), QString());
    shoot(*test.page, "compress_idle");

    press(*test.page, "btnConvertAll");
    QCOMPARE(test.startAllText(), QStringLiteral("正在转换"));
    test.waitForEnd(0);
    const QString result = test.row(0)->outputPath();
    QCOMPARE(QFileInfo(result).fileName(), QStringLiteral("noise.mp4"));
    const int wanted = videoKbps(m_clip) / 2;
    QVERIFY2(isNear(videoKbps(result), wanted),
             qPrintable(QStringLiteral("%1 for %2").arg(videoKbps(result)).arg(wanted)));
    QCOMPARE(probeMedia(result).video.value(QLatin1String("width")).toInt(), 640);
    QCOMPARE(test.text(0, "lblOutSizeName"), QStringLiteral("大小："));
    QCOMPARE(test.text(0, "lblOutSize"), sizeText(QFileInfo(result).size()));
    shoot(*test.page, "compress_done");
}

void TestCompressPage::compressesByExplicitSettings()
{
    CompressPage test(0.75);
    test.add({m_clip});
    QTRY_COMPARE(test.list()->count(), 1);
    whenModal("CompressSettingsDialog", [](QWidget &dialog) {
        press(dialog, "btnHigh");
        for (const auto &[name, text] : explicitChoices)
            choose(dialog, name, text);
        shoot(dialog, "compress_high");
        press(dialog, "btnOK");
    });
    press(*test.row(0), "btnCompressSet");
    QCOMPARE(test.text(0, "lblOutRes"), QStringLiteral("480x320"));
    const double said = test.text(0, "lblOutSize").section(QLatin1Char(' '), 0, 0).toDouble();

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
    QCOMPARE(made.video.value(QLatin1String("width")).toInt(), 480);
    QCOMPARE(made.video.value(QLatin1String("r_frame_rate")).toString(), QStringLiteral("30/1"));
    QCOMPARE(made.audio.value(QLatin1String("sample_rate")).toString(), QStringLiteral("32000"));
}

void TestCompressPage::sliderReachesOnlyIdleRows()
{
    const QString slow = m_media.filePath(QStringLiteral("slow.mp4"));
    makeNoise(slow, 20);
    CompressPage test(0.5);
    test.add({slow, m_clip});
    QTRY_COMPARE(test.list()->count(), 2);
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

void TestCompressPage::dialogRules()
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
    QCOMPARE(child<QLabel>(dialog, "lblSizeRange")->text(), QStringLiteral("(20-100)MB"));
    QCOMPARE(slider->value(), -20);
    QCOMPARE(size->value(), 80.0);
    slider->setValue(-25);
    QCOMPARE(size->value(), 75.0);
    shoot(dialog, "compress_base");
    size->setFocus();
    size->selectAll();
    QTest::keyClicks(size, QStringLiteral("60"));
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

void TestCompressPage::refusesWhatIsNoVideo()
{
    const QString text = m_media.filePath(QStringLiteral("text.mp4"));
    writeTestFile(text, QByteArray("no video at all\n").repeated(100));
    CompressPage test(0.5);
    test.add({text});
    QTRY_COMPARE(test.list()->count(), 1);
    QWidget *toast = nullptr;
    for (QWidget *widget : QApplication::allWidgets())
        toast = widget->inherits("Toast") ? widget : toast;
    QVERIFY(toast);
    QCOMPARE(toast->findChild<QLabel *>()->text(), QStringLiteral("文件格式与内容不匹配"));
    QCOMPARE(test.text(0, "lblInSize"), QString());
    QVERIFY(!child(*test.row(0), "btnConvert")->isEnabled());
    QCOMPARE(test.text(0, "lblErrorConvert"), QStringLiteral("无法读取该文件"));
    bool isTold = false;
    whenModal("MediaMessageBox", [&isTold](QWidget &box) {
        isTold = true;
        press(box, "btnOK");
    });
    press(*test.page, "btnConvertAll");
    QVERIFY(isTold);
    QCOMPARE(test.state(0), MediaTask::UNSTARTED);
}

// A suffix that can't be written is told by its stand-in, before anything starts.
void TestCompressPage::namesTheResult()
{
    const QString old = m_media.filePath(QStringLiteral("old.divx"));
    makeClip(old + QLatin1String(".avi"));
    QVERIFY(QFile::rename(old + QLatin1String(".avi"), old));
    CompressPage test(0.5);
    test.add({old});
    QTRY_COMPARE(test.list()->count(), 1);
    QTRY_COMPARE(test.text(0, "lblOutFormat"), QStringLiteral("AVI"));
    QCOMPARE(test.text(0, "lblInFormat"), QStringLiteral("DIVX"));
    shoot(*test.page, "compress_divx");
    press(*test.row(0), "btnConvert");
    test.waitForEnd(0);
    QCOMPARE(QFileInfo(test.row(0)->outputPath()).fileName(), QStringLiteral("old.avi"));
    QVERIFY(probeMedia(test.row(0)->outputPath()).container == QLatin1String("avi"));
}

void TestCompressPage::sourcesWithoutBitrate()
{
    const QString raw = m_media.filePath(QStringLiteral("clip.webm"));
    const QString sound = m_media.filePath(QStringLiteral("sound.mp4"));
    makeClip(raw);
    ClipPlan plan;
    plan.width = 0;
    makeClip(sound, plan);
    CompressPage test(0.5);
    test.add({raw, sound});
    QTRY_COMPARE(test.list()->count(), 2);
    QVERIFY(test.text(0, "lblOutSize").endsWith(QLatin1Char('B')));
    QVERIFY(test.target(0) > 0);
    QCOMPARE(test.text(1, "lblOutSize"), QStringLiteral("无法预估"));
    QCOMPARE(test.text(1, "lblErrorConvert"), QStringLiteral("无法按比例压缩，请用高级设置"));
    QVERIFY(child(*test.row(1), "lblErrorConvert")->isVisible());
    shoot(*test.page, "compress_hindered");
    press(*test.page, "btnConvertAll");
    test.waitForEnd(0);
    press(*test.row(1), "btnConvert");
    QTRY_COMPARE(test.startAllText(), QStringLiteral("全部转换"));
    QCOMPARE(test.state(1), MediaTask::UNSTARTED);

    whenModal("CompressSettingsDialog", [](QWidget &dialog) {
        press(dialog, "btnHigh");
        choose(dialog, "cbABitRate", QStringLiteral("72 kbps"));
        press(dialog, "btnOK");
    });
    press(*test.row(1), "btnCompressSet");
    QVERIFY(!child(*test.row(1), "lblErrorConvert")->isVisible());
    press(*test.row(1), "btnConvert");
    test.waitForEnd(1);
    QVERIFY(!probeMedia(test.row(1)->outputPath()).audio.isEmpty());
}

QTEST_MAIN(TestCompressPage)
#include "tst_compresspage.moc"
