// SPDX-License-Identifier: MIT
#pragma once

#include "screenshots/shots.h"

/// Those of the screen recorder: its page, and what it lays over the desktop.
QVector<Shot> recordShots();
