// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

#include <memory>

/// A device of the sound server.
struct SoundDevice
{
    QString name;  ///< the server's own, by which it is opened
    QString title; ///< for people
};

/// What the sound server has, in its order.
struct SoundDevices
{
    bool isServerReachable = false;
    QVector<SoundDevice> inputs; ///< microphones and other sources; what outputs play doesn't count
    QVector<SoundDevice> outputs;
};

/// Asks the sound server, and starts none. One that hangs is waited for a second: keep the answer.
SoundDevices soundDevices();

/// Keeps sound sources awake while it lives. One that sleeps takes up to two seconds before it
/// gives its first sample to somebody who opens it.
class AwakeSound
{
public:
    /// @param inputs names of inputs
    /// @param isPlayedSoundWanted whether what the default output plays is a source as well
    AwakeSound(const QVector<QString> &inputs, bool isPlayedSoundWanted);
    ~AwakeSound();
    /// Whether all of them have given something.
    bool isAwake() const;
    AwakeSound(const AwakeSound &) = delete;
    AwakeSound &operator=(const AwakeSound &) = delete;

private:
    class Streams;
    const std::unique_ptr<Streams> m_streams;
};
