// SPDX-License-Identifier: MIT
#include "MediaKits/MediaInfo/MAMediaInfo/mamediainfo.h"
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "support/mediaprobe.h"
#include "tasks/chainrun.h"
#include "tasks/resultcase.h"

#include <QColor>
#include <QFont>
#include <QTransform>
#include <QtTest>

#include <cmath>

namespace {

using Convert = Watched<ComplexConvertTask>;

constexpr double areaLimit = 0.03;
constexpr double soundLimit = 0.1;
constexpr double sourceSeconds = 2.0;
constexpr int fontSize = 48;
// Height of a capital letter of the font, in its size.
constexpr double capitalHeight = 0.729;
constexpr int placeLimit = 3;

// Every pair of two columns' values stands in a row, apart from a silent film without music, of
// which there is no sound.
const char *const table[] = {
    // source preset crop turns flip speed mark music
    "land same - 1 - 2 picture dub",
    "land sized crop 3 h 1 - -",
    "land boxed - 0 v 2 removal -",
    "land sound crop 2 v 1 text dub",
    "tag90 same - 3 h 2 text -",
    "tag90 sized - 1 v 1 - dub",
    "tag90 boxed crop 2 - 2 picture dub",
    "tag90 sound - 0 - 2 removal -",
    "tag270 same - 2 v 2 removal dub",
    "tag270 sized crop 0 - 1 - -",
    "tag270 boxed - 3 h 2 text dub",
    "tag270 sound - 1 v 1 picture -",
    "wide same - 2 h 2 - -",
    "wide sized crop 0 v 1 text -",
    "wide boxed crop 1 - 1 picture -",
    "wide sound crop 3 - 1 removal dub",
    "odd same - 3 v 1 removal dub",
    "odd sized - 2 - 2 text dub",
    "odd boxed crop 1 v 1 - dub",
    "odd sound crop 0 h 2 picture -",
    "silent same - 0 - 2 text -",
    "silent sized - 3 v 2 picture -",
    "silent boxed crop 1 h 1 removal dub",
    "silent sound - 2 v 2 - dub",
    "mkv same crop 0 - 1 picture dub",
    "mkv sized - 2 h 2 removal dub",
    "mkv boxed - 3 v 1 - -",
    "mkv sound - 1 h 2 text -",
    // Music and nothing else.
    "land same - 0 - 1 - dub",
};

QImage decodedPicture(const QString &path, const QSize &size)
{
    const ToolRun run =
        runTool(QStringLiteral("ffmpeg"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                 QStringLiteral("-frames:v"), QStringLiteral("1"), QStringLiteral("-vf"),
                 QStringLiteral("scale=%1:%2,format=bgra").arg(size.width()).arg(size.height()),
                 QStringLiteral("-f"), QStringLiteral("rawvideo"), QStringLiteral("-")});
    if (run.out.size() != size.width() * size.height() * 4)
        return {};
    return QImage(reinterpret_cast<const uchar *>(run.out.constData()), size.width(), size.height(),
                  QImage::Format_RGB32)
        .copy();
}

double soundSeconds(const QString &path)
{
    constexpr int rate = 8000;
    return runTool(QStringLiteral("ffmpeg"),
                   {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                    QStringLiteral("-vn"), QStringLiteral("-ac"), QStringLiteral("1"),
                    QStringLiteral("-ar"), QString::number(rate), QStringLiteral("-f"),
                    QStringLiteral("s8"), QStringLiteral("-")})
               .out.size() /
           double(rate);
}

// The size that a player shows a picture with.
QSize shownSizeOf(const ProbedFile &file)
{
    const QStringList aspect =
        file.video[QLatin1String("sample_aspect_ratio")].toString().split(QLatin1Char(':'));
    const double pixelAspect = aspect.size() == 2 && aspect[1].toDouble() > 0
                                   ? aspect[0].toDouble() / aspect[1].toDouble()
                                   : 1.0;
    const int width = file.video[QLatin1String("width")].toInt();
    const int height = file.video[QLatin1String("height")].toInt();
    return {qRound(width * pixelAspect), height};
}

QSharedPointer<MediaInfoData> probed(const QString &path)
{
    MAMediaInfo reader(path, nullptr);
    reader.start();
    return reader.mediaInfo();
}

} // namespace

