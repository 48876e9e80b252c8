// SPDX-License-Identifier: MIT
#include "mask/maskededitor.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapter.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapteritem.h"
#include "support/casename.h"
#include "support/testfile.h"

namespace {

using Item = WatermarkMaskAdapterItem;

struct BoxEditor : MaskedEditor
{
    BoxEditor() { adapter->setVideoSize(videoSize); }

    WatermarkMaskAdapter *adapter = new WatermarkMaskAdapter(surface, &dialog);
};

} // namespace

/// The boxes of marks over a picture.
class TestWatermarkMask : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Look::apply(); }

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

QTEST_MAIN(TestWatermarkMask)
#include "tst_watermarkmask.moc"
