// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskadapter.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapter.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapteritem.h"
#include "resources/look.h"
#include "support/casename.h"
#include "support/guisupport.h"
#include "support/testfile.h"

#include <QDialog>
#include <QLabel>
#include <QtTest>

namespace {

using Item = WatermarkMaskAdapterItem;

// The picture is shown at half its size.
constexpr QSize videoSize(800, 600);
constexpr QRect surfaceRect(20, 30, 400, 300);

// An editor with a native surface, as the player needs it.
struct Editor
{
    Editor()
    {
        dialog.resize(600, 400);
        surface->setAttribute(Qt::WA_NativeWindow);
        surface->setGeometry(surfaceRect);
        QPixmap night(surfaceRect.size());
        night.fill(Qt::black);
        surface->setPixmap(night);
    }
    bool show()
    {
        dialog.show();
        return QTest::qWaitForWindowActive(&dialog) &&
               QTest::qWaitFor([] { return overlay() != nullptr; });
    }
    static QWidget *overlay() { return visibleWindow("VideoMask"); }

    QDialog dialog;
    QLabel *surface = new QLabel(&dialog);
};

struct CropEditor : Editor
{
    CropEditor()
    {
        adapter->setVideoSize(videoSize);
        adapter->setChopRect(QRect(100, 100, 400, 200));
    }
    QWidget *frame() const { return child(*surface, "chopWidget"); }
    QWidget *area() const { return child(*surface, "allWidget"); }

    ChopMaskAdapter *adapter = new ChopMaskAdapter(surface, &dialog);
};

struct BoxEditor : Editor
{
    BoxEditor() { adapter->setVideoSize(videoSize); }

    WatermarkMaskAdapter *adapter = new WatermarkMaskAdapter(surface, &dialog);
};

// A rectangle by its edges.
QRect edges(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}

} // namespace

