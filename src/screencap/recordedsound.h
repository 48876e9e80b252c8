// SPDX-License-Identifier: MIT
#pragma once

#include "platform/soundserver.h"

#include <QElapsedTimer>
#include <QStringList>

#include <optional>

/// The sound sources of a recording. What the sound server has is asked once, and the answer is
/// kept until forget(): a server that hangs holds up a window once only, and no piece has sound
/// where the first has none.
class RecordedSound
{
public:
    /// @param flags of `Screencap::AudioFlag`, together
    void setFlags(int flags) { m_flags = flags; }
    int flags() const { return m_flags; }

    /// Asks, if sound is wanted and there is no answer yet.
    void ask();
    /// Whether sound is wanted that no server gives. Asks, without keeping the answer, where there
    /// is none.
    bool isMissed() const;
    /// Names of the inputs to record.
    QStringList inputs() const;
    bool isPlayedSoundWanted() const;

    /// Asks again, if there are sources: one may have gone.
    /// @return whether they are others now
    bool askAgain();

    /// Asks, and wakes the sources, which may take two seconds.
    void wake();
    bool isWoken() const { return m_awake != nullptr; }
    /// Whether all of them give sound, or nobody should wait any longer.
    bool isReady() const;
    void forget();

private:
    int m_flags = 0;
    std::optional<SoundDevices> m_devices;
    std::unique_ptr<AwakeSound> m_awake;
    QElapsedTimer m_waking;
};
