// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace Win32Env {

/// What the online services are told about this computer. Needs no application object.
class ComputerInfo
{
public:
    /// Stable id of this computer. The first call reads it, on a thread of its own for which the
    /// caller waits; empty when no id can be had.
    static QString getDeviceID();

    /// One word for the system and its version, read by the first call.
    static QString systemVersion();

    /// Of the default screen, in pixels, asked anew by each call; 0 without a display.
    static int screenWidth();
    static int screenHeight();
};

} // namespace Win32Env