class TestMask : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Look::apply(); }

    void followsItsEditor()
    {
        QPointer<QWidget> overlay;
        {
            CropEditor editor;
            QVERIFY(editor.show());
            overlay = Editor::overlay();
            const auto isGlued = [&] {
                return overlay->geometry() ==
                       QRect(editor.surface->mapToGlobal(QPoint(0, 0)), editor.surface->size());
            };
            QTRY_VERIFY(isGlued());
            // Seen above its editor, dim around a clear hole.
            const auto lightness = [&](const QPoint &point) {
                const QPoint at = editor.surface->mapToGlobal(point);
                return QGuiApplication::primaryScreen()
                    ->grabWindow(0, at.x(), at.y(), 1, 1)
                    .toImage()
                    .pixelColor(0, 0)
                    .lightness();
            };
            QTRY_VERIFY(lightness({5, 5}) > 100);
            QTRY_VERIFY(lightness({150, 100}) < 20);
            editor.dialog.move(editor.dialog.pos() + QPoint(37, 21));
            QTRY_VERIFY(isGlued());
            editor.surface->setGeometry(5, 6, 300, 200);
            QTRY_VERIFY(isGlued());
            QVERIFY(editor.dialog.isActiveWindow());

            editor.adapter->setMaskEnabled(false);
            QVERIFY(!overlay->isVisible());
            editor.dialog.hide();
            editor.adapter->setMaskEnabled(true);
            QVERIFY(!overlay->isVisible());
            editor.dialog.show();
            QTRY_VERIFY(overlay->isVisible());
            editor.dialog.hide();
            QVERIFY(!overlay->isVisible());
        }
        QVERIFY(!overlay);
    }

    void dragsTheFrame()
    {
        const auto check = [&](const char *caseName, const QPoint &from, const QPoint &to,
                               const QRect &frame) {
            const CaseName inCase(caseName);
            CropEditor editor;
            QVERIFY(editor.show());
            QCOMPARE(editor.frame()->geometry(), edges(50, 50, 249, 149));
            // Back and forth first: the edges of the press stay the anchors.
            dragWidget(editor.frame(), from, {to, from, to});
            QCOMPARE(editor.frame()->geometry(), frame);
        };
        // The frame is at first from (50, 50) to (249, 149), the surface from (0, 0) to (399, 299).
        check("middle", {100, 100}, {110, 90}, edges(60, 40, 259, 139));
        check("middle past the upper left", {100, 100}, {0, 0}, edges(0, 0, 199, 99));
        check("middle past the lower right", {100, 100}, {390, 290}, edges(200, 200, 399, 299));
        check("left", {51, 100}, {70, 100}, edges(70, 50, 249, 149));
        check("top", {100, 52}, {100, 30}, edges(50, 30, 249, 149));
        check("right", {248, 100}, {300, 100}, edges(50, 50, 300, 149));
        check("bottom", {100, 147}, {100, 200}, edges(50, 50, 249, 200));
        check("upper left", {50, 50}, {10, 20}, edges(10, 20, 249, 149));
        check("upper right", {249, 50}, {260, 40}, edges(50, 40, 260, 149));
        check("lower left", {50, 149}, {40, 160}, edges(40, 50, 249, 160));
        check("lower right", {249, 149}, {450, 450}, edges(50, 50, 399, 299));
        check("top turned over", {100, 50}, {100, 180}, edges(50, 149, 249, 180));
        check("right turned over and out", {249, 100}, {-30, 100}, edges(0, 50, 50, 149));
    }

    void drawsANewFrame()
    {
        CropEditor editor;
        QVERIFY(editor.show());
        QSignalSpy changes(editor.adapter, &ChopMaskAdapter::chopRectChanged);
        const QRect before = editor.frame()->geometry();
        QTest::mouseClick(editor.area(), Qt::LeftButton, Qt::NoModifier, QPoint(300, 200));
        QCOMPARE(editor.frame()->geometry(), before);
        QCOMPARE(changes.count(), 0);
        dragWidget(editor.area(), QPoint(300, 200), {QPoint(350, 250), QPoint(280, -20)});
        QCOMPARE(editor.frame()->geometry(), edges(280, 0, 300, 200));
        QCOMPARE(changes.last()[0].toRect(), QRect(560, 0, 42, 402));
        // The dim area has a hole where the frame is.
        const QImage picture = Editor::overlay()->grab().toImage();
        QVERIFY(picture.pixelColor(100, 100).alpha() > 150);
        QVERIFY(picture.pixelColor(290, 50).alpha() < 10);
    }

    void gripsOfTinyFrames()
    {
        CropEditor editor;
        QVERIFY(editor.show());
        editor.adapter->setChopRect(QRect(200, 200, 10, 10));
        const QPoint middle = editor.frame()->geometry().center();
        dragWidget(editor.frame(), middle, {middle - QPoint(20, 30)});
        QCOMPARE(editor.frame()->geometry(), edges(82, 72, 104, 104));
    }

    void numbersSurviveResizing()
    {
        CropEditor editor;
        const QRect rect(101, 53, 333, 211);
        editor.adapter->setChopRect(rect);
        QVERIFY(editor.show());
        QSignalSpy changes(editor.adapter, &ChopMaskAdapter::chopRectChanged);
        for (const QSize &size :
             {QSize(333, 250), QSize(57, 43), QSize(560, 390), surfaceRect.size()}) {
            editor.surface->resize(size);
            editor.adapter->setChopX(rect.x());
        }
        QCOMPARE(changes.count(), 0);
        QCOMPARE(editor.frame()->geometry(), QRect(51, 27, 167, 106));
    }

    void eachChangeIsToldOnce()
    {
        CropEditor editor;
        QVERIFY(editor.show());
        QSignalSpy changes(editor.adapter, &ChopMaskAdapter::chopRectChanged);
        editor.adapter->setChopW(301);
        editor.adapter->setChopX(7);
        QCOMPARE(changes.count(), 2);
        QCOMPARE(changes.last()[0].toRect(), QRect(7, 100, 301, 200));
        // Two pixels of the picture are one of the surface.
        QCOMPARE(editor.frame()->geometry(), QRect(4, 50, 151, 100));
        dragWidget(editor.frame(), QPoint(50, 100), {QPoint(51, 100)});
        QCOMPARE(changes.count(), 3);
        QCOMPARE(changes.last()[0].toRect(), QRect(10, 100, 302, 200));
    }

    void dragsABox()
    {
        const auto check = [&](const char *caseName, double aspect, const QPoint &from,
                               const QPoint &to, const QRect &box) {
            const CaseName inCase(caseName);
            QWidget parent;
            parent.resize(400, 300);
            auto *widget = new DrmWidget(&parent);
            widget->setGeometry(100, 100, 100, 50);
            widget->setAspect(aspect);
            parent.show();
            QSignalSpy moved(widget, &DrmWidget::rectMoved);
            QSignalSpy resized(widget, &DrmWidget::rectResized);
            dragWidget(widget, from, {to});
            QCOMPARE(widget->geometry(), box);
            QCOMPARE(moved.count() + resized.count(), 1);
            QCOMPARE(moved.count(), int(box.size() == QSize(100, 50)));

            widget->setAllowedDirections(DrmWidget::moveDirection);
            dragWidget(widget, box.topLeft(), {box.center()});
            QCOMPARE(widget->geometry(), box);
        };
        // The box is at first from (100, 100) to (199, 149), its parent 400 by 300.
        check("move", 0.5, {150, 120}, {600, 10}, edges(300, 0, 399, 49));
        check("free", 0.0, {199, 149}, {210, 200}, edges(100, 100, 210, 200));
        check("too flat to be kept", 0.1, {199, 149}, {210, 200}, edges(100, 100, 210, 200));
        check("left hangs on its top", 0.5, {100, 120}, {60, 120}, edges(60, 100, 199, 170));
        check("left without room below", 2.0, {100, 120}, {60, 120}, edges(99, 100, 199, 300));
        check("right stands on its bottom", 0.5, {199, 120}, {219, 120}, edges(100, 89, 219, 149));
        check("right without room above", 2.0, {199, 120}, {219, 120}, edges(100, 0, 174, 149));
        check("bottom keeps the right", 0.5, {150, 149}, {150, 199}, edges(0, 100, 199, 199));
        check("upper left keeps the right", 0.5, {100, 100}, {90, 90}, edges(79, 90, 199, 149));
        check("top keeps the left", 0.5, {150, 100}, {150, 50}, edges(100, 50, 300, 149));
        check("top without room at the right", 0.3, {150, 100}, {150, 40},
              edges(100, 59, 400, 149));
    }

    void alignsABox()
    {
        BoxEditor editor;
        QVERIFY(editor.show());
        Item *item = editor.adapter->addDelogoItem();
        QTRY_VERIFY(item->widget()->isVisible());
        editor.adapter->setItemRect(item, QRectF(10, 20, 200, 100));
        QCOMPARE(item->widget()->geometry(), QRect(5, 10, 100, 50));
        QSignalSpy changes(editor.adapter, &WatermarkMaskAdapter::itemRectChanged);
        const QPoint places[] = {{0, 0},     {150, 0}, {300, 0},   {0, 125},  {150, 125},
                                 {300, 125}, {0, 250}, {150, 250}, {300, 250}};
        for (int place = 0; place < 9; ++place) {
            editor.adapter->alignItem(item, place);
            QCOMPARE(item->widget()->pos(), places[place]);
            QCOMPARE(changes.last()[1].toRectF(), QRectF(places[place] * 2, QSizeF(200, 100)));
        }
        QCOMPARE(changes.count(), 9);
        editor.adapter->alignItem(item, 9);
        QCOMPARE(changes.count(), 9);
    }

    void catchesABox()
    {
        BoxEditor editor;
        QVERIFY(editor.show());
        Item *item = editor.adapter->addDelogoItem();
        QTRY_VERIFY(item->widget()->isVisible());
        editor.adapter->setItemRect(item, QRectF(100, 100, 200, 100));
        DrmWidget *box = item->widget();
        const QPoint grip(60, 60);
        const auto dragBy = [&](const QPoint &by, Qt::KeyboardModifiers keys = Qt::NoModifier) {
            box->move(50, 50);
            for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseMove}) {
                const QPoint point =
                    box->mapFromParent(type == QEvent::MouseMove ? grip + by : grip);
                QMouseEvent event(type, point, box->mapToGlobal(point), Qt::LeftButton,
                                  Qt::LeftButton, keys);
                QApplication::sendEvent(box, &event);
            }
        };
        const auto guides = [box] {
            return box->parentWidget()->findChildren<QWidget *>("maskGuide"_s).size();
        };
        dragBy({96, 72}); // the middle is at (150, 125)
        QCOMPARE(box->pos(), QPoint(150, 125));
        QCOMPARE(guides(), 2);
        QCOMPARE(editor.adapter->itemRect(item), QRectF(300, 250, 200, 100));
        dragBy({-46, 20});
        QCOMPARE(box->pos(), QPoint(0, 70));
        QCOMPARE(guides(), 1);
        dragBy({96, 72}, Qt::AltModifier);
        QCOMPARE(box->pos(), QPoint(146, 122));
        QCOMPARE(guides(), 0);
        dragBy({250, 20});
        QCOMPARE(guides(), 1);
        // One that goes while it is held, as when its time is over, is let go.
        QSignalSpy releases(editor.adapter, &WatermarkMaskAdapter::itemReleased);
        editor.adapter->setItemVisible(item, false);
        QCOMPARE(guides(), 0);
        QCOMPARE(releases.count(), 1);
        editor.adapter->setItemVisible(item, true);
        dragBy({250, 20});
        QTest::mouseRelease(box, Qt::LeftButton);
        QCOMPARE(guides(), 0);
        QCOMPARE(releases.count(), 2);
    }

    void selectsAndRemoves()
    {
        BoxEditor editor;
        QVERIFY(editor.show());
        Item *first = editor.adapter->addTextItem();
        Item *second = editor.adapter->addDelogoItem();
        QTRY_VERIFY(second->widget()->isVisible());
        QSignalSpy selections(editor.adapter, &WatermarkMaskAdapter::itemSelectItemChanged);
        QSignalSpy removals(editor.adapter, &WatermarkMaskAdapter::itemRemoved);
        QTest::mouseClick(first->widget(), Qt::LeftButton);
        editor.adapter->selectItem(first);
        QCOMPARE(selections.count(), 1);
        QTest::mouseClick(second->widget(), Qt::LeftButton);
        QVERIFY(!first->isSelected() && second->isSelected());
        QCOMPARE(second->widget()->property("itemSelected").toBool(), true);

        const QPointer<DrmWidget> box = second->widget();
        editor.adapter->removeItem(second);
        QCOMPARE(selections.count(), 3);
        QVERIFY(!editor.adapter->selectedItem());
        QCOMPARE(removals.count(), 1);
        QTRY_VERIFY(!box);
        editor.adapter->removeItem(second);
        editor.adapter->selectItem(second);
        QCOMPARE(editor.adapter->itemRect(second), QRectF());
        QCOMPARE(removals.count() + selections.count(), 4);
    }

    void refusesWhatIsNoPicture()
    {
        BoxEditor editor;
        QVERIFY(editor.show());
        const QTemporaryDir folder;
        const QString path = folder.filePath("no picture.png"_s);
        writeTestFile(path, "text");
        QString text;
        whenModal("MediaMessageBox", [&text](QWidget &box) {
            text = child<QLabel>(box, "lblText")->text();
            press(box, "btnOK");
        });
        QVERIFY(!editor.adapter->addImageItem(path));
        QCOMPARE(text, "无法打开图片"_s);

        QImage tall(50, 480, QImage::Format_RGB32);
        tall.fill(Qt::red);
        QVERIFY(tall.save(path));
        Item *item = editor.adapter->addImageItem(path);
        QVERIFY(item);
        QTRY_COMPARE(item->widget()->size(), QSize(6, 60));

        // A camera that was held upright notes that beside the picture.
        const QString photo = folder.filePath("photo.jpg"_s);
        QVERIFY(tall.save(photo));
        QByteArray bytes = contentOf(photo);
        constexpr int startOfImage = 2;
        bytes.insert(startOfImage, QByteArray::fromHex("ffe1002245786966000049492a0008000000"
                                                       "010012010300010000000600000000000000"));
        writeTestFile(photo, bytes);
        item = editor.adapter->addImageItem(photo);
        QTRY_COMPARE(item->widget()->size(), QSize(80, 8));
    }

    void boxesStayInThePicture()
    {
        BoxEditor editor;
        Item *item = editor.adapter->addTextItem();
        const QRectF rect(301, 103, 77, 45);
        editor.adapter->setItemRect(item, rect);
        QVERIFY(editor.show());
        QSignalSpy changes(editor.adapter, &WatermarkMaskAdapter::itemRectChanged);
        editor.surface->resize(111, 83);
        editor.surface->resize(surfaceRect.size());
        QCOMPARE(item->widget()->geometry(), QRect(151, 52, 39, 23));
        QCOMPARE(changes.count(), 0);
        dragWidget(item->widget(), QPoint(170, 60), {QPoint(180, 60)});
        // Moved by whole pixels of the surface, in its own size.
        QCOMPARE(changes.last()[1].toRectF(), QRectF(322, 104, 77, 45));
        QCOMPARE(editor.adapter->itemRect(item), QRectF(322, 104, 77, 45));
        dragWidget(item->widget(), QPoint(180, 60), {QPoint(600, 60)});
        QCOMPARE(editor.adapter->itemRect(item), QRectF(723, 104, 77, 45));
    }
};

QTEST_MAIN(TestMask)
#include "tst_mask.moc"
