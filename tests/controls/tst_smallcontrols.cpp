// SPDX-License-Identifier: MIT
#include "controls/atreewidget.h"
#include "controls/complexedit.h"
#include "controls/elidedlabel.h"
#include "controls/textctrl.h"
#include "controls/widgetbutton.h"
#include "pointer.h"
#include "resources/look.h"
#include "support/casename.h"
#include "support/utf8.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTextDocumentFragment>

namespace {

struct CountingTree : ATreeWidget
{
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        ATreeWidget::paintEvent(event);
    }
};

// A row with an edit, in a dialog whose default button must not hear of the edit's keys.
struct Row
{
    explicit Row(int width = 300)
    {
        auto *layout = new QHBoxLayout(&dialog);
        layout->addWidget(edit);
        auto *button = new QPushButton(&dialog);
        button->setDefault(true);
        QObject::connect(button, &QPushButton::clicked, &dialog, &QDialog::accept);
        layout->addWidget(button);
        dialog.setFixedWidth(width);
        edit->setSuffix(".mp4"_s);
        edit->setText("name"_s);
        dialog.show();
    }
    QLabel *label() const { return edit->findChild<QLabel *>("lblText"_s); }
    QLineEdit *line() const { return edit->findChild<QLineEdit *>("edtText"_s); }
    QPushButton *button() const { return edit->findChild<QPushButton *>("btnEdit"_s); }
    bool open()
    {
        if (!QTest::qWaitForWindowActive(&dialog))
            return false;
        QTest::mouseClick(button(), Qt::LeftButton);
        return line()->isVisible() && line()->hasFocus() && !label()->isVisible() &&
               !button()->isVisible();
    }

    QDialog dialog;
    ComplexEdit *edit = new ComplexEdit(&dialog);
};

} // namespace

