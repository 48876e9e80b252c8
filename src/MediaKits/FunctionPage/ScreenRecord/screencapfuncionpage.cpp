// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"

#include "controls/repolish.h"
#include "controls/toast.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/FunctionPage/ScreenRecord/camerapreviewmanager.h"
#include "MediaKits/FunctionPage/ScreenRecord/definitionhint.h"
#include "MediaKits/FunctionPage/ScreenRecord/recordkeys.h"
#include "MediaKits/Player/mediapreviewwnd.h"
#include "ui_screencapfuncionpage.h"

#include <QApplication>
#include <QButtonGroup>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QTime>
#include <QUrl>
#include <QVariant>

namespace {

constexpr QSize noSize(-1, -1);
constexpr int hexadecimal = 16;
constexpr int toastMs = 3000;
constexpr qint64 mebibyte = 1024 * 1024;

Screencap &engine()
{
    return Screencap::instance();
}

// What the page shows of a phase.
struct PhaseLook
{
    QString start; // of the start button
    QString icon;
    QString state;
};

PhaseLook lookOf(RecordingRun::Phase phase)
{
    switch (phase) {
    case RecordingRun::Recording:
        return {ScreencapFuncionPage::tr("暂停录制"), QStringLiteral("pause"),
                ScreencapFuncionPage::tr("正在录制")};
    case RecordingRun::Paused:
        return {ScreencapFuncionPage::tr("继续录制"), QStringLiteral("record"),
                ScreencapFuncionPage::tr("已暂停")};
    case RecordingRun::Saving:
        return {ScreencapFuncionPage::tr("开始录制"), QStringLiteral("record"),
                ScreencapFuncionPage::tr("正在保存…")};
    default:
        return {ScreencapFuncionPage::tr("开始录制"), QStringLiteral("record"), {}};
    }
}

} // namespace

ScreencapFuncionPage::ScreencapFuncionPage(QWidget *parent) : LazyPage(parent)
{
    // When the program has started: its keys work without a look at the page, and a crash may have
    // left recordings.
    QTimer::singleShot(0, this, [this] {
        holdKeys();
        connect(&engine(), &Screencap::recordingsRepaired, this, &ScreencapFuncionPage::onRepaired);
        engine().repairLeftRecordings();
    });
}

ScreencapFuncionPage::~ScreencapFuncionPage() = default;

void ScreencapFuncionPage::build()
{
    m_ui = std::make_unique<Ui::ScreencapFuncionPage>();
    m_ui->setupUi(this);
    m_ui->ledtWndID->hide();
    m_cameras = new CameraPreviewManager(this);
    connect(m_cameras, &CameraPreviewManager::allHideActive, this,
            [this] { m_ui->rbCamOff->setChecked(true); });
    setUpRun();
    setUpFolder();
    setUpChoices();
    holdKeys();
    m_ui->lblKeys->setText(m_keys->hint());
    showPhase();
}

void ScreencapFuncionPage::setUpRun()
{
    m_run = new RecordingRun(this);
    connect(m_run, &RecordingRun::phaseChanged, this, [this](RecordingRun::Phase phase) {
        if (phase == RecordingRun::Ready)
            m_spaceRemark.clear();
        showPhase();
        showRemarks();
        emit phaseChanged(phase);
    });
    connect(m_run, &RecordingRun::windowPicked, this,
            [this](WId window) { m_ui->ledtWndID->setText(QString::number(window, hexadecimal)); });
    connect(&engine(), &Screencap::stateChanged, this, &ScreencapFuncionPage::onStateChanged);
    connect(&engine(), &Screencap::elapse, this, &ScreencapFuncionPage::showTime);
    connect(&engine(), &Screencap::spaceLow, this, &ScreencapFuncionPage::onSpaceLow);
}

void ScreencapFuncionPage::setUpFolder()
{
    OutputFolderEdit &edit = *m_ui->wdtFolder;
    edit.setCaptions(tr("输出路径："), tr("更改路径"));
    edit.setFunction(MediaFunction::Screencap);
    engine().setOutputDir(edit.folder());
    connect(&edit, &OutputFolderEdit::folderChanged, &engine(), &Screencap::setOutputDir);
    connect(&edit, &OutputFolderEdit::folderChosen, this, [this](const QString &folder) {
        m_folderRemark = QDir().mkpath(folder)
                             ? QString()
                             : tr("无法创建输出文件夹：%1").arg(QDir::toNativeSeparators(folder));
        showRemarks();
    });
}

