// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/complexconverttask.h"
#include "support/casename.h"
#include "support/factsof.h"
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
    const QString options = "-frames:v 1 -vf scale=%1:%2,format=bgra -f rawvideo"_s;
    const QByteArray pixels = decodedMedia(path, options.arg(size.width()).arg(size.height()));
    if (pixels.size() != size.width() * size.height() * 4)
        return {};
    return QImage(reinterpret_cast<const uchar *>(pixels.constData()), size.width(), size.height(),
                  QImage::Format_RGB32)
        .copy();
}

double soundSeconds(const QString &path)
{
    constexpr int rate = 8000;
    return decodedMedia(path, "-vn -ac 1 -ar %1 -f s8"_s.arg(rate)).size() / double(rate);
}

// The size that a player shows a picture with.
QSize shownSizeOf(const ProbedFile &file)
{
    const QStringList aspect = file.video["sample_aspect_ratio"_s].toString().split(u':');
    const double pixelAspect = aspect.size() == 2 && aspect[1].toDouble() > 0
                                   ? aspect[0].toDouble() / aspect[1].toDouble()
                                   : 1.0;
    return {qRound(file.size().width() * pixelAspect), file.size().height()};
}

} // namespace

// What a user asks for is what the file holds: kinds of sources, presets and options in
// combination, each result beside a picture that was drawn for it.
class TestResultTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const ResultSource &source : ResultCase::sources()) {
            makeSource(source, false);
            makeSource(source, true);
        }
        QImage mark(16, 16, QImage::Format_RGB32);
        mark.fill(markColour);
        QVERIFY(mark.save(media("mark.png"_s)));
        makeClip(media("music.wav"_s), {5, 0});
    }

    void holdsWhatWasAskedFor_data()
    {
        QTest::addColumn<QStringList>("words");
        for (const char *row : table)
            QTest::newRow(row) << QString(QLatin1String(row)).split(u' ');
    }

    void holdsWhatWasAskedFor()
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
            // Under music it lasts as long as the picture, which some containers make longer.
            const double wantedSeconds =
                row.music ? probeMedia(sourceFile(row)).seconds : sourceSeconds;
            QVERIFY2(std::abs(seconds - wantedSeconds / row.speed) < soundLimit,
                     qPrintable(QString::number(seconds)));
        }
        QCOMPARE(!file.video.isEmpty(), row.hasPicture());
        if (row.hasPicture())
            comparePicture(row, path);
    }

    // Each alone, at the value where other settings change nothing.
    void looksAsPreviewed()
    {
        const auto check = [&](const char *caseName, float contrast, float brightness,
                               float saturation, QRgb colour) {
            const CaseName inCase(caseName);
            const TestFolder folder;
            const ResultCase row("land same - 0 - 1 - -"_s.split(u' '));
            ConvertTaskParam *param = wanted(row, folder);
            param->beauty->contrast = contrast;
            param->beauty->brightness = brightness;
            param->beauty->saturation = saturation;
            Convert convert(param);
            QVERIFY2(convert.run() == MediaTask::FINISHED, qPrintable(convert.cause()));
            const QImage shown = decodedPicture(folder.result("mp4"_s), row.source->shown);
            QVERIFY(!shown.isNull());
            const QRgb is = shown.pixel(30, 30); // of the first area
            const int difference = std::abs(qRed(is) - qRed(colour)) +
                                   std::abs(qGreen(is) - qGreen(colour)) +
                                   std::abs(qBlue(is) - qBlue(colour));
            QVERIFY2(difference / 3 < 10, qPrintable(QColor(is).name()));
        };
        check("no saturation", 1.0F, 0.0F, 0.0F, qRgb(75, 75, 75));
        check("no contrast", 0.0F, 0.0F, 1.0F, qRgb(214, 94, 94));
        check("full brightness", 1.0F, 1.0F, 1.0F, qRgb(255, 255, 255));
    }

