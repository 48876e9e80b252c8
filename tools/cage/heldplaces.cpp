// SPDX-License-Identifier: MIT
#include "cage/heldplaces.h"

#include "platform/workplace.h"

namespace cage {

std::string holdPlaces(std::vector<std::string> *folders)
{
    for (std::string &folder : *folders) {
        if (!leadsThroughMarker(folder))
            continue;
        const int place = openWorkPlace(folder);
        if (place < 0)
            return folder;
        folder = "/proc/self/fd/" + std::to_string(place);
    }
    return {};
}

} // namespace cage
