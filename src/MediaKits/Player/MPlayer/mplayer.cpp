// SPDX-License-Identifier: MIT
#include "MediaKits/Player/MPlayer/mplayer.h"

#include "MediaKits/MediaProcessor/toolpaths.h"
#include "platform/childprocess.h"

#include <QFileInfo>

namespace {

constexpr int askIntervalMs = 500;
constexpr int endPatienceMs = 500;

} // namespace

MPlayer::MPlayer(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(askIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &MPlayer::ask);
}

MPlayer::~MPlayer()
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    send(QStringLiteral("quit"));
    send(QStringLiteral("quit"));
    m_process->waitForFinished(endPatienceMs);
    end();
}

void MPlayer::end()
{
    m_timer.stop();
    if (!m_process)
        return;
    m_process->disconnect(this);
    m_process->kill();
    m_process->waitForFinished(endPatienceMs);
    m_process.reset();
}

void MPlayer::start(uint windowId, const QString &file)
{
    end();
    m_process = std::make_unique<ChildProcess>();
    m_process->setWorkingDirectory(QFileInfo(mplayerPath()).path());
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &MPlayer::dataRecieve);
    connect(m_process.get(), &QProcess::stateChanged, this, [this](QProcess::ProcessState state) {
        if (state != QProcess::Running)
            return;
        m_paused = false;
        m_timer.start();
    });
    connect(m_process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &m_timer,
            &QTimer::stop);
    m_process->start(mplayerPath(),
                     {QStringLiteral("-wid"), QString::number(windowId), QStringLiteral("-slave"),
                      QStringLiteral("-quiet"), QStringLiteral("-loop"), QStringLiteral("0"),
                      QStringLiteral("-nokeepaspect"), QStringLiteral("-osdlevel"),
                      QStringLiteral("0"), QStringLiteral("-framedrop"),
                      QStringLiteral("-colorkey"), QStringLiteral("0x0"), QStringLiteral("-mc"),
                      QStringLiteral("0"), QFileInfo(file).absoluteFilePath()},
                     QIODevice::ReadWrite);
}

bool MPlayer::isRunning() const
{
    return m_process && m_process->state() == QProcess::Running;
}

void MPlayer::send(const QString &line)
{
    if (isRunning())
        m_process->write(line.toUtf8() + '\n');
}

void MPlayer::setPause(bool pause)
{
    if (!isRunning() || pause == m_paused)
        return;
    m_paused = pause;
    send(QStringLiteral("pause"));
    // A question would wake the player.
    if (pause)
        m_timer.stop();
    else
        m_timer.start();
}

void MPlayer::setVolume(int volume)
{
    send(QStringLiteral("volume %1 2").arg(volume));
}

void MPlayer::setSpeed(double speed)
{
    if (speed > 0)
        send(QStringLiteral("speed_set %1 2").arg(QString::number(speed, 'g', 6)));
}

void MPlayer::seek(double seconds)
{
    send(QStringLiteral("seek %1 2").arg(QString::number(seconds, 'g', 6)));
}

void MPlayer::ask()
{
    forgetAnswers();
    send(QStringLiteral("get_time_length"));
    send(QStringLiteral("get_time_pos"));
    send(QStringLiteral("get_percent_pos"));
}

void MPlayer::forgetAnswers()
{
    m_length = -1;
    m_position = -1;
    m_percent = -1;
}

void MPlayer::handleAnswer(const QString &line)
{
    const auto take = [&line](QLatin1String answer, float &value) {
        // The number stands behind the equals sign.
        if (line.startsWith(answer))
            value = line.mid(answer.size() + 1).toFloat();
    };
    take(QLatin1String("ANS_LENGTH"), m_length);
    take(QLatin1String("ANS_TIME_POSITION"), m_position);
    take(QLatin1String("ANS_PERCENT_POSITION"), m_percent);
}

void MPlayer::dataRecieve()
{
    while (m_process->canReadLine()) {
        QString line = QString::fromLatin1(m_process->readLine());
        handleAnswer(line.remove(QLatin1Char('\n')));
    }
    if (m_length >= 0)
        emit progressChanged(m_position, m_length, m_percent);
}
