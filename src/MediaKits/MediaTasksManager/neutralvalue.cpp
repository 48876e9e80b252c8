// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/neutralvalue.h"

#include <algorithm>
#include <cmath>

bool isNeutral(double value)
{
    return std::abs(value) <= tinyValue ||
           std::abs(value - 1.0) * 100000 <= std::min(std::abs(value), 1.0);
}
