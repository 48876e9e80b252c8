// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "support/pagetest.h"
#include "support/toolrun.h"

#include <QDoubleSpinBox>
#include <QtTest>

namespace {

constexpr int endLimitMs = 120000;
constexpr double promiseKept = 0.05;

// A film that needs bits, with sound; the suffix decides the container.
void makeFilm(const QString &path, const QString &options)
{
    const QString source = QStringLiteral(
        "-v error -y -f lavfi -i testsrc2=s=352x288:r=12:d=12,noise=alls=12:allf=t -f lavfi -i "
        "anoisesrc=c=pink:a=0.3:d=12:r=44100 -ac 2 -pix_fmt yuv420p %1");
    const ToolRun run = runTool(QStringLiteral("ffmpeg"),
                                source.arg(options).split(QLatin1Char(' '), Qt::SkipEmptyParts) +
                                    QStringList(path));
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

// What a row says: "1.23 MB".
double bytesOf(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(' '));
    const int step =
        QStringList{QStringLiteral("B"), QStringLiteral("KB"), QStringLiteral("MB")}.indexOf(
            parts.value(1));
    return step < 0 ? 0 : parts.value(0).toDouble() * std::pow(1024.0, step);
}

} // namespace

// What a row says before its job is what the file has behind it.
class TestCompressSizes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void promisesWhatComesOut_data();
    void promisesWhatComesOut();

private:
    QTemporaryDir m_media;
};

void TestCompressSizes::initTestCase()
{
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
}

void TestCompressSizes::promisesWhatComesOut_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("options");
    QTest::addColumn<double>("share");
    const QString rich = QStringLiteral("-preset veryfast -b:v 3000k -b:a 128k");
    const QString plain = QStringLiteral("-b:v 3000k -b:a 128k");
    QTest::newRow("mp4") << "a.mp4" << rich << 0.55;
    QTest::newRow("mp4, mostly sound") << "b.mp4"
                                       << "-preset veryfast -b:v 300k -b:a 192k" << 0.5;
    QTest::newRow("mkv") << "a.mkv" << rich + QStringLiteral(" -c:a aac") << 0.55;
    QTest::newRow("avi, least") << "a.avi" << plain << 0.0;
    QTest::newRow("mpg") << "a.mpg" << plain + QStringLiteral(" -r 25") << 0.6;
    QTest::newRow("3gp") << "a.3gp" << plain + QStringLiteral(" -c:a aac") << 0.6;
}

void TestCompressSizes::promisesWhatComesOut()
{
    QFETCH(QString, file);
    QFETCH(QString, options);
    QFETCH(double, share);
    const QString film = m_media.filePath(file);
    makeFilm(film, options);
    PageTest<MediaCompressFunctionPage> test(FunctionSection::compressor, 0);
    test.add({film});
    QTRY_COMPARE(test.list()->count(), 1);
    QTRY_VERIFY(!test.text(0, "lblInSize").isEmpty());
    double asked = 0;
    whenModal("CompressSettingsDialog", [&](QWidget &dialog) {
        auto *size = child<QDoubleSpinBox>(dialog, "sbSize");
        asked = share > 0 ? std::round(size->maximum() * share * 100) / 100 : 0.01;
        size->setFocus();
        size->selectAll();
        QTest::keyClicks(size, QString::number(asked, 'f', 2));
        press(dialog, "btnOK");
        // Less than can be had: the dialog says so, and is asked for what can.
        if (dialog.isVisible())
            press(dialog, "btnOK");
    });
    press(*test.row(0), "btnCompressSet");
    const double said = bytesOf(test.text(0, "lblOutSize"));
    if (share > 0)
        QVERIFY(std::abs(said / (asked * 1024 * 1024) - 1) < 0.01);
    press(*test.row(0), "btnConvert");
    QTRY_COMPARE_WITH_TIMEOUT(test.statePage(0), 2, endLimitMs);
    const double made = double(QFileInfo(test.row(0)->outputPath()).size());
    qInfo("%s: asked %.0f, said %.0f, made %.0f, %+.1f %%", qPrintable(file), asked * 1024 * 1024,
          said, made, (made / said - 1) * 100);
    QVERIFY(made / said - 1 < promiseKept);
    // The least is what every scene can be coded with; a simple one takes less.
    QVERIFY(share == 0 || made / said - 1 > -promiseKept);
}

QTEST_MAIN(TestCompressSizes)
#include "tst_compresssizes.moc"
