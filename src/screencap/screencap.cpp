// SPDX-License-Identifier: MIT
#include "screencap/screencap.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaFormats/outputpath.h"
#include "platform/screensource.h"
#include "screencap/capturecommand.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>

namespace {

constexpr int wakePollMs = 20;
constexpr int targetPollMs = 250;
constexpr int mostEmptyInRow = 3;
constexpr int secondMs = 1000;

} // namespace

Screencap &Screencap::instance()
{
    static Screencap screencap;
    return screencap;
}

Screencap::Screencap()
{
    qRegisterMetaType<Screencap::CapStateEnum>("Screencap::CapStateEnum");
    m_tickTimer.setSingleShot(true);
    m_tickTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_tickTimer, &QTimer::timeout, this, &Screencap::tick);
    connect(&m_wakeTimer, &QTimer::timeout, this, &Screencap::launchWhenAwake);
    connect(&m_targetTimer, &QTimer::timeout, this, &Screencap::waitForTarget);
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
    for (QTimer *timer : {&m_tickTimer, &m_wakeTimer, &m_targetTimer})
        timer->stop();
    m_piece.reset();
    m_repair.letGo();
    m_saver.reset();
    m_folder.reset();
    m_sound.forget();
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

void Screencap::cancelPreparation()
{
    if (m_state == CapIdle)
        m_sound.forget();
}

void Screencap::start()
{
    if (m_state != CapIdle)
        return;
    m_failureReason.clear();
    m_emptyInRow = 0;
    m_earlierMs = 0;
    m_seconds = 0;
    m_canvas = QSize();
    m_sound.ask();
    tellWarning();
    const QString obstacle = makeFolder();
    if (!obstacle.isEmpty()) {
        fail(obstacle);
        return;
    }
    if (m_mode == WindowMode)
        m_windowPicture = std::make_unique<WindowPicture>(target().window());
    if (!m_sound.isWoken())
        m_sound.wake();
    setState(CapStarted);
    m_wakeTimer.start(wakePollMs);
    launchWhenAwake();
}

void Screencap::tellWarning()
{
    const QString warning = startWarning();
    if (warning.isEmpty())
        return;
    CLOG(WARNING, "default") << warning;
    if (m_warner)
        m_warner(warning);
}

// Gives back why there can be none.
QString Screencap::makeFolder()
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hhmmss"));
    m_outputPath =
        uniqueOutputPath(m_outputDir + QLatin1Char('/') + m_filePrefix + time + m_fileSuffix);
    m_outputPaths.clear();
    // There would be nothing but black in the picture.
    if (screenAccess() == ScreenAccess::Wayland)
        return startWarning();
    m_folder = RecordingFolder::create(m_outputPath);
    if (!m_folder)
        return tr("无法写入输出文件夹：%1").arg(QDir::toNativeSeparators(m_outputDir));
    if (m_space.begin(m_outputDir))
        return {};
    m_folder->remove();
    m_folder.reset();
    return tr("磁盘空间不足，无法开始录制");
}

// A source that isn't told, or told of nothing, records the whole screen.
bool Screencap::tellSource()
{
    m_presentSize = target().presentSize();
    const bool isTold = target().tellSource();
    if (m_presentSize.isEmpty() || !isTold) {
        stopBecause(isTold ? target().lossReason()
                           : tr("无法写入录屏设置：%1").arg(captureSettingsPath()));
        return false;
    }
    if (m_canvas.isEmpty())
        m_canvas = target().canvas(m_definition);
    return true;
}

QString Screencap::commandText() const
{
    CaptureCommand command;
    command.isFullScreen = m_mode == FullMode;
    command.definition = m_definition;
    command.isPlayedSoundWanted = m_sound.isPlayedSoundWanted();
    command.inputs = m_sound.inputs();
    command.outputPath = m_outputPath;
    return command.text();
}

void Screencap::launchWhenAwake()
{
    if (!m_sound.isReady())
        return;
    m_wakeTimer.stop();
    launchPiece();
}

void Screencap::launchPiece()
{
    releasePiece();
    if (!tellSource())
        return;
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

// One that has ended may still be about to tell so.
void Screencap::releasePiece()
{
    if (!m_piece)
        return;
    m_piece->disconnect(this);
    m_piece.release()->deleteLater();
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

// What was recorded until then is kept. What is read can't be read any more when the window is
// minimised, when window or screen get smaller, or when a sound device is pulled out.
void Screencap::onLostPiece()
{
    m_tickTimer.stop();
    m_emptyInRow = m_piece->recordedMs() > 0 ? 0 : m_emptyInRow + 1;
    m_earlierMs += m_piece->recordedMs();
    if (m_isPaused)
        return;
    const QSize size = target().presentSize();
    if (size.isEmpty())
        stopBecause(target().lossReason());
    else if (m_emptyInRow < mostEmptyInRow &&
             (m_piece->hasLostSource() || target().isWindow() || size != m_presentSize))
        goOn();
    else
        stopBecause(m_piece->lossReason());
}

void Screencap::goOn()
{
    if (m_sound.askAgain())
        m_failureReason = tr("录制中有声音设备断开，之后的录像可能没有声音");
    m_targetTimer.start(targetPollMs);
}

void Screencap::waitForTarget()
{
    const bool isGone = target().presentSize().isEmpty();
    if (!isGone && !target().isVisible())
        return;
    m_targetTimer.stop();
    if (isGone)
        stopBecause(target().lossReason());
    else
        launchPiece();
}

void Screencap::pause()
{
    if (m_isPaused || m_isSaving || (m_state != CapRunning && m_state != CapPaused))
        return;
    m_isPaused = true;
    m_targetTimer.stop();
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
    m_targetTimer.stop();
    if (m_wakeTimer.isActive()) {
        m_wakeTimer.stop();
        launchPiece();
    }
    if (m_isSaving) // the launch has found nothing to record
        return;
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
    releasePiece();
    m_sound.forget();
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
        m_outputPaths = files;
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
    m_sound.forget();
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
    watchTarget();
}

void Screencap::watchSpace()
{
    if (m_isSaving)
        return;
    const SpaceWatch::State state = m_space.look();
    if (state == SpaceWatch::Full)
        stopBecause(tr("磁盘空间不足，录制已自动停止"));
    else if (state == SpaceWatch::Low)
        emit spaceLow(m_space.bytesLeft());
}

void Screencap::watchTarget()
{
    if (m_isSaving)
        return;
    const QSize size = target().presentSize();
    if (size.isEmpty())
        stopBecause(target().lossReason());
    else if (size != m_presentSize)
        endPiece(); // the next one has the new size
}
