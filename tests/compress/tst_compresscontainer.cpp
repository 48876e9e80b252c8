// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/compressarithmetic.h"
#include "MediaKits/FunctionPage/VideoCompress/compresscontainer.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "support/factsof.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QtTest>

namespace {

// How a file of that suffix is made, where ffmpeg doesn't know it.
QString writableSuffix(const QString &suffix)
{
    static const QHash<QString, QString> others = {
        {"divx"_s, "avi"_s}, {"dat"_s, "mpg"_s}, {"vro"_s, "vob"_s},
        {"rmvb"_s, "avi"_s}, {"mtv"_s, "avi"_s}, {"rm"_s, "avi"_s},
        {"mka"_s, "mkv"_s},  {"3gp"_s, "mp4"_s}, {"3g2"_s, "mp4"_s},
    };
    return others.value(suffix, suffix);
}

} // namespace

// Every suffix that the page offers, through the real chain.
class TestCompressContainer : public QObject
{
    Q_OBJECT

private slots:
    void compresses_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const QString &suffix : videoFormats())
            QTest::newRow(qPrintable(suffix)) << suffix;
    }

    void compresses()
    {
        QFETCH(QString, suffix);
        const TestFolder folder;
        const QString made = folder.path("made."_s + writableSuffix(suffix));
        // MXF has one sample rate, Flash has others.
        const int sampleRate = suffix == "mxf"_s ? 48000 : 44100;
        makeClip(made, {1.0, 312, 232, 25, 2, sampleRate});
        const QString source = folder.path("film."_s + suffix);
        QVERIFY(QFile::rename(made, source));
        const CompressContainer container = compressContainer(suffix);
        ConvertTaskParam *param = folder.convertParam(source, container.suffix);
        param->sourceInfo = factsOf(source);
        QVERIFY(param->sourceInfo);
        CompressSettingsParam settings;
        settings.rate = 0.5;
        auto wanted = encParamFor(settings, *param->sourceInfo);
        if (!wanted) { // not every container tells a rate
            wanted = makeEncParam(VideoPart);
            wanted->video->bitrate = 200;
        }
        param->encParam = withEncodersOf(container, *wanted);
        Watched<ComplexConvertTask> convert(param);
        QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));

        const QString result = folder.result(container.suffix);
        const ProbedFile file = probeMedia(result);
        QCOMPARE(file.video["width"_s].toInt(), 312);
        QCOMPARE(file.video["height"_s].toInt(), 232);
        QVERIFY(!file.audio.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCompressContainer)
#include "tst_compresscontainer.moc"
