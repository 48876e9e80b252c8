// SPDX-License-Identifier: MIT
#pragma once

#include "screencap/screencap.h"

#include <QPointer>
#include <qwindowdefs.h>

class CountdownWnd;
class WindowCapWidget;
class WindowRetreat;

/// The way of a recording for the user: picking, countdown, frame, and the program's own window
/// out of the picture.
class RecordingRun : public QObject
{
    Q_OBJECT

public:
    enum Phase {
        Ready,
        Picking,  ///< an area or a window
        Counting, ///< the last seconds before it, until the tool runs
        Recording,
        Paused,
        Saving,
    };
    Q_ENUM(Phase)

    /// @param page from which recordings are started; the owner
    explicit RecordingRun(QWidget *page);
    ~RecordingRun() override;

    Phase phase() const { return m_phase; }
    /// Whether leaving would end a recording.
    bool isWorking() const;

    /// Picks what `mode` asks for, counts down and records. May return while it is at it.
    /// @param mode of `Screencap::CaptureMode`
    void start(int mode);
    /// Pauses the recording or goes on with it; nothing without one.
    void pauseOrResume();
    /// Ends the recording, or what leads to one.
    void stop();
    /// Returns when the recording that runs is saved; the window stays where it is.
    void finish();
    void hideFrame();

signals:
    void phaseChanged(RecordingRun::Phase phase);
    /// @param window of the display server
    void windowPicked(WId window);

private:
    bool warn();
    void openOverlay();
    void takePicked();
    void beginRecording();
    void callOff();
    void frame(int areaState);
    void resetRecordingUi();
    void followEngine();
    void setPhase(Phase phase);

    QWidget *m_page;
    WindowRetreat *m_retreat;
    QPointer<WindowCapWidget> m_overlay;
    QPointer<CountdownWnd> m_countdown;
    Phase m_phase = Ready;
    bool m_isLeaving = false;
};
