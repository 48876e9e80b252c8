// SPDX-License-Identifier: MIT
#pragma once

#include "screenshots/shots.h"

/// Those of the login's window and of what is told without one.
QVector<Shot> loginShots();
