// SPDX-License-Identifier: MIT
#include "watermark/watermarktest.h"

#include <QPainter>

namespace {

constexpr QRgb ground = 0xFF206080;
constexpr QSize compared(160, 90); // marks lie at even pixels in files

QImage frame(const QString &path, int second)
{
    return QImage::fromData(
        decodedMedia(path, "-ss %1 -frames:v 1 -c:v bmp -f image2pipe"_s.arg(second)));
}

QImage onGround(QWidget &area)
{
    QImage shown(area.size(), QImage::Format_RGB32);
    shown.fill(ground);
    QPainter painter(&shown);
    area.render(&painter, {}, {}, QWidget::DrawChildren);
    return shown;
}

int brightest(const QImage &picture)
{
    int most = 0;
    for (int i = 0; i < picture.width() * picture.height(); ++i)
        most = std::max(most, qGray(picture.pixel(i % picture.width(), i / picture.width())));
    return most;
}

// How much of what one of two pictures has on its ground the other has not, in shares of it.
double apart(const QImage &one, const QImage &other)
{
    const QImage pictures[] = {
        one.scaled(compared, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
        other.scaled(compared, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)};
    double whole = 1.0;
    double differing = 0.0;
    for (int i = 0; i < compared.width() * compared.height(); ++i) {
        const QPoint at(i % compared.width(), i / compared.width());
        const int shown[] = {qGray(pictures[0].pixel(at)) - qGray(ground),
                             qGray(pictures[1].pixel(at)) - qGray(ground)};
        whole += std::max(std::abs(shown[0]), std::abs(shown[1]));
        differing += std::abs(shown[0] - shown[1]);
    }
    return differing / whole;
}

} // namespace

class TestWatermarkPage : public WatermarkTest
{
    Q_OBJECT

private slots:
    void startsWithoutMarks()
    {
        WatermarkPage test({m_film});
        test.edit(0, [](QWidget &dialog) { press(dialog, "btnOk"); });
        QVERIFY(test.marks(0).isEmpty());
        QVERIFY(!test.convert(0).isEmpty());
    }

    void keepsWhatWasSaved()
    {
        WatermarkPage test({m_film});
        test.edit(0, [this](QWidget &dialog) {
            addText(dialog, {});
            QCOMPARE(markList(dialog)->count(), 0);
            FileChooser::setNextAnswer({});
            press(dialog, "btnAddImageWM");
            QCOMPARE(markList(dialog)->count(), 0);
            addText(dialog, "水印 a"_s);
            QVERIFY(child(dialog, "wdtPosition")->isVisible());
            QVERIFY(!child(dialog, "cbAspectKeep")->isVisible());
            addImage(dialog, m_logo);
            QVERIFY(child(dialog, "cbAspectKeep")->isVisible());
            press(dialog, "btnAddDelogo");
            QVERIFY(!child(dialog, "wdtOpacity")->isVisible());
            QVERIFY(selectedBox(dialog));
            QCOMPARE(markList(dialog)->count(), 3);
            press(dialog, "btnOk");
        });
        const QVariantList saved = test.marks(0);
        QCOMPARE(saved.size(), 3);
        const QVariantMap text = test.mark(0, 0);
        QCOMPARE(text.value("filter"_s).toString(), "drawtext"_s);
        QCOMPARE(text.value("font"_s).value<QFont>().family(), "微软雅黑"_s);
        QCOMPARE(text.value("font"_s).value<QFont>().pixelSize(), 36);
        QCOMPARE(text.value("fontcolor"_s).value<QColor>(), QColor(Qt::white));
        QCOMPARE(text.value("startTime"_s).toInt(), 0);
        QCOMPARE(text.value("endTime"_s).toInt(), 4000);
        QCOMPARE(test.mark(0, 1).value("imagefile"_s).toString(), m_logo);
        QCOMPARE(test.mark(0, 1).value("rect"_s).toRectF(), QRectF(0, 0, 120, 60));
        QCOMPARE(test.mark(0, 2).value("text"_s).toString(), "去水印"_s);

        // The same is shown again; what is cancelled leaves it in force.
        test.edit(0, [](QWidget &dialog) {
            QCOMPARE(markList(dialog)->count(), 3);
            press(dialog, "btnClear");
            QCOMPARE(markList(dialog)->count(), 0);
            press(dialog, "btnCancel");
            QVERIFY(!dialog.isVisible());
        });
        QCOMPARE(test.marks(0), saved);
        test.edit(0, [](QWidget &dialog) { press(dialog, "btnOk"); });
        QCOMPARE(test.marks(0), saved);
    }

