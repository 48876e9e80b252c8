// SPDX-License-Identifier: MIT
#include "MediaKits/Player/mediapreviewwnd.h"

#include "controls/edgeresizer.h"
#include "controls/mainwindowlookup.h"
#include "controls/toast.h"
#include "controls/windowshadow.h"
#include "controls/withinscreen.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/DataTracker/volcdatatracker.h"
#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaFormats/revealfile.h"
#include "MediaKits/Player/mediapreviewitemwidget.h"
#include "MediaKits/Player/volumedialog.h"
#include "ui_mediapreviewwnd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QSignalBlocker>
#include <QTimer>
#include <QWindow>

#include <cmath>

namespace {

enum EntryRole { PathRole = Qt::UserRole + 1, InfoRole = Qt::UserRole + 2 };

enum AutoPreviewChoice { AllowChoice, NotThisTimeChoice, OffChoice };

constexpr QSize defaultSize(748, 616);
constexpr QSize entrySize(116, 84);
constexpr int edgeWidth = 4;
constexpr int shadowRadius = 11;
constexpr int messageMs = 5000;
constexpr int volumeMessageMs = 3000;
constexpr int revealPauseMs = 2000;
// The player's own codes; those above come from elsewhere.
constexpr int highestErrorCode = 99;
constexpr double percentTolerance = 1e-5;

QPointer<MediaPreviewWnd> theWindow;

void report(const QVariantMap &info)
{
    const QString event = info.value(QStringLiteral("event")).toString();
    if (event.isEmpty()) {
        CLOG(DEBUG, "default") << "MediaPreviewWnd:track no event";
        return;
    }
    const QVariantMap track = info.value(QStringLiteral("track")).toMap();
    trackEvent(MediaFunction(track.value(QStringLiteral("pageIndex")).toInt()), event, track);
}

void reportClick(const QString &button)
{
    VolcDataTracker::instance().event(QStringLiteral("video_preview_click"),
                                      {{QStringLiteral("button_click"), button}});
}

// Keys that a user types into a field don't become orders to the player.
bool isTextTyped()
{
    return qobject_cast<QLineEdit *>(QApplication::focusWidget()) != nullptr;
}

} // namespace

MediaPreviewWnd &MediaPreviewWnd::instance()
{
    if (!theWindow) {
        theWindow = new MediaPreviewWnd;
        if (const QWidget *owner = mainWindow())
            connect(owner, &QObject::destroyed, theWindow, [] { delete theWindow.data(); });
    }
    return *theWindow;
}

void MediaPreviewWnd::addFinished(const QString &path, const QVariantMap &info)
{
    instance().addFinishedFile(path, info);
}

void MediaPreviewWnd::showFile(const QString &path, const QVariantMap &info)
{
    instance().showListedFile(path, info);
}

MediaPreviewWnd::MediaPreviewWnd() : m_ui(std::make_unique<Ui::MediaPreviewWnd>())
{
    m_ui->setupUi(this);
    resize(defaultSize);
    setWindowFlags(windowFlags() | Qt::Window | Qt::WindowSystemMenuHint);
    setWindowTitle(m_ui->lblTitle->text());
    auto *shadow = new WindowShadow(this);
    shadow->setup(shadowRadius, QPoint(0, 1), QColor(0, 0, 0, 0x24));
    new EdgeResizer(this, edgeWidth);
    readSettings();
    connectPlayer();
}

MediaPreviewWnd::~MediaPreviewWnd()
{
    m_ui->csPlayer->disconnect(this);
    m_ui->lwIconPlaylist->disconnect(this);
    AppIni::instance().setValue(AppIni::Key::PreviewVolume, m_ui->csPlayer->volume());
}

void MediaPreviewWnd::readSettings()
{
    m_autoPreview = AppIni::instance().value(AppIni::Key::PreviewShowWhenAdded).toBool();
    m_ui->csPlayer->setVolume(AppIni::instance().value(AppIni::Key::PreviewVolume).toInt());
    // The start writes no setting.
    const QSignalBlocker blocker(m_ui->comboBox);
    m_ui->comboBox->addItems(
        {tr("允许完成后自动预览"), tr("本次不在自动预览"), tr("关闭自动预览功能")});
    m_ui->comboBox->setCurrentIndex(m_autoPreview ? AllowChoice : OffChoice);
}

