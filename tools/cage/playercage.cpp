// SPDX-License-Identifier: MIT
#include "cage/playercage.h"

#include "cage/cage.h"
#include "cage/installedtool.h"

namespace cage {

void confinePlayer()
{
    const std::string display = environmentText("DISPLAY");
    const std::string sound = environmentText("PULSE_SERVER");
    const bool isSoundHere = sound.empty() || sound[0] == '/' || sound.rfind("unix:", 0) == 0;
    if ((!display.empty() && display[0] != ':') || !isSoundHere)
        return;
    Needs needs;
    needs.anyFile = true;
    needs.localSockets = true;
    confine(needs);
}

} // namespace cage
