// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

/// Suffix of the output that a preset makes: that of its category, or for a preset of an unlisted
/// category the usual one of its container.
QString presetSuffix(const EncParam &preset);

/// Title of the preset's category, empty when the category isn't listed.
QString presetCategory(const EncParam &preset);
