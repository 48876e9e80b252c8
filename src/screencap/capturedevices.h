// SPDX-License-Identifier: MIT
#pragma once

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

/// What a recording of sound, if that is wanted, would miss; a text for the user.
QString warning(bool isSoundWanted);

} // namespace CaptureDevices