// What a user asks for is what the file holds: kinds of sources, presets and options in
// combination, each result beside a picture that was drawn for it.
class TestResultTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void holdsWhatWasAskedFor_data();
    void holdsWhatWasAskedFor();
    void looksAsPreviewed_data();
    void looksAsPreviewed();

private:
    QString media(const QString &name) const { return m_media.filePath(name); }
    QString sourceFile(const ResultCase &row) const;
    void makeSource(const ResultSource &source, bool hasLogo);
    ConvertTaskParam *wanted(const ResultCase &row, const TestFolder &folder) const;
    QVariantMap markEntry(const ResultCase &row) const;
    void comparePicture(const ResultCase &row, const QString &path);
    void compareLetter(const QRect &box, double growth, const QImage &shown);

    QTemporaryDir m_media;
};

void TestResultTable::initTestCase()
{
    for (const ResultSource &source : ResultCase::sources()) {
        makeSource(source, false);
        makeSource(source, true);
    }
    QImage mark(16, 16, QImage::Format_RGB32);
    mark.fill(markColour);
    QVERIFY(mark.save(media(QStringLiteral("mark.png"))));
    ClipPlan music;
    music.seconds = 5;
    music.width = 0;
    makeClip(media(QStringLiteral("music.wav")), music);
}

QString TestResultTable::sourceFile(const ResultCase &row) const
{
    const bool hasLogo = row.mark == QLatin1String("removal");
    return media(QStringLiteral("%1%2.%3").arg(QLatin1String(row.source->name),
                                               hasLogo ? QStringLiteral("-logo") : QString(),
                                               QLatin1String(row.source->suffix)));
}

void TestResultTable::makeSource(const ResultSource &source, bool hasLogo)
{
    QImage picture = shownPicture(source);
    if (hasLogo)
        fill(picture, markOf(source).adjusted(6, 6, -6, -6), qRgb(250, 250, 250));
    picture = picture.transformed(QTransform().rotate(90.0 * source.codedTurn));
    const int codedWidth = qRound(picture.width() / source.pixelAspect);
    picture = picture.scaled(codedWidth, picture.height());
    QVERIFY(picture.save(media(QStringLiteral("coded.png"))));

    const QString name =
        QLatin1String(source.name) + (hasLogo ? QLatin1String("-logo") : QLatin1String());
    const QString path = media(name + QLatin1Char('.') + QLatin1String(source.suffix));
    const QString plain = media(QLatin1String("plain.") + QLatin1String(source.suffix));
    QStringList make{
        QStringLiteral("-v"),    QStringLiteral("error"), QStringLiteral("-y"),
        QStringLiteral("-loop"), QStringLiteral("1"),     QStringLiteral("-framerate"),
        QStringLiteral("10"),    QStringLiteral("-i"),    media(QStringLiteral("coded.png"))};
    if (source.hasSound)
        make += {QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                 QStringLiteral("sine=500:r=48000")};
    make += {QStringLiteral("-t"),
             QString::number(sourceSeconds),
             QStringLiteral("-pix_fmt"),
             QStringLiteral("yuv420p"),
             QStringLiteral("-vf"),
             QStringLiteral("setsar=%1")
                 .arg(source.pixelAspect > 1 ? QStringLiteral("4/3") : QStringLiteral("1")),
             QStringLiteral("-b:v"),
             QStringLiteral("2M"),
             plain};
    const ToolRun made = runTool(QStringLiteral("ffmpeg"), make);
    QVERIFY2(made.exitCode == 0, made.err.constData());
    const ToolRun tagged = runTool(
        QStringLiteral("ffmpeg"),
        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"), QStringLiteral("-i"),
         plain, QStringLiteral("-c"), QStringLiteral("copy"), QStringLiteral("-metadata:s:v:0"),
         QStringLiteral("rotate=%1").arg(source.tag), path});
    QVERIFY2(tagged.exitCode == 0, tagged.err.constData());
}

