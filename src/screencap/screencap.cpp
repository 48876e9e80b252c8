// SPDX-License-Identifier: MIT
#include "screencap/screencap.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "platform/diskspace.h"
#include "platform/screensize.h"
#include "platform/screensource.h"
#include "platform/soundserver.h"
#include "screencap/capturecommand.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QRect>

namespace {

constexpr int longestWakingMs = 2500;
constexpr int wakePollMs = 20;
constexpr int windowPollMs = 250;
constexpr int mostEmptyInRow = 3;
constexpr int secondMs = 1000;

constexpr qint64 mebibyte = 1024 * 1024;
constexpr qint64 lowSpace = 500 * mebibyte;
constexpr qint64 leastSpace = 100 * mebibyte;

bool isFull(qint64 freeBytes)
{
    return freeBytes >= 0 && freeBytes < leastSpace;
}

} // namespace

Screencap &Screencap::instance()
{
    static Screencap screencap;
    return screencap;
}

Screencap::Screencap() : m_freeSpace(&freeDiskSpace)
{
    qRegisterMetaType<Screencap::CapStateEnum>("Screencap::CapStateEnum");
    m_tickTimer.setSingleShot(true);
    m_tickTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_tickTimer, &QTimer::timeout, this, &Screencap::tick);
    connect(&m_wakeTimer, &QTimer::timeout, this, &Screencap::launchWhenAwake);
    connect(&m_windowTimer, &QTimer::timeout, this, &Screencap::waitForWindow);
    connect(&m_repair, &RecordingRepair::done, this, [this](const QStringList &files) {
        if (!files.isEmpty())
            emit recordingsRepaired(files);
    });
    qAddPostRoutine([] { instance().letGo(); });
}

Screencap::~Screencap() = default;

// Ahead of the application object's end, behind which no child can be ended. What has been recorded
// stays in its folder for the next start.
void Screencap::letGo()
{
    for (QTimer *timer : {&m_tickTimer, &m_wakeTimer, &m_windowTimer})
        timer->stop();
    m_piece.reset();
    m_saver.reset();
    m_folder.reset();
    m_awake.reset();
    m_windowPicture.reset();
}

void Screencap::setCapture(int mode, const QVariant &target)
{
    m_mode = mode;
    m_target = target;
}

void Screencap::setDefinition(int index, const QSize &size)
{
    m_definition = index;
    m_definitionSize = size;
}

void Screencap::prepare()
{
    QStringList inputs;
    if ((m_audioFlags & Microphones) != 0)
        inputs = listAudioDevices(1);
    const bool isPlayedSoundWanted =
        (m_audioFlags & SystemSound) != 0 && !listAudioDevices(2).isEmpty();
    m_awake = std::make_unique<AwakeSound>(inputs.toVector(), isPlayedSoundWanted);
    m_waking.start();
}

void Screencap::cancelPreparation()
{
    if (m_state == CapIdle)
        m_awake.reset();
}

void Screencap::start()
{
    if (m_state != CapIdle)
        return;
    m_failureReason.clear();
    m_isSpaceTold = false;
    m_emptyInRow = 0;
    m_earlierMs = 0;
    m_seconds = 0;
    m_canvas = QSize();
    const QString warning = startWarning();
    if (!warning.isEmpty()) {
        CLOG(WARNING, "default") << warning;
        if (m_warner)
            m_warner(warning);
    }
    if (!makeFolder()) {
        fail(tr("无法写入输出文件夹：%1").arg(QDir::toNativeSeparators(m_outputDir)));
        return;
    }
    if (isFull(m_freeSpace(m_outputDir))) {
        m_folder->remove();
        m_folder.reset();
        fail(tr("磁盘空间不足，无法开始录制"));
        return;
    }
    if (m_mode == WindowMode)
        m_windowPicture = std::make_unique<WindowPicture>(window());
    if (!m_awake)
        prepare();
    setState(CapStarted);
    m_wakeTimer.start(wakePollMs);
    launchWhenAwake();
}

bool Screencap::makeFolder()
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hhmmss"));
    m_outputPath =
        uniqueOutputPath(m_outputDir + QLatin1Char('/') + m_filePrefix + time + m_fileSuffix);
    m_folder = RecordingFolder::create(m_outputPath);
    return m_folder != nullptr;
}

void Screencap::writeSourceConfig()
{
    SourceConfig::clear();
    if (m_mode == AreaMode) {
        // An area that begins or ends beside the screen by a rounded pixel can't be read at all.
        SourceConfig::writeArea(m_target.toRect() & QRect(QPoint(0, 0), screenSizeInPixels()));
    } else if (m_mode == WindowMode) {
        m_windowSize = windowSize(window()).value_or(QSize());
        if (m_canvas.isEmpty())
            m_canvas = SourceConfig::evenSize(m_windowSize);
        SourceConfig::writeWindow(window(), m_windowSize);
    }
}

QString Screencap::commandText() const
{
    CaptureCommand command;
    command.isFullScreen = m_mode == FullMode;
    command.definition = m_definition;
    command.isPlayedSoundWanted =
        (m_audioFlags & SystemSound) != 0 && !listAudioDevices(2).isEmpty();
    if ((m_audioFlags & Microphones) != 0)
        command.inputs = listAudioDevices(1);
    command.outputPath = m_outputPath;
    return command.text();
}

void Screencap::launchWhenAwake()
{
    if (!m_awake->isAwake() && m_waking.elapsed() < longestWakingMs)
        return;
    m_wakeTimer.stop();
    launchPiece();
}