void MediaPreviewWnd::connectPlayer()
{
    CSVideoPlayer *player = m_ui->csPlayer;
    connect(player, &CSVideoPlayer::progressChanged, this,
            [this](long position, long duration, float percent) {
                updateProgress(position, double(duration), double(percent));
            });
    connect(player, &CSVideoPlayer::started, this, [this] { showPlaying(true); });
    connect(player, &CSVideoPlayer::finished, this, &MediaPreviewWnd::onFinished);
    connect(player, &CSVideoPlayer::interrupted, this, [this] { showPlaying(false); });
    ASlider *slider = m_ui->sliderProgress;
    connect(slider, &QSlider::sliderPressed, this, [this] {
        m_ui->csPlayer->blockSignals(true);
        // A press beside the handle has moved it there, but tells of no move.
        const int ms = m_ui->sliderProgress->value();
        if (m_ui->lblPos->text() != timeText(ms))
            seekTo(ms);
    });
    connect(slider, &QSlider::sliderReleased, player, [player] { player->blockSignals(false); });
    connect(slider, &QSlider::sliderMoved, this, &MediaPreviewWnd::seekTo);
}

void MediaPreviewWnd::seekTo(int ms)
{
    m_ui->lblPos->setText(timeText(ms));
    m_ui->csPlayer->seek(ms);
}

void MediaPreviewWnd::updateProgress(long position, double duration, double percent)
{
    ASlider *slider = m_ui->sliderProgress;
    const QSignalBlocker blocker(slider);
    if (duration >= 0) {
        slider->setRange(0, int(duration));
        m_ui->lblDuration->setText(timeText(int(duration)));
    }
    if (position >= 0) {
        slider->setValue(int(position));
        m_ui->lblPos->setText(timeText(int(position)));
    } else if (std::abs(percent - 100.0) <= percentTolerance) {
        slider->setValue(slider->maximum());
        m_ui->lblPos->setText(timeText(slider->maximum()));
    }
}

void MediaPreviewWnd::onFinished(int exitCode)
{
    updateProgress(-1, -1.0, 100.0);
    showPlaying(false);
    if (exitCode != 0 && exitCode <= highestErrorCode)
        toast(tr("无法播放，错误码:%1").arg(exitCode), messageMs);
}

void MediaPreviewWnd::showPlaying(bool playing)
{
    const QSignalBlocker blocker(m_ui->btnPlay);
    m_ui->btnPlay->setChecked(playing);
}

void MediaPreviewWnd::stopCurrent()
{
    m_ui->csPlayer->stop();
    updateProgress(0, 0.0, 0.0);
}

QWidget *MediaPreviewWnd::toast(const QString &text, int ms)
{
    return Toast::showToast(text, ms, Toast::centred, Toast::centred, m_ui->csPlayer);
}

void MediaPreviewWnd::open()
{
    const QWidget *owner = mainWindow();
    if (!isVisible())
        boundToScreen(*this);
    if (!isVisible() && !testAttribute(Qt::WA_Moved) && owner)
        setGeometry(withinArea({owner->geometry().center() - rect().center(), size()},
                               owner->screen()->availableGeometry()));
    setAttribute(Qt::WA_ShowWithoutActivating, isTextTyped());
    // Qt looks at the attribute when it makes a window, and at this each time it shows one.
    if (QWindow *window = windowHandle())
        window->setProperty("_q_showWithoutActivating", isTextTyped());
    show();
    if (!isTextTyped())
        QTimer::singleShot(0, this, [this] { activateWindow(); });
}

void MediaPreviewWnd::openAfter(QWidget *dialog)
{
    if (m_waitsFor)
        m_waitsFor->removeEventFilter(this);
    m_waitsFor = dialog;
    dialog->installEventFilter(this);
}

bool MediaPreviewWnd::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_waitsFor && event->type() == QEvent::Hide) {
        watched->removeEventFilter(this);
        m_waitsFor.clear();
        // Its caller goes on first, and may open another one.
        QTimer::singleShot(0, this, &MediaPreviewWnd::playLast);
    }
    return QWidget::eventFilter(watched, event);
}

QListWidgetItem *MediaPreviewWnd::entryOf(const QString &path) const
{
    for (int i = 0; i < m_ui->lwIconPlaylist->count(); ++i) {
        QListWidgetItem *entry = m_ui->lwIconPlaylist->item(i);
        if (entry->data(PathRole).toString() == path)
            return entry;
    }
    return nullptr;
}

QListWidgetItem *MediaPreviewWnd::addEntry(const QString &path, const QVariantMap &info)
{
    auto *entry = new QListWidgetItem;
    entry->setData(PathRole, path);
    entry->setData(InfoRole, info);
    entry->setData(Qt::SizeHintRole, entrySize);
    // A list that gets its first entry makes it current by itself when it takes the focus.
    const QSignalBlocker blocker(m_ui->lwIconPlaylist);
    m_ui->lwIconPlaylist->addItem(entry);
    m_ui->lwIconPlaylist->setItemWidget(entry,
                                        new MediaPreviewItemWidget(path, m_ui->lwIconPlaylist));
    return entry;
}

