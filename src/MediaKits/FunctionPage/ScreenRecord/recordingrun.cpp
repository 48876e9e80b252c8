// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/recordingrun.h"

#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/ScreenRecord/countdownwnd.h"
#include "MediaKits/FunctionPage/ScreenRecord/windowcapwidget.h"
#include "MediaKits/FunctionPage/ScreenRecord/windowretreat.h"
#include "platform/screensource.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

namespace {

// The tool takes the screen a moment longer than it is told; the window isn't to be in that.
constexpr int lastFramesMs = 1000;

Screencap &engine()
{
    return Screencap::instance();
}

} // namespace

RecordingRun::RecordingRun(QWidget *page)
    : QObject(page),
      m_page(page),
      m_retreat(new WindowRetreat(page)),
      m_overlay(new WindowCapWidget)
{
    connect(m_overlay, &WindowCapWidget::editFinish, this, &RecordingRun::takePicked);
    connect(m_overlay, &WindowCapWidget::canceled, this, &RecordingRun::callOff);
    connect(&engine(), &Screencap::stateChanged, this, &RecordingRun::followEngine);
    connect(&engine(), &Screencap::pausedChanged, this, &RecordingRun::followEngine);
    connect(&engine(), &Screencap::savingChanged, this, [this](bool isSaving) {
        if (isSaving)
            followEngine();
    });
}

RecordingRun::~RecordingRun()
{
    delete m_overlay;
}

bool RecordingRun::isWorking() const
{
    return engine().state() != Screencap::CapIdle;
}

void RecordingRun::start(int mode)
{
    if (m_phase != Ready)
        return;
    engine().setCapture(mode, {});
    if (!warn())
        return;
    setPhase(Picking);
    if (mode == Screencap::FullMode) {
        m_retreat->leave([] {});
        beginRecording();
    } else {
        // The overlay may show a picture of the screen.
        m_retreat->leave([this] { openOverlay(); });
    }
}

// Before anything is hidden.
bool RecordingRun::warn()
{
    const bool isBarred = screenAccess() == ScreenAccess::Wayland;
    if (!isBarred)
        engine().askForSound();
    const QString warning = engine().startWarning();
    if (warning.isEmpty())
        return true;
    m_retreat->comeToFront();
    const QPointer<RecordingRun> alive(this);
    MediaMessageBox::showMessage(tr("警告"), warning, m_page);
    return alive && m_phase == Ready && !isBarred;
}

void RecordingRun::openOverlay()
{
    if (engine().capMode() == Screencap::AreaMode)
        m_overlay->pickArea();
    else
        m_overlay->pickWindow();
}

void RecordingRun::takePicked()
{
    if (engine().capMode() == Screencap::WindowMode) {
        const WId window = m_overlay->selectedWindow();
        engine().setCapture(Screencap::WindowMode, uint(window));
        emit windowPicked(window);
    } else {
        engine().setCapture(Screencap::AreaMode, m_overlay->selectedRect());
    }
    frame(WindowCapWidget::AreaRecorded);
    beginRecording();
}

void RecordingRun::beginRecording()
{
    setPhase(Counting);
    const QPointer<RecordingRun> alive(this);
    m_countdown = new CountdownWnd(m_page);
    const QScreen *screen = engine().capMode() == Screencap::FullMode
                                ? QGuiApplication::primaryScreen()
                                : m_overlay->selectedScreen();
    m_countdown->moveToMiddle(*screen);
    m_countdown->start();
    engine().prepare();
    const bool isCounted = runModal(m_countdown.data());
    if (!alive)
        return;
    // The first picture is taken half a second later: a countdown that a compositor fades out has
    // gone by then.
    if (isCounted)
        engine().start();
    else
        callOff();
}

// Nothing was recorded: the page and its window become what they were.
void RecordingRun::callOff()
{
    engine().cancelPreparation();
    m_overlay->hide();
    m_retreat->restore();
    setPhase(Ready);
}

void RecordingRun::frame(int areaState)
{
    if (engine().capMode() == Screencap::AreaMode)
        m_overlay->setOverlayState(areaState);
    else if (engine().capMode() == Screencap::WindowMode)
        m_overlay->setOverlayState(WindowCapWidget::WindowHeld);
}

void RecordingRun::hideFrame()
{
    m_overlay->hide();
}

void RecordingRun::pauseOrResume()
{
    if (m_phase == Recording) {
        frame(WindowCapWidget::AreaHeld);
        engine().pause();
    } else if (m_phase == Paused) {
        m_retreat->leave([this] {
            frame(WindowCapWidget::AreaRecorded);
            engine().resume();
        });
    }
}

void RecordingRun::stop()
{
    if (m_countdown) {
        m_countdown->reject();
    } else if (m_phase != Ready && !isWorking()) {
        callOff();
    } else if (isWorking() && !engine().isSaving()) {
        frame(WindowCapWidget::AreaHeld);
        engine().stop();
        QTimer::singleShot(lastFramesMs, this, [this] {
            if (m_phase == Saving && !m_isLeaving)
                m_retreat->comeToFront();
        });
    }
}

void RecordingRun::finish()
{
    if (!isWorking())
        return;
    m_isLeaving = true;
    QEventLoop loop;
    connect(&engine(), &Screencap::stateChanged, &loop, [&loop](Screencap::CapStateEnum state) {
        if (state == Screencap::CapIdle)
            loop.quit();
    });
    if (!engine().isSaving())
        engine().stop();
    if (isWorking())
        loop.exec();
}

void RecordingRun::resetRecordingUi()
{
    m_overlay->hide();
    setPhase(Ready);
    if (!m_isLeaving)
        m_retreat->comeToFront();
}

void RecordingRun::followEngine()
{
    const Screencap::CapStateEnum state = engine().state();
    if (state == Screencap::CapIdle) {
        if (m_phase > Counting || (m_phase == Counting && !m_countdown))
            resetRecordingUi();
    } else if (engine().isSaving()) {
        setPhase(Saving);
    } else if (state == Screencap::CapRunning || state == Screencap::CapPaused) {
        setPhase(engine().isPaused() ? Paused : Recording);
    }
}

void RecordingRun::setPhase(Phase phase)
{
    if (phase == m_phase)
        return;
    m_phase = phase;
    emit phaseChanged(phase);
}