void Screencap::launchPiece()
{
    if (m_piece)
        m_piece.release()->deleteLater();
    writeSourceConfig();
    m_piece = std::make_unique<CapturePiece>();
    connect(m_piece.get(), &CapturePiece::running, this, [this] {
        if (m_state == CapStarted)
            setState(CapRunning);
    });
    connect(m_piece.get(), &CapturePiece::ended, this, &Screencap::onPieceEnded);
    m_piece->start(commandText(), m_folder->newPiece(), m_canvas);
    scheduleTick();
}

void Screencap::endPiece()
{
    m_tickTimer.stop();
    if (!isRecording() || m_piece->isEndAsked())
        return;
    m_earlierMs += m_piece->recordedMs();
    m_piece->end();
}

void Screencap::onPieceEnded()
{
    if (!m_piece->isEndAsked())
        onLostPiece();
    else if (m_isSaving)
        save();
    else if (!m_isPaused)
        launchPiece();
}

// What was recorded until then is kept.
void Screencap::onLostPiece()
{
    m_tickTimer.stop();
    m_emptyInRow = m_piece->recordedMs() > 0 ? 0 : m_emptyInRow + 1;
    m_earlierMs += m_piece->recordedMs();
    const bool isWindow = m_mode == WindowMode;
    if (isWindow && !windowSize(window()))
        stopBecause(tr("录制的窗口已关闭，录制已结束"));
    else if (isWindow && m_emptyInRow < mostEmptyInRow)
        m_windowTimer.start(windowPollMs);
    else
        stopBecause(m_piece->lossReason());
}

// What is read can't be read any more when the window is minimised or gets smaller.
void Screencap::waitForWindow()
{
    if (windowSize(window()) && !isWindowViewable(window()))
        return;
    m_windowTimer.stop();
    if (windowSize(window()))
        launchPiece();
    else
        stopBecause(tr("录制的窗口已关闭，录制已结束"));
}

void Screencap::pause()
{
    if (m_isPaused || m_isSaving || (m_state != CapRunning && m_state != CapPaused))
        return;
    m_isPaused = true;
    m_windowTimer.stop();
    endPiece();
    setState(CapPaused);
    emit pausedChanged(true);
}

void Screencap::resume()
{
    if (!m_isPaused || m_isSaving)
        return;
    m_isPaused = false;
    // A piece that is still ending makes room for the next by itself.
    if (!isRecording())
        launchPiece();
    emit pausedChanged(false);
}

void Screencap::stop()
{
    if (m_state == CapIdle) {
        SourceConfig::clear();
        emit elapse(0);
    }
    if (m_state == CapIdle || m_isSaving)
        return;
    m_windowTimer.stop();
    if (m_wakeTimer.isActive()) {
        m_wakeTimer.stop();
        launchPiece();
    }
    setSaving(true);
    endPiece();
    if (!isRecording())
        save();
}

void Screencap::stopBecause(const QString &reason)
{
    CLOG(WARNING, "default") << reason;
    if (!m_isSaving)
        m_failureReason = reason;
    stop();
}

void Screencap::save()
{
    SourceConfig::clear();
    if (m_piece)
        m_piece.release()->deleteLater();
    m_awake.reset();
    m_windowPicture.reset();
    m_saver = std::make_unique<RecordingSaver>(std::move(m_folder));
    connect(m_saver.get(), &RecordingSaver::done, this, &Screencap::onSaved);
    m_saver->start();
}

void Screencap::onSaved()
{
    const QStringList files = m_saver->files();
    if (m_failureReason.isEmpty())
        m_failureReason = m_saver->remark();
    m_saver.release()->deleteLater();
    m_isPaused = false;
    m_seconds = 0;
    setSaving(false);
    if (files.isEmpty()) {
        fail(m_failureReason.isEmpty() ? tr("没有录到画面") : m_failureReason);
    } else {
        m_outputPath = files.first();
        setState(CapFinished);
        setState(CapIdle);
    }
    emit elapse(0);
}

void Screencap::setState(CapStateEnum state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged(state);
}

void Screencap::setSaving(bool isSaving)
{
    m_isSaving = isSaving;
    emit savingChanged(isSaving);
}

void Screencap::fail(const QString &reason)
{
    m_failureReason = reason;
    CLOG(ERROR, "default") << reason;
    m_awake.reset();
    setState(CapFailed);
    setState(CapIdle);
}

void Screencap::scheduleTick()
{
    const qint64 recordedMs = m_earlierMs + m_piece->elapsedMs();
    m_tickTimer.start(int(qMax<qint64>(0, (qint64(m_seconds) + 1) * secondMs - recordedMs)));
}

void Screencap::tick()
{
    if (!isRecording())
        return;
    ++m_seconds;
    emit elapse(m_seconds);
    if (isRecording() && !m_piece->isEndAsked())
        scheduleTick();
    watchSpace();
    watchWindow();
}

void Screencap::watchSpace()
{
    const qint64 bytes = m_freeSpace(m_outputDir);
    if (bytes < 0 || bytes >= lowSpace || m_isSaving)
        return;
    if (isFull(bytes)) {
        stopBecause(tr("磁盘空间不足，录制已自动停止"));
    } else if (!m_isSpaceTold) {
        m_isSpaceTold = true;
        emit spaceLow(bytes);
    }
}

void Screencap::watchWindow()
{
    if (m_mode != WindowMode || m_isSaving)
        return;
    const std::optional<QSize> size = windowSize(window());
    if (!size)
        stopBecause(tr("录制的窗口已关闭，录制已结束"));
    else if (*size != m_windowSize)
        endPiece(); // the next one has the new size
}
