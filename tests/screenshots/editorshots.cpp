// SPDX-License-Identifier: MIT
#include "screenshots/editorshots.h"

#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"
#include "MediaKits/FunctionPage/VideoBeautify/videobeautydialog.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbingfunctionpage.h"
#include "MediaKits/FunctionPage/VideoDubbing/videodubbingdialog.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiffunctionpage.h"
#include "MediaKits/FunctionPage/VideoGif/mutigifcutdialog.h"
#include "MediaKits/FunctionPage/VideoShot/frameshotdialog.h"
#include "MediaKits/FunctionPage/VideoShot/mediashotfunctionpage.h"
#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/FunctionPage/VideoWatermark/texteditdialog.h"
#include "MediaKits/FunctionPage/VideoWatermark/videowatermarkdialog.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "screenshots/stage.h"
#include "support/guisupport.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimeEdit>
#include <QTreeWidget>

#include <algorithm>

namespace {

const int longName = 60;         // letters of a path
const int convertAtMost = 60000; // ms
const int filmMs = 600000;

void showAudioCut(Stage &stage)
{
    auto *dialog = new AudioCutDialog(&stage.window());
    dialog->start(stage.longestFilm(), {});
    dialog->setDuration(filmMs);
    stage.show(dialog);
    Stage::pausePlayer(*dialog);
}

QSharedPointer<MediaInfoData> filmInfo()
{
    const auto info = QSharedPointer<MediaInfoData>::create();
    info->format = QSharedPointer<MediaFormatInfo>::create();
    info->format->duration = filmMs;
    info->video = QSharedPointer<VEncParam>::create();
    info->video->width = 640;
    info->video->height = 360;
    info->video->frameRate = 25;
    return info;
}

template<class Dialog>
Dialog *showEditor(Stage &stage, const QString &file)
{
    auto *dialog = new Dialog(&stage.window());
    dialog->showMedium(file, *filmInfo());
    stage.show(dialog);
    Stage::awaitPicture(*dialog);
    return dialog;
}

template<class Dialog>
Dialog *showVideoCut(Stage &stage, const QString &file)
{
    auto *dialog = showEditor<Dialog>(stage, file);
    Stage::child<QSpinBox>(*dialog, "sbX").setValue(120);
    Stage::child<QSpinBox>(*dialog, "sbY").setValue(60);
    Stage::child<QSpinBox>(*dialog, "sbW").setValue(400);
    Stage::child<QSpinBox>(*dialog, "sbH").setValue(240);
    return dialog;
}

// The third of the ready-made looks, on a picture turned to the right.
VideoBeautyDialog *showBeauty(Stage &stage, const char *tab)
{
    auto *dialog = showEditor<VideoBeautyDialog>(stage, stage.longestFilm());
    Stage::child<QPushButton>(*dialog, "btnRotateCW").click();
    Stage::child<QListWidget>(*dialog, "lwdtFilters").setCurrentRow(2);
    Stage::child<QPushButton>(*dialog, tab).click();
    Stage::pausePlayer(*dialog);
    return dialog;
}

void showBeautyDetails(Stage &stage)
{
    VideoBeautyDialog *dialog = showBeauty(stage, "btnFilter");
    Stage::child<QPushButton>(*dialog, "btnHFilter").click();
}

// Music for a film, each a minute behind the last.
void showDubbing(Stage &stage, int count)
{
    auto *dialog = showEditor<VideoDubbingDialog>(stage, stage.longestFilm());
    ConvertTaskParam conversion;
    conversion.inputFile = stage.longestFilm();
    dialog->setConversion(conversion);
    QVariantList musics;
    for (int i = 0; i < count; ++i) {
        const QString &file = stage.media()[i % stage.media().size()];
        musics += QVariant::fromValue(
            QSharedPointer<QVariantMap>::create(QVariantMap{{"filePath"_s, file},
                                                            {"duration"_s, 95000},
                                                            {"startTime"_s, 60000 * i},
                                                            {"volume"_s, 0.8F}}));
    }
    if (count > 0)
        dialog->setSettings({{"musics"_s, musics}, {"videoVolume"_s, 0.5F}, {"isMax"_s, true}});
    auto *bar = dialog->findChild<QProgressBar *>("pbVideo"_s);
    if (!QTest::qWaitFor([bar] { return bar->format().endsWith("dB"_s); }, convertAtMost))
        qWarning("the film was not measured");
    Stage::pausePlayer(*dialog);
}

// Two single moments, or a series of many.
void showMoments(Stage &stage, bool series, bool stitched)
{
    auto *dialog = new FrameShotDialog(&stage.window());
    dialog->showSource(stage.longestFilm(), filmInfo());
    stage.show(dialog);
    Stage::awaitPicture(*dialog);
    Stage::pausePlayer(*dialog);
    Stage::child<QCheckBox>(*dialog, "cbIsPiiic").setChecked(stitched);
    Stage::child<QPushButton>(*dialog, series ? "btnSequenceSelect" : "btnOneSelect").click();
    Stage::child<QSpinBox>(*dialog, "sbInterval").setValue(30);
    auto &add = Stage::child<QPushButton>(*dialog, "btnFragmentAdd");
    add.click();
    const auto *images = &Stage::child<QListWidget>(*dialog, "listWidget");
    const auto isDone = [images] {
        const auto labels = images->findChildren<QLabel *>("lblImage"_s);
        return std::all_of(labels.begin(), labels.end(), [](const QLabel *label) {
            return !label->pixmap(Qt::ReturnByValue).isNull();
        });
    };
    if (!QTest::qWaitFor(isDone, convertAtMost))
        qWarning("the small pictures take too long");
}

// A row that has nothing to do yet, one that is ready, and one that is done.
void showShotRows(Stage &stage)
{
    auto &page = stage.open<MediaShotFunctionPage>("btnShot");
    page.clear();
    page.addFiles({stage.media().first(), stage.longestFilm(), stage.media().first()});
    auto &list = Stage::child<QListWidget>(page, "convertList");
    const auto shoot = [&list](int index, bool starts) {
        whenModal("FrameShotDialog", [](QWidget &dialog) {
            Stage::child<QPushButton>(dialog, "btnFragmentAdd").click();
            Stage::child<QPushButton>(dialog, "btnOk").click();
        });
        QWidget *row = list.itemWidget(list.item(index));
        auto &edit = Stage::child<QPushButton>(*row, "btnShotSet");
        if (!QTest::qWaitFor([&edit] { return edit.isEnabled(); }))
            qWarning("the file was not read");
        edit.click();
        if (!starts)
            return;
        Stage::child<QPushButton>(*row, "btnConvert").click();
        auto &done = Stage::child<QPushButton>(*row, "btnOpenDir");
        if (!QTest::qWaitFor([&done] { return done.isVisibleTo(done.window()); }, convertAtMost))
            qWarning("the shots take too long");
    };
    shoot(1, false);
    shoot(2, true);
}

QVariant shownMark(const QString &filter, const QString &text, const QRectF &rect)
{
    QFont font(QStringLiteral("微软雅黑"));
    font.setPixelSize(48);
    auto mark = QSharedPointer<QVariantMap>::create();
    *mark = {{"filter"_s, filter},
             {"text"_s, text},
             {"rect"_s, rect},
             {"font"_s, font},
             {"fontcolor"_s, QColor(Qt::white)},
             {"opacity"_s, 0.8},
             {"startTime"_s, 0},
             {"endTime"_s, filmMs}};
    return QVariant::fromValue(mark);
}

VideoWatermarkDialog *showMarks(Stage &stage, int count)
{
    auto *dialog = showEditor<VideoWatermarkDialog>(stage, stage.longestFilm());
    QVariantList marks;
    for (int i = 0; i < count; ++i) {
        marks +=
            shownMark("drawtext"_s, "我们的假期 2026 — Sommerferien am Meer, 第 %1 天"_s.arg(i + 1),
                      QRectF(40, 30.0 * i + 20, 560, 60));
        marks += shownMark("delogo"_s, "去水印"_s, QRectF(480, 20, 140, 60));
    }
    dialog->setMarks(marks);
    if (count > 0)
        Stage::child<QListWidget>(*dialog, "listWidget").setCurrentRow(0);
    Stage::pausePlayer(*dialog);
    return dialog;
}

void showMarksPreviewed(Stage &stage)
{
    Stage::child<QPushButton>(*showMarks(stage, 1), "btnPreview").click();
}

void showTextEdit(Stage &stage)
{
    auto *dialog = new TextEditDialog(&stage.window());
    dialog->setText("我们的假期 2026\nSommerferien"_s);
    stage.show(dialog);
}

void showFragments(Stage &stage, const QString &file, int count)
{
    auto *dialog = showVideoCut<MutiVideoCutDialog>(stage, file);
    for (int second = 60; second <= count * 60; second += 60) {
        Stage::child<QTimeEdit>(*dialog, "tedtEnd").setTime(QTime(0, 0).addSecs(second + 45));
        Stage::child<QTimeEdit>(*dialog, "tedtStart").setTime(QTime(0, 0).addSecs(second));
        Stage::child<QPushButton>(*dialog, "btnFragmentAdd").click();
    }
    Stage::pausePlayer(*dialog);
}

// More fragments than there is room for, of a file with a long name.
void showManyFragments(Stage &stage)
{
    for (const QString &file : stage.media()) {
        if (file.size() > longName)
            showFragments(stage, file, 9);
    }
}

// Marks three GIFs of different sizes, the last of them in the fields.
void showGifs(Stage &stage, const QString &file)
{
    auto *dialog = showEditor<MutiGifCutDialog>(stage, file);
    for (int second = 60; second <= 180; second += 60) {
        Stage::child<QTimeEdit>(*dialog, "tedtEnd").setTime(QTime(0, 0).addSecs(second + 5));
        Stage::child<QTimeEdit>(*dialog, "tedtStart").setTime(QTime(0, 0).addSecs(second));
        if (second > 60)
            Stage::child<QSpinBox>(*dialog, "sbW").setValue(second * 2);
        Stage::child<QPushButton>(*dialog, "btnFragmentAdd").click();
    }
    auto &bytes = Stage::child<QLabel>(*dialog, "lblGifBytes");
    if (!QTest::qWaitFor([&bytes] { return bytes.text().startsWith("约"_s); }, convertAtMost))
        qWarning("the size was not estimated");
    Stage::pausePlayer(*dialog);
}

// Marks fragments of half a second each, one behind the other, or of the whole.
void markFragments(QTreeWidget &tree, int source, int count, bool whole,
                   const char *editor = "MutiVideoCutDialog")
{
    whenModal(editor, [=](QWidget &dialog) {
        for (int i = 1; i <= count; ++i) {
            if (!whole) {
                Stage::child<QTimeEdit>(dialog, "tedtEnd").setTime(QTime(0, 0).addMSecs(i * 500));
                Stage::child<QTimeEdit>(dialog, "tedtStart")
                    .setTime(QTime(0, 0).addMSecs((i - 1) * 500));
                Stage::child<QSpinBox>(dialog, "sbW").setValue(400);
            }
            Stage::child<QPushButton>(dialog, "btnFragmentAdd").click();
        }
        Stage::child<QPushButton>(dialog, "btnOk").click();
    });
    QWidget *row = tree.itemWidget(tree.topLevelItem(source), 0);
    auto &add = Stage::child<QPushButton>(*row, "btnAddItem");
    if (!QTest::qWaitFor([&add] { return add.isEnabled(); }))
        qWarning("the file was not read");
    add.click();
}

// Of the fragments one is done, one runs, one waits.
template<class Page>
void showFragmentStates(Stage &stage, const char *button, const char *editor)
{
    auto &page = stage.open<Page>(button);
    page.clear();
    page.addFiles({stage.media().first(), stage.longestFilm()});
    auto &tree = Stage::child<QTreeWidget>(page, "convertTree");
    markFragments(tree, 0, 1, false, editor);
    markFragments(tree, 1, 1, true, editor);
    page.on_btnConvertAll_clicked();
    auto &done = Stage::child<QPushButton>(*tree.itemWidget(tree.topLevelItem(0)->child(0), 0),
                                           "btnOpenDir");
    if (!QTest::qWaitFor([&done] { return done.isVisibleTo(done.window()); }, convertAtMost))
        qWarning("the conversion takes too long");
    markFragments(tree, 0, 1, false, editor);
}

} // namespace