    void forAllByShare()
    {
        const QString wide = media("wide.mp4"_s);
        makeMedia("-f lavfi -i color=0x206080:s=1280x400:r=10:d=2 @"_s, {wide});
        const QString late = media("late.mp4"_s);
        QVERIFY(QFile::copy(wide, late));
        WatermarkPage test({m_film, wide});
        test.edit(0, [&](QWidget &dialog) {
            addImage(dialog, m_logo);
            QVERIFY(selectedBox(dialog));
            press(dialog, "btnPlace8");
            press(dialog, "btnAddDelogo");
            QVERIFY(selectedBox(dialog));
            press(dialog, "cbForAll");
            markList(dialog)->setCurrentRow(0);
            QTest::keyClick(child(dialog, "csPlayer"), Qt::Key_C, Qt::ControlModifier);
            // A row whose file nobody has looked into yet gets its marks later.
            const auto *rows = test.list()->model();
            connect(rows, &QAbstractItemModel::rowsInserted, &dialog,
                    [&] { QTimer::singleShot(0, &dialog, [&] { press(dialog, "btnOk"); }); });
            test.add({late});
            QTRY_VERIFY(!dialog.isVisible());
        });
        QTRY_VERIFY(child(*test.rowWidget(2), "btnWatermarkSet")->isEnabled());
        QCOMPARE(test.marks(2), test.marks(1));
        // In the same corner, as high by the picture's height; removals by both sides.
        const QRectF picture = test.mark(1, 0).value("rect"_s).toRectF();
        QCOMPARE(picture.bottomRight().toPoint(), QPoint(1280, 400));
        QCOMPARE(picture.size().toSize(), QSize(133, 67));
        QCOMPARE(test.mark(1, 1).value("rect"_s).toRectF().toRect(), QRect(0, 0, 320, 133));
        QCOMPARE(test.mark(1, 0).value("endTime"_s).toInt(), 2000);
        QVERIFY(!test.convert(1).isEmpty());
        // So is what was copied there.
        test.edit(2, [](QWidget &dialog) {
            press(dialog, "btnClear");
            QTest::keyClick(child(dialog, "csPlayer"), Qt::Key_V, Qt::ControlModifier);
            press(dialog, "btnOk");
        });
        QCOMPARE(test.marks(2).size(), 1);
        QCOMPARE(test.mark(2, 0), test.mark(1, 0));
    }

    // A picture that has gone between the editor and the run is named; the rest of the row works.
    void missingAndBrokenPictures()
    {
        const QString gone = media("gone.png"_s);
        const QString broken = media("broken.png"_s);
        QVERIFY(QFile::copy(m_logo, gone));
        writeTestFile(broken, "no picture");
        WatermarkPage test({m_film});
        test.edit(0, [&](QWidget &dialog) {
            whenModal("MediaMessageBox", [](QWidget &box) { press(box, "btnOK"); });
            addImage(dialog, broken);
            QCOMPARE(markList(dialog)->count(), 0);
            addImage(dialog, gone);
            QVERIFY(selectedBox(dialog));
            press(dialog, "btnOk");
        });
        QVERIFY(QFile::remove(gone));
        QVERIFY(test.convert(0).isEmpty());
        QVERIFY(test.row(0)->task()->failure().cause.contains("gone.png"_s));
        // Its mark is still there, to be seen and removed.
        test.edit(0, [](QWidget &dialog) {
            QCOMPARE(markList(dialog)->count(), 1);
            press(dialog, "btnOk");
        });
        QCOMPARE(test.marks(0).size(), 1);
    }

