// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/videobeautyparam.h"

#include <QObject>
#include <QTimer>

class CSVideoPlayer;

/// Shows a look in a running preview, through the player's filters. While a slider is dragged the
/// player gets new ones every 60 ms at most, and the last ones in any case.
class BeautyPreview : public QObject
{
    Q_OBJECT

public:
    /// @param player outlives the preview
    BeautyPreview(CSVideoPlayer *player, QObject *parent);

    /// Whether the film's own tag turns it by an odd number of quarter turns. The player does so
    /// behind all filters, where a conversion does it before them.
    void setUpright(bool upright) { m_isUpright = upright; }

    void show(const VideoBeautyParam &look);
    /// Shows the picture as it is in the source for as long as it is set; the sound stays.
    void setPlain(bool plain);

private:
    void request();
    void send();
    void sendPicture();
    void sendSound();
    void onStarted();

    CSVideoPlayer *const m_player;
    VideoBeautyParam m_look;
    bool m_isUpright = false;
    bool m_isPlain = false;
    bool m_isPending = false; // newer than what the player was told
    QTimer m_pause;
    // What the player has been told, which keeps it from one film to the next.
    float m_speed = 1.0F;
    float m_volume = 1.0F;
};
