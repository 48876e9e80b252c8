// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"
#include "MediaKits/MediaTasksManager/concattask.h"
#include "support/factsof.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"

#include <QtTest>

#include <algorithm>
#include <cmath>

namespace {

using Merge = Watched<ConcatTask>;

constexpr int partSeconds = 1;

struct Part
{
    char letter;
    const char *file;
    const char *picture; // lavfi, empty for none
    const char *sound;   // lavfi, empty for none
    QSize size;
    bool hasColour[3]; // red, green, blue
};

// Of sizes, frame rates, sample rates and channels that differ. With grain, since Theora leaves out
// frames that are like the one before.
const Part parts[] = {
    {'R',
     "red.mp4",
     "color=red:s=160x120:r=30,noise=alls=9:allf=t",
     "sine=500:r=44100,aformat=channel_layouts=stereo",
     {160, 120},
     {true, false, false}},
    {'A', "sound.mka", "", "sine=500:r=48000", {}, {false, false, false}},
    {'B',
     "blue.webm",
     "color=blue:s=96x96:r=25,noise=alls=9:allf=t",
     "",
     {96, 96},
     {false, false, true}},
    {'G',
     "green.mkv",
     "color=0x00ff00:s=96x128:r=50,noise=alls=9:allf=t",
     "sine=500:r=22050",
     {96, 128},
     {false, true, false}},
};

const Part &partOf(QChar letter)
{
    return *std::find_if(std::begin(parts), std::end(parts),
                         [&](const Part &part) { return QLatin1Char(part.letter) == letter; });
}

QByteArray decoded(const QString &path, const QString &options)
{
    const ToolRun run = runTool(
        QStringLiteral("ffmpeg"),
        QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path} +
            options.split(QLatin1Char(' ')) + QStringList(QStringLiteral("-")));
    return run.out;
}

bool isLoud(const QByteArray &samples)
{
    return std::any_of(samples.begin(), samples.end(),
                       [](char sample) { return std::abs(sample) > 4; });
}

} // namespace

// Inputs that aren't alike, joined.
class TestMerging : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void joinsWhatIsNotAlike_data();
    void joinsWhatIsNotAlike();
    void joinsSounds_data();
    void joinsSounds();

private:
    QString media(const char *name) const { return m_media.filePath(QLatin1String(name)); }
    ConcatTaskParam *wanted(const TestFolder &folder, const QString &format, quint32 preset,
                            const QString &order) const;

    QTemporaryDir m_media;
};

void TestMerging::initTestCase()
{
    for (const Part &part : parts) {
        QStringList make{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y")};
        for (const char *input : {part.picture, part.sound}) {
            if (*input != '\0')
                make +=
                    {QStringLiteral("-f"),         QStringLiteral("lavfi"), QStringLiteral("-t"),
                     QString::number(partSeconds), QStringLiteral("-i"),    QLatin1String(input)};
        }
        if (qstrcmp(part.file, "blue.webm") != 0) {
            make += media(part.file);
            QCOMPARE(runTool(QStringLiteral("ffmpeg"), make).exitCode, 0);
            continue;
        }
        // Into a pipe, where the header can't be filled in: no length.
        make += {QStringLiteral("-c:v"), QStringLiteral("libvpx"), QStringLiteral("-f"),
                 QStringLiteral("webm"), QStringLiteral("-")};
        const ToolRun run = runTool(QStringLiteral("ffmpeg"), make);
        QCOMPARE(run.exitCode, 0);
        writeTestFile(media(part.file), run.out);
    }
}

ConcatTaskParam *TestMerging::wanted(const TestFolder &folder, const QString &format,
                                     quint32 preset, const QString &order) const
{
    auto *param = new ConcatTaskParam;
    param->outputName = QStringLiteral("b");
    param->outputDir = folder.out;
    param->format = format;
    param->encParam = EncParamCatalog::instance().encParam(preset);
    for (const QChar letter : order) {
        const auto input = QSharedPointer<InputFileMediaParam>::create();
        input->file = media(partOf(letter).file);
        input->format = QFileInfo(input->file).suffix().toUpper();
        input->sourceInfo = factsOf(input->file);
        input->durationMs = int(input->sourceInfo->format->duration);
        param->files += input;
    }
    return param;
}

void TestMerging::joinsWhatIsNotAlike_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<quint32>("preset");
    QTest::addColumn<QString>("order");
    const struct
    {
        const char *format;
        quint32 preset;
        const char *order;
    } rows[] = {
        {"mp4", 1003001, "RABG"}, {"mp4", 1003005, "ABR"},   {"mov", 1001001, "BAG"},
        {"mkv", 1005001, "GRA"},  {"avi", 1006001, "RAG"},   {"wmv", 1004004, "ARB"},
        {"m4v", 1002004, "BR"},   {"mpeg", 1009001, "RABG"}, {"vob", 1011002, "BRA"},
        {"webm", 1012001, "ARG"}, {"ogv", 1021001, "RAB"},   {"3gp", 1015002, "RGBA"},
        {"flv", 2400005, "BRAG"}, {"f4v", 2401005, "ARG"},   {"swf", 2402005, "RABG"},
    };
    for (const auto &row : rows)
        QTest::addRow("%s %u %s", row.format, row.preset, row.order)
            << QString(QLatin1String(row.format)) << row.preset
            << QString(QLatin1String(row.order));
}