void MediaPreviewWnd::addFinishedFile(const QString &path, const QVariantMap &info)
{
    if (m_autoPreview)
        report(info);
    delete entryOf(path);
    if (QFileInfo::exists(path))
        addEntry(path, info);
    else if (isVisible())
        toast(tr("当前播放文件不存在"), messageMs);
    // The same end may bring a question, which comes first.
    QTimer::singleShot(0, this, &MediaPreviewWnd::playLast);
}

// A file that plays is not interrupted.
void MediaPreviewWnd::playLast()
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        openAfter(modal);
        return;
    }
    if (m_autoPreview && !isVisible() && m_ui->lwIconPlaylist->count() > 0)
        open();
    if (!isVisible() || m_ui->lwIconPlaylist->count() == 0 || m_ui->lwIconPlaylist->currentItem())
        return;
    m_ui->lwIconPlaylist->setCurrentRow(m_ui->lwIconPlaylist->count() - 1);
    // A popup would take the keys.
    if (!isTextTyped())
        toast(tr("当前音量:%1").arg(m_ui->csPlayer->volume()), volumeMessageMs);
}

void MediaPreviewWnd::showListedFile(const QString &path, const QVariantMap &info)
{
    open();
    report(info);
    QListWidgetItem *entry = entryOf(path);
    if (QFileInfo::exists(path)) {
        m_ui->lwIconPlaylist->setCurrentItem(entry);
        return;
    }
    toast(tr("当前播放文件不存在"), messageMs);
    delete entry;
}

void MediaPreviewWnd::setEntryPlaying(QListWidgetItem *entry, bool playing)
{
    if (auto *row = qobject_cast<MediaPreviewItemWidget *>(m_ui->lwIconPlaylist->itemWidget(entry)))
        row->setPlaying(playing);
}

void MediaPreviewWnd::on_lwIconPlaylist_currentItemChanged(QListWidgetItem *current,
                                                           QListWidgetItem *previous)
{
    if (previous) {
        setEntryPlaying(previous, false);
        stopCurrent();
    }
    if (current) {
        setEntryPlaying(current, true);
        playItem(current);
    }
}

void MediaPreviewWnd::on_lwIconPlaylist_itemClicked(QListWidgetItem *item)
{
    playItem(item);
}

void MediaPreviewWnd::playItem(QListWidgetItem *entry)
{
    const QString path = entry->data(PathRole).toString();
    if (!QFileInfo::exists(path)) {
        removeEntryLater(entry, toast(tr("当前播放文件不存在"), messageMs));
        return;
    }
    CSVideoPlayer *player = m_ui->csPlayer;
    if (player->fileName() == path && player->isRunning())
        return;
    QStringList arguments = standardPlayerArguments();
    if (isAudioFormat(QFileInfo(path).suffix()))
        arguments += soundWaveArgument();
    player->start(path, arguments);
}

void MediaPreviewWnd::removeEntryLater(QListWidgetItem *entry, QObject *toast)
{
    const QString path = entry->data(PathRole).toString();
    connect(toast, &QObject::destroyed, this, [this, path] {
        // It may have been made again meanwhile.
        if (!QFileInfo::exists(path))
            delete entryOf(path);
    });
}

void MediaPreviewWnd::on_btnPlay_toggled(bool checked)
{
    m_ui->csPlayer->play(checked);
    if (!m_ui->csPlayer->isRunning())
        showPlaying(false);
}

void MediaPreviewWnd::on_btnVolume_clicked()
{
    showVolumePopup(*m_ui->csPlayer, *m_ui->btnVolume);
}

void MediaPreviewWnd::on_btnOpenDir_clicked()
{
    m_ui->btnOpenDir->setEnabled(false);
    QTimer::singleShot(revealPauseMs, this, [this] { m_ui->btnOpenDir->setEnabled(true); });
    reportClick(QStringLiteral("打开文件夹"));
    if (const QListWidgetItem *entry = m_ui->lwIconPlaylist->currentItem())
        revealInFileManager(entry->data(PathRole).toString());
}

void MediaPreviewWnd::on_comboBox_currentIndexChanged(int index)
{
    m_autoPreview = index == AllowChoice;
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, index != OffChoice);
}

void MediaPreviewWnd::on_btnClose_clicked()
{
    reportClick(QStringLiteral("关闭"));
    if (m_ui->lwIconPlaylist->currentItem())
        stopCurrent();
    m_ui->lwIconPlaylist->setCurrentItem(nullptr);
    hide();
}

void MediaPreviewWnd::closeEvent(QCloseEvent *event)
{
    on_btnClose_clicked();
    QWidget::closeEvent(event);
}

void MediaPreviewWnd::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat())
        m_ui->btnPlay->toggle();
    else if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
