// SPDX-License-Identifier: MIT
#pragma once

namespace cage {

/// Confines what becomes a player: any file, the display and the sound of this machine, and no
/// network. A display or a sound server on another machine is reached over the network; then
/// nothing is confined.
void confinePlayer();

} // namespace cage
