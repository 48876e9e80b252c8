// SPDX-License-Identifier: MIT
#include "screencap/recordedsound.h"

#include "screencap/screencap.h"

namespace {
constexpr int longestWakingMs = 2500;
} // namespace

void RecordedSound::ask()
{
    if (m_flags != Screencap::NoSound && !m_devices)
        m_devices = soundDevices();
}

bool RecordedSound::isMissed() const
{
    return m_flags != Screencap::NoSound &&
           !(m_devices ? *m_devices : soundDevices()).isServerReachable;
}

QStringList RecordedSound::inputs() const
{
    const bool isWanted = (m_flags & Screencap::Microphones) != 0 && m_devices;
    return isWanted ? CaptureDevices::names(m_devices->inputs) : QStringList();
}

bool RecordedSound::isPlayedSoundWanted() const
{
    return (m_flags & Screencap::SystemSound) != 0 && m_devices && !m_devices->outputs.isEmpty();
}

bool RecordedSound::askAgain()
{
    const auto sources = [this] { return qMakePair(inputs(), isPlayedSoundWanted()); };
    const auto before = sources();
    if (before.first.isEmpty() && !before.second)
        return false;
    m_devices = soundDevices();
    return sources() != before;
}

void RecordedSound::wake()
{
    ask();
    m_awake = std::make_unique<AwakeSound>(inputs().toVector(), isPlayedSoundWanted());
    m_waking.start();
}

bool RecordedSound::isReady() const
{
    return !m_awake || m_awake->isAwake() || m_waking.elapsed() >= longestWakingMs;
}

void RecordedSound::forget()
{
    m_awake.reset();
    m_devices.reset();
}
