// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "support/pagetest.h"

#include <QDoubleSpinBox>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int endLimitMs = 120000;
constexpr double promiseKept = 0.05;

const QString restless = "testsrc2=s=352x288:r=12,noise=alls=12:allf=t"_s;
const QString still = "color=c=gray:s=352x288:r=12,drawbox=40:40:100:80:red:fill"_s;
const QString wild = "cellauto=s=352x288:r=12:rule=110"_s;

// With sound; the suffix decides the container.
void makeFilm(const QString &path, const QString &scene, const QString &options)
{
    makeMedia("-f lavfi -i %1 -f lavfi -i anoisesrc=c=pink:a=0.3:r=44100 -t 16 -ac 2 -pix_fmt "
              "yuv420p %2 @"_s.arg(scene, options),
              {path});
}

// What a row says: "1.23 MB".
double bytesOf(const QString &text)
{
    const QStringList parts = text.split(u' ');
    const int step = QStringList{"B"_s, "KB"_s, "MB"_s}.indexOf(parts.value(1));
    return step < 0 ? 0 : parts.value(0).toDouble() * std::pow(1024.0, step);
}

} // namespace

// What a row says before its job is what the file has behind it.
class TestCompressSizes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { preparePages(); }

    void promisesWhatComesOut_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("scene");
        QTest::addColumn<QString>("options");
        QTest::addColumn<double>("share");
        const QString rich = "-preset veryfast -b:v 3000k -b:a 128k"_s;
        const QString plain = "-b:v 3000k -b:a 128k"_s;
        QTest::newRow("mp4") << "a.mp4" << restless << rich << 0.55;
        QTest::newRow("mp4, mostly sound")
            << "b.mp4" << restless << "-preset veryfast -b:v 300k -b:a 192k" << 0.5;
        QTest::newRow("mkv") << "a.mkv" << restless << rich + " -c:a aac"_s << 0.55;
        const QString kept = "-c:v mpeg4 -q:v 2 -b:a 128k"_s;
        QTest::newRow("avi, least") << "b.avi" << restless << kept << 0.0;
        QTest::newRow("avi, least of a still one") << "c.avi" << still << kept << 0.0;
        QTest::newRow("avi, least of a wild one") << "d.avi" << wild << kept << 0.0;
        QTest::newRow("wmv, least") << "e.wmv" << restless << "-q:v 2 -b:a 128k" << 0.0;
        QTest::newRow("mpg, least of a wild one")
            << "f.mpg" << wild << "-q:v 2 -b:a 128k -r 25" << 0.0;
        QTest::newRow("mpg") << "a.mpg" << restless << plain + " -r 25"_s << 0.6;
        QTest::newRow("3gp") << "a.3gp" << restless << plain + " -c:a aac"_s << 0.6;
    }

    void promisesWhatComesOut()
    {
        QFETCH(QString, file);
        QFETCH(QString, scene);
        QFETCH(QString, options);
        QFETCH(double, share);
        const QString film = m_media.filePath(file);
        makeFilm(film, scene, options);
        PageTest<MediaCompressFunctionPage> test(FunctionSection::compressor, 0);
        test.addRows({film});
        QTRY_VERIFY(!test.text(0, "lblInSize").isEmpty());
        double asked = 0;
        QSignalSpy tried(test.row(0), SIGNAL(leastMeasured()));
        whenModal("CompressSettingsDialog", [&](QWidget &dialog) {
            auto *size = child<QDoubleSpinBox>(dialog, "sbSize");
            // What the encoder needs at least is tried out meanwhile.
            QVERIFY(share > 0 || tried.count() > 0 || tried.wait(endLimitMs));
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
        qInfo("%s: asked %.0f, said %.0f, made %.0f, %+.1f %%", qPrintable(file),
              asked * 1024 * 1024, said, made, (made / said - 1) * 100);
        QVERIFY(made / said - 1 < promiseKept);
        QVERIFY(made / said - 1 > -promiseKept);
    }

private:
    QTemporaryDir m_media;
};

QTEST_MAIN(TestCompressSizes)
#include "tst_compresssizes.moc"