void ScreencapFuncionPage::setUpChoices()
{
    QButtonGroup &sound = *m_ui->bgSound;
    sound.setId(m_ui->rbSDAll, Screencap::SystemSound | Screencap::Microphones);
    sound.setId(m_ui->rbSDSYS, Screencap::SystemSound);
    sound.setId(m_ui->rbSDMicro, Screencap::Microphones);
    sound.setId(m_ui->rbSDNone, Screencap::NoSound);
    QButtonGroup &definition = *m_ui->bgDefinition;
    definition.setId(m_ui->rbDefSD, Screencap::StandardDefinition);
    definition.setId(m_ui->rbDefHD, Screencap::HighDefinition);
    definition.setId(m_ui->rbDefOrg, Screencap::SourceDefinition);
    const auto setSuffix = [this] {
        engine().setFileSuffix(m_ui->rbFMTFLV->isChecked() ? QStringLiteral(".flv")
                                                           : QStringLiteral(".mp4"));
    };
    connect(&sound, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (!checked)
            return;
        engine().setAudioFlags(id);
        showRemarks();
    });
    connect(&definition, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (!checked)
            return;
        engine().setDefinition(id, noSize);
        showHints();
    });
    connect(m_ui->bgFormat, &QButtonGroup::idToggled, this, setSuffix);
    engine().setCapture(Screencap::FullMode, {});
    engine().setAudioFlags(sound.checkedId());
    engine().setDefinition(definition.checkedId(), noSize);
    setSuffix();
    engine().setFilePrefix(QStringLiteral("rec_"));
    showHints();
}

void ScreencapFuncionPage::holdKeys()
{
    if (m_keys)
        return;
    m_keys = new RecordKeys(this);
    connect(m_keys, &RecordKeys::startStopPressed, this, &ScreencapFuncionPage::startOrStop);
    connect(m_keys, &RecordKeys::pausePressed, this, &ScreencapFuncionPage::pauseOrResume);
}

void ScreencapFuncionPage::showEvent(QShowEvent *event)
{
    LazyPage::showEvent(event);
    showRemarks();
    // After the page is on the screen: the first look for cameras takes its time.
    if (!std::exchange(m_hasLookedForCameras, true))
        QTimer::singleShot(0, m_cameras, &CameraPreviewManager::reloadCameras);
}

bool ScreencapFuncionPage::isWorking() const
{
    return m_run && m_run->isWorking();
}

QString ScreencapFuncionPage::leaveQuestion() const
{
    return tr("正在录制屏幕，退出会停止录制并保存录像。确定退出吗？");
}

void ScreencapFuncionPage::finishWork()
{
    if (!isWorking())
        return;
    m_isLeaving = true;
    m_run->finish();
}

void ScreencapFuncionPage::startOrStop()
{
    ensureBuilt();
    QWidget *dialog = QApplication::activeModalWidget();
    if (m_run->phase() != RecordingRun::Ready)
        m_run->stop();
    else if (dialog)
        Toast::showToast(tr("请先关闭对话框，再开始录制"), toastMs, Toast::centred, Toast::centred,
                         dialog);
    else
        start();
}

void ScreencapFuncionPage::pauseOrResume()
{
    if (m_run)
        m_run->pauseOrResume();
}

void ScreencapFuncionPage::on_wbnCapStartPause_clicked()
{
    showPhase(); // the click has toggled the button
    const QPointer<ScreencapFuncionPage> alive(this);
    if (m_run->phase() == RecordingRun::Ready)
        start();
    else
        m_run->pauseOrResume();
    if (alive)
        showPhase();
}

void ScreencapFuncionPage::on_wbnCapStop_clicked()
{
    m_run->stop();
}

void ScreencapFuncionPage::start()
{
    trackEvent(MediaFunction::Screencap, QStringLiteral("video_convert_start"),
               {{QStringLiteral("convert_number_mode"), QStringLiteral("单个转换")}});
    m_run->start(mode());
}

void ScreencapFuncionPage::onStateChanged(Screencap::CapStateEnum state)
{
    if (state == Screencap::CapFinished) {
        onFinished();
    } else if (state == Screencap::CapFailed) {
        const QString reason = engine().failureReason();
        tellLater(tr("无法录制"), reason.isEmpty() ? tr("录屏控件没有被注册") : reason);
    }
    showPhase();
}

void ScreencapFuncionPage::onFinished()
{
    const QVariantMap facts{{QStringLiteral("is_convert_success"), true},
                            {QStringLiteral("input_format"), QStringLiteral("SCREEN")},
                            {QStringLiteral("output_format"), engine().outputSuffix()}};
    trackEvent(MediaFunction::Screencap, QStringLiteral("video_convert_submit"), facts);
    trackEvent(MediaFunction::Screencap, QStringLiteral("convert_success"), facts);
    if (m_isLeaving || !QFileInfo::exists(engine().outputPath()))
        return;
    const QStringList files = engine().outputPaths();
    const QString reason = engine().failureReason();
    m_ui->wdtNotices->offerSaved(files, reason);
    for (const QString &file : files)
        MediaPreviewWnd::addFinished(
            file, MediaRowWidget::previewInfo(MediaFunction::Screencap, QStringLiteral("自动")));
    if (!reason.isEmpty())
        tellLater(tr("提示"), tr("录制已结束，录像已保存。\n%1").arg(reason));
}