void TestMerging::joinsWhatIsNotAlike()
{
    QFETCH(QString, format);
    QFETCH(quint32, preset);
    QFETCH(QString, order);
    const TestFolder folder;
    Merge merge(wanted(folder, format, preset, order));
    QVERIFY2(merge.run() == MediaTask::FINISHED, qPrintable(merge.cause()));
    QCOMPARE(merge.task->remarks().texts, QStringList());

    const QString path = folder.result(format);
    const ProbedFile file = probeMedia(path);
    const auto asked = EncParamCatalog::instance().encParam(preset)->video;
    QSize size(asked ? asked->width : 0, asked ? asked->height : 0);
    if (size.isEmpty()) {
        const auto first = std::find_if(order.begin(), order.end(), [](QChar letter) {
            return !partOf(letter).size.isEmpty();
        });
        size = partOf(*first).size;
    }
    QCOMPARE(QSize(file.video[QLatin1String("width")].toInt(),
                   file.video[QLatin1String("height")].toInt()),
             size);

    // Ten pictures and the sound of each second, both by their own clock. To give all frames the
    // same length, ffmpeg adds one or two to a part.
    const QByteArray pictures =
        decoded(path, QStringLiteral("-an -vf crop=8:8,scale=1:1,fps=10,format=rgb24 -f rawvideo"));
    const QByteArray sound =
        decoded(path, QStringLiteral("-vn -af aresample=async=1 -ac 1 -ar 8000 -f s8"));
    QVERIFY2(std::abs(pictures.size() / 3 - 10 * order.size()) <= order.size(),
             qPrintable(QString::number(pictures.size() / 3)));
    QVERIFY2(std::abs(sound.size() / 8000.0 - order.size()) < 0.1 * order.size(),
             qPrintable(QString::number(sound.size())));
    for (int second = 0; second < order.size(); ++second) {
        const Part &part = partOf(order[second]);
        for (const int tenth : {3, 7}) {
            const QByteArray pixel = pictures.mid(3 * (10 * second + tenth), 3);
            for (int channel = 0; channel < 3; ++channel)
                QVERIFY2((uchar(pixel[channel]) > 128) == part.hasColour[channel],
                         qPrintable(QStringLiteral("second %1: %2")
                                        .arg(second)
                                        .arg(QLatin1String(pixel.toHex()))));
        }
        QCOMPARE(isLoud(sound.mid(8000 * second + 3000, 2000)), *part.sound != '\0');
    }
}

void TestMerging::joinsSounds_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<quint32>("preset");
    QTest::newRow("wav") << "wav" << 1205001U;
    QTest::newRow("aac") << "aac" << 1203002U;
    QTest::newRow("mp3 as the source") << "mp3" << 1200000U;
    // Not joined in their own form.
    QTest::newRow("flac") << "flac" << 1211001U;
    QTest::newRow("m4r") << "m4r" << 1213001U;
    QTest::newRow("ape") << "ape" << 1207001U;
}

// A silent film gives silence as long as it is.
void TestMerging::joinsSounds()
{
    QFETCH(QString, format);
    QFETCH(quint32, preset);
    const TestFolder folder;
    Merge merge(wanted(folder, format, preset, QStringLiteral("BRA")));
    QVERIFY2(merge.run() == MediaTask::FINISHED, qPrintable(merge.cause()));
    QCOMPARE(merge.task->remarks().texts, QStringList());
    const QString path = folder.result(format);
    QVERIFY(probeMedia(path).video.isEmpty());
    const QByteArray sound = decoded(path, QStringLiteral("-vn -ac 1 -ar 8000 -f s8"));
    QVERIFY2(std::abs(sound.size() / 8000.0 - 3.0) < 0.3,
             qPrintable(QString::number(sound.size())));
    QVERIFY(!isLoud(sound.mid(2000, 4000)));
    QVERIFY(isLoud(sound.mid(10000, 2000)));
    QVERIFY(isLoud(sound.mid(18000, 2000)));
}

QTEST_GUILESS_MAIN(TestMerging)
#include "tst_merging.moc"
