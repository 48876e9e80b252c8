// SPDX-License-Identifier: MIT
#include "screenshots/shots.h"

#include "catalogue/encparamcatalog.h"
#include "controls/popupplacement.h"
#include "controls/toast.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/updatedialog.h"
#include "MediaKits/AppUpdater/updatingdialog.h"
#include "MediaKits/FunctionPage/AudioConvert/audioconvertfunctionpage.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/failuredetailsdialog.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/historyrecordcovertdialog.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/Intake/mediaimportdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/convertspeedswitchmenu.h"
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifyfunctionpage.h"
#include "MediaKits/FunctionPage/VideoCompress/compresssettingsdialog.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiffunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefinishtipsdialog.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistitemwidget.h"
#include "MediaKits/FunctionPage/VideoShot/mediashotfunctionpage.h"
#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarkfunctionpage.h"
#include "MediaKits/MainWindow/aboutmedialog.h"
#include "MediaKits/MainWindow/customerservice.h"
#include "MediaKits/MainWindow/exittipsdialog.h"
#include "MediaKits/MainWindow/feedbackdialog.h"
#include "MediaKits/Player/mediapreviewwnd.h"
#include "screenshots/editorshots.h"
#include "screenshots/loginshots.h"
#include "screenshots/recordshots.h"
#include "screenshots/stage.h"
#include "support/utf8.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTcpServer>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <map>
#include <memory>
#include <string>

namespace {

const int manyRecords = 500;
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
    auto &page = stage.open<MediaMergeFunctionPage>("btnMerger");
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
    auto &page = stage.open<MediaConvertFunctionPage>("btnConverter");
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

void showPreview(Stage &stage)
{
    for (const QString &file : stage.media())
        MediaPreviewWnd::addFinished(file, {});
    MediaPreviewWnd::showFile(stage.longestFilm(), {});
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->inherits("MediaPreviewWnd"))
            Stage::pausePlayer(*window);
    }
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

AppUpdater &updaterFor(const char *program)
{
    static std::map<std::string, std::unique_ptr<AppUpdater>> made;
    auto &updater = made[program];
    if (!updater)
        updater = std::make_unique<AppUpdater>(UpdateSettings{{}, true, "key", utf8(program)});
    return *updater;
}

void showUpdate(Stage &stage, const UpdateRecord &record, bool isOurs)
{
    const QByteArray here = QFile::encodeName(QCoreApplication::applicationFilePath());
    AppUpdater &updater = updaterFor(isOurs ? here.constData() : "/nowhere/morvane");
    stage.show(new UpdateDialog(
        updater, record, [] { return false; }, &stage.window()));
}

// From a server that takes the question and keeps silent, or from nobody.
void showUpdating(Stage &stage, bool isServed)
{
    static QTcpServer server;
    if (!server.isListening())
        server.listen(QHostAddress::LocalHost);
    const QString link = "http://127.0.0.1:%1/"_s.arg(isServed ? server.serverPort() : 1);
    auto *dialog =
        new UpdatingDialog(updaterFor("/nowhere/morvane"), {{}, {}, link, 0}, &stage.window());
    if (isServed) {
        Stage::child<QProgressBar>(*dialog, "prgDownload").setValue(42);
        auto &label = Stage::child<QLabel>(*dialog, "lblProgress");
        label.setText(label.property("txtFormat").toString().arg(42));
    }
    stage.show(dialog);
}

void showToast(Stage &stage)
{
    Toast::showToast("请先添加文件"_s, 2000, Toast::centred, Toast::centred, &stage.window());
}

} // namespace

const QVector<Shot> &allShots()
{
    static const QVector<Shot> shots =
        loginShots() +
        QVector<Shot>{
            {"home"_s, [](Stage &) {}},
            {"menu"_s, [](Stage &stage) { stage.press("btnMore"); }},
            {"service"_s, showService},
            {"exit"_s, showDialog<ExitTipsDialog>},
            {"about"_s, showDialog<AboutMeDialog>},
            {"feedback"_s, [](Stage &stage) { showFeedback(stage, QString()); }},
            {"feedback-long"_s, [](Stage &stage) { showFeedback(stage, longText().repeated(3)); }},
            {"update"_s,
             [](Stage &stage) {
                 showUpdate(stage,
                            {"墨泉影音工坊 2.1"_s,
                             "1. 转换速度提升\n2. 支持更多格式\n3. 修复已知问题"_s, QString(), 0},
                            true);
             }},
            {"update-long"_s,
             [](Stage &stage) {
                 showUpdate(stage, {longText(), (longText() + u'\n').repeated(12), QString(), 0},
                            false);
             }},
            {"updating"_s, [](Stage &stage) { showUpdating(stage, true); }},
            {"updating-failed"_s, [](Stage &stage) { showUpdating(stage, false); }},
            {"convert-empty"_s, [](Stage &stage) { stage.press("btnConverter"); }},
            {"convert-rows"_s,
             [](Stage &stage) { stage.fill<MediaConvertFunctionPage>("btnConverter"); }},
            {"compress-empty"_s, [](Stage &stage) { stage.press("btnCompressor"); }},
            {"compress-rows"_s,
             [](Stage &stage) { stage.fill<MediaCompressFunctionPage>("btnCompressor"); }},
            {"compress-settings"_s, [](Stage &stage) { showCompressSettings(stage, false); }},
            {"compress-settings-own"_s, [](Stage &stage) { showCompressSettings(stage, true); }},
            {"cut-empty"_s, [](Stage &stage) { stage.press("btnCutter"); }},
            {"cut-rows"_s, [](Stage &stage) { stage.fill<MediaCutFunctionPage>("btnCutter"); }},
            {"beauty-rows"_s,
             [](Stage &stage) { stage.fill<MediaBeautifyFunctionPage>("btnBeautifier"); }},
            {"gif-rows"_s, [](Stage &stage) { stage.fill<MediaGifFunctionPage>("btnGif"); }},
            {"shot-rows"_s, [](Stage &stage) { stage.fill<MediaShotFunctionPage>("btnShot"); }},
            {"watermark-rows"_s,
             [](Stage &stage) { stage.fill<MediaWatermarkFunctionPage>("btnWatermark"); }},
            {"merge-empty"_s, [](Stage &stage) { stage.press("btnMerger"); }},
            {"merge-rows"_s, [](Stage &stage) { stage.fill<MediaMergeFunctionPage>("btnMerger"); }},
            {"merge-cut"_s, showCutInputs},
            {"merge-finished"_s,
             [](Stage &stage) {
                 stage.show(new MediaMergeFinishTipsDialog(
                     "/home/output/合并视频.mp4"_s, {{"海边的第二天.mkv：比源文件短 15 秒"_s}, {}},
                     &stage.window()));
             }},
            {"audio-rows"_s,
             [](Stage &stage) { stage.fill<AudioConvertFunctionPage>("btnAudioConverter"); }},
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
            {"convert-running"_s, startConverting},
            {"preview"_s, showPreview},
        } +
        recordShots() + editorShots() +
        QVector<Shot>{
            {"home-smallest"_s,
             [](Stage &stage) {
                 stage.press("btnHome");
                 stage.window().resize(stage.window().minimumSize());
             }},
            {"home-largest"_s, [](Stage &stage) { stage.window().showMaximized(); }},
        };
    return shots;
}
