// SPDX-License-Identifier: MIT
#include "MediaKits/Player/MPVPlayer/mpvplayer.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaProcessor/toolpaths.h"
#include "MediaKits/Player/playerstatus.h"
#include "platform/childprocess.h"
#include "platform/runtimeroot.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <utility>

namespace {

constexpr int replacePatienceMs = 300;
constexpr int endPatienceMs = 500;
constexpr int killPatienceMs = 1000;
// The player makes its socket some tenths of a second after its start.
constexpr int connectRetryMs = 20;

QString newServerName()
{
    // Its commands can do whatever this user can.
    return runtimeRoot() + QLatin1String("/morplayer-") + QUuid::createUuid().toString();
}

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

} // namespace

MPVPlayer::MPVPlayer(QObject *parent) : QObject(parent), m_ipcServerName(newServerName())
{
    m_retry.setSingleShot(true);
    m_retry.setInterval(connectRetryMs);
    connect(&m_retry, &QTimer::timeout, this, &MPVPlayer::connectSocket);
    connect(&m_ipcSocket, &QLocalSocket::connected, this, &MPVPlayer::sendPending);
    connect(&m_ipcSocket, &QLocalSocket::errorOccurred, &m_retry, [this] { m_retry.start(); });
    // The player tells its events there, which nobody asked for.
    connect(&m_ipcSocket, &QLocalSocket::readyRead, this, [this] { m_ipcSocket.readAll(); });
}

MPVPlayer::~MPVPlayer()
{
    if (m_process) {
        m_process->disconnect(this);
        endProcess(endPatienceMs);
    }
    m_ipcSocket.disconnect();
    removeSocketFile();
}

void MPVPlayer::removeSocketFile() const
{
    if (QFile::exists(m_ipcServerName))
        QFile::remove(m_ipcServerName);
}

void MPVPlayer::start(const QString &file, const QStringList &args)
{
    start(m_windowId, file, args);
}

void MPVPlayer::start(uint windowId, const QString &file, const QStringList &args)
{
    if (windowId == 0)
        return;
    m_windowId = windowId;
    if (m_process) {
        endProcess(replacePatienceMs);
        removeSocketFile();
    }
    m_ipcSocket.abort();
    m_pending.clear();
    m_heldSeeks.clear();
    m_opened = false;

    m_process = new ChildProcess(this);
    m_process->setWorkingDirectory(QFileInfo(playerPath()).path());
    connect(m_process, &QProcess::started, this, &MPVPlayer::started);
    connect(m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &MPVPlayer::finished);
    connect(m_process, &QProcess::readyReadStandardOutput, this, &MPVPlayer::dataRecieve);
    connect(m_process, &QProcess::readyReadStandardError, this, &MPVPlayer::dataRecieve);
    const QStringList arguments =
        QStringList{QStringLiteral("--wid=%1").arg(windowId),
                    QLatin1String("--input-ipc-server=") + m_ipcServerName,
                    QStringLiteral("--volume=%1").arg(m_volume)} +
        args + QStringList(QFileInfo(file).absoluteFilePath());
    m_process->start(playerPath(), arguments, QIODevice::ReadWrite);
}

void MPVPlayer::endProcess(int patienceMs)
{
    ChildProcess *process = m_process;
    m_process.clear();
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    // One that doesn't listen yet can't be asked.
    if (m_ipcSocket.state() == QLocalSocket::ConnectedState) {
        m_ipcSocket.write("quit 0\n");
        m_ipcSocket.flush();
        process->waitForFinished(patienceMs);
    }
    process->disconnect(this);
    if (process->state() != QProcess::NotRunning) {
        process->kill();
        process->waitForFinished(killPatienceMs);
    }
    process->deleteLater();
}

void MPVPlayer::stop()
{
    sendCommand(QStringLiteral("quit 0"));
}

bool MPVPlayer::isRunning() const
{
    return m_process && m_process->state() == QProcess::Running;
}

qint64 MPVPlayer::processId() const
{
    return m_process ? m_process->processId() : 0;
}

void MPVPlayer::sendSetting(const char *name, const QString &value)
{
    sendCommand(QStringLiteral("set %1 %2").arg(QLatin1String(name), value));
}

void MPVPlayer::setPause(bool pause)
{
    sendSetting("pause", yesNo(pause));
}

