// SPDX-License-Identifier: MIT
#include "watermark/watermarktest.h"

#include <QPainter>

#include <functional>

namespace {

// Nine texts on a dense screen take a busy machine a while.
constexpr int drawnMs = 30000;
constexpr int places = 9;
constexpr int showLimitMs = 3000;
constexpr int stillMs = 300;
constexpr quint32 mp4At720p = 1003004;
const QLatin1String ground("0x206020");

using IsMark = std::function<bool(const QColor &)>;

bool isRed(const QColor &pixel)
{
    return pixel.red() > 140 && pixel.green() < 64;
}

bool isWhite(const QColor &pixel)
{
    return pixel.red() > 140 && pixel.green() > 150 && pixel.blue() > 140;
}

// Where the ninths of a picture have something of the mark's colour, in shares of the whole.
QVector<QRectF> marked(const QImage &picture, const IsMark &isMark)
{
    QVector<QRect> parts(places);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (isMark(picture.pixelColor(x, y)))
                parts[y * 3 / picture.height() * 3 + x * 3 / picture.width()] |= QRect(x, y, 1, 1);
        }
    }
    QVector<QRectF> shares;
    for (const QRect &part : qAsConst(parts))
        shares += QRectF(double(part.x()) / picture.width(), double(part.y()) / picture.height(),
                         double(part.width()) / picture.width(),
                         double(part.height()) / picture.height());
    return shares;
}

QImage frame(const QString &path)
{
    return QImage::fromData(decodedMedia(path, "-ss 1 -frames:v 1 -c:v bmp -f image2pipe"_s));
}

// The part of the result that the source's picture fills, which has even sides.
QImage withoutBars(const QImage &made, double shape)
{
    const auto even = [](double side) { return int(side / 2) * 2; };
    const QSize inner(even(std::min(double(made.width()), made.height() * shape)),
                      even(std::min(made.width() / shape, double(made.height()))));
    return made.copy((made.width() - inner.width()) / 2, (made.height() - inner.height()) / 2,
                     inner.width(), inner.height());
}

// How far apart sides of two rectangles are at most, in shares of what is allowed of a picture.
double apart(const QRectF &one, const QRectF &other, const QSizeF &allowed)
{
    return std::max({std::abs(one.left() - other.left()) / allowed.width(),
                     std::abs(one.right() - other.right()) / allowed.width(),
                     std::abs(one.top() - other.top()) / allowed.height(),
                     std::abs(one.bottom() - other.bottom()) / allowed.height()});
}

// A pixel of a picture of that size as a share of the whole.
QSizeF pixelOf(const QSizeF &size)
{
    return {1.0 / size.width(), 1.0 / size.height()};
}

QImage screenPart(const QRect &part)
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, part.x(), part.y(), part.width(), part.height())
        .toImage();
}

// Each ninth has a mark, and the ground around it.
bool hasAll(const QVector<QRectF> &parts)
{
    return !parts.isEmpty() && std::all_of(parts.begin(), parts.end(), [](const QRectF &part) {
        return part.width() > 0.0 && part.width() < 0.3 && part.height() < 0.3;
    });
}

// What the screen shows there once it keeps still: a window that goes is seen a while longer.
QVector<QRectF> settled(const QRect &at, const IsMark &isMark)
{
    QVector<QRectF> last;
    const bool isStill = QTest::qWaitFor(
        [&] {
            QTest::qWait(stillMs);
            const QVector<QRectF> before = last;
            last = marked(screenPart(at), isMark);
            return hasAll(last) && last == before;
        },
        showLimitMs);
    return isStill ? last : QVector<QRectF>();
}

} // namespace

