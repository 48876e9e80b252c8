// SPDX-License-Identifier: MIT
#include "screenshots/shots.h"

#include "catalogue/encparamcatalog.h"
#include "controls/popupplacement.h"
#include "controls/toast.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/AudioConvert/audioconvertfunctionpage.h"
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/historyrecordcovertdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/Intake/mediaimportdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/convertspeedswitchmenu.h"
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsdialog.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiffunctionpage.h"
#include "MediaKits/FunctionPage/VideoGif/mutigifcutdialog.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefinishtipsdialog.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistitemwidget.h"
#include "MediaKits/MainWindow/aboutmedialog.h"
#include "MediaKits/MainWindow/customerservice.h"
#include "MediaKits/MainWindow/exittipsdialog.h"
#include "MediaKits/MainWindow/feedbackdialog.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "MediaKits/Player/mediapreviewwnd.h"
#include "screenshots/stage.h"
#include "support/guisupport.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QThread>
#include <QTimeEdit>
#include <QTreeWidget>

#include <algorithm>

namespace {

const int manyRecords = 500;
const int longName = 60; // letters of a path
const int doneRows = 3;
const int convertAtMost = 60000; // ms
// An import that outlasts the wait for its picture.
const int slowFile = 100; // ms
const int slowFiles = 50;
const int cutDurationMs = 600000;

QString longText()
{
    return "一段很长很长的文件名，用来检查文字放不下时的样子 with Latin words in it "_s.repeated(3);
}

template<class Dialog>
void showDialog(Stage &stage)
{
    stage.show(new Dialog(&stage.window()));
}

template<class Page>
Page &openPage(Stage &stage, const char *button)
{
    stage.press(button);
    return *stage.window().findChild<Page *>();
}

template<class Page>
void fillPage(Stage &stage, const char *button)
{
    openPage<Page>(stage, button).addFiles(stage.media());
}

void showCompressSettings(Stage &stage, bool advanced)
{
    MediaInfoData info;
    info.format = QSharedPointer<MediaFormatInfo>::create();
    info.format->fileSize = 734003200; // 700 MiB
    info.format->duration = cutDurationMs;
    info.video = QSharedPointer<VEncParam>::create();
    info.video->width = 1920;
    info.video->height = 1080;
    info.video->bitrate = 9000;
    info.audios.append(QSharedPointer<AEncParam>::create());
    auto *dialog = new CompressSettingsDialog(&stage.window());
    dialog->setMediaInfo(info);
    const auto settings = QSharedPointer<CompressSettingsParam>::create();
    settings->advanced = advanced;
    settings->rate = 0.6;
    dialog->setParam(settings);
    stage.show(dialog);
}

// The second input has a part of its time and of its picture marked.
void showCutInputs(Stage &stage)
{
    auto &page = openPage<MediaMergeFunctionPage>(stage, "btnMerger");
    const auto rows = page.findChildren<MediaMergeListItemWidget *>();
    if (rows.size() < 2)
        return;
    const auto input = MediaMergeListItemWidget::inputOf(rows[1]->item());
    input->timeRange = QSharedPointer<TimeSpan>::create(TimeSpan{1000, 2000});
    input->cropRect = QSharedPointer<CropBox>::create(CropBox{10, 20, 160, 120});
    rows[1]->showSelection();
}

void startConverting(Stage &stage)
{
    auto &page = openPage<MediaConvertFunctionPage>(stage, "btnConverter");
    page.on_btnConvertAll_clicked();
    // Some rows are done then, while the longest still runs.
    const auto rows = page.findChildren<QPushButton *>("btnOpenDir"_s);
    const bool some = QTest::qWaitFor(
        [&rows] {
            return std::count_if(rows.begin(), rows.end(), [](const QPushButton *button) {
                       return button->isVisibleTo(button->window());
                   }) >= doneRows;
        },
        convertAtMost);
    if (!some)
        qWarning("the conversions take too long");
}

void showFormats(Stage &stage, const char *tab)
{
    EncParamHistory::instance().touch(EncParamCatalog::defaultHdId);
    EncParamHistory::instance().touch(EncParamCatalog::defaultAudioId);
    auto *dialog = new MediaFormatDialog(EncParamCatalog::defaultHdId, false, &stage.window());
    placeAbove(dialog, &Stage::child<QPushButton>(stage.window(), "btnConvertAll"), Qt::AlignRight,
               4);
    stage.show(dialog);
    Stage::child<QPushButton>(*dialog, tab).click();
}

void showHistory(Stage &stage)
{
    for (int i = 0; i < manyRecords; ++i) {
        const QString name = i % 3 == 0 ? longText() : "假期.mp4"_s;
        HistoryRecord::instance().add(
            {"2026.03.01 09:30"_s, "/home/video/"_s + name, "/home/output/"_s + name});
    }
    showDialog<HistoryRecordCovertDialog>(stage);
}

void showSpeeds(Stage &stage)
{
    auto *menu = new ConvertSpeedSwitchMenu(&stage.window());
    menu->setSpeedType(ConvertSpeedSwitchMenu::FastSpeed);
    placeBelow(menu, &Stage::child<QPushButton>(stage.window(), "btnSpeedSwitch"), Qt::AlignHCenter,
               4);
    stage.show(menu);
}

void showImport(Stage &stage)
{
    auto *dialog = new MediaImportDialog(&stage.window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QStringList files = stage.media();
    while (files.size() < slowFiles)
        files += longText();
    dialog->start(files, [](const QString &) { QThread::msleep(slowFile); });
}

void showMessage(Stage &stage, const QString &text)
{
    auto *box = new MediaMessageBox(&stage.window());
    box->setText(text);
    stage.show(box);
}

void showFailure(Stage &stage)
{
    const TaskFailure failure = {"坏文件.mp4: moov atom not found"_s,
                                 QString(longText() + u'\n').repeated(20).split(u'\n')};
    stage.show(new FailureDetailsDialog(failure, &stage.window()));
}

void showFeedback(Stage &stage, const QString &text)
{
    auto *dialog = new FeedbackDialog(&stage.window());
    stage.show(dialog);
    Stage::child<QPlainTextEdit>(*dialog, "plainTextEdit").setPlainText(text);
}

QString longestFilm(const Stage &stage)
{
    return stage.media().filter(".avi"_s).value(0);
}

void awaitPicture(QWidget &window)
{
    auto *player = window.findChild<CSVideoPlayer *>();
    QSignalSpy progress(player, &CSVideoPlayer::progressChanged);
    for (int i = 0; i < 3; ++i)
        progress.wait();
}

// A picture that keeps still: playing, then paused.
void pausePlayer(QWidget &window)
{
    awaitPicture(window);
    Stage::child<QPushButton>(window, "btnPlay").click();
}

void showPreview(Stage &stage)
{
    for (const QString &file : stage.media())
        MediaPreviewWnd::addFinished(file, {});
    MediaPreviewWnd::showFile(longestFilm(stage), {});
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->inherits("MediaPreviewWnd"))
            pausePlayer(*window);
    }
}

