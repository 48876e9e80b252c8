// SPDX-License-Identifier: MIT
#pragma once

/// Below this a colour balance or a factor counts as nothing.
constexpr double tinyValue = 0.00001;

/// Whether a setting of a look counts as changing nothing: at zero or at one.
bool isNeutral(double value);
