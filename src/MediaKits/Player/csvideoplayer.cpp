// SPDX-License-Identifier: MIT
#include "MediaKits/Player/csvideoplayer.h"

#include "MediaKits/Player/MPVPlayer/mpvplayer.h"
#include "ui_csvideoplayer.h"

#include <QPointer>
#include <QResizeEvent>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int msOfSecond = 1000;
// Pixels that the player draws for nothing, when the surface is enlarged; a window has its limit.
constexpr int largestSide = 4096;

QPointer<CSVideoPlayer> thePlaying;

} // namespace

QStringList standardPlayerArguments()
{
    return {
        QStringLiteral("--no-config"),        QStringLiteral("--hidpi-window-scale"),
        QStringLiteral("--window-scale=0.5"), QStringLiteral("--no-quiet"),
        QStringLiteral("--terminal"),         QStringLiteral("--no-msg-color"),
        QStringLiteral("--osd-level=0"),      QStringLiteral("--msg-level=ffmpeg/demuxer=error"),
        QStringLiteral("--video-rotate=no"),  QStringLiteral("--loop=inf"),
        QStringLiteral("--keep-open=always"), QStringLiteral("--keep-open-pause=no")};
}

QString soundWaveArgument()
{
    return QStringLiteral(
        "--lavfi-complex=color=c=0x1a1a1a:s=748x282:r=10[color];[aid1]asplit[t1][ao];"
        "[t1]showwaves=size=748x282:mode=cline:colors=0x939699[t2];"
        "[color][t2]overlay=shortest=1[vo]");
}

CSVideoPlayer::CSVideoPlayer(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::CSVideoPlayer>()), m_player(new MPVPlayer(this))
{
    m_ui->setupUi(this);
    for (QWidget *surface : {m_ui->wdtVideoContainer, static_cast<QWidget *>(m_ui->lblVideoShow)}) {
        surface->setAttribute(Qt::WA_NativeWindow);
        surface->setAttribute(Qt::WA_DontCreateNativeAncestors);
    }
    m_ui->wdtVideoContainer->installEventFilter(this);
    connect(m_player, &MPVPlayer::started, this, &CSVideoPlayer::started);
    connect(m_player, &MPVPlayer::finished, this, &CSVideoPlayer::onFinished);
    connect(m_player, &MPVPlayer::progressChanged, this, &CSVideoPlayer::onProgress);
}

CSVideoPlayer::~CSVideoPlayer() = default;

QLabel *CSVideoPlayer::videoLabel() const
{
    return m_ui->lblVideoShow;
}

void CSVideoPlayer::start(const QString &file, const QStringList &args)
{
    m_fileName = file;
    m_arguments = args;
    m_position = 0;
    m_plays = true;
    pauseOther();
    m_restartsLeft = 0; // the end of the one before is wanted
    m_player->start(uint(m_ui->lblVideoShow->winId()), file, args);
    m_restartsLeft = m_restarting ? 1 : 0;
    m_hasPlayed = false;
}

void CSVideoPlayer::play(bool on)
{
    m_plays = on;
    if (on)
        pauseOther();
    m_player->setPause(!on);
}

void CSVideoPlayer::pauseOther()
{
    CSVideoPlayer *other = thePlaying;
    thePlaying = this;
    if (other == nullptr || other == this || !other->m_plays)
        return;
    other->play(false);
    emit other->interrupted();
}

void CSVideoPlayer::stop()
{
    m_restartsLeft = 0;
    m_player->stop();
}

void CSVideoPlayer::onProgress(float position, float total, float percent)
{
    const int ms = int(position) * msOfSecond;
    // Of one that stands, only the whole second is told.
    if (m_plays || std::abs(ms - m_position) >= msOfSecond)
        m_position = ms;
    m_hasPlayed = true;
    emit progressChanged(ms, long(total) * msOfSecond, percent);
}

void CSVideoPlayer::onFinished(int exitCode)
{
    if (m_restartsLeft == 0 || !m_hasPlayed) {
        emit finished(exitCode);
        return;
    }
    --m_restartsLeft;
    m_player->start(m_fileName, m_plays ? m_arguments
                                        : m_arguments + QStringList(QStringLiteral("--pause=yes")));
    m_player->seek(double(m_position) / msOfSecond, MPVPlayer::Absolute, true);
}

void CSVideoPlayer::seek(int ms)
{
    m_position = ms;
    m_player->seek(ms / 1000.0, MPVPlayer::Absolute, true);
}

void CSVideoPlayer::tellFrames()
{
    connect(m_player, &MPVPlayer::started, this,
            [this] { sendCommand(QStringLiteral("set osd-fractions yes")); });
}

int CSVideoPlayer::toldPosition() const
{
    return m_player->positionMs();
}

bool CSVideoPlayer::isRunning() const
{
    return m_player->isRunning();
}

void CSVideoPlayer::setVolume(int volume)
{
    m_player->setVolume(volume);
}

int CSVideoPlayer::volume() const
{
    return m_player->volume();
}

void CSVideoPlayer::setSpeed(double speed)
{
    m_player->setSpeed(speed);
}

void CSVideoPlayer::setContrast(int value)
{
    m_player->setContrast(value);
}

void CSVideoPlayer::setBrightness(int value)
{
    m_player->setBrightness(value);
}

void CSVideoPlayer::setHue(int value)
{
    m_player->setHue(value);
}

void CSVideoPlayer::setGamma(int value)
{
    m_player->setGamma(value);
}

void CSVideoPlayer::setSaturation(int value)
{
    m_player->setSaturation(value);
}

void CSVideoPlayer::videoFilter(FilterOperation operation, const QString &name,
                                const QVariant &value)
{
    m_player->videoFilter(operation, name, value);
}

void CSVideoPlayer::audioFilter(FilterOperation operation, const QString &name,
                                const QVariant &value)
{
    m_player->audioFilter(operation, name, value);
}

void CSVideoPlayer::setVideoGraph(const QString &graph)
{
    m_player->setVideoGraph(graph);
}

void CSVideoPlayer::clearVideoFilters()
{
    m_player->clearVideoFilters();
}

void CSVideoPlayer::clearAudioFilters()
{
    m_player->clearAudioFilters();
}

void CSVideoPlayer::sendCommand(const QString &command)
{
    m_player->sendCommand(command);
}

void CSVideoPlayer::setScale(double scale)
{
    m_scale = scale;
    setSurfaceSize(m_ui->wdtVideoContainer->size());
}

// An enlarged surface shows its middle.
void CSVideoPlayer::setSurfaceSize(const QSize &size)
{
    const int side = std::max({size.width(), size.height(), 1});
    const double scale = std::min(m_scale, double(largestSide) / side);
    QLabel *surface = m_ui->lblVideoShow;
    surface->setFixedSize(qRound(size.width() * scale), qRound(size.height() * scale));
    const QSize margin = m_ui->wdtVideoContainer->size() - surface->size();
    surface->move(margin.width() / 2, margin.height() / 2);
}

bool CSVideoPlayer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->wdtVideoContainer && event->type() == QEvent::Resize) {
        QSize size = static_cast<QResizeEvent *>(event)->size();
        if (!m_videoSize.isEmpty())
            size = m_videoSize.scaled(size, Qt::KeepAspectRatio);
        setSurfaceSize(size);
    }
    return QWidget::eventFilter(watched, event);
}
