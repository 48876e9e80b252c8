// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QSize>

/// Of the primary display.
struct DisplaySizes
{
    /// In pixels, by its current mode; 0 x 0 when there is no display.
    QSize real;
    /// What the desktop wants this process to reckon with: smaller than `real` on a display on
    /// which everything is to be shown enlarged.
    QSize reported;
};

/// How this process goes about a desktop that wants things enlarged.
enum class DpiStance {
    Unaware, ///< leaves it to the system
    Aware,   ///< enlarges its picture itself, so that real pixels are reported to it
};

/// Declares the stance to the system. X11 enlarges nobody's picture and knows no such call: all
/// that the stance changes is what primaryDisplaySizes() reports from now on.
void declareDpiStance(DpiStance stance);

/// Asks the display server, so that no application object is needed.
DisplaySizes primaryDisplaySizes();

/// The enlargement that the user asks of Qt's programs through QT_SCALE_FACTOR; 0 without one.
double scaleOfUser();

/// The enlargement that an X resource text asks for by its line "Xft.dpi", where 96 means 1.0;
/// 1.0 without such a line.
double scaleInResources(const QByteArray &resources);