class TestSmallControls : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(Look::apply()); }

    void editEnds()
    {
        const auto check = [&](const char *caseName, int key, const QString &text) {
            const CaseName inCase(caseName);
            Row row;
            QVERIFY(row.open());
            QSignalSpy changed(row.edit, &ComplexEdit::editTextChanged);
            QSignalSpy finished(row.edit, &ComplexEdit::editingFinished);
            row.line()->selectAll();
            QTest::keyClicks(row.line(), "new"_s);
            QCOMPARE(row.edit->text(), "new"_s);
            QCOMPARE(changed.last().first().toString(), "new"_s);
            QCOMPARE(finished.count(), 0);
            if (key != 0) {
                QTest::keyClick(row.line(), Qt::Key(key));
            } else {
                row.edit->hide();
                row.edit->show();
            }
            QTRY_COMPARE(finished.count(), 1);
            QVERIFY(!row.line()->isVisible() && row.label()->isVisible());
            QCOMPARE(row.edit->text(), text);
            QCOMPARE(row.label()->text(), text + ".mp4"_s);
            QVERIFY(row.dialog.isVisible());
        };
        check("enter", int(Qt::Key_Return), "new"_s);
        check("escape", int(Qt::Key_Escape), "name"_s);
        check("tab", int(Qt::Key_Tab), "new"_s);
        check("hidden", 0, "new"_s);
    }

    void editShortensItsLabel()
    {
        Row row(260);
        QVERIFY(QTest::qWaitForWindowExposed(&row.dialog));
        const QString name = QString(60, u'm');
        row.edit->setText(name);
        QCOMPARE(row.edit->text(), name);
        QVERIFY(row.label()->text().contains(QChar(0x2026)));
        QVERIFY(row.label()->text().endsWith("mp4"_s));
        QCOMPARE(row.label()->toolTip(), name + ".mp4"_s);
        QTRY_VERIFY(row.button()->geometry().right() < row.edit->width());
        row.dialog.setFixedWidth(1500);
        QTRY_COMPARE(row.label()->text(), name + ".mp4"_s);
        row.edit->setText({});
        QCOMPARE(row.label()->text(), ".mp4"_s);
    }

    void readOnlyEdit()
    {
        Row row;
        QVERIFY(QTest::qWaitForWindowExposed(&row.dialog));
        row.edit->setReadOnly(true);
        QTRY_COMPARE(row.button()->width(), 0);
        row.button()->click();
        QVERIFY(!row.line()->isVisible());
        row.edit->setReadOnly(false);
        QTRY_VERIFY(row.button()->width() > 0);
        QVERIFY(row.open());
    }

    void elidedLabel()
    {
        ElidedLabel label;
        const QString text = "<b>a rather long file name</b>.mp4"_s;
        label.setFullText(text);
        label.resize(label.sizeHint());
        label.show();
        QCOMPARE(label.text(), text);
        label.resize(label.width() / 2, label.height());
        QVERIFY(label.text().contains(QChar(0x2026)) && label.text().startsWith("<"_s));
        QVERIFY(label.fontMetrics().horizontalAdvance(label.text()) <=
                label.contentsRect().width() + 1);
        const auto shownTip = [&label] {
            return QTextDocumentFragment::fromHtml(label.toolTip()).toPlainText();
        };
        QCOMPARE(shownTip(), text);
        label.setAutoToolTips(false);
        label.setFullText("x"_s);
        QCOMPARE(shownTip(), text);
    }

    void buttonStates()
    {
        QWidget window;
        window.setStyleSheet(
            "QLabel { color: black; } WidgetButton[mousestate=\"hover\"] QLabel { color: red; }"
            "WidgetButton[checked=\"true\"] QLabel { color: blue; }"_s);
        WidgetButton button(&window);
        button.setCheckable(true);
        auto *layout = new QHBoxLayout(&button);
        QLabel label("a label within the button"_s);
        layout->addWidget(&label);
        button.setGeometry(50, 50, 200, 40);
        window.resize(300, 150);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(button.sizeHint(), layout->sizeHint());
        qRegisterMetaType<WidgetButton::MouseState>();
        QSignalSpy states(&button, &WidgetButton::mouseStateChanged);
        Pointer pointer(&button);
        pointer.press({5, 5});
        pointer.release();
        QVERIFY(button.isChecked());
        QCOMPARE(button.property("mousestate").toString(), "hover"_s);
        QCOMPARE(label.palette().color(QPalette::WindowText), QColor(Qt::blue));
        pointer.press({5, 5});
        QCOMPARE(button.property("mousestate").toString(), "pressed"_s);
        pointer.release();
        QCOMPARE(label.palette().color(QPalette::WindowText), QColor(Qt::red));
        pointer.moveBy(-50);
        QCOMPARE(button.property("mousestate").toString(), "normal"_s);
        QCOMPARE(states.last().first().value<WidgetButton::MouseState>(), WidgetButton::NORMAL);
        QCOMPARE(label.palette().color(QPalette::WindowText), QColor(Qt::black));
    }

    void treeSeesPropertiesAndRests()
    {
        CountingTree tree;
        tree.setStyleSheet("ATreeWidget[full=\"true\"] { color: red; }"_s);
        tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree));
        tree.setProperty("full", true);
        QTRY_COMPARE(tree.palette().color(QPalette::Text), QColor(Qt::red));
        // Comes to rest: the event loop goes round without another painting.
        int before = -1;
        QTRY_VERIFY(std::exchange(before, tree.paints) == tree.paints);
        QVERIFY(tree.paints < 20);
    }

    void textKeepsEmptyLines()
    {
        TextCtrl ctrl;
        QFont font;
        font.setPixelSize(20);
        ctrl.setFont(font);
        ctrl.setColor(Qt::red);
        ctrl.resize(100, 80);
        ctrl.setText("HH\n\nHH"_s);
        const QImage image = ctrl.grab().toImage();
        // Lines are 19 pixels apart.
        const QImage first = image.copy(0, 0, 100, 19);
        QImage blank = first;
        blank.fill(image.pixelColor(99, 79));
        QVERIFY(first != blank);
        QCOMPARE(image.copy(0, 20, 100, 18), blank.copy(0, 0, 100, 18));
        QCOMPARE(image.copy(0, 38, 100, 19), first);

        ctrl.setText("Ägjp\n水印ÄQ"_s);
        ctrl.resize(300, 200);
        QImage whole = ctrl.grab().toImage();
        const QColor ground = whole.pixelColor(299, 199);
        QPainter(&whole).fillRect(QRect(QPoint(0, 0), ctrl.sizeHint()), ground);
        QImage empty = whole;
        empty.fill(ground);
        QCOMPARE(whole, empty);
        QVERIFY(ctrl.sizeHint().height() <= 48);
    }
};

QTEST_MAIN(TestSmallControls)
#include "tst_smallcontrols.moc"
