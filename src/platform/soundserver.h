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

enum class SoundDirection {
    Input, ///< microphones and other sources; what outputs play doesn't count
    Output,
};

/// Whether a sound server answers. None is started by the question.
bool isSoundServerReachable();

/// The devices of the sound server, in its order; none where no server answers.
QVector<SoundDevice> soundDevices(SoundDirection direction);

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
