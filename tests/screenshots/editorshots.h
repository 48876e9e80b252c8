// SPDX-License-Identifier: MIT
#pragma once

#include "screenshots/shots.h"

/// Pictures of the editors; each stands for itself.
QVector<Shot> editorShots();
