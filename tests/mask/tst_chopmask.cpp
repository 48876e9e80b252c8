// SPDX-License-Identifier: MIT
#include "mask/maskededitor.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskadapter.h"
#include "support/casename.h"

namespace {

struct CropEditor : MaskedEditor
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

} // namespace

/// The frame that crops a picture.
class TestChopMask : public QObject
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
            overlay = MaskedEditor::overlay();
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
        const QImage picture = MaskedEditor::overlay()->grab().toImage();
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
};

QTEST_MAIN(TestChopMask)
#include "tst_chopmask.moc"
