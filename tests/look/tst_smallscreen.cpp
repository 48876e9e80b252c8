// SPDX-License-Identifier: MIT
#include "controls/scrollpanel.h"
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"
#include "MediaKits/FunctionPage/VideoBeautify/videobeautydialog.h"
#include "MediaKits/FunctionPage/VideoDubbing/videodubbingdialog.h"
#include "MediaKits/FunctionPage/VideoGif/mutigifcutdialog.h"
#include "MediaKits/FunctionPage/VideoShot/frameshotdialog.h"
#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/FunctionPage/VideoWatermark/videowatermarkdialog.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "resources/look.h"
#include "support/guisupport.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLayout>
#include <QListWidget>
#include <QScrollBar>
#include <QTest>

#include <functional>

namespace {

using Maker = std::function<EditorDialog *()>;

// A notebook's screen at twice the usual size.
const QSize smallScreen(683, 384);

QString nameOf(const QWidget &widget)
{
    return QLatin1String(widget.metaObject()->className()) + u' ' + widget.objectName();
}

// What lies over its neighbour or beyond its parent, somewhere below `parent`; empty for nothing.
QString crowded(const QWidget &parent, bool isScrolled = false)
{
    QVector<const QWidget *> seen;
    const auto children = parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget *widget : children) {
        if (widget->isVisible() && !widget->isWindow())
            seen += widget;
    }
    for (const QWidget *widget : seen) {
        if (!isScrolled && !parent.rect().contains(widget->geometry()))
            return nameOf(*widget) + " leaves "_s + nameOf(parent);
        for (const QWidget *other : seen) {
            if (widget != other && widget->geometry().intersects(other->geometry()))
                return nameOf(*widget) + " covers "_s + nameOf(*other);
        }
        const bool isWhole = qobject_cast<const QAbstractSpinBox *>(widget) ||
                             qobject_cast<const QComboBox *>(widget) ||
                             qobject_cast<const QAbstractSlider *>(widget) ||
                             qobject_cast<const QListWidget *>(widget) ||
                             qobject_cast<const CSVideoPlayer *>(widget);
        if (const auto *panel = qobject_cast<const ScrollPanel *>(widget)) {
            const QString inside = crowded(*panel->viewport(), true);
            if (!inside.isEmpty())
                return inside;
        } else if (!isWhole) {
            const QString inside = crowded(*widget);
            if (!inside.isEmpty())
                return inside;
        }
    }
    return {};
}

template<class Dialog>
EditorDialog *make()
{
    return new Dialog;
}

EditorDialog *withMark()
{
    auto *dialog = new VideoWatermarkDialog;
    dialog->setVideoSize({640, 360});
    dialog->setMarks(sharedMarks({QVariantMap{{MarkKey::filter, MarkFilter::text},
                                              {MarkKey::text, "墨泉"_s},
                                              {MarkKey::rect, QRectF(10, 10, 90, 40)}}}));
    return dialog;
}

} // namespace

Q_DECLARE_METATYPE(Maker)

class TestSmallScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Look::apply(); }

    void editors_data()
    {
        QTest::addColumn<Maker>("maker");
        QTest::newRow("cut") << Maker(make<VideoCutDialog>);
        QTest::newRow("fragments") << Maker(make<MutiVideoCutDialog>);
        QTest::newRow("sound") << Maker(make<AudioCutDialog>);
        QTest::newRow("gif") << Maker(make<MutiGifCutDialog>);
        QTest::newRow("looks") << Maker(make<VideoBeautyDialog>);
        QTest::newRow("dubbing") << Maker(make<VideoDubbingDialog>);
        QTest::newRow("shots") << Maker(make<FrameShotDialog>);
        QTest::newRow("watermark") << Maker(withMark);
    }

    void editors()
    {
        QFETCH(Maker, maker);
        const std::unique_ptr<EditorDialog> dialog(maker());
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        for (const QSize &size : {dialog->size(), QSize(960, 540), smallScreen}) {
            dialog->resize(size);
            QTRY_COMPARE(dialog->size(), size);
            QTRY_COMPARE(crowded(*dialog), QString());
            const auto *panel = dialog->findChild<ScrollPanel *>();
            QCOMPARE(panel->horizontalScrollBar()->maximum(), 0);
            QVERIFY(size == smallScreen || panel->verticalScrollBar()->maximum() == 0);
        }
    }
};

QTEST_MAIN(TestSmallScreen)

#include "tst_smallscreen.moc"