void MPVPlayer::setMute(bool mute)
{
    sendSetting("mute", yesNo(mute));
}

void MPVPlayer::setVolume(int volume)
{
    m_volume = volume;
    sendSetting("volume", QString::number(volume));
}

void MPVPlayer::setSpeed(double speed)
{
    sendSetting("speed", QString::number(speed, 'g', 6));
}

void MPVPlayer::setOsdScale(double scale)
{
    sendSetting("osd-scale", QString::number(scale, 'g', 6));
}

void MPVPlayer::seek(double value, SeekMode mode, bool exact)
{
    static const QLatin1String modes[] = {
        QLatin1String("relative"), QLatin1String("absolute-percent"), QLatin1String("absolute")};
    // Six digits tell a ms of the first quarter of an hour alone.
    const int digits = value < 1000.0 ? 6 : 10;
    const QString command = QStringLiteral("seek %1 %2 %3")
                                .arg(QString::number(value, 'g', digits), modes[mode],
                                     exact ? QStringLiteral("exact") : QStringLiteral("keyframes"));
    if (m_opened) {
        sendCommand(command);
        return;
    }
    // The player refuses to seek before it has opened the file, and begins at the start anyway.
    if (mode != Relative)
        m_heldSeeks.clear();
    if (mode == Relative || value > 0)
        m_heldSeeks += command;
}

void MPVPlayer::setContrast(int value)
{
    sendSetting("contrast", QString::number(value));
}

void MPVPlayer::setBrightness(int value)
{
    sendSetting("brightness", QString::number(value));
}

void MPVPlayer::setHue(int value)
{
    sendSetting("hue", QString::number(value));
}

void MPVPlayer::setSaturation(int value)
{
    sendSetting("saturation", QString::number(value));
}

void MPVPlayer::setGamma(int value)
{
    sendSetting("gamma", QString::number(value));
}

void MPVPlayer::videoFilter(FilterOperation operation, const QString &name, const QVariant &value)
{
    sendCommand(QLatin1String("vf ") + filterCommand(operation, name, value));
}

void MPVPlayer::audioFilter(FilterOperation operation, const QString &name, const QVariant &value)
{
    sendCommand(QLatin1String("af ") + filterCommand(operation, name, value));
}

void MPVPlayer::clearVideoFilters()
{
    sendCommand(QStringLiteral("vf clr  \"\""));
}

void MPVPlayer::setVideoGraph(const QString &graph)
{
    sendCommand(QLatin1String("vf ") + labelledGraphCommand(QStringLiteral("graph"), graph));
}

void MPVPlayer::clearAudioFilters()
{
    sendCommand(QStringLiteral("af clr \"\""));
}

void MPVPlayer::sendCommand(const QString &command)
{
    if (!isRunning())
        return;
    m_pending += command.toUtf8() + '\n';
    if (m_ipcSocket.state() == QLocalSocket::ConnectedState)
        sendPending();
    else if (m_ipcSocket.state() == QLocalSocket::UnconnectedState && !m_retry.isActive())
        connectSocket();
}

void MPVPlayer::connectSocket()
{
    if (!isRunning() || m_pending.isEmpty() ||
        m_ipcSocket.state() != QLocalSocket::UnconnectedState)
        return;
    m_ipcSocket.connectToServer(m_ipcServerName, QIODevice::ReadWrite | QIODevice::Text);
}

void MPVPlayer::sendPending()
{
    m_ipcSocket.write(m_pending);
    m_ipcSocket.flush();
    m_pending.clear();
}

void MPVPlayer::dataRecieve()
{
    auto *process = static_cast<QProcess *>(sender());
    const QByteArray output = process->readAllStandardOutput();
    if (!output.isEmpty())
        CLOG(ERROR, "default") << "MPVPlayer:" << QString::fromLocal8Bit(output);
    const auto statuses = playerStatuses(process->readAllStandardError());
    m_opened = m_opened || !statuses.isEmpty();
    if (m_opened && !m_heldSeeks.isEmpty()) {
        for (const QString &seek : std::exchange(m_heldSeeks, {}))
            sendCommand(seek);
        return; // that was before the seek
    }
    for (const PlayerStatus &status : statuses) {
        m_positionMs = status.positionMs;
        emit progressChanged(status.position, status.total, status.percent);
    }
}