QVariantMap TestResultTable::markEntry(const ResultCase &row) const
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(fontSize);
    QVariantMap entry{{QStringLiteral("rect"), QRectF(inPixels(markOf(*row.source), *row.source))}};
    if (row.mark == QLatin1String("picture")) {
        entry.insert(QStringLiteral("filter"), QStringLiteral("watermark"));
        entry.insert(QStringLiteral("imagefile"), media(QStringLiteral("mark.png")));
    } else if (row.mark == QLatin1String("removal")) {
        entry.insert(QStringLiteral("filter"), QStringLiteral("delogo"));
    } else {
        entry.insert(QStringLiteral("filter"), QStringLiteral("drawtext"));
        entry.insert(QStringLiteral("text"), QStringLiteral("H"));
        entry.insert(QStringLiteral("font"), font);
        entry.insert(QStringLiteral("fontcolor"), QColor(Qt::white));
        entry.insert(QStringLiteral("opacity"), 1.0F);
    }
    return entry;
}

ConvertTaskParam *TestResultTable::wanted(const ResultCase &row, const TestFolder &folder) const
{
    ConvertTaskParam *param = folder.convertParam(sourceFile(row), row.suffix());
    param->sourceInfo = probed(param->inputFile);
    param->durationMs = int(param->sourceInfo->format->duration);
    param->speed = 1;
    param->encParam.reset(new EncParam);
    if (!row.preset->size.isEmpty())
        param->encParam->video.reset(new VEncParam{QStringLiteral("H264"), row.preset->size.width(),
                                                   row.preset->size.height(), 0, 0.0, 0.0});
    if (row.crop) {
        const QRect crop = inPixels(cropOf(*row.source), *row.source);
        param->cropRect.reset(new CropBox{crop.x(), crop.y(), crop.width(), crop.height()});
    }
    param->beauty.reset(new VideoBeautyParam);
    param->beauty->rotate = row.turns;
    param->beauty->hflip = row.hflip;
    param->beauty->vflip = row.vflip;
    param->beauty->speed = float(row.speed);
    if (row.mark != QLatin1String("-"))
        param->videoFilters += markEntry(row);
    if (row.music) {
        const QVariantMap track{{QStringLiteral("filePath"), media(QStringLiteral("music.wav"))},
                                {QStringLiteral("volume"), 1.0F},
                                {QStringLiteral("startTime"), 0}};
        param->audioFilters += QVariantMap{{QStringLiteral("filter"), QStringLiteral("dubbing")},
                                           {QStringLiteral("musics"), QVariantList{track}},
                                           {QStringLiteral("videoVolume"), 0.5F},
                                           {QStringLiteral("isMax"), true}};
    }
    return param;
}

void TestResultTable::holdsWhatWasAskedFor_data()
{
    QTest::addColumn<QStringList>("words");
    for (const char *row : table)
        QTest::newRow(row) << QString(QLatin1String(row)).split(QLatin1Char(' '));
}

void TestResultTable::holdsWhatWasAskedFor()
{
    QFETCH(QStringList, words);
    const ResultCase row(words);
    const TestFolder folder;
    Convert convert(wanted(row, folder));
    QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));
    QCOMPARE(convert.task->remarks().texts, QStringList());
    const QString path = folder.result(row.suffix());
    const ProbedFile file = probeMedia(path);

    QCOMPARE(!file.audio.isEmpty(), row.hasSound());
    if (row.hasSound()) {
        const double seconds = soundSeconds(path);
        QVERIFY2(std::abs(seconds - sourceSeconds / row.speed) < soundLimit,
                 qPrintable(QString::number(seconds)));
    }
    QCOMPARE(!file.video.isEmpty(), row.hasPicture());
    if (row.hasPicture())
        comparePicture(row, path);
}

