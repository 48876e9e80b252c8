// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

class ChildProcess;

/// A second back end, for a player in slave mode: commands go to its standard input, positions are
/// asked for twice a second.
class MPlayer : public QObject
{
    Q_OBJECT

public:
    explicit MPlayer(QObject *parent = nullptr);
    /// Ends the player; waits up to half a second for it.
    ~MPlayer() override;

    /// @param windowId native window to draw into
    void start(uint windowId, const QString &file);
    void setPause(bool pause);
    /// In percent.
    void setVolume(int volume);
    /// Nothing for values that aren't above 0.
    void setSpeed(double speed);
    /// @param seconds from the beginning
    void seek(double seconds);
    bool isRunning() const;

signals:
    /// Seconds, and percent; -1 for what the player didn't tell.
    void progressChanged(float position, float length, float percent);

private slots:
    void dataRecieve();

private:
    void end();
    void send(const QString &line);
    void ask();
    void forgetAnswers();
    void handleAnswer(const QString &line);

    std::unique_ptr<ChildProcess> m_process;
    float m_length = -1;
    float m_position = -1;
    float m_percent = -1;
    bool m_paused = false;
    QTimer m_timer;
};
