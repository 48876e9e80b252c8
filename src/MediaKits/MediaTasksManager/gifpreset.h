// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QSize>

/// A copy of the catalogue's preset for GIFs, for one result alone.
/// @param size of the picture; empty for the preset's own
QSharedPointer<EncParam> gifPreset(const QSize &size, double frameRate);