void TestResultTable::comparePicture(const ResultCase &row, const QString &path)
{
    const ExpectedPicture expected(row);
    const QSize is = shownSizeOf(probeMedia(path));
    const QSize want = expected.picture.size();
    QVERIFY2(std::abs(double(is.width()) / is.height() - double(want.width()) / want.height()) <
                 0.03,
             qPrintable(QStringLiteral("%1x%2").arg(is.width()).arg(is.height())));
    const QImage shown = decodedPicture(path, want);
    QVERIFY(!shown.isNull());
    QString report;
    const bool isLike = expected.largestDifference(shown, &report) < areaLimit;
    if (!isLike && qEnvironmentVariableIsSet("MORVANE_SHOTS")) {
        shown.save(qEnvironmentVariable("MORVANE_SHOTS") + QLatin1String("/is.png"));
        expected.picture.save(qEnvironmentVariable("MORVANE_SHOTS") + QLatin1String("/want.png"));
    }
    QVERIFY2(isLike, qPrintable(report));

    if (row.mark == QLatin1String("text"))
        compareLetter(expected.mark, double(expected.mark.height()) / markOf(*row.source).height(),
                      shown);
}

// A letter is told by its bounds: it begins at the top of its box, a tenth of its size to the
// right.
void TestResultTable::compareLetter(const QRect &box, double growth, const QImage &shown)
{
    constexpr int brightest = 190; // of what is no letter
    const QRect letter = boundsOf(shown, [](QRgb pixel) {
        return std::min({qRed(pixel), qGreen(pixel), qBlue(pixel)}) > brightest;
    });
    const QRect want(box.left() + qRound(0.1 * fontSize * growth), box.top(), letter.width(),
                     qRound(capitalHeight * fontSize * growth));
    const QString found = QStringLiteral("%1,%2 %3 high; wanted %4,%5 %6 high")
                              .arg(letter.x())
                              .arg(letter.y())
                              .arg(letter.height())
                              .arg(want.x())
                              .arg(want.y())
                              .arg(want.height());
    QVERIFY2((letter.topLeft() - want.topLeft()).manhattanLength() <= placeLimit &&
                 std::abs(letter.height() - want.height()) <= placeLimit,
             qPrintable(found));
}

void TestResultTable::looksAsPreviewed_data()
{
    QTest::addColumn<float>("contrast");
    QTest::addColumn<float>("brightness");
    QTest::addColumn<float>("saturation");
    QTest::addColumn<QRgb>("colour");
    QTest::newRow("no saturation") << 1.0F << 0.0F << 0.0F << qRgb(75, 75, 75);
    QTest::newRow("no contrast") << 0.0F << 0.0F << 1.0F << qRgb(214, 94, 94);
    QTest::newRow("full brightness") << 1.0F << 1.0F << 1.0F << qRgb(255, 255, 255);
}

// Each alone, at the value where other settings change nothing.
void TestResultTable::looksAsPreviewed()
{
    QFETCH(float, contrast);
    QFETCH(float, brightness);
    QFETCH(float, saturation);
    QFETCH(QRgb, colour);
    const TestFolder folder;
    const ResultCase row(QStringLiteral("land same - 0 - 1 - -").split(QLatin1Char(' ')));
    ConvertTaskParam *param = wanted(row, folder);
    param->beauty->contrast = contrast;
    param->beauty->brightness = brightness;
    param->beauty->saturation = saturation;
    Convert convert(param);
    QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));
    const QImage shown = decodedPicture(folder.result(QStringLiteral("mp4")), row.source->shown);
    QVERIFY(!shown.isNull());
    const QRgb is = shown.pixel(30, 30); // of the first area
    const int difference = std::abs(qRed(is) - qRed(colour)) +
                           std::abs(qGreen(is) - qGreen(colour)) +
                           std::abs(qBlue(is) - qBlue(colour));
    QVERIFY2(difference / 3 < 10, qPrintable(QColor(is).name()));
}

QTEST_GUILESS_MAIN(TestResultTable)
#include "tst_resulttable.moc"
