// SPDX-License-Identifier: MIT
#pragma once

#include "platform/soundserver.h"

#include <QList>
#include <QPair>
#include <QStringList>

/// What there is to record from, by the names that stand in a recording's command.
namespace CaptureDevices {

/// Whether the screen and the sound that is played can be recorded.
bool areSourcesRegistered();
/// As Screencap::listDirectShowDevices().
QList<QPair<QString, QString>> list(int category);
/// As Screencap::listAudioDevices().
QStringList audio(int direction);

/// Those names among devices that are already known.
QStringList names(const QVector<SoundDevice> &devices);

/// What a recording would miss; a text for the user.
/// @param isSoundMissed whether sound is wanted that no server gives
QString warning(bool isSoundMissed);

} // namespace CaptureDevices
