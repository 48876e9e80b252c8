// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

#include <QTemporaryDir>

#include <memory>

class CSVideoPlayer;

/// Lets the user hear some seconds of a mix in a running preview. The sound is made by the same
/// way as the result's and only then given to the player: what is heard is what the file will hold.
class MixPreview : public QObject
{
    Q_OBJECT

public:
    enum State { Off, Preparing, Playing };

    /// How much is heard, in ms.
    static constexpr int lengthMs = 10000;

    /// @param player outlives the preview
    MixPreview(CSVideoPlayer *player, QObject *parent);
    ~MixPreview() override;

    /// Prepares the mix of a conversion and plays it.
    /// @param fromMs where it is to begin
    void start(const ConvertTaskParam &param, int fromMs);
    /// Gives the video its own sound back.
    void stop();
    State state() const { return m_state; }

    /// Tells where the preview stands, in ms: outside the excerpt it ends.
    void follow(int positionMs);

signals:
    void stateChanged(State state);
    /// The preview is to play from there, in ms.
    void begins(int fromMs);
    /// The excerpt has been heard.
    void ended();
    /// There is nothing to hear, for this reason.
    void failed(const QString &cause);

private:
    void onTaskState(MediaTask::State taskState);
    void play();
    void setState(State state);

    CSVideoPlayer *const m_player;
    State m_state = Off;
    TimeSpan m_span;         // of the excerpt
    int m_ownSounds = 0;     // which the player counts from 1
    bool m_hasBegun = false; // reports from before the jump come late
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MediaTask> m_task;
};
