// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/Player/playerfilter.h"

#include <QLocalSocket>
#include <QObject>
#include <QPointer>
#include <QTimer>

class ChildProcess;

/// Runs the external player and has it draw into a native window. Commands go over a local
/// socket, positions come from its status line. Commands for a player that doesn't run are
/// dropped; those for one whose socket isn't there yet wait for it, in their order.
class MPVPlayer : public QObject
{
    Q_OBJECT

public:
    enum SeekMode { Relative = 0, AbsolutePercent = 1, Absolute = 2 };

    explicit MPVPlayer(QObject *parent = nullptr);
    /// Ends the player; waits up to half a second for it.
    ~MPVPlayer() override;

    /// Replaces the running player; waits up to 300 ms for its end.
    /// @param windowId native window to draw into; 0 does nothing
    /// @param args options of the player, behind those of this class
    void start(uint windowId, const QString &file, const QStringList &args);
    /// The same in the window of the last start.
    void start(const QString &file, const QStringList &args);
    void stop();
    bool isRunning() const;

    void setPause(bool pause);
    void setMute(bool mute);
    /// In percent; holds for later starts too.
    void setVolume(int volume);
    int volume() const { return m_volume; }
    void setSpeed(double speed);
    void setOsdScale(double scale);
    /// @param value seconds or percent
    /// @param exact to the frame, otherwise to the nearest key frame
    void seek(double value, SeekMode mode, bool exact);
    // From -100 to 100.
    void setContrast(int value);
    void setBrightness(int value);
    void setHue(int value);
    void setSaturation(int value);
    void setGamma(int value);
    void videoFilter(FilterOperation operation, const QString &name, const QVariant &value);
    void audioFilter(FilterOperation operation, const QString &name, const QVariant &value);
    void clearVideoFilters();
    /// Shows the picture through a filter graph, which takes the place of the last one in one step:
    /// nothing is seen without it in between. Empty for none.
    void setVideoGraph(const QString &graph);
    void clearAudioFilters();
    /// One command in the player's own language.
    void sendCommand(const QString &command);

    /// Where the player is, in ms; whole seconds unless it was told to tell more. Known when
    /// `progressChanged` comes.
    int positionMs() const { return m_positionMs; }
    /// Process id of the player, 0 when none runs.
    qint64 processId() const;
    /// Path of the command socket.
    QString ipcServerName() const { return m_ipcServerName; }

signals:
    /// Whole seconds, and percent.
    void progressChanged(float position, float total, float percent);
    void started();
    void finished(int exitCode);

private slots:
    void dataRecieve();

private:
    void endProcess(int patienceMs);
    void sendSetting(const char *name, const QString &value);
    void sendPending();
    void connectSocket();
    void removeSocketFile() const;

    QPointer<ChildProcess> m_process;
    int m_volume = 100;
    int m_positionMs = 0;
    uint m_windowId = 0;
    QLocalSocket m_ipcSocket;
    const QString m_ipcServerName;
    QByteArray m_pending;    ///< commands that wait for the socket
    bool m_opened = false;   ///< the player has told where it is
    QStringList m_heldSeeks; ///< commands that wait for that
    QTimer m_retry;
};
