// SPDX-License-Identifier: MIT
#include "screencap/capturepiece.h"

#include "MediaKits/MediaTasksManager/failurecause.h"

#include <QFileInfo>

namespace {

// In which the launcher of ffmpeg is told where a piece goes, and how large its picture is.
const QString pieceVariable = QStringLiteral("MORVANE_RECORDING");
const QString canvasVariable = QStringLiteral("MORVANE_RECORDING_SIZE");

// From the launch to the first picture, as the launcher has it.
constexpr int leadMs = 500;
// No piece is asked to end before there is something in it: this long is the shortest, and this
// long that is waited for at most.
constexpr int shortestMs = 200;
constexpr int beginTimeoutMs = 5000;
constexpr int pollMs = 20;
// ffmpeg writes what it still holds within a fraction of this.
constexpr int endTimeoutMs = 15000;
constexpr int reportLines = 20;

} // namespace

CapturePiece::CapturePiece(QObject *parent) : QObject(parent)
{
    m_endTimer.setSingleShot(true);
    connect(&m_endTimer, &QTimer::timeout, this, &CapturePiece::onEndTimer);
    connect(&m_processor, &MediaProcessor::stateChanged, this, &CapturePiece::onState);
}

void CapturePiece::start(const QString &command, const QString &path, const QSize &canvas)
{
    m_path = path;
    m_processor.setVariable(pieceVariable, path);
    m_processor.setVariable(canvasVariable,
                            QStringLiteral("%1x%2").arg(canvas.width()).arg(canvas.height()));
    m_processor.setCommand(command, 0, false);
    m_processor.setUrgent();
    m_clock.start();
    m_processor.start();
}

void CapturePiece::end()
{
    if (!isRunning() || m_isEndAsked)
        return;
    m_isEndAsked = true;
    m_endTimer.start(0);
}

void CapturePiece::onEndTimer()
{
    if (m_isQuitSent) {
        m_processor.stop(true);
        return;
    }
    // The file begins with the first picture.
    const bool isThere = elapsedMs() >= shortestMs && QFileInfo(m_path).size() > 0;
    if (!isThere && elapsedMs() < beginTimeoutMs) {
        m_endTimer.start(pollMs);
        return;
    }
    m_isQuitSent = true;
    m_processor.finish();
    m_endTimer.start(endTimeoutMs);
}

void CapturePiece::onState(MediaProcessor::State state)
{
    if (state == MediaProcessor::ProcessorRunning)
        emit running();
    if (!m_processor.isFinal())
        return;
    m_endTimer.stop();
    QTimer::singleShot(0, this, &CapturePiece::ended);
}

qint64 CapturePiece::elapsedMs() const
{
    return m_clock.elapsed() - leadMs;
}

QString CapturePiece::lossReason() const
{
    const QStringList report = m_processor.lastLines(reportLines);
    if (report.join(QLatin1Char(' ')).contains(QLatin1String("No space left on device")))
        return tr("磁盘空间不足，录制已结束");
    return tr("录屏工具意外终止：%1").arg(tellingLine(report));
}
