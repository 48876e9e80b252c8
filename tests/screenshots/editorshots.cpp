// SPDX-License-Identifier: MIT
#include "screenshots/editorshots.h"

#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"
#include "MediaKits/FunctionPage/VideoBeautify/videobeautydialog.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "MediaKits/FunctionPage/VideoWatermark/mark.h"
#include "MediaKits/FunctionPage/VideoWatermark/texteditdialog.h"
#include "MediaKits/FunctionPage/VideoWatermark/videowatermarkdialog.h"
#include "MediaKits/MediaInfo/mediainfodata.h"
#include "screenshots/stage.h"
#include "support/guisupport.h"

#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimeEdit>
#include <QTreeWidget>

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

template<class Dialog>
Dialog *showEditor(Stage &stage, const QString &file)
{
    MediaInfoData info;
    info.format = QSharedPointer<MediaFormatInfo>::create();
    info.format->duration = filmMs;
    info.video = QSharedPointer<VEncParam>::create();
    info.video->width = 640;
    info.video->height = 360;
    info.video->frameRate = 25;
    auto *dialog = new Dialog(&stage.window());
    dialog->showMedium(file, info);
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

// Marks fragments of half a second each, one behind the other, or of the whole.
void markFragments(QTreeWidget &tree, int source, int count, bool whole)
{
    whenModal("MutiVideoCutDialog", [=](QWidget &dialog) {
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
void showFragmentStates(Stage &stage)
{
    auto &page = stage.open<MediaCutFunctionPage>("btnCutter");
    page.clear();
    page.addFiles({stage.media().first(), stage.longestFilm()});
    auto &tree = Stage::child<QTreeWidget>(page, "convertTree");
    markFragments(tree, 0, 1, false);
    markFragments(tree, 1, 1, true);
    page.on_btnConvertAll_clicked();
    auto &done = Stage::child<QPushButton>(*tree.itemWidget(tree.topLevelItem(0)->child(0), 0),
                                           "btnOpenDir");
    if (!QTest::qWaitFor([&done] { return done.isVisibleTo(done.window()); }, convertAtMost))
        qWarning("the conversion takes too long");
    markFragments(tree, 0, 1, false);
}

} // namespace

QVector<Shot> editorShots()
{
    QVector<Shot> shots = {
        {"cut-fragments"_s, [](Stage &stage) { showFragments(stage, stage.longestFilm(), 3); }},
        {"cut-fragments-many"_s, showManyFragments},
        {"cut-states"_s, showFragmentStates},
        {"cut-playing"_s,
         [](Stage &stage) { showVideoCut<VideoCutDialog>(stage, stage.longestFilm()); }},
        {"audio-cut"_s, showAudioCut},
        {"beauty-video"_s, [](Stage &stage) { showBeauty(stage, "btnVideo"); }},
        {"beauty-looks"_s, [](Stage &stage) { showBeauty(stage, "btnFilter"); }},
        {"beauty-details"_s, showBeautyDetails},
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
