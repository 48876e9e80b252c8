// SPDX-License-Identifier: MIT
#pragma once

/// Whether a compositing manager serves the default screen, so that translucent windows show what
/// lies behind them; without one they are black. False without an X display.
bool isCompositingActive();
