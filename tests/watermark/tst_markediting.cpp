// SPDX-License-Identifier: MIT
#include "watermark/watermarktest.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"
#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/FunctionPage/VideoWatermark/videowatermarkdialog.h"

#include <QCheckBox>
#include <QJsonObject>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTextDocument>
#include <QTimeEdit>

class TestMarkEditing : public WatermarkTest
{
    Q_OBJECT

private slots:
    // Before anything has asked for the templates.
    void brokenTemplatesAreKept()
    {
        const QString store = dataDir() + "/WatermarkTemplates.json"_s;
        writeTestFile(store, R"({"templates":{"mine":)");
        WatermarkPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            const QString told = askedBy(
                [&dialog] {
                    press(dialog, "btnTemplate");
                    QApplication::activePopupWidget()->close();
                },
                "btnOK");
            QVERIFY2(told.contains("WatermarkTemplates.json.broken"_s), qPrintable(told));
            press(dialog, "btnTemplate");
            QVERIFY(QApplication::activePopupWidget());
            QApplication::activePopupWidget()->close();
        });
        QCOMPARE(contentOf(store + ".broken"_s), QByteArray(R"({"templates":{"mine":)"));
        QVERIFY(QFile::remove(store + ".broken"_s));
    }

    // Where a box of the usual size or a text has no room, it shrinks.
    void inASmallFilm()
    {
        const QString film = media("small.mp4"_s);
        makeMedia("-f lavfi -i color=0x206080:s=100x80:r=10:d=2 @"_s, {film});
        WatermarkPage test({film});
        test.edit(0, [this](QWidget &dialog) {
            press(dialog, "btnAddDelogo");
            addImage(dialog, m_logo);
            addText(dialog, "一二三四五六"_s);
            QVERIFY(selectedBox(dialog));
            press(dialog, "btnOk");
        });
        QCOMPARE(test.marks(0).size(), 3);
        for (int i = 0; i < 3; ++i) {
            const QRectF rect = test.mark(0, i).value("rect"_s).toRectF();
            QVERIFY2(QRectF(0, 0, 100, 80).contains(rect) && rect.height() > 8,
                     qPrintable("%1: %2,%3 %4x%5"_s.arg(i)
                                    .arg(rect.x())
                                    .arg(rect.y())
                                    .arg(rect.width())
                                    .arg(rect.height())));
        }
        QVERIFY(!test.convert(0).isEmpty());
    }

    // Without a mouse: a text and its other words, its place and time, the size of a removal.
    void allByKeyboard()
    {
        WatermarkPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            const auto type = [](int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), with);
            };
            const auto goTo = [&](const char *name) {
                constexpr int mostStops = 80;
                QTRY_VERIFY(dialog.isActiveWindow() && QApplication::focusWidget());
                for (int i = 0; i < mostStops; ++i) {
                    if (QApplication::focusWidget()->objectName() == QLatin1String(name))
                        return;
                    type(Qt::Key_Tab);
                }
                QFAIL(name);
            };
            const auto write = [&](const QString &text) {
                whenModal("TextEditDialog", [=](QWidget &edit) {
                    QVERIFY(child(edit, "plainTextEdit")->hasFocus());
                    type(Qt::Key_A, Qt::ControlModifier);
                    QTest::keyClicks(QApplication::focusWidget(), text);
                    type(Qt::Key_Tab, Qt::ControlModifier);
                    QVERIFY(!child(edit, "plainTextEdit")->hasFocus());
                    type(Qt::Key_Return, Qt::ControlModifier);
                });
                type(Qt::Key_Space);
            };
            goTo("btnAddTextWM");
            write("one"_s);
            QCOMPARE(markList(dialog)->count(), 1);
            goTo("btnEdit");
            write("two"_s);
            goTo("btnPlace8");
            type(Qt::Key_Space);
            type(Qt::Key_Left);
            type(Qt::Key_Up, Qt::ShiftModifier);
            goTo("tedtStart");
            type(Qt::Key_End);
            type(Qt::Key_Up);
            goTo("btnAddDelogo");
            type(Qt::Key_Space);
            QCOMPARE(markList(dialog)->count(), 2);
            type(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
            type(Qt::Key_Up, Qt::ControlModifier);
            goTo("btnOk");
            type(Qt::Key_Space);
            QVERIFY(!dialog.isVisible());
        });
        QCOMPARE(test.marks(0).size(), 2);
        const QVariantMap text = test.mark(0, 0);
        QCOMPARE(text.value("text"_s).toString(), "two"_s);
        QCOMPARE(text.value("rect"_s).toRectF().bottomRight(), QPointF(639, 350));
        QCOMPARE(text.value("startTime"_s).toInt(), 1000);
        QCOMPARE(test.mark(0, 1).value("rect"_s).toRectF().size(), QSizeF(170, 119));
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
            QTest::keyClick(child(dialog, "csPlayer"), Qt::Key_Z, Qt::ControlModifier);
            QTRY_COMPARE(child<QLabel>(dialog, "lblTime")->text(), "00:00:01-00:00:04"_s);
            child<QTimeEdit>(dialog, "tedtEnd")->setTime(QTime(0, 0, 3));
            QTRY_COMPARE(child<QLabel>(dialog, "lblTime")->text(), "00:00:01-00:00:03"_s);
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
            markList(dialog)->setCurrentRow(0);
            type(Qt::Key_Down);
            type(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(markList(dialog)->currentRow(), 0);
            press(dialog, "btnClear");
            QCOMPARE(markList(dialog)->count(), 0);
            type(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(markList(dialog)->count(), 2);
            type(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(markList(dialog)->count(), 1);
            press(dialog, "btnOk");
        });
        QCOMPARE(test.mark(0, 0).value("rect"_s).toRectF(), QRectF(10, 0, 160, 120));
    }

    // Where the preview stood there would be nothing to be grasped, nor would a change be seen.
    void previewGoesToTheMark()
    {
        WatermarkPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            const auto position = [&dialog] { return child<QLabel>(dialog, "lblPos")->text(); };
            const auto leave = [&] {
                emit child<QSlider>(dialog, "scrubBar")->sliderMoved(3000);
                QCOMPARE(position(), "00:00:03"_s);
            };
            press(dialog, "btnPlay");
            child<QTimeEdit>(dialog, "tedtEnd")->setTime(QTime(0, 0, 1));
            leave();
            press(dialog, "btnAddDelogo");
            QCOMPARE(position(), "00:00:00"_s);
            QVERIFY(selectedBox(dialog));
            leave();
            addText(dialog, "墨泉"_s);
            QCOMPARE(position(), "00:00:00"_s);
            leave();
            child<QSlider>(dialog, "sliderOpacity")->setValue(40);
            QCOMPARE(position(), "00:00:00"_s);
            leave();
            markList(dialog)->setCurrentRow(0);
            QCOMPARE(position(), "00:00:00"_s);
            press(dialog, "btnOk");
        });
        QCOMPARE(test.mark(0, 0).value("endTime"_s).toInt(), 1000);
    }

    void timesInAnotherFilm()
    {
        const auto moved = [](int start, int end, int from, int to) {
            const QVariantMap mark{{"startTime"_s, start}, {"endTime"_s, end}};
            const QVariantMap placed =
                marksFor({mark}, {{}, 1.0, from}, {{}, 1.0, to}).first().toMap();
            return QPoint(placed["startTime"_s].toInt(), placed["endTime"_s].toInt());
        };
        QCOMPARE(moved(0, 60, 60, 5), QPoint(0, 5));
        QCOMPARE(moved(2, 60, 60, 5), QPoint(2, 5));
        QCOMPARE(moved(3, 20, 60, 5), QPoint(3, 5));
        QCOMPARE(moved(10, 12, 60, 5), QPoint(3, 5));
        QCOMPARE(moved(10, 30, 60, 5), QPoint(0, 5));
        QCOMPARE(moved(58, 60, 60, 5), QPoint(3, 5));
        QCOMPARE(moved(50, 60, 60, 90), QPoint(50, 90));
        // Of an unknown length.
        QCOMPARE(moved(0, 60, 60, 0), QPoint(0, 0));
        QCOMPARE(moved(3, 20, 60, 0), QPoint(3, 20));
        QCOMPARE(moved(0, 0, 0, 5), QPoint(0, 5));
    }

    void textThatIsEditedToNothing()
    {
        WatermarkPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            addText(dialog, "a & <b>b</b>"_s);
            QTextDocument tip;
            tip.setHtml(child<QLabel>(dialog, "lblText")->toolTip());
            QCOMPARE(tip.toPlainText(), "a & <b>b</b>"_s);
            typeText({}, 50);
            press(dialog, "btnEdit");
            press(dialog, "btnOk");
        });
        QCOMPARE(test.mark(0, 0).value("text"_s).toString(), "a & <b>b</b>"_s);
        QCOMPARE(test.mark(0, 0).value("font"_s).value<QFont>().pixelSize(), 50);
    }

    // The end of a film whose length is unknown.
    void markWithoutEnd()
    {
        WatermarkPage test({m_film});
        test.edit(0, [](QWidget &dialog) {
            const QVariantMap mark{{"filter"_s, "delogo"_s},
                                   {"rect"_s, QRectF(0, 0, 90, 90)},
                                   {"opacity"_s, 1.0},
                                   {"startTime"_s, 9},
                                   {"endTime"_s, 0}};
            static_cast<VideoWatermarkDialog &>(dialog).setMarks(sharedMarks({mark}));
            QCOMPARE(child<QLabel>(dialog, "lblTime")->text(), "全程"_s);
            QVERIFY(selectedBox(dialog));
            QTest::keyClick(child(dialog, "csPlayer"), Qt::Key_Right);
            QVERIFY(selectedBox(dialog));
        });
    }

    void templatesInAnotherRun()
    {
        WatermarkPage test({m_film});
        test.edit(0, [this](QWidget &dialog) {
            addText(dialog, "一"_s);
            press(dialog, "btnPlace8");
            const auto save = [&dialog] {
                bool named = false;
                whenModal("TemplateNameDialog", [&named](QWidget &names) {
                    child<QLineEdit>(names, "editName")->setText("节日 & a"_s);
                    named = true;
                    press(names, "btnOK");
                });
                fromMenu(dialog, [](const QMenu &menu) {
                    return menu.actions().at(menu.actions().size() - 2);
                });
                QTRY_VERIFY(named);
            };
            save();
            QTRY_COMPARE(WatermarkTemplates::instance().names().size(), 1);
            // One that is there is replaced or removed only by one who is sure.
            const QJsonObject first = WatermarkTemplates::instance().value("节日 & a"_s);
            press(dialog, "btnPlace0");
            int asked = 0;
            const auto refuse = [&asked](QWidget &box) {
                ++asked;
                press(box, "btnCancel");
            };
            whenModal("MediaMessageBox", refuse);
            save();
            QTRY_COMPARE(asked, 1);
            whenModal("MediaMessageBox", refuse);
            fromMenu(dialog, [](const QMenu &menu) {
                return menu.actions().last()->menu()->actions().first();
            });
            QTRY_COMPARE(asked, 2);
            QCOMPARE(WatermarkTemplates::instance().value("节日 & a"_s), first);
        });
        WatermarkTemplates again;
        QCOMPARE(again.names(), QStringList("节日 & a"_s));
        test.edit(0, [](QWidget &dialog) {
            fromMenu(dialog, [](const QMenu &menu) { return menu.actions().first(); });
            QTRY_COMPARE(markList(dialog)->count(), 1);
            press(dialog, "btnOk");
        });
        const QRectF rect = test.mark(0, 0).value("rect"_s).toRectF();
        QCOMPARE(rect.bottomRight(), QPointF(640, 360));
        QCOMPARE(test.mark(0, 0).value("font"_s).value<QFont>().pixelSize(), 36);
    }

private:
    template<class Find>
    static void fromMenu(QWidget &dialog, Find find)
    {
        press(dialog, "btnTemplate");
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        find(*menu)->trigger();
        menu->close();
    }
};

QTEST_MAIN(TestMarkEditing)
#include "tst_markediting.moc"