// Once those who hear of the same end have done their part.
void ScreencapFuncionPage::tellLater(const QString &title, const QString &text)
{
    if (m_isLeaving)
        return;
    QTimer::singleShot(0, this, [=] { MediaMessageBox::showMessage(title, text, this); });
}

void ScreencapFuncionPage::onSpaceLow(qint64 bytesLeft)
{
    const QString text =
        tr("磁盘空间不足，只剩 %1 MB，用完前会自动停止并保存录像").arg(bytesLeft / mebibyte);
    m_spaceRemark = text;
    showRemarks();
    emit warned(text);
}

void ScreencapFuncionPage::onRepaired(const QStringList &files)
{
    ensureBuilt();
    m_ui->wdtNotices->offerRescued(files);
    emit rescued(files);
}

int ScreencapFuncionPage::mode() const
{
    if (m_ui->rbArea->isChecked())
        return Screencap::AreaMode;
    return m_ui->rbWindow->isChecked() ? Screencap::WindowMode : Screencap::FullMode;
}

void ScreencapFuncionPage::on_rbFull_clicked(bool checked)
{
    if (checked)
        engine().setCapture(Screencap::FullMode, {});
    m_run->hideFrame();
    showHints();
}

void ScreencapFuncionPage::on_rbArea_clicked(bool checked)
{
    if (checked)
        engine().setCapture(Screencap::AreaMode, {});
    showHints();
}

void ScreencapFuncionPage::on_rbWindow_clicked(bool checked)
{
    if (checked)
        engine().setCapture(Screencap::WindowMode, {});
    showHints();
}

void ScreencapFuncionPage::on_ledtWndID_editingFinished()
{
    const QString text = m_ui->ledtWndID->text();
    if (mode() == Screencap::WindowMode && !text.isEmpty())
        engine().setCapture(Screencap::WindowMode, text.toUInt(nullptr, hexadecimal));
}

void ScreencapFuncionPage::on_rbCamOn_toggled(bool checked)
{
    if (!checked) {
        m_cameras->hideAll();
        m_ui->lblCameraHint->clear();
        return;
    }
    if (m_cameras->isEmpty())
        m_cameras->reloadCameras();
    m_cameras->showAll();
    m_ui->lblCameraHint->setText(m_cameras->isEmpty() ? tr("没有找到摄像头")
                                                      : tr("摄像头画面会显示在桌面上，可以拖动"));
}

void ScreencapFuncionPage::on_btnOpenPath_clicked()
{
    const QString folder = m_ui->wdtFolder->folder();
    QDir().mkpath(folder);
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

void ScreencapFuncionPage::showPhase()
{
    const RecordingRun::Phase phase = m_run->phase();
    const bool isReady = phase == RecordingRun::Ready;
    const bool isOn = phase == RecordingRun::Recording || phase == RecordingRun::Paused;
    m_ui->wdtSettting->setEnabled(isReady);
    m_ui->wdtFolder->setEnabled(isReady);
    m_ui->wbnCapStop->setEnabled(m_run->isWorking() && phase != RecordingRun::Saving);
    WidgetButton &button = *m_ui->wbnCapStartPause;
    button.setEnabled(isReady || isOn);
    button.setChecked(phase == RecordingRun::Recording);
    const PhaseLook look = lookOf(phase);
    button.setText(look.start);
    button.setIcon(QIcon(QStringLiteral(":/drawable/screencap/%1.png").arg(look.icon)));
    m_ui->lblState->setText(look.state);
    m_ui->lblTime->setProperty("running", phase == RecordingRun::Recording);
    repolish(m_ui->lblTime);
}

void ScreencapFuncionPage::showHints()
{
    const QString modes[] = {tr("录制整个桌面"), tr("开始后拖动选择区域"),
                             tr("开始后单击选择窗口")};
    m_ui->lblModeHint->setText(modes[mode() - Screencap::FullMode]);
    m_ui->lblDefinitionHint->setText(mode() == Screencap::FullMode
                                         ? definitionHint(engine().definition())
                                         : tr("区域和窗口按原始尺寸录制"));
}

void ScreencapFuncionPage::showRemarks()
{
    QStringList lines;
    if (m_run->phase() == RecordingRun::Ready)
        lines += engine().startWarning();
    lines += m_keys->remark();
    lines += m_folderRemark;
    lines += m_spaceRemark;
    lines.removeAll(QString());
    m_ui->wdtNotices->setRemarks(lines);
}

void ScreencapFuncionPage::showTime(uint seconds)
{
    const QString time = QTime(0, 0).addSecs(int(seconds)).toString(QStringLiteral("hh:mm:ss"));
    m_ui->lblTime->setText(time);
    emit clockChanged(time);
}