    void picturesOfAllKinds()
    {
        WatermarkPage test({m_film});
        const QString drawing = media("drawing.svg"_s);
        writeTestFile(drawing, "<svg xmlns='http://www.w3.org/2000/svg' width='60' height='40'>"
                               "<rect width='60' height='40' fill='red'/></svg>");
        QStringList files{m_logo, drawing};
        for (const char *suffix : {"jpg", "bmp", "webp"}) {
            files += media("k."_s + QLatin1String(suffix));
            QVERIFY(QImage(m_logo).save(files.last()));
        }
        test.edit(0, [&files](QWidget &dialog) {
            for (int i = 0; i < files.size(); ++i) {
                addImage(dialog, files[i]);
                QVERIFY2(selectedBox(dialog), qPrintable(files[i]));
                press(dialog, ("btnPlace" + QByteArray::number(2 * i)).constData());
            }
            press(dialog, "btnOk");
        });
        QVERIFY(!test.convert(0).isEmpty());
        const QImage made = frame(test.row(0)->outputPath(), 1);
        for (const QPoint &place :
             {QPoint(20, 20), QPoint(620, 20), QPoint(320, 180), QPoint(20, 340), QPoint(620, 340)})
            QVERIFY(made.pixelColor(place).red() > 180 && made.pixelColor(place).blue() < 80);
    }

    // Larger than ffmpeg takes any picture for.
    void aHugePicture()
    {
        const QString huge = media("huge.png"_s);
        QImage white(20000, 20000, QImage::Format_Mono);
        white.fill(1);
        QVERIFY(white.save(huge));
        WatermarkPage test({m_film});
        test.edit(0, [&huge](QWidget &dialog) {
            addImage(dialog, huge);
            QVERIFY(selectedBox(dialog));
            press(dialog, "btnOk");
        });
        QCOMPARE(test.mark(0, 0).value("rect"_s).toRectF(), QRectF(0, 0, 120, 120));
        QVERIFY2(!test.convert(0).isEmpty(), qPrintable(test.row(0)->task()->failure().cause));
        const QImage made = frame(test.row(0)->outputPath(), 1);
        QVERIFY(qGray(made.pixel(60, 60)) > 200);
    }

    // What is typed is what comes out; what a filter or an expansion would read is no exception.
    void textsAsTyped()
    {
        const QString texts[] = {"% { } ' \" \\ : , ; [ ] %{pts}"_s, "  lead\n\n\ttab"_s,
                                 "مرحبا 😀 שלום"_s, QString(2000, u'字')};
        for (const QString &text : texts) {
            WatermarkPage test({m_film});
            QImage mask;
            test.edit(0, [&](QWidget &dialog) {
                addText(dialog, text);
                press(dialog, "btnPlace4");
                const QWidget *box = selectedBox(dialog);
                QVERIFY(box);
                markList(dialog)->setCurrentRow(-1); // without its outline
                mask = onGround(*box->parentWidget());
                press(dialog, "btnOk");
            });
            QCOMPARE(test.mark(0, 0).value("text"_s).toString(), text);
            QVERIFY(!test.convert(0).isEmpty());
            QVERIFY2(apart(mask, frame(test.row(0)->outputPath(), 1)) < 0.3, qPrintable(text));
        }
    }

    void oddMarks()
    {
        WatermarkPage test({m_film});
        const auto mark = [](const char *filter, const QRectF &rect, int start, int end) {
            return QVariantMap{{"filter"_s, QLatin1String(filter)},
                               {"rect"_s, rect},
                               {"text"_s, "a"_s},
                               {"fontcolor"_s, QColor(Qt::white)},
                               {"opacity"_s, 0.5},
                               {"startTime"_s, start},
                               {"endTime"_s, end}};
        };
        QVariantList &marks = test.param(0).videoFilters;
        marks += mark("delogo", {0, 0, 640, 360}, 0, 4000);
        marks += mark("delogo", {900, 900, 50, 50}, 0, 4000);
        marks += mark("delogo", {639.6, 100, 0.4, 40}, 0, 4000);
        marks += mark("delogo", {100, 359.6, 40, 0.4}, 0, 4000);
        marks += mark("drawtext", {-20, 350, 400, 40}, 1000, 1000);
        marks += mark("drawtext", {10, 10, 40, 40}, 0, 90000);
        for (int i = 0; i < 50; ++i)
            marks += mark("drawtext", {10.0 * i, 3.0 * i, 40, 40}, 0, 4000);
        QVERIFY(!test.convert(0).isEmpty());
        // The last one is there, in a film of the length that it had; nothing is beside them.
        const QImage made = frame(test.row(0)->outputPath(), 3);
        QVERIFY(brightest(made.copy(490, 147, 40, 40)) > 100);
        QVERIFY(brightest(made.copy(540, 0, 100, 90)) < 90);
    }
};

QTEST_MAIN(TestWatermarkPage)
#include "tst_watermarkpage.moc"
