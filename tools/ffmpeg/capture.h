// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/adaptcommand.h"

#include <cstdint>
#include <map>
#include <string>

namespace ffmpeglauncher {

/// What a recording depends on beyond its command.
struct CaptureFacts
{
    /// What the screen source is told: values of its settings, by their names.
    std::map<std::string, int64_t> settings;
    std::string display; ///< name of the X display
    /// Where the recording goes instead of the command's own file: one that keeps what it has when
    /// the machine stops. Empty for the file itself.
    std::string piece;
    std::string canvas; ///< "WxH" of the piece, whatever the size of what is recorded; may be empty
    int64_t startUs = 0; ///< since the epoch, at which the recording begins, in microseconds
};

/// The environment variable with `CaptureFacts::piece`, a path.
constexpr char pieceVariable[] = "MORVANE_RECORDING";
/// The one with `CaptureFacts::canvas`.
constexpr char canvasVariable[] = "MORVANE_RECORDING_SIZE";
/// From the launcher's start to the recording's: until then the sources have opened, each in its
/// own time. Screencap counts with it, too.
constexpr int64_t captureLeadUs = 500'000;

/// Whether the command records from one of the program's capture sources.
bool isCapture(const std::vector<std::string> &arguments);

/// The command that records from what is there: the display by X11, sound by PulseAudio. The
/// program's names of both stand for what the settings tell of the screen, and for what is played
/// on the default output. Several sounds are mixed. All streams begin at the same moment and keep
/// to the system's clock. A size is a frame that the picture is fitted into, in its own shape.
std::vector<std::string> adaptCapture(const std::vector<std::string> &arguments,
                                      const CaptureFacts &facts);

/// The values in the text of the screen source's settings file; what isn't a number is left out.
std::map<std::string, int64_t> parseCaptureSettings(const std::string &text);

/// Path of that file. Empty when the user has no home.
/// @param configRoot value of XDG_CONFIG_HOME, empty when it isn't set
std::string captureSettingsPath(const std::string &configRoot, const std::string &home);

} // namespace ffmpeglauncher
