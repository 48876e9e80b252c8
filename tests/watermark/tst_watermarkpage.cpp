// SPDX-License-Identifier: MIT
#include "watermark/watermarktest.h"

#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTimeEdit>

class TestWatermarkPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        preparePages();
        makeMedia("-f lavfi -i color=0x206080:s=640x360:r=10:d=4 @"_s, {m_film});
        QImage logo(120, 60, QImage::Format_ARGB32);
        logo.fill(Qt::red);
        QVERIFY(logo.save(m_logo));
    }

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
            QTimer::singleShot(0, &dialog, [&dialog] { press(dialog, "btnCancel"); });
            whenModal("MediaMessageBox", [](QWidget &box) { press(box, "btnOK"); });
            QTRY_VERIFY(!dialog.isVisible());
        });
        QCOMPARE(test.marks(0), saved);
        test.edit(0, [](QWidget &dialog) { press(dialog, "btnOk"); });
        QCOMPARE(test.marks(0), saved);
    }

    void panelChangesTheMark()
    {
        WatermarkPage test({m_film});
        test.edit(0, [this](QWidget &dialog) {
            addImage(dialog, m_logo);
            QVERIFY(selectedBox(dialog));
            child<QSlider>(dialog, "sliderOpacity")->setValue(40);
            QCOMPARE(child<QSpinBox>(dialog, "sbOpacity")->value(), 40);
            press(dialog, "cbAspectKeep");
            press(dialog, "btnPlace8");
            child<QTimeEdit>(dialog, "tedtStart")->setTime(QTime(0, 0, 1));
            child<QTimeEdit>(dialog, "tedtEnd")->setTime(QTime(0, 0, 3));
            QCOMPARE(child<QLabel>(dialog, "lblTime")->text(), "00:00:01-00:00:03"_s);
            press(dialog, "btnOk");
        });
        const QVariantMap mark = test.mark(0, 0);
        QCOMPARE(mark.value("opacity"_s).toFloat(), 0.4F);
        QCOMPARE(mark.value("aspectKeep"_s).toBool(), false);
        QCOMPARE(mark.value("rect"_s).toRectF(), QRectF(520, 300, 120, 60));
        QCOMPARE(mark.value("startTime"_s).toInt(), 1000);
        QCOMPARE(mark.value("endTime"_s).toInt(), 3000);
    }

    void keys()
    {
        WatermarkPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            press(dialog, "btnAddDelogo");
            QWidget *box = selectedBox(dialog);
            QVERIFY(box);
            QWidget *player = child(dialog, "csPlayer");
            const auto type = [player](int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
                QTest::keyClick(player, Qt::Key(key), with);
            };
            type(Qt::Key_Right, Qt::ShiftModifier);
            type(Qt::Key_Down);
            type(Qt::Key_Up, Qt::ShiftModifier); // no further than the edge
            type(Qt::Key_C, Qt::ControlModifier);
            type(Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(markList(dialog)->count(), 2);
            type(Qt::Key_Delete);
            QCOMPARE(markList(dialog)->count(), 1);
            type(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(markList(dialog)->count(), 2);
            type(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(markList(dialog)->count(), 1);
            press(dialog, "btnOk");
        });
        QCOMPARE(test.mark(0, 0).value("rect"_s).toRectF(), QRectF(10, 0, 160, 120));
    }

    void forAllByShare()
    {
        const QString wide = m_folder.filePath("wide.mp4"_s);
        makeMedia("-f lavfi -i color=0x206080:s=1280x400:r=10:d=2 @"_s, {wide});
        WatermarkPage test({m_film, wide});
        test.edit(0, [this](QWidget &dialog) {
            addImage(dialog, m_logo);
            QVERIFY(selectedBox(dialog));
            press(dialog, "btnPlace8");
            press(dialog, "btnAddDelogo");
            QVERIFY(selectedBox(dialog));
            press(dialog, "cbForAll");
            press(dialog, "btnOk");
        });
        // In the same corner, as high by the picture's height; removals by both sides.
        const QRectF picture = test.mark(1, 0).value("rect"_s).toRectF();
        QCOMPARE(picture.bottomRight().toPoint(), QPoint(1280, 400));
        QCOMPARE(picture.size().toSize(), QSize(133, 67));
        QCOMPARE(test.mark(1, 1).value("rect"_s).toRectF().toRect(), QRect(0, 0, 320, 133));
        QCOMPARE(test.mark(1, 0).value("endTime"_s).toInt(), 2000);
        QVERIFY(!test.convert(1).isEmpty());
    }

    // A picture that has gone between the editor and the run is named; the rest of the row works.
    void missingAndBrokenPictures()
    {
        const QString gone = m_folder.filePath("gone.png"_s);
        const QString broken = m_folder.filePath("broken.png"_s);
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
        const QString drawing = m_folder.filePath("drawing.svg"_s);
        writeTestFile(drawing, "<svg xmlns='http://www.w3.org/2000/svg' width='60' height='40'>"
                               "<rect width='60' height='40' fill='red'/></svg>");
        QStringList files{m_logo, drawing};
        for (const char *suffix : {"jpg", "bmp", "webp"}) {
            files += m_folder.filePath("k."_s + QLatin1String(suffix));
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
        const QImage made = QImage::fromData(
            decodedMedia(test.row(0)->outputPath(), "-ss 1 -frames:v 1 -c:v bmp -f image2pipe"_s));
        for (const QPoint &place :
             {QPoint(20, 20), QPoint(620, 20), QPoint(320, 180), QPoint(20, 340), QPoint(620, 340)})
            QVERIFY(made.pixelColor(place).red() > 180 && made.pixelColor(place).blue() < 80);
    }

    // What is typed is what comes out; what a filter or an expansion would read is no exception.
    void textsAsTyped()
    {
        const QString texts[] = {"% { } ' \" \\ : , ; [ ] %{pts}"_s, "  lead\n\n\ttab"_s,
                                 "مرحبا 😀 שלום"_s, QString(2000, u'字')};
        WatermarkPage test({m_film});
        test.edit(0, [&texts](QWidget &dialog) {
            for (const QString &text : texts)
                addText(dialog, text);
            press(dialog, "btnOk");
        });
        for (int i = 0; i < 4; ++i)
            QCOMPARE(test.mark(0, i).value("text"_s).toString(), texts[i]);
        QVERIFY(!test.convert(0).isEmpty());
    }

    void oddMarks()
    {
        WatermarkPage test({m_film});
        const auto mark = [](const char *filter, const QRectF &rect, int start, int end) {
            return QVariantMap{{"filter"_s, QLatin1String(filter)},
                               {"rect"_s, rect},
                               {"text"_s, "a"_s},
                               {"opacity"_s, 0.5},
                               {"startTime"_s, start},
                               {"endTime"_s, end}};
        };
        QVariantList &marks = test.param(0).videoFilters;
        marks += mark("delogo", {0, 0, 640, 360}, 0, 4000);
        marks += mark("delogo", {900, 900, 50, 50}, 0, 4000);
        marks += mark("drawtext", {-20, 350, 400, 40}, 1000, 1000);
        marks += mark("drawtext", {10, 10, 40, 40}, 0, 90000);
        for (int i = 0; i < 50; ++i)
            marks += mark("drawtext", {10.0 * i, 3.0 * i, 40, 40}, 0, 4000);
        QVERIFY(!test.convert(0).isEmpty());
    }

    void templatesInAnotherRun()
    {
        WatermarkPage test({m_film});
        test.edit(0, [this](QWidget &dialog) {
            addText(dialog, "一"_s);
            press(dialog, "btnPlace8");
            QTimer::singleShot(0, &dialog, [] {
                auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
                QVERIFY(menu);
                whenModal("TemplateNameDialog", [](QWidget &names) {
                    child<QLineEdit>(names, "editName")->setText("节日 & a"_s);
                    press(names, "btnOK");
                });
                menu->actions().at(menu->actions().size() - 2)->trigger();
                menu->close();
            });
            press(dialog, "btnTemplate");
        });
        WatermarkTemplates again;
        QCOMPARE(again.names(), QStringList("节日 & a"_s));
        test.edit(0, [](QWidget &dialog) {
            QTimer::singleShot(0, &dialog, [] {
                auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
                QVERIFY(menu);
                menu->actions().first()->trigger();
                menu->close();
            });
            press(dialog, "btnTemplate");
            QCOMPARE(markList(dialog)->count(), 1);
            press(dialog, "btnOk");
        });
        const QRectF rect = test.mark(0, 0).value("rect"_s).toRectF();
        QCOMPARE(rect.bottomRight(), QPointF(640, 360));
        QCOMPARE(test.mark(0, 0).value("font"_s).value<QFont>().pixelSize(), 36);
    }

private:
    QTemporaryDir m_folder;
    const QString m_film = m_folder.filePath("片 a.mp4"_s);
    const QString m_logo = m_folder.filePath("标 = 'a' [b];%d.png"_s);
};

QTEST_MAIN(TestWatermarkPage)
#include "tst_watermarkpage.moc"
