// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// How the program shows itself on a dense display.
enum DpiScaleMode : qint32 {
    DpiScaleSystem = 1, ///< no scaling of our own
    DpiScaleFactor = 2, ///< by dpiScaleFactor(), through QT_SCALE_FACTOR
    DpiScaleHigh = 3,   ///< Qt's own scaling of dense displays
    DpiScaleAuto = 4,   ///< not decided yet
};

struct DisplayScale
{
    DpiScaleMode mode = DpiScaleAuto;
    double factor = 1.5;
};

/// The decision of program start.
/// @param p display ratio: real pixels to reported ones
/// @param r resolution ratio: 1.0 on a display of 1920 x 1080
/// @param current a mode other than DpiScaleAuto stands; the factor is replaced all the same when
///        the measures ask for one
DisplayScale decidedScale(double p, double r, const DisplayScale &current);

/// Measures the display, decides, and sets Qt up for the outcome. For one call, before the
/// application object exists. A QT_SCALE_FACTOR of the user's own stands in every mode.
void decideDisplayScale();

DpiScaleMode dpiScaleMode();
/// Before decideDisplayScale(), so that the mode isn't decided there.
void setDpiScaleMode(DpiScaleMode mode);
double dpiScaleFactor();

/// Pixels of the display to one of the program's own, as the mode has it.
double effectiveScale();
/// The same for pictures taken from the display: 1.0 where the system scales.
double captureScale();
