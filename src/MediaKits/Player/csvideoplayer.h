// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/Player/playerfilter.h"

#include <QSize>
#include <QStringList>
#include <QWidget>

#include <memory>

class MPVPlayer;
class QLabel;

namespace Ui {
class CSVideoPlayer;
}

/// Options of every preview: no configuration of the user's, no on-screen display, a status line
/// that can be read, endless repetition.
QStringList standardPlayerArguments();

/// Option that draws the wave of the sound in place of a picture.
QString soundWaveArgument();

/// The player of the editors and the preview: a black area that an external player draws into.
/// Times are in ms, but positions come in whole seconds.
class CSVideoPlayer : public QWidget
{
    Q_OBJECT

public:
    explicit CSVideoPlayer(QWidget *parent = nullptr);
    ~CSVideoPlayer() override;

    /// Plays the file from its beginning. Whatever of these players was playing is paused: two
    /// never sound at once.
    void start(const QString &file, const QStringList &args);
    void play(bool on);
    void stop();
    void seek(int ms);
    bool isRunning() const;
    /// Has the position told to the ms of the frame that is seen, for every start to come.
    void tellFrames();
    /// Where the player has told to be, in ms; whole seconds unless it tells frames.
    int toldPosition() const;
    QString fileName() const { return m_fileName; }
    /// Whether a player that ends unasked is started again, once a start, where it stood.
    void setRestarting(bool restarting) { m_restarting = restarting; }

    /// In percent of the file's own loudness.
    void setVolume(int volume);
    int volume() const;
    void setSpeed(double speed);
    void setContrast(int value);
    void setBrightness(int value);
    void setHue(int value);
    void setGamma(int value);
    void setSaturation(int value);
    void videoFilter(FilterOperation operation, const QString &name, const QVariant &value);
    void audioFilter(FilterOperation operation, const QString &name, const QVariant &value);
    void clearVideoFilters();
    /// Shows the picture through a filter graph in place of the last one; empty for none.
    void setVideoGraph(const QString &graph);
    void clearAudioFilters();
    void sendCommand(const QString &command);

    /// Size of the picture, which the surface keeps the shape of; without one it fills the widget.
    void setVideoSize(const QSize &size) { m_videoSize = size; }
    QSize videoSize() const { return m_videoSize; }
    void setDuration(int ms) { m_duration = ms; }
    int duration() const { return m_duration; }
    /// A further factor on the size of the surface.
    void setScale(double scale);
    double scale() const { return m_scale; }
    /// The surface itself; overlays are its children.
    QLabel *videoLabel() const;

signals:
    /// @param position ms
    /// @param total ms, 0 when unknown
    void progressChanged(long position, long total, float percent);
    void started();
    void finished(int exitCode);
    /// Another of these players has started, so that this one stands still.
    void interrupted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setSurfaceSize(const QSize &size);
    void onProgress(float position, float total, float percent);
    void onFinished(int exitCode);
    void pauseOther();

    const std::unique_ptr<Ui::CSVideoPlayer> m_ui;
    MPVPlayer *m_player;
    QString m_fileName;
    QStringList m_arguments;
    bool m_restarting = false;
    int m_restartsLeft = 0;
    bool m_hasPlayed = false; // a file that can't be opened needs no second try
    bool m_plays = false;
    int m_position = 0; // ms
    int m_duration = 0;
    QSize m_videoSize;
    double m_scale = 1.0;
};