void showAudioCut(Stage &stage)
{
    auto *dialog = new AudioCutDialog(&stage.window());
    dialog->start(longestFilm(stage), {});
    dialog->setDuration(cutDurationMs);
    stage.show(dialog);
    pausePlayer(*dialog);
}

template<class Dialog>
Dialog *showEditor(Stage &stage, const QString &file)
{
    MediaInfoData info;
    info.format = QSharedPointer<MediaFormatInfo>::create();
    info.format->duration = cutDurationMs;
    info.video = QSharedPointer<VEncParam>::create();
    info.video->width = 640;
    info.video->height = 360;
    info.video->frameRate = 25;
    auto *dialog = new Dialog(&stage.window());
    dialog->showMedium(file, info);
    stage.show(dialog);
    awaitPicture(*dialog);
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

void showFragments(Stage &stage, const QString &file, int count)
{
    auto *dialog = showVideoCut<MutiVideoCutDialog>(stage, file);
    for (int second = 60; second <= count * 60; second += 60) {
        Stage::child<QTimeEdit>(*dialog, "tedtEnd").setTime(QTime(0, 0).addSecs(second + 45));
        Stage::child<QTimeEdit>(*dialog, "tedtStart").setTime(QTime(0, 0).addSecs(second));
        Stage::child<QPushButton>(*dialog, "btnFragmentAdd").click();
    }
    pausePlayer(*dialog);
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
    pausePlayer(*dialog);
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
    auto &page = openPage<Page>(stage, button);
    page.clear();
    page.addFiles({stage.media().first(), longestFilm(stage)});
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

void showService(Stage &stage)
{
    ProductContact contact;
    contact.serviceNumber = "12345678"_s;
    contact.phone = "010-12345678"_s;
    auto *popup = new CustomerService(&stage.window(), contact);
    popup->fitContent();
    popup->move(stage.window().mapToGlobal(QPoint(700, 60)));
    popup->show();
}

void showToast(Stage &stage)
{
    Toast::showToast("请先添加文件"_s, 2000, Toast::centred, Toast::centred, &stage.window());
}

} // namespace

const QVector<Shot> &allShots()
{
    static const QVector<Shot> shots = {
        {"home"_s, [](Stage &) {}},
        {"menu"_s, [](Stage &stage) { stage.press("btnMore"); }},
        {"service"_s, showService},
        {"exit"_s, showDialog<ExitTipsDialog>},
        {"about"_s, showDialog<AboutMeDialog>},
        {"feedback"_s, [](Stage &stage) { showFeedback(stage, QString()); }},
        {"feedback-long"_s, [](Stage &stage) { showFeedback(stage, longText().repeated(3)); }},
        {"page-to-come"_s, [](Stage &stage) { stage.press("btnBeautifier"); }},
        {"convert-empty"_s, [](Stage &stage) { stage.press("btnConverter"); }},
        {"convert-rows"_s,
         [](Stage &stage) { fillPage<MediaConvertFunctionPage>(stage, "btnConverter"); }},
        {"compress-empty"_s, [](Stage &stage) { stage.press("btnCompressor"); }},
        {"compress-rows"_s,
         [](Stage &stage) { fillPage<MediaCompressFunctionPage>(stage, "btnCompressor"); }},
        {"compress-settings"_s, [](Stage &stage) { showCompressSettings(stage, false); }},
        {"compress-settings-own"_s, [](Stage &stage) { showCompressSettings(stage, true); }},
        {"cut-empty"_s, [](Stage &stage) { stage.press("btnCutter"); }},
        {"cut-rows"_s, [](Stage &stage) { fillPage<MediaCutFunctionPage>(stage, "btnCutter"); }},
        {"cut-fragments"_s, [](Stage &stage) { showFragments(stage, longestFilm(stage), 3); }},
        {"cut-fragments-many"_s, showManyFragments},
        {"cut-states"_s,
         [](Stage &stage) {
             showFragmentStates<MediaCutFunctionPage>(stage, "btnCutter", "MutiVideoCutDialog");
         }},
        {"cut-playing"_s,
         [](Stage &stage) { showVideoCut<VideoCutDialog>(stage, longestFilm(stage)); }},
        {"gif-empty"_s, [](Stage &stage) { stage.press("btnGif"); }},
        {"gif-rows"_s, [](Stage &stage) { fillPage<MediaGifFunctionPage>(stage, "btnGif"); }},
        {"gif-fragments"_s, [](Stage &stage) { showGifs(stage, longestFilm(stage)); }},
        {"gif-playing"_s,
         [](Stage &stage) { showEditor<MutiGifCutDialog>(stage, longestFilm(stage)); }},
        {"gif-states"_s,
         [](Stage &stage) {
             showFragmentStates<MediaGifFunctionPage>(stage, "btnGif", "MutiGifCutDialog");
         }},
        {"merge-empty"_s, [](Stage &stage) { stage.press("btnMerger"); }},
        {"merge-rows"_s,
         [](Stage &stage) { fillPage<MediaMergeFunctionPage>(stage, "btnMerger"); }},
        {"merge-cut"_s, showCutInputs},
        {"merge-finished"_s,
         [](Stage &stage) {
             stage.show(new MediaMergeFinishTipsDialog(
                 "/home/output/合并视频.mp4"_s, {{"海边的第二天.mkv：比源文件短 15 秒"_s}, {}},
                 &stage.window()));
         }},
        {"audio-rows"_s,
         [](Stage &stage) { fillPage<AudioConvertFunctionPage>(stage, "btnAudioConverter"); }},
        {"formats-recent"_s, [](Stage &stage) { showFormats(stage, "btnHistory"); }},
        {"formats-video"_s, [](Stage &stage) { showFormats(stage, "btnVideo"); }},
        {"formats-audio"_s, [](Stage &stage) { showFormats(stage, "btnAudio"); }},
        {"speeds"_s, showSpeeds},
        {"history-empty"_s, showDialog<HistoryRecordCovertDialog>},
        {"history-many"_s, showHistory},
        {"import"_s, showImport},
        {"message"_s, [](Stage &stage) { showMessage(stage, "文件不存在"_s); }},
        {"message-long"_s, [](Stage &stage) { showMessage(stage, longText()); }},
        {"message-format"_s, showDialog<MediaFormatSetTipsDialog>},
        {"failure"_s, showFailure},
        {"toast"_s, showToast},
        {"audio-cut"_s, showAudioCut},
        {"convert-running"_s, startConverting},
        {"preview"_s, showPreview},
        {"home-smallest"_s,
         [](Stage &stage) {
             stage.press("btnHome");
             stage.window().resize(stage.window().minimumSize());
         }},
        {"home-largest"_s, [](Stage &stage) { stage.window().showMaximized(); }},
    };
    return shots;
}