private:
    QString media(const QString &name) const { return m_media.filePath(name); }
    QString sourceFile(const ResultCase &row) const
    {
        const bool hasLogo = row.mark == "removal"_s;
        return media("%1%2.%3"_s.arg(QLatin1String(row.source->name),
                                     hasLogo ? "-logo"_s : QString(),
                                     QLatin1String(row.source->suffix)));
    }

    void makeSource(const ResultSource &source, bool hasLogo)
    {
        QImage picture = shownPicture(source);
        if (hasLogo)
            fill(picture, markOf(source).adjusted(6, 6, -6, -6), qRgb(250, 250, 250));
        picture = picture.transformed(QTransform().rotate(90.0 * source.codedTurn));
        const int codedWidth = qRound(picture.width() / source.pixelAspect);
        picture = picture.scaled(codedWidth, picture.height());
        QVERIFY(picture.save(media("coded.png"_s)));

        const QString name = QLatin1String(source.name) + (hasLogo ? "-logo"_s : QLatin1String());
        const QString path = media(name + u'.' + QLatin1String(source.suffix));
        const QString plain = media("plain."_s + QLatin1String(source.suffix));
        const QString sound = source.hasSound ? "-f lavfi -i sine=500:r=48000"_s : QString();
        makeMedia("-loop 1 -framerate 10 -i @ %1 -t %2 -pix_fmt yuv420p -vf setsar=%3 -b:v 2M @"_s
                      .arg(sound)
                      .arg(sourceSeconds)
                      .arg(source.pixelAspect > 1 ? "4/3"_s : "1"_s),
                  {media("coded.png"_s), plain});
        makeMedia("-i @ -c copy -metadata:s:v:0 rotate=%1 @"_s.arg(source.tag), {plain, path});
    }

    ConvertTaskParam *wanted(const ResultCase &row, const TestFolder &folder) const
    {
        ConvertTaskParam *param = folder.convertParam(sourceFile(row), row.suffix());
        param->sourceInfo = factsOf(param->inputFile);
        param->durationMs = int(param->sourceInfo->format->duration);
        param->speed = 1;
        param->encParam.reset(new EncParam);
        if (!row.preset->size.isEmpty())
            param->encParam->video.reset(new VEncParam{"H264"_s, row.preset->size.width(),
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
        if (row.mark != "-"_s)
            param->videoFilters += markEntry(row);
        if (row.music) {
            const QVariantMap track{
                {"filePath"_s, media("music.wav"_s)}, {"volume"_s, 1.0F}, {"startTime"_s, 0}};
            param->audioFilters += QVariantMap{{"filter"_s, "dubbing"_s},
                                               {"musics"_s, QVariantList{track}},
                                               {"videoVolume"_s, 0.5F},
                                               {"isMax"_s, true}};
        }
        return param;
    }

    QVariantMap markEntry(const ResultCase &row) const
    {
        QFont font("DejaVu Sans"_s);
        font.setPixelSize(fontSize);
        QVariantMap entry{{"rect"_s, QRectF(inPixels(markOf(*row.source), *row.source))}};
        if (row.mark == "picture"_s) {
            entry.insert("filter"_s, "watermark"_s);
            entry.insert("imagefile"_s, media("mark.png"_s));
        } else if (row.mark == "removal"_s) {
            entry.insert("filter"_s, "delogo"_s);
        } else {
            entry.insert("filter"_s, "drawtext"_s);
            entry.insert("text"_s, "H"_s);
            entry.insert("font"_s, font);
            entry.insert("fontcolor"_s, QColor(Qt::white));
            entry.insert("opacity"_s, 1.0F);
        }
        return entry;
    }

    void comparePicture(const ResultCase &row, const QString &path)
    {
        const ExpectedPicture expected(row);
        const QSize is = shownSizeOf(probeMedia(path));
        const QSize want = expected.picture.size();
        QVERIFY2(std::abs(double(is.width()) / is.height() - double(want.width()) / want.height()) <
                     0.03,
                 qPrintable("%1x%2"_s.arg(is.width()).arg(is.height())));
        const QImage shown = decodedPicture(path, want);
        QVERIFY(!shown.isNull());
        QString report;
        const bool isLike = expected.largestDifference(shown, &report) < areaLimit;
        if (!isLike && qEnvironmentVariableIsSet("MORVANE_SHOTS")) {
            shown.save(qEnvironmentVariable("MORVANE_SHOTS") + "/is.png"_s);
            expected.picture.save(qEnvironmentVariable("MORVANE_SHOTS") + "/want.png"_s);
        }
        QVERIFY2(isLike, qPrintable(report));

        if (row.mark == "text"_s)
            compareLetter(expected.mark,
                          double(expected.mark.height()) / markOf(*row.source).height(), shown);
    }

    // A letter is told by its bounds: it begins at the top of its box, a tenth of its size to the
    // right.
    void compareLetter(const QRect &box, double growth, const QImage &shown)
    {
        constexpr int brightest = 190; // of what is no letter
        const QRect letter = boundsOf(shown, [](QRgb pixel) {
            return std::min({qRed(pixel), qGreen(pixel), qBlue(pixel)}) > brightest;
        });
        const QRect want(box.left() + qRound(0.1 * fontSize * growth), box.top(), letter.width(),
                         qRound(capitalHeight * fontSize * growth));
        const QString found = "%1,%2 %3 high; wanted %4,%5 %6 high"_s.arg(letter.x())
                                  .arg(letter.y())
                                  .arg(letter.height())
                                  .arg(want.x())
                                  .arg(want.y())
                                  .arg(want.height());
        QVERIFY2((letter.topLeft() - want.topLeft()).manhattanLength() <= placeLimit &&
                     std::abs(letter.height() - want.height()) <= placeLimit,
                 qPrintable(found));
    }

    QTemporaryDir m_media;
};

QTEST_GUILESS_MAIN(TestResultTable)
#include "tst_resulttable.moc"
