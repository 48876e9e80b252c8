// SPDX-License-Identifier: MIT
#include "screenshots/shots.h"

#include "catalogue/encparamcatalog.h"
#include "controls/popupplacement.h"
#include "controls/toast.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/AudioConvert/audiocutdialog.h"
#include "MediaKits/FunctionPage/Framework/convertspeedswitchmenu.h"
#include "MediaKits/FunctionPage/Framework/failuredetailsdialog.h"
#include "MediaKits/FunctionPage/Framework/historyrecordcovertdialog.h"
#include "MediaKits/FunctionPage/Framework/mediaformatdialog.h"
#include "MediaKits/FunctionPage/Framework/mediaformatsettipsdialog.h"
#include "MediaKits/FunctionPage/Framework/mediaimportdialog.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/MainWindow/aboutmedialog.h"
#include "MediaKits/MainWindow/customerservice.h"
#include "MediaKits/MainWindow/exittipsdialog.h"
#include "MediaKits/MainWindow/feedbackdialog.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "MediaKits/Player/mediapreviewwnd.h"
#include "screenshots/stage.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <algorithm>

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
    return QStringLiteral(
               "一段很长很长的文件名，用来检查文字放不下时的样子 with Latin words in it ")
        .repeated(3);
}

template<class Dialog>
void showDialog(Stage &stage)
{
    stage.show(new Dialog(&stage.window()));
}

MediaConvertFunctionPage &convertPage(Stage &stage)
{
    stage.press("btnConverter");
    return *stage.window().findChild<MediaConvertFunctionPage *>();
}

void fillConvertPage(Stage &stage)
{
    convertPage(stage).addFiles(stage.media());
}

void startConverting(Stage &stage)
{
    MediaConvertFunctionPage &page = convertPage(stage);
    page.on_btnConvertAll_clicked();
    // Some rows are done then, while the longest still runs.
    const auto rows = page.findChildren<QPushButton *>(QStringLiteral("btnOpenDir"));
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
        const QString name = i % 3 == 0 ? longText() : QStringLiteral("假期.mp4");
        HistoryRecord::instance().add({QStringLiteral("2026.03.01 09:30"),
                                       QStringLiteral("/home/video/") + name,
                                       QStringLiteral("/home/output/") + name});
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
    const TaskFailure failure = {
        QStringLiteral("坏文件.mp4: moov atom not found"),
        QString(longText() + QLatin1Char('\n')).repeated(20).split(QLatin1Char('\n'))};
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
    return stage.media().filter(QStringLiteral(".avi")).value(0);
}

// A picture that keeps still: playing, then paused.
void pausePlayer(QWidget &window)
{
    auto *player = window.findChild<CSVideoPlayer *>();
    QSignalSpy progress(player, &CSVideoPlayer::progressChanged);
    for (int i = 0; i < 3; ++i)
        progress.wait();
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

void showToast(Stage &stage)
{
    Toast::showToast(QStringLiteral("请先添加文件"), 2000, Toast::centred, Toast::centred,
                     &stage.window());
}

} // namespace

const QVector<Shot> &allShots()
{
    static const QVector<Shot> shots = {
        {QLatin1String("home"), [](Stage &) {}},
        {QLatin1String("menu"), [](Stage &stage) { stage.press("btnMore"); }},
        {QLatin1String("service"), [](Stage &stage) { stage.window().on_btnCService_clicked(); }},
        {QLatin1String("exit"), showDialog<ExitTipsDialog>},
        {QLatin1String("about"), showDialog<AboutMeDialog>},
        {QLatin1String("feedback"), [](Stage &stage) { showFeedback(stage, QString()); }},
        {QLatin1String("feedback-long"),
         [](Stage &stage) { showFeedback(stage, longText().repeated(3)); }},
        {QLatin1String("page-to-come"), [](Stage &stage) { stage.press("btnCompressor"); }},
        {QLatin1String("convert-empty"), [](Stage &stage) { stage.press("btnConverter"); }},
        {QLatin1String("convert-rows"), fillConvertPage},
        {QLatin1String("formats-recent"), [](Stage &stage) { showFormats(stage, "btnHistory"); }},
        {QLatin1String("formats-video"), [](Stage &stage) { showFormats(stage, "btnVideo"); }},
        {QLatin1String("formats-audio"), [](Stage &stage) { showFormats(stage, "btnAudio"); }},
        {QLatin1String("speeds"), showSpeeds},
        {QLatin1String("history-empty"), showDialog<HistoryRecordCovertDialog>},
        {QLatin1String("history-many"), showHistory},
        {QLatin1String("import"), showImport},
        {QLatin1String("message"),
         [](Stage &stage) { showMessage(stage, QStringLiteral("文件不存在")); }},
        {QLatin1String("message-long"), [](Stage &stage) { showMessage(stage, longText()); }},
        {QLatin1String("message-format"), showDialog<MediaFormatSetTipsDialog>},
        {QLatin1String("failure"), showFailure},
        {QLatin1String("toast"), showToast},
        {QLatin1String("audio-cut"), showAudioCut},
        {QLatin1String("convert-running"), startConverting},
        {QLatin1String("preview"), showPreview},
        {QLatin1String("home-smallest"),
         [](Stage &stage) {
             stage.press("btnHome");
             stage.window().resize(stage.window().minimumSize());
         }},
        {QLatin1String("home-largest"), [](Stage &stage) { stage.window().showMaximized(); }},
    };
    return shots;
}