QVector<Shot> editorShots()
{
    QVector<Shot> shots = {
        {"cut-fragments"_s, [](Stage &stage) { showFragments(stage, stage.longestFilm(), 3); }},
        {"cut-fragments-many"_s, showManyFragments},
        {"cut-states"_s,
         [](Stage &stage) {
             showFragmentStates<MediaCutFunctionPage>(stage, "btnCutter", "MutiVideoCutDialog");
         }},
        {"gif-fragments"_s, [](Stage &stage) { showGifs(stage, stage.longestFilm()); }},
        {"gif-playing"_s,
         [](Stage &stage) { showEditor<MutiGifCutDialog>(stage, stage.longestFilm()); }},
        {"gif-states"_s,
         [](Stage &stage) {
             showFragmentStates<MediaGifFunctionPage>(stage, "btnGif", "MutiGifCutDialog");
         }},
        {"cut-playing"_s,
         [](Stage &stage) { showVideoCut<VideoCutDialog>(stage, stage.longestFilm()); }},
        {"audio-cut"_s, showAudioCut},
        {"beauty-video"_s, [](Stage &stage) { showBeauty(stage, "btnVideo"); }},
        {"beauty-looks"_s, [](Stage &stage) { showBeauty(stage, "btnFilter"); }},
        {"beauty-details"_s, showBeautyDetails},
        {"dubbing-empty"_s, [](Stage &stage) { showDubbing(stage, 0); }},
        {"dubbing"_s, [](Stage &stage) { showDubbing(stage, 2); }},
        {"dubbing-many"_s, [](Stage &stage) { showDubbing(stage, 9); }},
        {"dubbing-page"_s,
         [](Stage &stage) { stage.fill<MediaDubbingFunctionPage>("btnDubbing"); }},
        {"shot-one"_s, [](Stage &stage) { showMoments(stage, false, false); }},
        {"shot-series"_s, [](Stage &stage) { showMoments(stage, true, false); }},
        {"shot-stitched"_s, [](Stage &stage) { showMoments(stage, true, true); }},
        {"shot-states"_s, showShotRows},
        {"watermark-empty"_s, [](Stage &stage) { showMarks(stage, 0); }},
        {"watermark-marks"_s, [](Stage &stage) { showMarks(stage, 1); }},
        {"watermark-many"_s, [](Stage &stage) { showMarks(stage, 8); }},
        {"watermark-preview"_s, showMarksPreviewed},
        {"watermark-text"_s, showTextEdit},
    };
    for (Shot &shot : shots)
        shot.standsAlone = true;
    return shots;
}
