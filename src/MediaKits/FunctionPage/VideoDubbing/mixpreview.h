// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/trialconversion.h"

class CSVideoPlayer;

/// Lets the user hear some seconds of a mix in a running preview. The sound is made by the same
/// way as the result's and only then given to the player: what is heard is what the file will hold.
class MixPreview : public QObject
{
    Q_OBJECT

public:
    enum State { Off, Preparing, Playing };

    /// How much is heard at most, in ms.
    static constexpr int lengthMs = 10000;

    /// @param player outlives the preview
    MixPreview(CSVideoPlayer *player, QObject *parent);

    /// Prepares the mix of a conversion and plays it.
    /// @param fromMs where it is to begin; at the film's end, a second is heard
    void start(const ConvertTaskParam &param, int fromMs);
    /// Gives the video its own sound back.
    void stop();
    State state() const { return m_state; }

signals:
    void stateChanged(State state);
    /// The preview is to play from there, in ms.
    void begins(int fromMs);
    /// It has been heard, or the preview has gone elsewhere.
    void ended();
    /// There is nothing to hear, for this reason.
    void failed(const QString &cause);

private:
    void expectBegin(int beforeMs);
    void onProgress();
    void play();
    void give();
    void takeBack();
    bool beginsAnew(int toldMs) const;
    void setState(State state);

    CSVideoPlayer *const m_player;
    State m_state = Off;
    TimeSpan m_made;  // the excerpt
    TimeSpan m_heard; // the part of it that is played
    // Of the player that runs: without its film it takes no sound, started anew it has lost it.
    bool m_isLoaded = false;
    bool m_isGiven = false;
    bool m_hasBegun = false;
    int m_latestBeginMs = 0; // where the player is told to be then, at most
    int m_toldMs = 0;        // by the player, last
    TrialConversion m_trial;
};
