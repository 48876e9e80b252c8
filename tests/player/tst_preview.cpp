// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "MediaKits/Player/mediapreviewitemwidget.h"
#include "MediaKits/Player/mediapreviewwnd.h"
#include "resources/look.h"
#include "support/guisupport.h"
#include "support/testmedia.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QSlider>
#include <QtTest>

namespace {

constexpr int startLimitMs = 15000;

const QVariantMap &info()
{
    static const QVariantMap map{
        {"event"_s, "video_preview_view"_s},
        {"track"_s, QVariantMap{{"pageIndex"_s, 1}, {"video_preview_mode"_s, "自动"_s}}}};
    return map;
}

QWidget *previewWindow()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("MediaPreviewWnd"))
            return widget;
    }
    return nullptr;
}

void closeToasts()
{
    while (QWidget *toast = visibleWindow("Toast"))
        delete toast;
}

} // namespace

class TestPreview : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Look::apply();
        ClipPlan plan;
        plan.seconds = 10;
        makeClip(m_clip, plan);
        makeClip(m_other, plan);
        plan.width = 0;
        makeClip(m_sound, plan);
    }

    void init()
    {
        AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, true);
        AppIni::instance().setValue(AppIni::Key::PreviewVolume, 10);
    }

    void cleanup()
    {
        closeToasts();
        delete previewWindow();
    }

    void collectsWhatIsFinished()
    {
        MediaPreviewWnd::addFinished(m_clip, info());
        QTRY_VERIFY(previewWindow()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(previewWindow()));
        QTRY_COMPARE(toastText(), "当前音量:10"_s);
        closeToasts();
        QTRY_VERIFY_WITH_TIMEOUT(player()->isRunning(), startLimitMs);
        QCOMPARE(player()->fileName(), m_clip);
        QVERIFY(isMarked(0));
        QTRY_COMPARE_WITH_TIMEOUT(child<QSlider>(*previewWindow(), "sliderProgress")->maximum(),
                                  10000, startLimitMs);

        // A second one waits in the list; finished again, it still has one entry.
        MediaPreviewWnd::addFinished(m_sound, info());
        MediaPreviewWnd::addFinished(m_other, info());
        MediaPreviewWnd::addFinished(m_sound, info());
        QCOMPARE(list()->count(), 3);
        QCOMPARE(player()->fileName(), m_clip);
        QVERIFY(!isMarked(1));
        QTRY_VERIFY_WITH_TIMEOUT(child<QSlider>(*previewWindow(), "sliderProgress")->value() > 0,
                                 startLimitMs);
        shoot(*previewWindow(), "preview");

        MediaPreviewWnd::showFile(m_sound, info());
        QTRY_COMPARE(player()->fileName(), m_sound);
        QVERIFY(isMarked(2) && !isMarked(0));
        QTRY_VERIFY_WITH_TIMEOUT(player()->isRunning(), startLimitMs);
        QTRY_VERIFY_WITH_TIMEOUT(showsWave(), startLimitMs);

        press(*previewWindow(), "btnClose");
        QVERIFY(!previewWindow()->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!player()->isRunning(), startLimitMs);
        QCOMPARE(list()->count(), 3);
        QCOMPARE(list()->currentItem(), nullptr);
        // Without an entry, the window opens and nothing plays.
        MediaPreviewWnd::showFile(m_media.filePath("a.mp4"_s) + "/.."_s, info());
        QVERIFY(previewWindow()->isVisible());
        QVERIFY(!player()->isRunning());
    }

    void seeksAndChangesTheVolume()
    {
        MediaPreviewWnd::addFinished(m_clip, info());
        QTRY_VERIFY(previewWindow()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(previewWindow()));
        auto *slider = child<QSlider>(*previewWindow(), "sliderProgress");
        QTRY_COMPARE_WITH_TIMEOUT(slider->maximum(), 10000, startLimitMs);
        QTRY_VERIFY(!toastText().isEmpty());
        closeToasts();
        QTest::mouseClick(child(*previewWindow(), "btnPlay"), Qt::LeftButton); // pause
        for (const int tenth : {1, 9, 5, 7}) {
            const QPoint place(slider->width() * tenth / 10 + 3, slider->height() / 2);
            QTest::mouseClick(slider, Qt::LeftButton, Qt::NoModifier, place);
            QVERIFY(std::abs(slider->value() - tenth * 1000) < 500);
            const QString wanted = "00:00:0%1"_s.arg(tenth);
            QCOMPARE(child<QLabel>(*previewWindow(), "lblPos")->text(), wanted);
            QTRY_COMPARE_WITH_TIMEOUT(slider->value(), tenth * 1000, startLimitMs);
        }

        press(*previewWindow(), "btnVolume");
        QWidget *popup = nullptr;
        QTRY_VERIFY((popup = visibleWindow("VolumeDialog")));
        shoot(*popup, "volume");
        auto *volume = child<QSlider>(*popup, "sliderVolume");
        QCOMPARE(volume->maximum(), 200);
        volume->setValue(140);
        QCOMPARE(child<QLabel>(*popup, "lblVolume")->text(), "140%"_s);
        QCOMPARE(player()->volume(), 140);
        QCOMPARE(AppIni::instance().value(AppIni::Key::PreviewVolume).toInt(), 10);
        delete previewWindow();
        QCOMPARE(AppIni::instance().value(AppIni::Key::PreviewVolume).toInt(), 140);
    }

    void missingFiles()
    {
        const QString gone = m_media.filePath("gone.mp4"_s);
        QFile::copy(m_clip, gone);
        MediaPreviewWnd::addFinished(gone, info());
        MediaPreviewWnd::addFinished(m_other, info());
        QTRY_VERIFY(previewWindow()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(previewWindow()));
        closeToasts();
        list()->setCurrentItem(list()->item(1));
        QFile::remove(gone);
        list()->setCurrentItem(list()->item(0));
        QTRY_COMPARE(toastText(), "当前播放文件不存在"_s);
        closeToasts();
        QTRY_COMPARE(list()->count(), 1);
    }

    void choicesLast_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<bool>("opensLater");
        QTest::newRow("allow") << 0 << true;
        QTest::newRow("not this time") << 1 << true;
        QTest::newRow("off") << 2 << false;
    }

    void choicesLast()
    {
        QFETCH(int, choice);
        QFETCH(bool, opensLater);
        MediaPreviewWnd::showFile(m_clip, info());
        child<QComboBox>(*previewWindow(), "comboBox")->setCurrentIndex(choice);
        press(*previewWindow(), "btnClose");
        MediaPreviewWnd::addFinished(m_clip, info());
        QCoreApplication::processEvents();
        QCOMPARE(previewWindow()->isVisible(), choice == 0);
        QCOMPARE(list()->count(), 1);
        delete previewWindow();
        MediaPreviewWnd::addFinished(m_other, info());
        QCoreApplication::processEvents();
        QCOMPARE(previewWindow()->isVisible(), opensLater);
        QCOMPARE(child<QComboBox>(*previewWindow(), "comboBox")->currentIndex(),
                 opensLater ? 0 : 2);
    }

private:
    QListWidget *list() const { return child<QListWidget>(*previewWindow(), "lwIconPlaylist"); }
    CSVideoPlayer *player() const { return previewWindow()->findChild<CSVideoPlayer *>(); }
    bool isMarked(int entry) const
    {
        return list()->itemWidget(list()->item(entry))->property("isPlaying").toBool();
    }

    // The wave's grey, a whole column of it somewhere.
    bool showsWave() const
    {
        const QImage shown = screenPart(*player());
        int most = 0;
        for (int x = 0; x < shown.width(); x++) {
            int grey = 0;
            for (int y = 0; y < shown.height(); y++) {
                const QColor colour = shown.pixelColor(x, y);
                grey += std::abs(colour.red() - 0x93) < 16 && std::abs(colour.blue() - 0x99) < 16;
            }
            most = std::max(most, grey);
        }
        return most > 8;
    }

    QTemporaryDir m_media;
    QString m_clip = m_media.filePath("a.mp4"_s);
    QString m_other = m_media.filePath("b.mp4"_s);
    QString m_sound = m_media.filePath("Trip.2024.mp3"_s);
};

QTEST_MAIN(TestPreview)
#include "tst_preview.moc"