// What stands on the mask, what the player shows and what the file holds, as pictures.
class TestMarkPictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        QImage logo(60, 40, QImage::Format_ARGB32);
        logo.fill(Qt::red);
        QVERIFY(logo.save(m_logo));
    }

    void maskPreviewAndFile_data()
    {
        QTest::addColumn<QString>("film");
        QTest::addColumn<double>("shape"); // width by height as it is shown
        QTest::addColumn<quint32>("preset");
        QTest::addColumn<bool>("isText");
        const auto row = [](const char *name, const char *film, double shape) {
            for (const quint32 preset : {mp4AsSource, mp4At720p}) {
                for (const bool isText : {false, true})
                    QTest::addRow("%s of %s, preset %u", isText ? "texts" : "pictures", name,
                                  preset)
                        << QLatin1String(film) + QString() << shape << preset << isText;
            }
        };
        row("small", "s=320x240 -d", 4.0 / 3);
        row("full hd", "s=1920x1080", 16.0 / 9);
        row("turned", "s=640x360 turned", 9.0 / 16);
        row("anamorphic", "s=720x576 sar", 720.0 * 16 / 11 / 576);
        row("odd", "s=321x241 odd", 321.0 / 241);
    }

    void maskPreviewAndFile()
    {
        QFETCH(QString, film);
        QFETCH(double, shape);
        QFETCH(quint32, preset);
        QFETCH(bool, isText);
        const IsMark isMark = isText ? isWhite : isRed;
        WatermarkPage test({made(film)}, preset);
        QVector<QRectF> onMask;
        QVector<QRectF> inPreview;
        QSize surface;
        test.edit(0, [&](QWidget &dialog) {
            if (isText)
                addText(dialog, "HH"_s, 30);
            else
                addImage(dialog, m_logo);
            QWidget *box = selectedBox(dialog);
            QVERIFY(box);
            for (int place = 0; place < places; ++place) {
                if (place > 0) {
                    QTest::keyClick(child(dialog, "csPlayer"), Qt::Key_C, Qt::ControlModifier);
                    QTest::keyClick(child(dialog, "csPlayer"), Qt::Key_V, Qt::ControlModifier);
                }
                press(dialog, ("btnPlace" + QByteArray::number(place)).constData());
            }
            press(dialog, "btnPlay");
            const QWidget *mask = box->parentWidget();
            // The window manager may yet move the window.
            QRect at;
            const bool isDrawn = QTest::qWaitFor(
                [&] {
                    at = QRect(mask->mapToGlobal(QPoint()), mask->size());
                    return hasAll(onMask = settled(at, isMark));
                },
                drawnMs);
            QVERIFY(isDrawn);
            surface = at.size();
            press(dialog, "btnPreview");
            QTRY_VERIFY(!visibleWindow("VideoMask"));
            QVERIFY(
                QTest::qWaitFor([&] { return hasAll(inPreview = settled(at, isMark)); }, drawnMs));
            press(dialog, "btnOk");
        });
        QCOMPARE(test.marks(0).size(), places);
        QVERIFY(!test.convert(0).isEmpty());
        const QImage result = frame(test.row(0)->outputPath());
        const QImage inner = preset == mp4AsSource ? result : withoutBars(result, shape);
        const QVector<QRectF> inFile = marked(inner, isMark);
        // In the file a mark may be a pixel off, since it has to lie at an even one. In the preview
        // that is one of the source, of which two have one colour, whose edge the player smooths. A
        // box has the surface's pixels, and the player rounds to them.
        const QSizeF ofFile = pixelOf(inner.size());
        const QSizeF ofSource = pixelOf(frame(made(film)).size());
        const QSizeF ofSurface = pixelOf(surface);
        for (int place = 0; place < places; ++place) {
            const auto told = [&](const QRectF &part) {
                return "%1: %2,%3 %4x%5 "_s.arg(place)
                    .arg(part.x() * inner.width())
                    .arg(part.y() * inner.height())
                    .arg(part.width() * inner.width())
                    .arg(part.height() * inner.height());
            };
            QVERIFY(!inFile[place].isEmpty());
            // The last one has the outline of the current one on it.
            const QSizeF onTop = place == places - 1 ? ofSurface : QSizeF(0, 0);
            const double off = apart(onMask[place], inFile[place], ofFile + ofSurface + onTop);
            QVERIFY2(off <= 1.0, qPrintable(told(onMask[place]) + told(inFile[place])));
            const double previewOff =
                apart(inPreview[place], inFile[place], ofFile + 2 * ofSource + ofSurface);
            QVERIFY2(previewOff <= 1.0, qPrintable(told(inPreview[place]) + told(inFile[place])));
        }
    }

private:
    QString made(const QString &film)
    {
        const QString path = m_folder.filePath(film + ".mp4"_s);
        if (QFile::exists(path))
            return path;
        const QString size = film.section(u' ', 0, 0);
        const QString source =
            "-f lavfi -i color=%1:%2:r=10:d=20,setsar=%3 %4 -preset ultrafast @"_s.arg(
                ground, size, film.contains("sar"_s) ? "16/11"_s : "1"_s,
                film.contains("odd"_s) ? "-pix_fmt yuv444p"_s : QString());
        if (!film.contains("turned"_s)) {
            makeMedia(source, {path});
        } else {
            const QString upright = m_folder.filePath("upright.mp4"_s);
            makeMedia(source, {upright});
            makeMedia("-i @ -c copy -metadata:s:v rotate=90 @"_s, {upright, path});
        }
        return path;
    }

    QTemporaryDir m_folder;
    const QString m_logo = m_folder.filePath("logo.png"_s);
};

QTEST_MAIN(TestMarkPictures)
#include "tst_markpictures.moc"
